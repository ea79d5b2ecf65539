#include "oa/oaInstTerm.h"

#include "connectivityaccess.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

bool isByPosition(const DesignRow &at) { return at.design.instTerms.termPosition[at.row] != oacNullIndex; }

std::string describeInst(const DesignRow &inst) {
  return "instance " + inst.design.strings().text(inst.design.insts.name[inst.row]);
}

// The instance's connection of that terminal, or kNoRow.
Row findByName(const DesignRow &inst, const std::string &termName) {
  for (const Row instTerm : instTermsOfInst(inst.design).rows(inst.row)) {
    if (inst.design.strings().view(inst.design.instTerms.termName[instTerm]) == termName) {
      return instTerm;
    }
  }
  return kNoRow;
}

Row findByPosition(const DesignRow &inst, oaUInt4 position) {
  for (const Row instTerm : instTermsOfInst(inst.design).rows(inst.row)) {
    if (inst.design.instTerms.termPosition[instTerm] == position) {
      return instTerm;
    }
  }
  return kNoRow;
}

// The row of `net`, which may be NULL.
Row checkedNet(const DesignRow &inst, oaNet *net) {
  if (net == nullptr) {
    return kNoRow;
  }
  const DesignRow at = netRow(net);
  if (&at.design != &inst.design) {
    refuse(inst.design, oacNetAndInstNotInSameDesign, describeInst(inst) + " and the net are in different designs");
  }
  if ((at.design.nets.flags[at.row] & kNetImplicit) != 0) {
    refuse(inst.design, oacInstTermNetImplicit, describeInst(inst) + " cannot be connected to an implicit net");
  }
  return at.row;
}

// Both ways of connecting must not be mixed on one instance.
void checkUniform(const DesignRow &inst, bool byPosition, oaUInt4 mustBeByPositionId, oaUInt4 mustBeByNameId) {
  const std::vector<Row> &instTerms = instTermsOfInst(inst.design).rows(inst.row);
  if (instTerms.empty()) {
    return;
  }
  const bool usesPositions = isByPosition({inst.design, instTerms.front()});
  if (usesPositions != byPosition) {
    refuse(inst.design, usesPositions ? mustBeByPositionId : mustBeByNameId,
           describeInst(inst) + " is connected by " + (usesPositions ? "positions" : "names"));
  }
}

oaInstTerm *addInstTerm(const DesignRow &inst, Row net, const std::string &termName, oaUInt4 position) {
  DesignDatabase &design = inst.design;
  const Row row = design.instTerms.addRow();
  design.instTerms.kind.set(row, oacInstTermType);
  design.instTerms.inst.set(row, inst.row);
  design.instTerms.net.set(row, net);
  design.instTerms.termName.set(row, design.strings().intern(termName));
  design.instTerms.termPosition.set(row, position);
  if (design.instTermsOfInst.isBuilt()) {
    design.instTermsOfInst.add(inst.row, row);
  }
  if (design.instTermsOfNet.isBuilt() && net != kNoRow) {
    design.instTermsOfNet.add(net, row);
  }
  design.touch();
  return objectAt<oaInstTerm>(design.instTerms, row);
}

oaInstTerm *connectByName(const DesignRow &inst, oaNet *net, const oaName &termName) {
  const std::string text = nativeText(termName);
  if (text.empty()) {
    refuse(inst.design, oacInvalidTermName, describeInst(inst) + ": a connection needs the name of a terminal");
  }
  const Row netAt = checkedNet(inst, net);
  checkUniform(inst, false, oacInstTermMustBeByPosition, oacInstTermMustBeByName);
  if (termName.getNumBits() != 1) {
    refuse(inst.design, oacNetInstTermWidthMismatchForInstTerm,
           describeInst(inst) + ": terminal " + text + " has " + std::to_string(termName.getNumBits()) +
               " bits, the net has 1");
  }
  if (findByName(inst, text) != kNoRow) {
    refuse(inst.design, oacInstTermAlreadyExists, describeInst(inst) + ": terminal " + text + " is connected already");
  }
  return addInstTerm(inst, netAt, text, oacNullIndex);
}

class InstTermsOfBlock : public WholeTableKind {}; // all are explicit so far

} // namespace

void oaInstTerm::destroy() {
  const DesignRow at = instTermRow(this);
  at.design.destroyRow(at.design.instTerms, at.row);
}

oaNet *oaInstTerm::getNet(oaBoolean) const {
  const DesignRow at = instTermRow(this);
  const Row net = at.design.instTerms.net[at.row];
  return net == kNoRow ? nullptr
                       : objectAt<oaNet>(at.design.nets, at.design.nets.checkRow(net, "an instance terminal"));
}

oaInst *oaInstTerm::getInst() const {
  const DesignRow at = instTermRow(this);
  return objectAt<oaInst>(at.design.insts,
                          at.design.insts.checkRow(at.design.instTerms.inst[at.row], "an instance terminal"));
}

oaTerm *oaInstTerm::getTerm() const {
  const DesignRow at = instTermRow(this);
  const oaDesign *master = getInst()->getMaster();
  const oaBlock *block = master == nullptr ? nullptr : master->getTopBlock();
  if (block == nullptr) {
    return nullptr;
  }
  if (isByPosition(at)) {
    return oaTerm::find(block, at.design.instTerms.termPosition[at.row]);
  }
  oaName name;
  getTermName(name);
  return oaTerm::find(block, name);
}

void oaInstTerm::getTermName(oaName &name) const {
  const DesignRow at = instTermRow(this);
  if (isByPosition(at)) {
    refuse(at.design, oacInstTermConnectsByPosition,
           "an instance terminal that is connected by position has no terminal name");
  }
  oaScalarName scalar;
  getStoredName(at.design.strings(), at.design.instTerms.termName[at.row], scalar);
  name = scalar;
}

void oaInstTerm::getTermName(const oaNameSpace &ns, oaString &name) const {
  const DesignRow at = instTermRow(this);
  if (isByPosition(at)) {
    refuse(at.design, oacInstTermConnectsByPosition,
           "an instance terminal that is connected by position has no terminal name");
  }
  getStoredName(at.design.strings(), at.design.instTerms.termName[at.row], ns, name);
}

oaUInt4 oaInstTerm::getTermPosition() const {
  const DesignRow at = instTermRow(this);
  if (!isByPosition(at)) {
    refuse(at.design, oacInstTermConnectsByName, "an instance terminal that is connected by name has no position");
  }
  return at.design.instTerms.termPosition[at.row];
}

oaUInt4 oaInstTerm::getNumBits() const {
  const DesignRow at = instTermRow(this);
  const bool isUnknown = at.design.instTerms.net[at.row] == kNoRow && isByPosition(at) && getTerm() == nullptr;
  return isUnknown ? 0 : 1;
}

oaInstTerm *oaInstTerm::getBit(oaUInt4 bitIndex) const {
  const DesignRow at = instTermRow(this);
  if (bitIndex != 0) {
    refuse(at.design, oacInvalidBusNetBitIndex,
           "an instance terminal has 1 bit, bit " + std::to_string(bitIndex) + " was asked for");
  }
  return objectAt<oaInstTerm>(at.design.instTerms, at.row);
}

oaBoolean oaInstTerm::isBound() const { return getInst()->isBound() && getTerm() != nullptr; }

oaBoolean oaInstTerm::isImplicit() const {
  (void)instTermRow(this);
  return false;
}

oaBoolean oaInstTerm::usesTermPosition() const { return isByPosition(instTermRow(this)); }

void oaInstTerm::addToNet(oaNet *net) {
  const DesignRow at = instTermRow(this);
  const Row to = checkedNet({at.design, at.design.instTerms.inst[at.row]}, net);
  OwnerIndex &index = instTermsOfNet(at.design);
  const Row from = at.design.instTerms.net[at.row];
  if (from != kNoRow) {
    index.remove(from, at.row);
  }
  at.design.instTerms.net.set(at.row, to);
  if (to != kNoRow) {
    index.add(to, at.row);
  }
  at.design.touch();
}

void oaInstTerm::removeFromNet() { addToNet(nullptr); }

oaInstTerm *oaInstTerm::create(oaNet *net, oaInst *inst, oaTerm *term, oaBlockDomainVisibility) {
  const DesignRow at = instRow(inst);
  const DesignRow termAt = termRow(term);
  if (inst->getMaster() == nullptr || &designOf(inst->getMaster()) != &termAt.design) {
    refuse(at.design, oacTermNotInInstMasterForInstTerm,
           describeInst(at) + ": the terminal is not in the instance's master");
  }
  oaName name;
  term->getName(name);
  return connectByName(at, net, name);
}

oaInstTerm *oaInstTerm::create(oaNet *net, oaInst *inst, const oaName &termName, oaBlockDomainVisibility) {
  return connectByName(instRow(inst), net, termName);
}

oaInstTerm *oaInstTerm::create(oaNet *net, oaInst *inst, oaUInt4 termPosition, oaBlockDomainVisibility) {
  const DesignRow at = instRow(inst);
  const Row netAt = checkedNet(at, net);
  checkUniform(at, true, oacInstTermMustBeByPosition, oacInstTermMustBeByName);
  if (findByPosition(at, termPosition) != kNoRow) {
    refuse(at.design, oacInstTermAlreadyExists,
           describeInst(at) + ": the terminal at position " + std::to_string(termPosition) + " is connected already");
  }
  return addInstTerm(at, netAt, std::string(), termPosition);
}

oaInstTerm *oaInstTerm::find(const oaInst *inst, const oaTerm *term) {
  oaName name;
  term->getName(name);
  return inst->usesTermPositions() ? find(inst, term->getPosition()) : find(inst, name);
}

oaInstTerm *oaInstTerm::find(const oaInst *inst, const oaName &termName) {
  const DesignRow at = instRow(inst);
  checkUniform(at, false, oacInstTermInstUsesTermPosition, oacInstTermInstUsesTermName);
  return objectAt<oaInstTerm>(at.design.instTerms, findByName(at, nativeText(termName)));
}

oaInstTerm *oaInstTerm::find(const oaInst *inst, oaUInt4 termPosition) {
  const DesignRow at = instRow(inst);
  checkUniform(at, true, oacInstTermInstUsesTermPosition, oacInstTermInstUsesTermName);
  return objectAt<oaInstTerm>(at.design.instTerms, findByPosition(at, termPosition));
}

oaCollection<oaInstTerm, oaBlock> oaBlock::getInstTerms(oaUInt4) const {
  static const InstTermsOfBlock kind;
  return CollectionAccess::make<oaCollection<oaInstTerm, oaBlock>>(kind, &designOfBlock(this).instTerms, 0);
}

} // namespace OpenAccess_4
