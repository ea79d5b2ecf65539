#include "oa/oaTerm.h"

#include "connectivityaccess.h"
#include "multibit.h"

#include <unordered_map>

namespace OpenAccess_4 {

OA_ENUM_NAMES(oaTermType, raiseBase, oacInvalidEnumValue, "terminal type", "input", "output", "inputOutput", "switch",
              "jumper", "unused", "tristate")

using namespace kit;

namespace {

constexpr std::uint32_t kNoPosition = 0xffffffffu;

std::string describe(const DesignRow &at) { return termNames(at.design).describe(at.row); }

bool hasFlag(const DesignRow &at, TermFlag flag) { return (at.design.terms.flags[at.row] & flag) != 0; }

void requireExplicit(const DesignRow &net, const std::string &what) {
  if ((net.design.nets.flags[net.row] & kNetImplicit) != 0) {
    refuse(net.design, oacCannotCreateTermWithImplicitNet, what + " cannot be put on an implicit net");
  }
}

void requireWidth(const DesignRow &net, const std::string &what, oaUInt4 bits) {
  const oaUInt4 netBits = netNames(net.design).numBits(net.row);
  if (bits != netBits) {
    refuse(net.design, oacNetTermWidthMismatch,
           what + " has " + std::to_string(bits) + " bits, its net has " + std::to_string(netBits));
  }
}

class TermsOfBlock : public WholeTableKind {
protected:
  bool isFiltered(const CollectionQuestion &) const override { return true; }
  bool accepts(const CollectionQuestion &question, Row row) const override {
    const TermTable &terms = *static_cast<TermTable *>(question.table);
    const std::uint8_t flags = terms.flags[row];
    const std::uint8_t kind = terms.kind[row];
    const bool isBit = kind == oacScalarTermType || kind == oacBusTermBitType;
    const bool hiddenToo = (question.flags & oacTermIterAll) != 0;
    return ((question.flags & oacTermIterSingleBit) == 0 || isBit) &&
           ((question.flags & oacTermIterBundle) == 0 || kind == oacBundleTermType) &&
           (hiddenToo || (flags & kTermHidden) == 0) &&
           ((question.flags & oacTermIterNotImplicit) == 0 || (flags & kTermImplicit) == 0);
  }
};

void setNetOf(DesignDatabase &design, Row term, Row net) {
  OwnerIndex &index = termsOfNet(design);
  const Row old = design.terms.net[term];
  if (old != kNoRow) {
    index.remove(old, term);
  }
  design.terms.net.set(term, net);
  if (net != kNoRow) {
    index.add(net, term);
  }
}

// The keys of a name's bits in order, repeats included.
std::vector<std::string> bitKeys(const oaName &name) {
  std::vector<std::string> keys;
  const auto append = [&](const oaSimpleName &member) {
    if (const oaVectorName *vector = member.getVector()) {
      oaScalarName base;
      vector->getBaseName(base);
      const std::string text = nativeText(base);
      for (oaUInt4 bit = 0; bit < vector->getNumBits(); ++bit) {
        keys.push_back(MultiBit::bitKey(text, vector->getBitIndex(bit)));
      }
    } else {
      keys.push_back(MultiBit::keyOf(member));
    }
  };
  if (const oaBundleName *bundle = name.getBundle()) {
    for (oaUInt4 i = 0; i < bundle->getNumMembers(); ++i) {
      for (oaUInt4 time = 0; time < (*bundle)[i].getRepeat(); ++time) {
        append((*bundle)[i]);
      }
    }
  } else if (name.getVector() != nullptr) {
    append(oaSimpleName(*name.getVector()));
  } else {
    keys.push_back(MultiBit::keyOf(name));
  }
  return keys;
}

// A bit is on one net, however many terminals share it and however often one of them repeats it.
void checkBits(DesignDatabase &design, const oaName &name, const std::vector<Row> &netBits) {
  const MultiBit terms = termNames(design);
  const std::vector<std::string> keys = bitKeys(name);
  std::unordered_map<std::string, Row> nets;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const Row known = terms.byName().find(keys[i]);
    if (known != kNoRow && design.terms.net[known] != netBits[i]) {
      refuse(design, oacTermMemberExists,
             "terminal " + nativeText(name) + ": " + terms.describe(known) + " exists on another net");
    }
    if (keys.size() > 1 && nets.emplace(keys[i], netBits[i]).first->second != netBits[i]) {
      refuse(design, oacTermNetMismatchInRepeatedMembers,
             "terminal " + nativeText(name) + " repeats a bit on different nets");
    }
  }
}

// The net of an implicit range that is a member of a bundle: the member of the bundle's net in the same place, when
// that is a bundle of the same shape.
Row netOfMember(DesignDatabase &design, Row bundle, std::uint32_t index) {
  const MultiBit terms = termNames(design);
  const MultiBit nets = netNames(design);
  const Row net = design.terms.net[bundle];
  if (net == kNoRow || nets.memberCount(net) != terms.memberCount(bundle) || !nets.isBundle(net)) {
    return kNoRow;
  }
  for (std::uint32_t i = 0; i <= index; ++i) {
    const MemberTable::Member termMember = terms.member(bundle, i);
    const MemberTable::Member netMember = nets.member(net, i);
    if (termMember.repeat != netMember.repeat || terms.numBits(termMember.object) != nets.numBits(netMember.object)) {
      return kNoRow;
    }
  }
  return nets.member(net, index).object;
}

// Puts a terminal and those of its members that are implicit on a net, whose bits are given in order.
void connect(DesignDatabase &design, Row term, Row net, const std::vector<Row> &netBits) {
  const MultiBit terms = termNames(design);
  setNetOf(design, term, net);
  if (!terms.hasMembers(term)) {
    return;
  }
  const std::vector<Row> bits = terms.bitsOf(term);
  for (std::size_t i = 0; i < bits.size(); ++i) {
    if (design.terms.net[bits[i]] != netBits[i]) {
      setNetOf(design, bits[i], netBits[i]);
    }
  }
  for (std::uint32_t i = 0; terms.isBundle(term) && i < terms.memberCount(term); ++i) {
    const Row member = terms.member(term, i).object;
    if (terms.hasMembers(member) && terms.isImplicit(member)) {
      setNetOf(design, member, netOfMember(design, term, i));
    }
  }
}

// The implicit members of a terminal, those of its members included.
void setTypeOf(DesignDatabase &design, Row term, std::uint8_t type) {
  const MultiBit terms = termNames(design);
  design.terms.termType.set(term, type);
  for (std::uint32_t i = 0; i < terms.memberCount(term); ++i) {
    const Row member = terms.member(term, i).object;
    if (terms.isImplicit(member)) {
      setTypeOf(design, member, type);
    }
  }
}

} // namespace

void oaTerm::destroy() {
  const DesignRow at = termRow(this);
  if (hasFlag(at, kTermImplicit)) {
    refuse(at.design, oacCannotDestroyImplicitTerm, describe(at) + " is implicit and cannot be destroyed");
  }
  dropTerm(at.design, at.row);
}

oaBoolean oaTerm::isImplicit() const { return hasFlag(termRow(this), kTermImplicit); }

oaBoolean oaTerm::isInterface() const {
  const DesignRow at = termRow(this);
  return !hasFlag(at, kTermNotInterface) && !hasFlag(at, kTermImplicit);
}

oaNet *oaTerm::getNet(oaBoolean preferred) const {
  const DesignRow at = termRow(this);
  const Row net = at.design.terms.net[at.row];
  if (net == kNoRow && hasFlag(at, kTermImplicit)) {
    return nullptr;
  }
  oaNet *found = objectAt<oaNet>(at.design.nets, at.design.nets.checkRow(net, "a terminal"));
  return preferred && found->isBitNet() ? static_cast<oaBitNet *>(found)->getPreferredEquivalent() : found;
}

oaUInt4 oaTerm::getNumBits() const {
  const DesignRow at = termRow(this);
  return at.design.terms.bits[at.row] == kNoRow ? 1 : termNames(at.design).numBits(at.row);
}

oaBitTerm *oaTerm::getBit(oaUInt4 bitIndex) const {
  const DesignRow at = termRow(this);
  const Row bit = termNames(at.design).bit(at.row, bitIndex);
  if (bit == kNoRow) {
    refuse(at.design, oacInvalidBusNetBitIndex,
           describe(at) + " has " + std::to_string(getNumBits()) + " bits, bit " + std::to_string(bitIndex) +
               " was asked for");
  }
  return objectAt<oaBitTerm>(at.design.terms, bit);
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
  termNames(at.design).getName(at.row, name);
}

void oaTerm::getName(const oaNameSpace &ns, oaString &name) const {
  const DesignRow at = termRow(this);
  termNames(at.design).getName(at.row, ns, name);
}

void oaTerm::moveToNet(oaNet *net) {
  const DesignRow at = termRow(this);
  const DesignRow to = netRow(net);
  if (&at.design != &to.design) {
    refuse(at.design, oacNetAndInstNotInSameDesign, describe(at) + " and the net are in different designs");
  }
  requireExplicit(to, describe(at));
  if (hasFlag(at, kTermImplicit)) {
    refuse(at.design, oacTermCannotBeImplicit, describe(at) + " is implicit and moves with what it belongs to");
  }
  requireWidth(to, describe(at), getNumBits());
  const MultiBit terms = termNames(at.design);
  const std::vector<Row> netBits = netNames(at.design).bitsOf(to.row);
  const std::vector<Row> bits = terms.bitsOf(at.row);
  for (std::size_t i = 0; i < bits.size(); ++i) {
    const bool isShared =
        terms.owners(bits[i]).size() > (bits[i] == at.row ? 0 : 1) || (bits[i] != at.row && !terms.isImplicit(bits[i]));
    if (isShared && at.design.terms.net[bits[i]] != netBits[i]) {
      refuse(at.design, oacTermMemberExists,
             describe(at) + ": " + terms.describe(bits[i]) + " belongs to another terminal as well");
    }
  }
  connect(at.design, at.row, to.row, netBits);
  at.design.touch();
}

void oaTerm::setTermType(oaTermType termType) {
  const DesignRow at = termRow(this);
  if (termNames(at.design).isNeeded(at.row)) {
    refuse(at.design, kTermTypeOfBusMember,
           describe(at) + " belongs to a terminal of several bits, which has the type");
  }
  setTypeOf(at.design, at.row, static_cast<std::uint8_t>(termType));
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
  MultiBit terms = termNames(design);
  terms.check(name);
  const std::string what = "terminal " + nativeText(name);
  requireWidth(at, what, name.getNumBits());
  requireExplicit(at, what);
  const Row known = terms.find(name);
  if (known != kNoRow && !terms.isImplicit(known)) {
    refuse(design, oacTermExists, what + " exists already");
  }
  const std::vector<Row> netBits = netNames(design).bitsOf(at.row);
  checkBits(design, name, netBits);
  std::vector<Row> made;
  const Row row = terms.make(name, made);
  if (known == kNoRow) {
    setTypeOf(design, row, static_cast<std::uint8_t>(termType));
  } else if (!terms.isNeeded(row)) {
    design.terms.termType.set(row, static_cast<std::uint8_t>(termType));
  }
  design.terms.flags.set(row,
                         static_cast<std::uint8_t>(view == oacExcludeFromModuleDomain ? kTermExcludedFromModule : 0));
  connect(design, row, at.row, netBits);
  return objectAt<oaTerm>(design.terms, row);
}

oaTerm *oaTerm::find(const oaBlock *block, const oaName &name) {
  DesignDatabase &design = designOfBlock(block);
  return objectAt<oaTerm>(design.terms, termNames(design).find(name));
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
  const DesignRow at = netRow(net);
  return termNames(at.design).isUsable(name) && name.getNumBits() == net->getNumBits();
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
  const MultiBit terms = termNames(at.design);
  if (terms.find(oaName(name)) == at.row) {
    return;
  }
  if (terms.isImplicit(at.row) || terms.isNeeded(at.row)) {
    refuse(at.design, oacCannotSetNameOfImplicitTerm, describe(at) + " is a member of a bundle and cannot be renamed");
  }
  terms.check(oaName(name));
  const Row user = terms.find(oaName(name));
  if (user != kNoRow) {
    refuse(at.design, oacTermExists, terms.describe(user) + " exists already");
  }
  terms.byName().remove(terms.keyOf(at.row), at.row);
  at.design.terms.name.set(at.row, at.design.strings().add(nativeText(name)));
  terms.byName().add(terms.keyOf(at.row), at.row);
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
  return termNames(designOfBlock(block)).isUsable(oaName(name));
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

oaBoolean oaBlock::hasMultiBitTerm() const {
  const TermTable &terms = designOfBlock(this).terms;
  for (Row row = terms.nextAlive(kNoRow); row != kNoRow; row = terms.nextAlive(row)) {
    if (terms.kind[row] == oacBusTermType || terms.kind[row] == oacBundleTermType) {
      return true;
    }
  }
  return false;
}

} // namespace OpenAccess_4
