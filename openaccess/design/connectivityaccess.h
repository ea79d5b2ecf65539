#ifndef OAKIT_CONNECTIVITYACCESS_H
#define OAKIT_CONNECTIVITYACCESS_H

// How the connectivity classes reach their rows, shared by their sources.

#include "collection.h"
#include "connectivity.h"
#include "designaccess.h"
#include "oa/oaDesignDB.h"
#include "raise.h"

#include <string>

namespace OpenAccess_4 {
namespace kit {

struct DesignRow {
  DesignDatabase &design;
  Row row;
};

// The row behind an object, which must belong to the table of that id: a stale pointer whose memory serves another
// object is refused like any dead one.
inline DesignRow designRow(const oaObject *object, std::uint16_t tableId) {
  Table &table = liveTable(object);
  if (table.id() != tableId) {
    raiseDeadObject();
  }
  return {designOf(object), rowOf(object)};
}

// The same for what a walk over instances asks of each.
inline InstTable &instsOf(const oaObject *object) {
  Table *table = tableOf(object);
  if (OA_UNLIKELY(table == nullptr || table->id() != kInstTable)) {
    raiseDeadObject();
  }
  return static_cast<InstTable &>(*table);
}

inline DesignRow netRow(const oaNet *net) { return designRow(net, kNetTable); }
inline DesignRow termRow(const oaTerm *term) { return designRow(term, kTermTable); }
inline DesignRow pinRow(const oaPin *pin) { return designRow(pin, kPinTable); }
inline DesignRow instRow(const oaInst *inst) { return designRow(inst, kInstTable); }
inline DesignRow instHeaderRow(const oaInstHeader *header) { return designRow(header, kInstHeaderTable); }
inline DesignRow instTermRow(const oaInstTerm *instTerm) { return designRow(instTerm, kInstTermTable); }
inline DesignDatabase &designOfBlock(const oaBlock *block) { return designRow(block, kBlockTable).design; }

template <typename T> T *objectAt(Table &table, Row row) { return static_cast<T *>(table.handle(row)); }

inline std::string textOf(const oaString &text) { return std::string(text, text.getLength()); }
// The native form, in which names are stored.
template <typename Name> std::string nativeText(const Name &name) {
  oaString text;
  name.get(text);
  return textOf(text);
}

// The stored scalar name of a row, in three forms.
void getStoredName(const StringTable &strings, Row name, oaScalarName &out);
void getStoredName(const StringTable &strings, Row name, const oaNameSpace &ns, oaString &out);

// Raises a design exception that names the design and the object.
[[noreturn]] void refuse(const DesignDatabase &design, oaUInt4 id, const std::string &message);

// Messages that the documentation gives a number only.
constexpr oaUInt4 kNetsNotEquivalent = 1112;
constexpr oaUInt4 kTermTypeOfBusMember = 1147;
constexpr oaUInt4 kGlobalOfImplicitNet = 1612;
constexpr oaUInt4 kSigTypeOfImplicitNet = 1613;
constexpr oaUInt4 kInvalidInstTermIterFlags = 1180;
constexpr oaUInt4 kViaOnMultiBitNet = 1424;

// Look-ups, built at first need.
NameIndex &netsByName(DesignDatabase &design);
NameIndex &termsByName(DesignDatabase &design);
NameIndex &instsByName(DesignDatabase &design);
OwnerIndex &termsOfNet(DesignDatabase &design);
OwnerIndex &pinsOfTerm(DesignDatabase &design);
OwnerIndex &instsOfHeader(DesignDatabase &design);
OwnerIndex &instTermsOfInst(DesignDatabase &design);
// The one of two that holds the connections of `net`.
OwnerIndex &instTermsOfNet(DesignDatabase &design, Row net);
// The same as it is, built or not.
OwnerIndex &connectionIndexOf(DesignDatabase &design, Row net);

// A name prefix + number that no object of the index uses.
std::string automaticName(const NameIndex &index, const char *prefix, std::uint32_t &nextNumber);

// Destroys an explicit net or terminal, or makes it implicit again when others need it: what is connected to it goes or
// stays as documented at oaNet::destroy().
void dropNet(DesignDatabase &design, Row net);
void dropTerm(DesignDatabase &design, Row term);
void leavePinsOfTerm(DesignDatabase &design, Row term);
// The net leaves its set of equivalents.
void leaveEquivalents(DesignDatabase &design, Row net);
// The nets of the set, ascending; empty when there are no others.
RowSpan equivalentsOf(DesignDatabase &design, Row net);

// Called when the row is about to be destroyed.
void instIsGoing(DesignDatabase &design, Row inst);
void instTermIsGoing(DesignDatabase &design, Row instTerm);
// The net of an explicit connection goes or becomes implicit: it and its bits are without a net from now on.
void instTermLosesNet(DesignDatabase &design, Row instTerm);

// Called whenever an instance appears, goes, moves or changes its master.
inline void instsChanged(DesignDatabase &design) {
  design.connectivity.isRefBoxKnown = false;
  design.touch();
}

// The design behind a header, bound when it is not yet; NULL when that fails.
oaDesign *bindMaster(DesignDatabase &design, Row header);
// The box of the header's master, see oaRefHeader::getMasterBBox.
oaBox masterBoxOf(DesignDatabase &design, Row header);

// Members of an owner in one of the indexes above.
class MembersKind : public OwnedRowsKind {
public:
  using IndexOf = OwnerIndex &(*)(DesignDatabase &);
  MembersKind(IndexOf indexOf, std::uint16_t memberTableId) : indexOf_(indexOf), memberTableId_(memberTableId) {}

protected:
  RowSpan members(const CollectionQuestion &question) const override {
    return indexOf_(static_cast<DesignDatabase &>(question.table->database())).rows(question.owner);
  }
  Table &memberTable(const CollectionQuestion &question) const override {
    return *question.table->database().table(memberTableId_);
  }

private:
  IndexOf indexOf_;
  std::uint16_t memberTableId_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
