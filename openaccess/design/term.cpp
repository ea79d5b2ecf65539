#include "oa/oaTerm.h"

#include "connectivityaccess.h"

namespace OpenAccess_4 {

OA_ENUM_NAMES(oaTermType, raiseBase, oacInvalidEnumValue, "terminal type", "input", "output", "inputOutput", "switch",
              "jumper", "unused", "tristate")

using namespace kit;

namespace {

constexpr std::uint32_t kNoPosition = 0xffffffffu;

std::string describe(const DesignRow &at) {
  return "terminal " + at.design.strings().text(at.design.terms.name[at.row]);
}

bool hasFlag(const oaTerm *term, TermFlag flag) {
  const DesignRow at = termRow(term);
  return (at.design.terms.flags[at.row] & flag) != 0;
}

void requireExplicit(const DesignRow &net, const std::string &what) {
  if ((net.design.nets.flags[net.row] & kNetImplicit) != 0) {
    refuse(net.design, oacCannotCreateTermWithImplicitNet, what + " cannot be put on an implicit net");
  }
}

class TermsOfBlock : public WholeTableKind {
protected:
  bool isFiltered(const CollectionQuestion &) const override { return true; }
  bool accepts(const CollectionQuestion &question, Row row) const override {
    const std::uint8_t flags = static_cast<TermTable *>(question.table)->flags[row];
    const bool hiddenToo = (question.flags & oacTermIterAll) != 0;
    // All terminals are single-bit ones so far.
    return (question.flags & oacTermIterBundle) == 0 && (hiddenToo || (flags & kTermHidden) == 0) &&
           ((question.flags & oacTermIterNotImplicit) == 0 || (flags & kTermImplicit) == 0);
  }
};

} // namespace

void oaTerm::destroy() {
  const DesignRow at = termRow(this);
  at.design.destroyRow(at.design.terms, at.row);
}

oaBoolean oaTerm::isImplicit() const { return hasFlag(this, kTermImplicit); }
oaBoolean oaTerm::isInterface() const { return !hasFlag(this, kTermNotInterface) && !isImplicit(); }

oaNet *oaTerm::getNet(oaBoolean) const {
  const DesignRow at = termRow(this);
  return objectAt<oaNet>(at.design.nets, at.design.nets.checkRow(at.design.terms.net[at.row], "a terminal"));
}

oaUInt4 oaTerm::getNumBits() const {
  (void)termRow(this);
  return 1;
}

oaBitTerm *oaTerm::getBit(oaUInt4 bitIndex) const {
  const DesignRow at = termRow(this);
  if (bitIndex != 0) {
    refuse(at.design, oacInvalidBusNetBitIndex,
           describe(at) + " has 1 bit, bit " + std::to_string(bitIndex) + " was asked for");
  }
  return objectAt<oaBitTerm>(at.design.terms, at.row);
}

oaTermType oaTerm::getTermType() const {
  const DesignRow at = termRow(this);
  return static_cast<oaTermTypeEnum>(at.design.terms.termType[at.row]);
}

oaUInt4 oaTerm::getPosition() const {
  const DesignRow at = termRow(this);
  return at.design.terms.position[at.row];
}

void oaTerm::getName(oaName &name) const {
  const DesignRow at = termRow(this);
  oaScalarName scalar;
  getStoredName(at.design.strings(), at.design.terms.name[at.row], scalar);
  name = scalar;
}

void oaTerm::getName(const oaNameSpace &ns, oaString &name) const {
  const DesignRow at = termRow(this);
  getStoredName(at.design.strings(), at.design.terms.name[at.row], ns, name);
}

void oaTerm::moveToNet(oaNet *net) {
  const DesignRow at = termRow(this);
  const DesignRow to = netRow(net);
  if (&at.design != &to.design) {
    refuse(at.design, oacNetAndInstNotInSameDesign, describe(at) + " and the net are in different designs");
  }
  requireExplicit(to, describe(at));
  OwnerIndex &index = termsOfNet(at.design);
  index.remove(at.design.terms.net[at.row], at.row);
  at.design.terms.net.set(at.row, to.row);
  index.add(to.row, at.row);
  at.design.touch();
}

void oaTerm::setTermType(oaTermType termType) {
  const DesignRow at = termRow(this);
  at.design.terms.termType.set(at.row, static_cast<std::uint8_t>(termType));
  at.design.touch();
}

void oaTerm::setIsInterface(oaBoolean isInterface) {
  const DesignRow at = termRow(this);
  const std::uint8_t flags = at.design.terms.flags[at.row];
  at.design.terms.flags.set(
      at.row, static_cast<std::uint8_t>(isInterface ? flags & ~kTermNotInterface : flags | kTermNotInterface));
  at.design.touch();
}

void oaTerm::setPosition(oaUInt4 position) {
  const DesignRow at = termRow(this);
  const oaTerm *user = find(getBlock(), position);
  if (user != nullptr && user != this) {
    refuse(at.design, oacTermPositionAlreadyTaken,
           describe(at) + ": position " + std::to_string(position) + " is taken");
  }
  at.design.terms.position.set(at.row, position);
  at.design.touch();
}

void oaTerm::unsetPosition() {
  const DesignRow at = termRow(this);
  at.design.terms.position.set(at.row, kNoPosition);
  at.design.touch();
}

oaCollection<oaPin, oaTerm> oaTerm::getPins() const {
  static const MembersKind kind(pinsOfTerm, kPinTable);
  const DesignRow at = termRow(this);
  return CollectionAccess::make<oaCollection<oaPin, oaTerm>>(kind, &at.design.terms, at.row);
}

oaTerm *oaTerm::create(oaNet *net, const oaName &name, oaTermType termType, oaBlockDomainVisibility view) {
  const DesignRow at = netRow(net);
  DesignDatabase &design = at.design;
  const std::string native = nativeText(name);
  if (!native.empty() && name.getNumBits() != 1) {
    refuse(design, oacNetTermWidthMismatch,
           "terminal " + native + " has " + std::to_string(name.getNumBits()) + " bits, its net has 1");
  }
  const std::string text = checkScalarName(design, name, "terminal", oacInvalidTermName, oacInvalidHierTermName);
  requireExplicit(at, "terminal " + text);
  if (termsByName(design).find(text) != kNoRow) {
    refuse(design, oacTermExists, "terminal " + text + " exists already");
  }
  const Row row = design.terms.addRow();
  design.terms.kind.set(row, oacScalarTermType);
  design.terms.name.set(row, design.strings().add(text));
  design.terms.net.set(row, at.row);
  design.terms.termType.set(row, static_cast<std::uint8_t>(termType));
  design.terms.flags.set(row,
                         static_cast<std::uint8_t>(view == oacExcludeFromModuleDomain ? kTermExcludedFromModule : 0));
  design.termsByName.add(text, row);
  if (design.termsOfNet.isBuilt()) {
    design.termsOfNet.add(at.row, row);
  }
  design.touch();
  return objectAt<oaTerm>(design.terms, row);
}

oaTerm *oaTerm::find(const oaBlock *block, const oaName &name) {
  DesignDatabase &design = designOfBlock(block);
  if (name.getType() != oacScalarNameType) {
    return nullptr;
  }
  return objectAt<oaTerm>(design.terms, termsByName(design).find(nativeText(name)));
}

oaTerm *oaTerm::find(const oaBlock *block, oaUInt4 position) {
  DesignDatabase &design = designOfBlock(block);
  if (position == kNoPosition) {
    return nullptr;
  }
  for (Row row = design.terms.nextAlive(kNoRow); row != kNoRow; row = design.terms.nextAlive(row)) {
    if (design.terms.position[row] == position) {
      return objectAt<oaTerm>(design.terms, row);
    }
  }
  return nullptr;
}

oaBoolean oaTerm::isValidName(const oaNet *net, const oaName &name) {
  return isUsableScalarName(name) && termsByName(netRow(net).design).find(nativeText(name)) == kNoRow;
}

oaUInt4 oaTerm::getMaxPosition(const oaBlock *block) {
  DesignDatabase &design = designOfBlock(block);
  oaUInt4 highest = kNoPosition;
  for (Row row = design.terms.nextAlive(kNoRow); row != kNoRow; row = design.terms.nextAlive(row)) {
    const oaUInt4 position = design.terms.position[row];
    if (position != kNoPosition && (highest == kNoPosition || position > highest)) {
      highest = position;
    }
  }
  return highest;
}

void oaScalarTerm::getName(oaScalarName &name) const {
  const DesignRow at = termRow(this);
  getStoredName(at.design.strings(), at.design.terms.name[at.row], name);
}

void oaScalarTerm::setName(const oaScalarName &name) {
  const DesignRow at = termRow(this);
  const std::string text = checkScalarName(at.design, name, "terminal", oacInvalidTermName, oacInvalidHierTermName);
  const Row user = termsByName(at.design).find(text);
  if (user == at.row) {
    return;
  }
  if (user != kNoRow) {
    refuse(at.design, oacTermExists, "terminal " + text + " exists already");
  }
  at.design.termsByName.remove(at.design.strings().text(at.design.terms.name[at.row]), at.row);
  at.design.termsByName.add(text, at.row);
  at.design.terms.name.set(at.row, at.design.strings().add(text));
  at.design.noteAbandonedRows();
  at.design.touch();
}

oaScalarTerm *oaScalarTerm::create(oaBitNet *net, const oaScalarName &name, oaTermType type,
                                   oaBlockDomainVisibility view) {
  return static_cast<oaScalarTerm *>(oaTerm::create(net, name, type, view));
}

oaScalarTerm *oaScalarTerm::find(const oaBlock *block, const oaScalarName &name) {
  return static_cast<oaScalarTerm *>(oaTerm::find(block, name));
}

oaBoolean oaScalarTerm::isValidName(const oaBlock *block, const oaScalarName &name) {
  return isUsableScalarName(name) && oaTerm::find(block, oaName(name)) == nullptr;
}

oaCollection<oaTerm, oaBlock> oaBlock::getTerms(oaUInt4 filterFlags) const {
  static const TermsOfBlock kind;
  DesignDatabase &design = designOfBlock(this);
  const oaUInt4 which =
      filterFlags & (oacTermIterAllNotHidden | oacTermIterSingleBit | oacTermIterBundle | oacTermIterAll);
  if (which == 0 || (which & (which - 1)) != 0) {
    refuse(design, oacInvalidBlockTermIterFlags,
           "terminals are asked for with filter flags " + std::to_string(filterFlags) +
               ", which must hold exactly one of all, not hidden, single-bit and bundle");
  }
  return CollectionAccess::make<oaCollection<oaTerm, oaBlock>>(kind, &design.terms, 0, filterFlags);
}

} // namespace OpenAccess_4
