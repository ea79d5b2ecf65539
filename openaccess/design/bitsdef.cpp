#include "bitsdef.h"

#include <algorithm>

namespace OpenAccess_4 {
namespace kit {

BitsDef::Extent BitsDef::extent() const {
  const MultiBit names(family_);
  Extent extent;
  for (const Row row : names.objectsOfDef(def_)) {
    if (family_.kind[row] != family_.bitKind) {
      continue;
    }
    const std::uint32_t index = names.range(row).start;
    extent.least = extent.count == 0 ? index : std::min(extent.least, index);
    extent.greatest = extent.count == 0 ? index : std::max(extent.greatest, index);
    ++extent.count;
  }
  return extent;
}

void BitsDef::getName(oaScalarName &name) const {
  getStoredName(family_.design.strings(), family_.defs.name[def_], name);
}

void BitsDef::getName(const oaNameSpace &ns, oaString &name) const {
  getStoredName(family_.design.strings(), family_.defs.name[def_], ns, name);
}

oaBitOrder BitsDef::bitOrder() const {
  return checkedEnum<oaBitOrderEnum>(family_.defs, def_, family_.defs.bitOrder[def_], 3, "the bit order");
}

void BitsDef::setBitOrder(oaBitOrder order) const {
  family_.defs.bitOrder.set(def_, static_cast<std::uint8_t>(order));
  family_.design.touch();
}

void BitsDef::destroy(oaUInt4 inUseId) const {
  MultiBit names(family_);
  if (!names.objectsOfDef(def_).empty()) {
    refuse(family_.design, inUseId,
           std::string(family_.what) + " definition " + family_.design.strings().text(family_.defs.name[def_]) +
               " cannot be destroyed while there are bits of that name");
  }
  names.destroyDef(def_);
}

namespace {

BitsFamily familyOfQuestion(BitsFamilyOf familyOf, const CollectionQuestion &question) {
  return familyOf(static_cast<DesignDatabase &>(question.table->database()));
}

} // namespace

RowSpan ObjectsOfDefKind::members(const CollectionQuestion &question) const {
  return MultiBit(familyOfQuestion(familyOf_, question)).objectsOfDef(question.owner);
}

Table &ObjectsOfDefKind::memberTable(const CollectionQuestion &question) const {
  return familyOfQuestion(familyOf_, question).objects;
}

bool ObjectsOfDefKind::accepts(const CollectionQuestion &question, Row row) const {
  return familyOfQuestion(familyOf_, question).kind[row] == kind_;
}

oaObject *MembersOfBundleKind::next(const CollectionQuestion &question, Row &, Row &hint) const {
  const BitsFamily family = familyOfQuestion(familyOf_, question);
  const MultiBit names(family);
  return hint < names.memberCount(question.owner) ? family.objects.handle(names.member(question.owner, hint++).object)
                                                  : nullptr;
}

MemberTable::Member checkedMember(const BitsFamily &family, Row bundle, std::uint32_t index) {
  const MultiBit names(family);
  const std::uint32_t members = names.memberCount(bundle);
  if (index >= members) {
    refuse(family.design, oacInvalidBundleNetMemberIndex,
           names.describe(bundle) + " has " + std::to_string(members) + " members, member " + std::to_string(index) +
               " was asked for");
  }
  return names.member(bundle, index);
}

} // namespace kit
} // namespace OpenAccess_4
