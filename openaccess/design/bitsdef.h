#ifndef OAKIT_BITSDEF_H
#define OAKIT_BITSDEF_H

// What the classes of definitions (base names of nets, terminals and instances) do, and what bundles and ranges answer:
// the same for each kind of object.

#include "multibit.h"

namespace OpenAccess_4 {
namespace kit {

class BitsDef {
public:
  BitsDef(const BitsFamily &family, Row def) : family_(family), def_(def) {}

  // Smallest and largest index of the bits and their number; all 0 when there are none.
  struct Extent {
    std::uint32_t least = 0, greatest = 0, count = 0;
  };
  Extent extent() const;
  void getName(oaScalarName &name) const;
  void getName(const oaNameSpace &ns, oaString &name) const;
  oaBitOrder bitOrder() const;
  void setBitOrder(oaBitOrder order) const;
  bool isImplicit() const { return family_.defs.isExplicit[def_] == 0; }
  // Raises `inUseId` while there are objects of that name.
  void destroy(oaUInt4 inUseId) const;

private:
  BitsFamily family_;
  Row def_;
};

using BitsFamilyOf = BitsFamily (*)(DesignDatabase &);

// The objects of one kind that belong to a definition.
class ObjectsOfDefKind : public OwnedRowsKind {
public:
  ObjectsOfDefKind(BitsFamilyOf familyOf, std::uint8_t kind) : familyOf_(familyOf), kind_(kind) {}

protected:
  RowSpan members(const CollectionQuestion &question) const override;
  Table &memberTable(const CollectionQuestion &question) const override;
  bool accepts(const CollectionQuestion &question, Row row) const override;

private:
  BitsFamilyOf familyOf_;
  std::uint8_t kind_;
};

// The members of a bundle in the order of its name.
class MembersOfBundleKind : public CollectionKind {
public:
  explicit MembersOfBundleKind(BitsFamilyOf familyOf) : familyOf_(familyOf) {}
  // `hint` is the place after the member returned last.
  oaObject *next(const CollectionQuestion &question, Row &position, Row &hint) const override;

private:
  BitsFamilyOf familyOf_;
};

// Raises oacInvalidBundleNetMemberIndex beyond the last member.
MemberTable::Member checkedMember(const BitsFamily &family, Row bundle, std::uint32_t index);

// The collection of that kind of an object, which must be of the table with that id.
template <typename Collection>
Collection membersOf(const CollectionKind &kind, const oaObject *owner, std::uint16_t tableId) {
  const DesignRow at = designRow(owner, tableId);
  return CollectionAccess::make<Collection>(kind, &liveTable(owner), at.row);
}

} // namespace kit
} // namespace OpenAccess_4

#endif
