#include "oa/oaNet.h"

#include "connectivityaccess.h"
#include "figureindexes.h"

namespace OpenAccess_4 {

OA_ENUM_NAMES(oaSigType, raiseBase, oacInvalidEnumValue, "signal type", "signal", "power", "ground", "clock", "tieoff",
              "tieHi", "tieLo", "analog", "scan", "reset")

using namespace kit;

namespace {

bool hasFlag(const oaNet *net, NetFlag flag) {
  const DesignRow at = netRow(net);
  return (at.design.nets.flags[at.row] & flag) != 0;
}

void setFlag(const DesignRow &at, NetFlag flag, bool value) {
  const std::uint8_t flags = at.design.nets.flags[at.row];
  at.design.nets.flags.set(at.row, static_cast<std::uint8_t>(value ? flags | flag : flags & ~flag));
  at.design.touch();
}

std::string describe(const DesignRow &at) { return "net " + at.design.strings().text(at.design.nets.name[at.row]); }

class NetsOfBlock : public WholeTableKind {
protected:
  bool isFiltered(const CollectionQuestion &question) const override {
    return (question.flags & (oacNetIterBundle | oacNetIterGlobal | oacNetIterNotImplicit)) != 0;
  }
  bool accepts(const CollectionQuestion &question, Row row) const override {
    const std::uint8_t flags = static_cast<NetTable *>(question.table)->flags[row];
    // All nets are single-bit nets so far, and each is the preferred one of its equivalents.
    return (question.flags & oacNetIterBundle) == 0 &&
           ((question.flags & oacNetIterGlobal) == 0 || (flags & kNetGlobal) != 0) &&
           ((question.flags & oacNetIterNotImplicit) == 0 || (flags & kNetImplicit) == 0);
  }
};

// Pins of all terminals of a net. `hint` is the terminal whose pins are being walked, as a place among the net's
// terminals.
class PinsOfNet : public CollectionKind {
public:
  oaObject *next(const CollectionQuestion &question, Row &position, Row &hint) const override {
    DesignDatabase &design = static_cast<DesignDatabase &>(question.table->database());
    const std::vector<Row> &terms = termsOfNet(design).rows(question.owner);
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

// Shapes on a net and those of its pins: a walk over all shapes, since no index holds both.
class ShapesOfNetAndPins : public WholeTableKind {
protected:
  bool isFiltered(const CollectionQuestion &) const override { return true; }
  bool accepts(const CollectionQuestion &question, Row row) const override {
    DesignDatabase &design = static_cast<DesignDatabase &>(question.table->database());
    if (design.shapes.net[row] == question.owner) {
      return true;
    }
    const Row pin = design.shapes.pin[row];
    const Row term = pin == kNoRow ? kNoRow : design.pins.term[pin];
    return term != kNoRow && design.terms.net[term] == question.owner;
  }
};

} // namespace

void oaNet::destroy() {
  const DesignRow at = netRow(this);
  if (isImplicit()) {
    refuse(at.design, oacCannotDestroyImplicitNet, describe(at) + " is implicit and cannot be destroyed");
  }
  at.design.destroyRow(at.design.nets, at.row);
}

oaBoolean oaNet::isEmpty() const {
  const DesignRow at = netRow(this);
  return getTerms().isEmpty() && getInstTerms().isEmpty() && isNetWithoutFigures(at.design, at.row);
}

oaBoolean oaNet::isImplicit() const { return hasFlag(this, kNetImplicit); }
oaBoolean oaNet::isGlobal() const { return hasFlag(this, kNetGlobal); }

oaUInt4 oaNet::getNumBits() const {
  (void)netRow(this);
  return 1;
}

oaBitNet *oaNet::getBit(oaUInt4 bitIndex) const {
  const DesignRow at = netRow(this);
  if (bitIndex != 0) {
    refuse(at.design, oacInvalidBusNetBitIndex,
           describe(at) + " has 1 bit, bit " + std::to_string(bitIndex) + " was asked for");
  }
  return objectAt<oaBitNet>(at.design.nets, at.row);
}

void oaNet::getName(oaName &name) const {
  const DesignRow at = netRow(this);
  oaScalarName scalar;
  getStoredName(at.design.strings(), at.design.nets.name[at.row], scalar);
  name = scalar;
}

void oaNet::getName(const oaNameSpace &ns, oaString &name) const {
  const DesignRow at = netRow(this);
  getStoredName(at.design.strings(), at.design.nets.name[at.row], ns, name);
}

oaSigType oaNet::getSigType() const {
  const DesignRow at = netRow(this);
  return static_cast<oaSigTypeEnum>(at.design.nets.signalType[at.row]);
}

oaInt4 oaNet::getPriority() const {
  const DesignRow at = netRow(this);
  return at.design.nets.priority[at.row];
}

void oaNet::setGlobal(oaBoolean isGlobal) { setFlag(netRow(this), kNetGlobal, isGlobal); }

void oaNet::setSigType(const oaSigType &sigType) {
  const DesignRow at = netRow(this);
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
  oaIter<oaTerm> terms(fromNet->getTerms(0));
  while (oaTerm *term = terms.getNext()) {
    term->moveToNet(this);
  }
  oaIter<oaInstTerm> instTerms(fromNet->getInstTerms(0));
  while (oaInstTerm *instTerm = instTerms.getNext()) {
    instTerm->addToNet(this);
  }
  moveFiguresToNet(to.design, from.row, to.row);
  fromNet->destroy();
}

oaCollection<oaTerm, oaNet> oaNet::getTerms(oaUInt4) const {
  static const MembersKind kind(termsOfNet, kTermTable);
  const DesignRow at = netRow(this);
  return CollectionAccess::make<oaCollection<oaTerm, oaNet>>(kind, &at.design.nets, at.row);
}

oaCollection<oaInstTerm, oaNet> oaNet::getInstTerms(oaUInt4) const {
  static const MembersKind kind(instTermsOfNet, kInstTermTable);
  const DesignRow at = netRow(this);
  return CollectionAccess::make<oaCollection<oaInstTerm, oaNet>>(kind, &at.design.nets, at.row);
}

oaCollection<oaPin, oaNet> oaNet::getPins() const {
  static const PinsOfNet kind;
  const DesignRow at = netRow(this);
  return CollectionAccess::make<oaCollection<oaPin, oaNet>>(kind, &at.design.nets, at.row);
}

oaCollection<oaShape, oaNet> oaNet::getShapes(oaUInt4 filterFlags) const {
  static const ShapesOfNetAndPins kind;
  const DesignRow at = netRow(this);
  if ((filterFlags & oacShapeIterNetPins) == 0) {
    return shapesOnNet(at.design, at.row);
  }
  return CollectionAccess::make<oaCollection<oaShape, oaNet>>(kind, &at.design.shapes, at.row, filterFlags);
}

oaNet *oaNet::create(oaBlock *block, const oaName &name, oaSigType sigType, oaBoolean isGlobal,
                     oaBlockDomainVisibility view) {
  DesignDatabase &design = designOfBlock(block);
  const std::string text = checkScalarName(design, name, "net", oacInvalidNetName, oacHierPathDoesNotExist);
  if (netsByName(design).find(text) != kNoRow) {
    refuse(design, oacNetExists, "net " + text + " exists already");
  }
  const Row row = design.nets.addRow();
  design.nets.kind.set(row, oacScalarNetType);
  design.nets.name.set(row, design.strings().add(text));
  design.nets.signalType.set(row, static_cast<std::uint8_t>(sigType));
  design.nets.flags.set(row,
                        static_cast<std::uint8_t>((isGlobal ? kNetGlobal : 0) |
                                                  (view == oacExcludeFromModuleDomain ? kNetExcludedFromModule : 0)));
  design.netsByName.add(text, row);
  design.touch();
  return objectAt<oaNet>(design.nets, row);
}

oaNet *oaNet::find(const oaBlock *block, const oaName &name) {
  DesignDatabase &design = designOfBlock(block);
  if (name.getType() != oacScalarNameType) {
    return nullptr;
  }
  return objectAt<oaNet>(design.nets, netsByName(design).find(nativeText(name)));
}

oaBoolean oaNet::isValidName(const oaBlock *block, const oaName &name) {
  return isUsableScalarName(name) && netsByName(designOfBlock(block)).find(nativeText(name)) == kNoRow;
}

void oaScalarNet::getName(oaScalarName &name) const {
  const DesignRow at = netRow(this);
  getStoredName(at.design.strings(), at.design.nets.name[at.row], name);
}

void oaScalarNet::setName(const oaScalarName &name) {
  const DesignRow at = netRow(this);
  const std::string text = checkScalarName(at.design, name, "net", oacInvalidNetName, oacHierPathDoesNotExist);
  const Row user = netsByName(at.design).find(text);
  if (user == at.row) {
    return;
  }
  if (user != kNoRow) {
    refuse(at.design, oacNetExists, "net " + text + " exists already");
  }
  at.design.netsByName.remove(at.design.strings().text(at.design.nets.name[at.row]), at.row);
  at.design.netsByName.add(text, at.row);
  at.design.nets.name.set(at.row, at.design.strings().add(text));
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

} // namespace OpenAccess_4
