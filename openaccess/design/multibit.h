#ifndef OAKIT_MULTIBIT_H
#define OAKIT_MULTIBIT_H

// Names of more than one bit, and the objects that they bring into being: what nets, terminals and instances have in
// common. An object is a scalar, a bit of a base name, a range of such bits, or a bundle of all these. A range has its
// bits as members, a bundle what its name lists; members that nobody has created are made with it and called implicit.
// Invariants:
//  (1) every member of a living object is a living object of the same table;
//  (2) an implicit object is a member of at least one other, and goes when that is no longer so;
//  (3) a scalar never has the name of a definition (a base name), and objects of one name and kind are one object.

#include "connectivityaccess.h"
#include "oa/oaBundleName.h"
#include "oa/oaConnectivityEnums.h"

#include <string>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

// More bits than a schematic has in one name, and few enough that making them all takes no time to speak of.
constexpr std::uint32_t kMostBits = 1u << 20;

// Where one of the three kinds of objects lives, and what it is called and raises.
struct BitsFamily {
  DesignDatabase &design;
  Table &objects;
  Column<std::uint8_t> &kind;
  Column<Row> &name;
  Column<Row> &bits;
  Column<std::uint8_t> &flags;
  std::uint8_t implicitFlag;
  BitsTable &ranges;
  MemberTable &members;
  BitsDefTable &defs;
  NameIndex &byName;
  BitsIndexes &indexes;

  std::uint8_t scalarKind, bitKind, rangeKind, bundleKind, defKind; // bundleKind 0: there are no bundles
  oaUInt4 emptyNameId, hierNameId;
  oaUInt4 scalarMatchesBaseId, baseMatchesScalarId;
  oaUInt4 autoNameId; // 0: base names are free
  const char *autoPrefix;
  const char *what; // for messages
};

BitsFamily netFamily(DesignDatabase &design);
BitsFamily termFamily(DesignDatabase &design);
BitsFamily instFamily(DesignDatabase &design);

class MultiBit {
public:
  explicit MultiBit(const BitsFamily &family) : family_(family) {}

  // Keys of the name index: equal exactly when kind and name are. A scalar's key is its native text, but for texts that
  // begin like a key of another kind.
  static std::string scalarKey(const std::string &text);
  static std::string bitKey(const std::string &base, std::uint32_t index);
  static std::string rangeKey(const std::string &base, const BitsTable::Range &range);
  static std::string keyOf(const oaSimpleName &name);
  static std::string keyOf(const oaName &name); // of a bundle too
  std::string keyOf(Row object) const;
  // The index, built when it is not yet.
  NameIndex &byName() const;
  // Explicit or implicit, or kNoRow.
  Row find(const oaName &name) const { return byName().find(keyOf(name)); }
  Row findDef(const std::string &base) const { return defsByName().find(base); }

  bool isImplicit(Row object) const { return (family_.flags[object] & family_.implicitFlag) != 0; }
  bool isScalar(Row object) const { return family_.bits[object] == kNoRow; }
  bool isBundle(Row object) const { return family_.kind[object] == family_.bundleKind && family_.bundleKind != 0; }
  // Ranges and bundles.
  bool hasMembers(Row object) const { return !isScalar(object) && family_.kind[object] != family_.bitKind; }
  std::uint32_t numBits(Row object) const;
  // kNoRow beyond the last bit.
  Row bit(Row object, std::uint32_t index) const;
  // Where a bit occurs first, kNoRow when it does not.
  std::uint32_t placeOf(Row object, Row bit) const;
  // All bits in order, repeats included.
  std::vector<Row> bitsOf(Row object) const;
  // Members with their repeat counts; none for scalars and bits.
  std::uint32_t memberCount(Row object) const;
  MemberTable::Member member(Row object, std::uint32_t index) const;
  // Objects that have this one as a member, each once.
  RowSpan owners(Row object) const;
  // Of a range; start is the index of a bit.
  BitsTable::Range range(Row object) const;
  // The definition of a bit or range, kNoRow for others.
  Row def(Row object) const;
  std::string baseName(Row object) const;
  // Bits and ranges of a definition.
  RowSpan objectsOfDef(Row def) const { return objectsOfDef().rows(def); }

  void getName(Row object, oaName &name) const;
  void getName(Row object, const oaNameSpace &ns, oaString &name) const;
  // Native text, for messages.
  std::string text(Row object) const;
  std::string describe(Row object) const { return std::string(family_.what) + " " + text(object); }

  // Raises unless an object of that name can exist beside the others: the name is empty, leads into a hierarchy, has
  // more than kMostBits bits, or clashes with a base name or scalar.
  void check(const oaName &name) const;
  bool isUsable(const oaName &name) const; // the same without raising
  void checkBase(const oaScalarName &base) const;
  // The explicit object of that name: a new row, or the implicit one of that name, which becomes explicit. Missing
  // members are made, implicit. check() must have passed and find() must not lead to an explicit object. New rows are
  // appended to `made` in the order of making; of their columns kind, name, bits and the implicit flag are set.
  Row make(const oaName &name, std::vector<Row> &made);
  // The definition of a base name, explicit from now on; raises as check() does.
  Row createDef(const oaScalarName &base, oaBitOrder order);
  // One without objects.
  void destroyDef(Row def);

  // Called when an object is about to be destroyed: it leaves its name, its definition and its members; members that
  // nobody needs any more are destroyed.
  void leave(Row object);
  // Destroys an object whatever still needs it: its owners go first.
  void destroyWithOwners(Row object);
  // Whether another object still needs this one.
  bool isNeeded(Row object) const { return !owners(object).empty(); }
  void setImplicit(Row object, bool isImplicit) const;

private:
  NameIndex &defsByName() const;
  OwnerIndex &objectsOfDef() const;
  OwnerIndex &ownersOf() const;
  void checkSimple(const oaSimpleName &name) const;
  void checkScalarText(const std::string &text) const;
  Row rangeRow(Row object) const;
  BitsTable::Span span(Row object) const;
  Row makeDef(const std::string &base);
  Row newObject(std::uint8_t kind, const std::string &key, std::vector<Row> &made);
  Row obtain(const oaSimpleName &name, std::vector<Row> &made);
  void setMembers(Row object, Row bits, const std::vector<MemberTable::Member> &members);
  void appendSimpleName(Row object, oaBundleName &name, std::uint32_t repeat) const;

  BitsFamily family_;
};

// Raises oacInvalidNameLength for a name that could be written but never be read again. `what` has the name.
void checkLength(const DesignDatabase &design, const char *what, const oaName &name);

inline MultiBit netNames(DesignDatabase &design) { return MultiBit(netFamily(design)); }
inline MultiBit termNames(DesignDatabase &design) { return MultiBit(termFamily(design)); }
inline MultiBit instNames(DesignDatabase &design) { return MultiBit(instFamily(design)); }

} // namespace kit
} // namespace OpenAccess_4

#endif
