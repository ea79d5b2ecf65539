#include "oa/oaNet.h"

#include "connectivityaccess.h"
#include "figureindexes.h"
#include "multibit.h"

#include <algorithm>

namespace OpenAccess_4 {

OA_ENUM_NAMES(oaSigType, raiseBase, oacInvalidEnumValue, "signal type", "signal", "power", "ground", "clock", "tieoff",
              "tieHi", "tieLo", "analog", "scan", "reset")

using namespace kit;

namespace {

bool isImplicitRow(const DesignRow &at) { return (at.design.nets.flags[at.row] & kNetImplicit) != 0; }

void setFlag(const DesignRow &at, NetFlag flag, bool value) {
  const std::uint8_t flags = at.design.nets.flags[at.row];
  at.design.nets.flags.set(at.row, static_cast<std::uint8_t>(value ? flags | flag : flags & ~flag));
  at.design.touch();
}

std::string describe(const DesignRow &at) { return netNames(at.design).describe(at.row); }

bool isGlobalRow(DesignDatabase &design, Row net) {
  const std::uint8_t flags = design.nets.flags[net];
  if ((flags & kNetImplicit) == 0) {
    return (flags & kNetGlobal) != 0;
  }
  const RowSpan owners = netNames(design).owners(net);
  return std::any_of(owners.begin(), owners.end(), [&](Row owner) { return isGlobalRow(design, owner); });
}

class NetsOfBlock : public WholeTableKind {
public:
  oaObject *next(const CollectionQuestion &question, Row &position, Row &hint) const override {
    if ((question.flags & oacNetIterBundle) == 0) {
      return WholeTableKind::next(question, position, hint);
    }
    // Clients ask whether there is any bundle at all, so those that are none should cost next to nothing.
    const Column<std::uint8_t> &kinds = designOf(*question.table).nets.kind;
    const Row end = std::min(kinds.size(), question.table->rowCount());
    const std::uint8_t *first = kinds.span(0, end);
    for (Row row = position + 1; row < end; ++row) { // kNoRow + 1 is 0
      row = static_cast<Row>(std::find(first + row, first + end, std::uint8_t(oacBundleNetType)) - first);
      if (row < end && accepts(question, row)) {
        position = row;
        return question.table->handle(row, oacBundleNetType);
      }
    }
    return nullptr;
  }

protected:
  bool isFiltered(const CollectionQuestion &) const override { return true; }
  bool accepts(const CollectionQuestion &question, Row row) const override {
    DesignDatabase &design = static_cast<DesignDatabase &>(question.table->database());
    const std::uint8_t kind = design.nets.kind[row];
    const bool isBit = kind == oacScalarNetType || kind == oacBusNetBitType;
    if (((question.flags & oacNetIterSingleBit) != 0 && !isBit) ||
        ((question.flags & oacNetIterBundle) != 0 && kind != oacBundleNetType) ||
        ((question.flags & oacNetIterNotImplicit) != 0 && (design.nets.flags[row] & kNetImplicit) != 0)) {
      return false;
    }
    return ((question.flags & oacNetIterGlobal) == 0 || isGlobalRow(design, row)) &&
           ((question.flags & oacNetIterPreferred) == 0 || equivalentsOf(design, row).empty() ||
            (design.nets.flags[row] & kNetPreferred) != 0);
  }
};

// What is connected to a net and, when asked for, to its equivalents: members of one net after those of the other.
// `hint` is the place of the net being walked among its equivalents.
class ConnectedKind : public CollectionKind {
public:
  using IndexOf = OwnerIndex &(*)(DesignDatabase &, Row net);
  ConnectedKind(IndexOf indexOf, std::uint16_t memberTableId, oaUInt4 notImplicit, oaUInt4 withEquivalents)
      : indexOf_(indexOf), memberTableId_(memberTableId), notImplicit_(notImplicit), withEquivalents_(withEquivalents) {
  }

  oaObject *next(const CollectionQuestion &question, Row &position, Row &hint) const override {
    DesignDatabase &design = static_cast<DesignDatabase &>(question.table->database());
    Table &table = *design.table(memberTableId_);
    const RowSpan nets = netsOf(design, question);
    for (; hint < nets.size(); ++hint, position = kNoRow) {
      const RowSpan members = indexOf_(design, nets[hint]).rows(nets[hint]);
      auto member = position == kNoRow ? members.begin() : std::upper_bound(members.begin(), members.end(), position);
      while (member != members.end() && (question.flags & notImplicit_) != 0 && isImplicitMember(design, *member)) {
        ++member;
      }
      if (member != members.end()) {
        position = *member;
        return table.handle(position);
      }
    }
    return nullptr;
  }

private:
  RowSpan netsOf(DesignDatabase &design, const CollectionQuestion &question) const {
    const RowSpan set = (question.flags & withEquivalents_) == 0 ? RowSpan() : equivalentsOf(design, question.owner);
    return set.empty() ? RowSpan(&question.owner, 1) : set;
  }
  bool isImplicitMember(const DesignDatabase &design, Row row) const {
    return memberTableId_ == kTermTable ? (design.terms.flags[row] & kTermImplicit) != 0
                                        : (design.instTerms.flags[row] & kInstTermImplicit) != 0;
  }

  IndexOf indexOf_;
  std::uint16_t memberTableId_;
  oaUInt4 notImplicit_, withEquivalents_;
};

// The different bits of a net, where they occur first. `hint` is the place after the bit returned last.
class BitsOfNet : public CollectionKind {
public:
  oaObject *next(const CollectionQuestion &question, Row &, Row &hint) const override {
    DesignDatabase &design = static_cast<DesignDatabase &>(question.table->database());
    const MultiBit nets = netNames(design);
    for (;;) {
      const Row place = hint;
      const Row bit = nets.bit(question.owner, place);
      if (bit == kNoRow) {
        return nullptr;
      }
      ++hint;
      if (nets.placeOf(question.owner, bit) == place) {
        return design.nets.handle(bit);
      }
    }
  }
};

// Pins of all terminals of a net. `hint` is the terminal whose pins are being walked, as a place among the net's
// terminals.
class PinsOfNet : public CollectionKind {
public:
  oaObject *next(const CollectionQuestion &question, Row &position, Row &hint) const override {
    DesignDatabase &design = static_cast<DesignDatabase &>(question.table->database());
    const RowSpan terms = termsOfNet(design).rows(question.owner);
    for (; hint < terms.size(); ++hint, position = kNoRow) {
      for (const Row pin : pinsOfTerm(design).rows(terms[hint])) {
        if (position == kNoRow || pin > position) {
          position = pin;
          return design.pins.handle(pin);
        }
      }
    }
    return nullptr;
  }
};

// Shapes or vias on a net and those of its pins: a walk over all of them, since no index holds both.
template <typename FigureTable> class FiguresOfNetAndPins : public WholeTableKind {
protected:
  bool isFiltered(const CollectionQuestion &) const override { return true; }
  bool accepts(const CollectionQuestion &question, Row row) const override {
    const DesignDatabase &design = designOf(*question.table);
    const FigureTable &figures = static_cast<const FigureTable &>(*question.table);
    if (figures.net[row] == question.owner) {
      return true;
    }
    const Row pin = figures.pin[row];
    const Row term = pin == kNoRow ? kNoRow : design.pins.term[pin];
    return term != kNoRow && design.terms.net[term] == question.owner;
  }
};

} // namespace

void oaNet::destroy() {
  const DesignRow at = netRow(this);
  if (isImplicitRow(at)) {
    refuse(at.design, oacCannotDestroyImplicitNet, describe(at) + " is implicit and cannot be destroyed");
  }
  dropNet(at.design, at.row);
}

oaBoolean oaNet::isEmpty() const {
  const DesignRow at = netRow(this);
  return getTerms().isEmpty() && getInstTerms().isEmpty() && isNetWithoutFigures(at.design, at.row);
}

oaBoolean oaNet::isImplicit() const { return isImplicitRow(netRow(this)); }

oaBoolean oaNet::isGlobal() const {
  const DesignRow at = netRow(this);
  return isGlobalRow(at.design, at.row);
}

oaUInt4 oaNet::getNumBits() const {
  const DesignRow at = netRow(this);
  // What a reader asks of every wire.
  return at.design.nets.bits[at.row] == kNoRow ? 1 : netNames(at.design).numBits(at.row);
}

oaBitNet *oaNet::getBit(oaUInt4 bitIndex) const {
  const DesignRow at = netRow(this);
  const Row bit = netNames(at.design).bit(at.row, bitIndex);
  if (bit == kNoRow) {
    refuse(at.design, oacInvalidBusNetBitIndex,
           describe(at) + " has " + std::to_string(getNumBits()) + " bits, bit " + std::to_string(bitIndex) +
               " was asked for");
  }
  return objectAt<oaBitNet>(at.design.nets, bit);
}

void oaNet::getName(oaName &name) const {
  const DesignRow at = netRow(this);
  netNames(at.design).getName(at.row, name);
}

void oaNet::getName(const oaNameSpace &ns, oaString &name) const {
  const DesignRow at = netRow(this);
  netNames(at.design).getName(at.row, ns, name);
}

oaSigType oaNet::getSigType() const {
  const DesignRow at = netRow(this);
  return static_cast<oaSigTypeEnum>(at.design.nets.signalType[at.row]);
}

oaInt4 oaNet::getPriority() const {
  const DesignRow at = netRow(this);
  return at.design.nets.priority[at.row];
}

void oaNet::setGlobal(oaBoolean isGlobal) {
  const DesignRow at = netRow(this);
  if (isImplicitRow(at)) {
    refuse(at.design, kGlobalOfImplicitNet, describe(at) + " is implicit and cannot be made global");
  }
  setFlag(at, kNetGlobal, isGlobal);
}

void oaNet::setSigType(const oaSigType &sigType) {
  const DesignRow at = netRow(this);
  if (isImplicitRow(at)) {
    refuse(at.design, kSigTypeOfImplicitNet, describe(at) + " is implicit: its signal type cannot be set");
  }
  at.design.nets.signalType.set(at.row, static_cast<std::uint8_t>(sigType));
  at.design.touch();
}

void oaNet::setPriority(oaInt4 priority) {
  const DesignRow at = netRow(this);
  at.design.nets.priority.set(at.row, priority);
  at.design.touch();
}

void oaNet::merge(oaNet *fromNet) {
  const DesignRow to = netRow(this);
  const DesignRow from = netRow(fromNet);
  if (&to.design != &from.design) {
    refuse(to.design, oacNetFigNotInSameBlock, describe(to) + " and " + describe(from) + " are in different designs");
  }
  if (to.row == from.row) {
    return;
  }
  for (const DesignRow &at : {to, from}) {
    if (isImplicitRow(at)) {
      refuse(at.design, oacCannotDestroyImplicitNet, describe(at) + " is implicit and cannot be merged");
    }
  }
  if (getNumBits() != fromNet->getNumBits()) {
    refuse(to.design, oacNetTermWidthMismatch, describe(to) + " and " + describe(from) + " have different widths");
  }
  oaIter<oaTerm> terms(fromNet->getTerms());
  while (oaTerm *term = terms.getNext()) {
    term->moveToNet(this);
  }
  oaIter<oaInstTerm> instTerms(fromNet->getInstTerms());
  while (oaInstTerm *instTerm = instTerms.getNext()) {
    instTerm->addToNet(this);
  }
  moveFiguresToNet(to.design, from.row, to.row);
  fromNet->destroy();
}

oaCollection<oaTerm, oaNet> oaNet::getTerms(oaUInt4 filterFlags) const {
  static const ConnectedKind kind([](DesignDatabase &design, Row) -> OwnerIndex & { return termsOfNet(design); },
                                  kTermTable, oacTermIterNotImplicit, oacTermIterEquivNets);
  const DesignRow at = netRow(this);
  return CollectionAccess::make<oaCollection<oaTerm, oaNet>>(kind, &at.design.nets, at.row, filterFlags);
}

oaCollection<oaInstTerm, oaNet> oaNet::getInstTerms(oaUInt4 filterFlags) const {
  static const ConnectedKind kind(instTermsOfNet, kInstTermTable, oacInstTermIterNotImplicit, oacInstTermIterEquivNets);
  const DesignRow at = netRow(this);
  if ((filterFlags & ~oaUInt4(oacInstTermIterNotImplicit | oacInstTermIterEquivNets)) != 0) {
    refuse(at.design, kInvalidInstTermIterFlags,
           describe(at) + ": instance terminals are asked for with filter flags " + std::to_string(filterFlags) +
               ", which may hold not implicit and equivalent nets only");
  }
  return CollectionAccess::make<oaCollection<oaInstTerm, oaNet>>(kind, &at.design.nets, at.row, filterFlags);
}

oaCollection<oaBitNet, oaNet> oaNet::getSingleBitMembers() const {
  static const BitsOfNet kind;
  const DesignRow at = netRow(this);
  return CollectionAccess::make<oaCollection<oaBitNet, oaNet>>(kind, &at.design.nets, at.row);
}

oaCollection<oaPin, oaNet> oaNet::getPins() const {
  static const PinsOfNet kind;
  const DesignRow at = netRow(this);
  return CollectionAccess::make<oaCollection<oaPin, oaNet>>(kind, &at.design.nets, at.row);
}

oaCollection<oaShape, oaNet> oaNet::getShapes(oaUInt4 filterFlags) const {
  static const FiguresOfNetAndPins<ShapeTable> kind;
  const DesignRow at = netRow(this);
  if ((filterFlags & oacShapeIterNetPins) == 0) {
    return shapesOnNet(at.design, at.row);
  }
  return CollectionAccess::make<oaCollection<oaShape, oaNet>>(kind, &at.design.shapes, at.row, filterFlags);
}

oaCollection<oaVia, oaNet> oaNet::getVias(oaUInt4 filterFlags) const {
  static const FiguresOfNetAndPins<ViaTable> kind;
  const DesignRow at = netRow(this);
  if ((filterFlags & oacViaIterNetPins) == 0) {
    return viasOnNet(at.design, at.row);
  }
  return CollectionAccess::make<oaCollection<oaVia, oaNet>>(kind, &at.design.vias, at.row, filterFlags);
}

oaNet *oaNet::create(oaBlock *block, const oaName &name, oaSigType sigType, oaBoolean isGlobal,
                     oaBlockDomainVisibility view) {
  DesignDatabase &design = designOfBlock(block);
  MultiBit nets = netNames(design);
  nets.check(name);
  const Row known = nets.find(name);
  if (known != kNoRow && !nets.isImplicit(known)) {
    refuse(design, oacNetExists, nets.describe(known) + " exists already");
  }
  std::vector<Row> made;
  const Row row = nets.make(name, made);
  design.nets.signalType.set(row, static_cast<std::uint8_t>(sigType));
  const std::uint8_t kept = design.nets.flags[row] & kNetPreferred;
  design.nets.flags.set(row,
                        static_cast<std::uint8_t>(kept | (isGlobal ? kNetGlobal : 0) |
                                                  (view == oacExcludeFromModuleDomain ? kNetExcludedFromModule : 0)));
  return objectAt<oaNet>(design.nets, row);
}

oaNet *oaNet::find(const oaBlock *block, const oaName &name) {
  DesignDatabase &design = designOfBlock(block);
  return objectAt<oaNet>(design.nets, netNames(design).find(name));
}

oaBoolean oaNet::isValidName(const oaBlock *block, const oaName &name) {
  return netNames(designOfBlock(block)).isUsable(name);
}

void oaScalarNet::getName(oaScalarName &name) const {
  const DesignRow at = netRow(this);
  getStoredName(at.design.strings(), at.design.nets.name[at.row], name);
}

void oaScalarNet::setName(const oaScalarName &name) {
  const DesignRow at = netRow(this);
  const MultiBit nets = netNames(at.design);
  if (nets.find(oaName(name)) == at.row) {
    return;
  }
  if (nets.isImplicit(at.row)) {
    refuse(at.design, oacCannotSetNameOfImplicitNet, describe(at) + " is implicit and cannot be renamed");
  }
  if (nets.isNeeded(at.row)) {
    refuse(at.design, oacCannotSetNameOfNetInBundleNet,
           describe(at) + " is a member of a bundle and cannot be renamed");
  }
  nets.check(oaName(name));
  const Row user = nets.find(oaName(name));
  if (user != kNoRow) {
    refuse(at.design, oacNetExists, nets.describe(user) + " exists already");
  }
  nets.byName().remove(nets.keyOf(at.row), at.row);
  at.design.nets.name.set(at.row, at.design.strings().add(nativeText(name)));
  nets.byName().add(nets.keyOf(at.row), at.row);
  at.design.noteAbandonedRows();
  at.design.touch();
}

oaScalarNet *oaScalarNet::create(oaBlock *block, const oaScalarName &name, oaSigType sigType, oaBoolean isGlobal,
                                 oaBlockDomainVisibility view) {
  return static_cast<oaScalarNet *>(oaNet::create(block, name, sigType, isGlobal, view));
}

oaScalarNet *oaScalarNet::create(oaBlock *block, oaSigType sigType, oaBoolean isGlobal, oaBlockDomainVisibility view) {
  DesignDatabase &design = designOfBlock(block);
  const std::string text = automaticName(netsByName(design), "N__", design.nextNetNumber);
  return create(block, oaScalarName(oaNativeNS(), text.c_str()), sigType, isGlobal, view);
}

oaScalarNet *oaScalarNet::find(const oaBlock *block, const oaScalarName &name) {
  return static_cast<oaScalarNet *>(oaNet::find(block, name));
}

oaBoolean oaScalarNet::isValidName(const oaBlock *block, const oaScalarName &name) {
  return oaNet::isValidName(block, name);
}

oaCollection<oaNet, oaBlock> oaBlock::getNets(oaUInt4 filterFlags) const {
  static const NetsOfBlock kind;
  DesignDatabase &design = designOfBlock(this);
  const oaUInt4 which = filterFlags & (oacNetIterAll | oacNetIterSingleBit | oacNetIterBundle);
  if (which != oacNetIterAll && which != oacNetIterSingleBit && which != oacNetIterBundle) {
    refuse(design, oacInvalidBlockNetIterFlags,
           "nets are asked for with filter flags " + std::to_string(filterFlags) +
               ", which must hold exactly one of all, single-bit and bundle");
  }
  return CollectionAccess::make<oaCollection<oaNet, oaBlock>>(kind, &design.nets, 0, filterFlags);
}

oaBoolean oaBlock::hasConnectivity() const {
  const DesignDatabase &design = designOfBlock(this);
  return design.nets.nextAlive(kNoRow) != kNoRow || design.terms.nextAlive(kNoRow) != kNoRow ||
         design.instTerms.nextAlive(kNoRow) != kNoRow;
}

oaBoolean oaBlock::hasMultiBitNet() const {
  const NetTable &nets = designOfBlock(this).nets;
  for (Row row = nets.nextAlive(kNoRow); row != kNoRow; row = nets.nextAlive(row)) {
    if (nets.kind[row] == oacBusNetType || nets.kind[row] == oacBundleNetType) {
      return true;
    }
  }
  return false;
}

oaBoolean oaBlock::hasGlobalNet() const { return !getNets(oacNetIterAll | oacNetIterGlobal).isEmpty(); }

} // namespace OpenAccess_4
