#include "oa/oaInstTerm.h"

#include "connections.h"
#include "instaccess.h"
#include "instheaders.h"

#include <algorithm>

namespace OpenAccess_4 {

using namespace kit;

namespace kit {

void instIsGoing(DesignDatabase &design, Row inst) {
  // A copy: destroying takes each row out of the index.
  const std::vector<Row> instTerms = instTermsOfInst(design).rows(inst).copy();
  for (const Row instTerm : instTerms) {
    if (design.instTerms.isAlive(instTerm)) {
      Connections(design).destroyWithOwners(instTerm);
    }
  }
  instNames(design).leave(inst);
  leaveInstHeader(design, inst);
}

void instTermIsGoing(DesignDatabase &design, Row instTerm) { Connections(design).leave(instTerm); }

void instTermLosesNet(DesignDatabase &design, Row instTerm) { Connections(design).loseNet(instTerm); }

} // namespace kit

namespace {

bool isByPosition(const DesignRow &at) { return Connections(at.design).isByPosition(at.row); }

Row checkedInst(const DesignRow &at) {
  return at.design.insts.checkRow(at.design.instTerms.inst[at.row], "an instance terminal");
}

// The row of `net`, which may be NULL.
Row checkedNet(const DesignRow &inst, oaNet *net) {
  if (net == nullptr) {
    return kNoRow;
  }
  const DesignRow at = netRow(net);
  const auto what = [&] { return instNames(inst.design).describe(inst.row); };
  if (&at.design != &inst.design) {
    refuse(inst.design, oacNetAndInstNotInSameDesign, what() + " and the net are in different designs");
  }
  if ((at.design.nets.flags[at.row] & kNetImplicit) != 0) {
    refuse(inst.design, oacInstTermNetImplicit,
           what() + " cannot be connected to " + netNames(at.design).describe(at.row) + ", which is implicit");
  }
  return at.row;
}

// Both ways of connecting must not be mixed on one instance.
void checkUniform(const DesignRow &inst, bool byPosition, oaUInt4 mustBeByPositionId, oaUInt4 mustBeByNameId) {
  if (instTermsOfInst(inst.design).rows(inst.row).empty()) {
    return;
  }
  const bool usesPositions = Connections(inst.design).usesPositions(inst.row);
  if (usesPositions != byPosition) {
    refuse(inst.design, usesPositions ? mustBeByPositionId : mustBeByNameId,
           instNames(inst.design).describe(inst.row) + " is connected by " + (usesPositions ? "positions" : "names"));
  }
}

// What both ways of creating check before they look at the terminal; gives the net's row.
Row checkNew(const DesignRow &inst, oaNet *net, bool byPosition) {
  if (isImplicitInst(inst.design, inst.row)) {
    refuse(inst.design, oacInstTermInstImplicit,
           instNames(inst.design).describe(inst.row) + " is implicit: connect its vector instance");
  }
  const Row netAt = checkedNet(inst, net);
  checkUniform(inst, byPosition, oacInstTermMustBeByPosition, oacInstTermMustBeByName);
  return netAt;
}

bool isCompleteName(const oaName &name) {
  const oaBundleName *bundle = name.getBundle();
  for (oaUInt4 i = 0; bundle != nullptr && i < bundle->getNumMembers(); ++i) {
    if ((*bundle)[i].getNumBits() == 0) {
      return false;
    }
  }
  return name.getNumBits() != 0;
}

oaInstTerm *connectByName(const DesignRow &inst, oaNet *net, const oaName &termName) {
  if (!isCompleteName(termName)) {
    refuse(inst.design, oacInvalidTermName,
           instNames(inst.design).describe(inst.row) + ": a connection needs the name of a terminal");
  }
  checkLength(inst.design, "terminal", termName);
  const Row netAt = checkNew(inst, net, false);
  Connections connections(inst.design);
  const Row known = connections.find(inst.row, keyOfTerm(termName));
  if (known != kNoRow && !connections.isImplicit(known)) {
    refuse(inst.design, oacInstTermAlreadyExists,
           instNames(inst.design).describe(inst.row) + ": terminal " + nativeText(termName) + " is connected already");
  }
  return objectAt<oaInstTerm>(inst.design.instTerms, connections.make(inst.row, netAt, termName));
}

// Bits of the terminal at a position of an instance, 0 unless the master is open and has it.
oaUInt4 knownTermBits(const oaInst *inst, oaUInt4 position) {
  const oaDesign *master = inst->isBound() ? inst->getMaster() : nullptr;
  const oaBlock *block = master == nullptr ? nullptr : master->getTopBlock();
  const oaTerm *term = block == nullptr ? nullptr : oaTerm::find(block, position);
  return term == nullptr ? 0 : term->getNumBits();
}

void requireName(const DesignRow &at) {
  if (isByPosition(at)) {
    refuse(at.design, oacInstTermConnectsByPosition,
           "an instance terminal that is connected by position has no terminal name");
  }
}

void moveToNet(const oaInstTerm *instTerm, oaNet *net) {
  const DesignRow at = instTermRow(instTerm);
  Connections connections(at.design);
  if (connections.isImplicit(at.row)) {
    refuse(at.design, oacCannotModifyImplicitInstTerm,
           "an implicit instance terminal is on the net of the one that it is a bit of");
  }
  const Row to = checkedNet({at.design, checkedInst(at)}, net);
  oaUInt4 bits = 0;
  if (connections.isByPosition(at.row)) {
    bits = knownTermBits(instTerm->getInst(), at.design.instTerms.termPosition[at.row]);
  } else {
    oaName name;
    connections.getName(at.row, name);
    bits = name.getNumBits();
  }
  connections.moveToNet(at.row, to, bits);
}

bool passesFilter(const CollectionQuestion &question, Row row) {
  const Connections connections(designOf(*question.table));
  return ((question.flags & oacInstTermIterNotImplicit) == 0 || !connections.isImplicit(row)) &&
         ((question.flags & oacInstTermIterSingleBit) == 0 || connections.hasOneBit(row));
}

// False when the explicit connections are not in the order of their instances.
bool buildRuns(const InstTermTable &instTerms, OwnerRuns &runs) {
  const Row rows = instTerms.rowCount();
  Row inst = kNoRow;
  OwnerRuns::Run run = {0, 0};
  for (Row row = 0; row < rows; ++row) {
    if (!instTerms.isAlive(row) || (instTerms.flags[row] & kInstTermImplicit) != 0) {
      continue;
    }
    if (instTerms.inst[row] != inst) {
      if (inst != kNoRow && !runs.append(kInstTable, inst, run)) {
        return false;
      }
      inst = instTerms.inst[row];
      run.begin = row;
    }
    run.end = row + 1;
  }
  return inst == kNoRow || runs.append(kInstTable, inst, run);
}

// Makes the runs unless the index is there.
bool hasRuns(DesignDatabase &design) {
  ConnectivityState &state = design.connectivity;
  OwnerRuns &runs = state.instTermRuns;
  if (!runs.isBuilt() && state.mayHaveInstTermRuns && !design.instTermsOfInst.isBuilt()) {
    runs.clear();
    try {
      state.mayHaveInstTermRuns = buildRuns(design.instTerms, runs);
    } catch (const oaException &) {
      state.mayHaveInstTermRuns = false; // part of the file is damaged; the index asks for less of it
    }
    if (state.mayHaveInstTermRuns) {
      runs.setBuilt();
    } else {
      runs.clear();
    }
  }
  return runs.isBuilt();
}

class InstTermsOfInst final : public MembersKind {
public:
  InstTermsOfInst() : MembersKind(instTermsOfInst, kInstTermTable) {}

  // `end` is the row behind the last one of the instance. They nearly always lie side by side, so most steps need no
  // search.
  oaObject *next(const CollectionQuestion &question, Row &position, Row &end) const override {
    DesignDatabase &design = designOf(*question.table);
    Row row = position + 1;
    if (position == kNoRow) {
      const bool isExplicitOnly = (question.flags & oacInstTermIterNotImplicit) != 0;
      if (!isExplicitOnly || !hasRuns(design)) {
        return search(question, position, end);
      }
      const OwnerRuns::Run run = design.connectivity.instTermRuns.rows(kInstTable, question.owner);
      row = run.begin;
      end = run.end;
    }
    InstTermTable &instTerms = design.instTerms;
    for (; row < end; ++row) {
      const Row *inst = instTerms.inst.ready(row);
      const std::uint8_t *kind = instTerms.kind.ready(row);
      if (OA_UNLIKELY(inst == nullptr || kind == nullptr)) { // the first of a segment
        if (instTerms.inst[row] == question.owner && instTerms.isAlive(row) && passesFilter(question, row)) {
          position = row;
          return instTerms.handle(row);
        }
      } else if (*inst != question.owner || *kind == 0) {
        if (design.instTermsOfInst.isBuilt() && position != kNoRow) { // the next may be far away
          return search(question, position, end);
        }
      } else if (passesFilter(question, row)) {
        position = row;
        return instTerms.handle(row, *kind);
      }
    }
    return nullptr;
  }

protected:
  bool accepts(const CollectionQuestion &question, Row row) const override { return passesFilter(question, row); }

private:
  oaObject *search(const CollectionQuestion &question, Row &position, Row &end) const {
    const RowSpan rows = members(question);
    const Row *found = std::lower_bound(rows.begin(), rows.end(), position + 1); // kNoRow + 1 is 0
    while (found != rows.end() && !passesFilter(question, *found)) {
      ++found;
    }
    if (found == rows.end()) {
      end = 0;
      return nullptr;
    }
    position = *found;
    end = rows.end()[-1] + 1;
    return memberTable(question).handle(position);
  }
};

class InstTermsOfBlock : public WholeTableKind {
protected:
  bool isFiltered(const CollectionQuestion &question) const override {
    // Without wide connections none is implicit.
    return designOf(*question.table).instTermMembers.rowCount() != 0 ||
           (question.flags & oacInstTermIterSingleBit) != 0;
  }
  bool accepts(const CollectionQuestion &question, Row row) const override { return passesFilter(question, row); }
};

} // namespace

void oaInstTerm::destroy() {
  const DesignRow at = instTermRow(this);
  Connections connections(at.design);
  if (connections.isImplicit(at.row)) {
    refuse(at.design, oacCannotDestroyImplicitInstTerm,
           "an implicit instance terminal goes with the one that it is a bit of");
  }
  connections.drop(at.row);
}

oaNet *oaInstTerm::getNet(oaBoolean preferred) const {
  const DesignRow at = instTermRow(this);
  const Row row = at.design.instTerms.net[at.row];
  if (row == kNoRow) {
    return nullptr;
  }
  oaNet *net = objectAt<oaNet>(at.design.nets, at.design.nets.checkRow(row, "an instance terminal"));
  return preferred && net->isBitNet() ? static_cast<oaBitNet *>(net)->getPreferredEquivalent() : net;
}

oaInst *oaInstTerm::getInst() const {
  const DesignRow at = instTermRow(this);
  return objectAt<oaInst>(at.design.insts, checkedInst(at));
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
  requireName(at);
  Connections(at.design).getName(at.row, name);
}

void oaInstTerm::getTermName(const oaNameSpace &ns, oaString &name) const {
  const DesignRow at = instTermRow(this);
  requireName(at);
  if (at.design.instTerms.termNameKind[at.row] == oacScalarNameType) {
    getStoredName(at.design.strings(), at.design.instTerms.termName[at.row], ns, name);
    return;
  }
  oaName structured;
  getTermName(structured);
  structured.get(ns, name);
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
  if (!isByPosition(at)) {
    const oaUInt4 members = Connections(at.design).memberCount(at.row);
    return members == 0 ? 1 : members;
  }
  if (const oaNet *net = getNet()) {
    return net->getNumBits();
  }
  const oaTerm *term = getTerm();
  return term == nullptr ? 0 : term->getNumBits() * getInst()->getNumBits();
}

oaInstTerm *oaInstTerm::getBit(oaUInt4 bitIndex) const {
  const DesignRow at = instTermRow(this);
  const Connections connections(at.design);
  const oaUInt4 members = connections.memberCount(at.row);
  const oaUInt4 bits = members != 0 ? members : connections.hasOneBit(at.row) ? 1 : 0;
  if (bitIndex >= bits) {
    refuse(at.design, oacInvalidBusNetBitIndex,
           "the instance terminal has " + std::to_string(bits) + " bits, bit " + std::to_string(bitIndex) +
               " was asked for");
  }
  return objectAt<oaInstTerm>(at.design.instTerms, members == 0 ? at.row : connections.member(at.row, bitIndex));
}

oaBoolean oaInstTerm::isBound() const { return getInst()->isBound() && getTerm() != nullptr; }

oaBoolean oaInstTerm::isImplicit() const {
  const DesignRow at = instTermRow(this);
  return Connections(at.design).isImplicit(at.row);
}

oaBoolean oaInstTerm::usesTermPosition() const { return isByPosition(instTermRow(this)); }

void oaInstTerm::addToNet(oaNet *net) { moveToNet(this, net); }

void oaInstTerm::removeFromNet() { moveToNet(this, nullptr); }

oaInstTerm *oaInstTerm::create(oaNet *net, oaInst *inst, oaTerm *term, oaBlockDomainVisibility) {
  const DesignRow at = instRow(inst);
  const DesignRow termAt = termRow(term);
  const oaDesign *master = inst->getMaster();
  if (master == nullptr || &designOf(master) != &termAt.design) {
    refuse(at.design, oacTermNotInInstMasterForInstTerm,
           instNames(at.design).describe(at.row) + ": the terminal is not in the instance's master");
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
  if (termPosition == oacNullIndex) {
    refuse(at.design, oacInvalidTermName,
           instNames(at.design).describe(at.row) + ": a connection needs the position of a terminal");
  }
  const Row netAt = checkNew(at, net, true);
  Connections connections(at.design);
  if (connections.find(at.row, keyOfTerm(termPosition)) != kNoRow) {
    refuse(at.design, oacInstTermAlreadyExists,
           instNames(at.design).describe(at.row) + ": the terminal at position " + std::to_string(termPosition) +
               " is connected already");
  }
  return objectAt<oaInstTerm>(at.design.instTerms,
                              connections.make(at.row, netAt, termPosition, knownTermBits(inst, termPosition)));
}

oaInstTerm *oaInstTerm::find(const oaInst *inst, const oaTerm *term) {
  oaName name;
  term->getName(name);
  return inst->usesTermPositions() ? find(inst, term->getPosition()) : find(inst, name);
}

oaInstTerm *oaInstTerm::find(const oaInst *inst, const oaName &termName) {
  const DesignRow at = instRow(inst);
  checkUniform(at, false, oacInstTermInstUsesTermPosition, oacInstTermInstUsesTermName);
  return objectAt<oaInstTerm>(at.design.instTerms, Connections(at.design).find(at.row, keyOfTerm(termName)));
}

oaInstTerm *oaInstTerm::find(const oaInst *inst, oaUInt4 termPosition) {
  const DesignRow at = instRow(inst);
  checkUniform(at, true, oacInstTermInstUsesTermPosition, oacInstTermInstUsesTermName);
  return objectAt<oaInstTerm>(at.design.instTerms, Connections(at.design).find(at.row, keyOfTerm(termPosition)));
}

oaCollection<oaInstTerm, oaInst> oaInst::getInstTerms(oaUInt4 filterFlags) const {
  static const InstTermsOfInst kind;
  const DesignRow at = instRow(this);
  return CollectionAccess::make<oaCollection<oaInstTerm, oaInst>>(kind, &at.design.insts, at.row, filterFlags);
}

oaCollection<oaInstTerm, oaBlock> oaBlock::getInstTerms(oaUInt4 filterFlags) const {
  static const InstTermsOfBlock kind;
  return CollectionAccess::make<oaCollection<oaInstTerm, oaBlock>>(kind, &designOfBlock(this).instTerms, 0,
                                                                   filterFlags);
}

} // namespace OpenAccess_4
