#include "connectivity.h"

#include "connectivityaccess.h"
#include "figureindexes.h"
#include "multibit.h"
#include "properties.h"
#include "viareferences.h"

#include <typeinfo>

namespace OpenAccess_4 {
namespace kit {

namespace {

// Of the owners for which `isWanted(Row)` holds.
template <typename TableType, typename IsWanted>
void buildOwnerIndex(OwnerIndex &index, const TableType &table, const Column<Row> &owners, IsWanted isWanted) {
  if (index.isBuilt()) {
    return;
  }
  index.clear();
  index.fill<Row>(table.rowCount(), [&](Row row, Row &owner) {
    owner = owners[row];
    return owner != kNoRow && isWanted(owner) && table.isAlive(row);
  });
  index.setBuilt();
}

template <typename TableType>
void buildOwnerIndex(OwnerIndex &index, const TableType &table, const Column<Row> &owners) {
  buildOwnerIndex(index, table, owners, [](Row) { return true; });
}

// Also for rows out of a damaged file that are no nets.
bool isWideNet(const DesignDatabase &design, Row net) {
  const std::uint8_t kind = net < design.nets.rowCount() ? design.nets.kind[net] : 0;
  return kind == oacBusNetType || kind == oacBundleNetType;
}

// What is connected to a net that goes or becomes implicit.
void leaveTermsOfNet(DesignDatabase &design, Row net, bool explicitOnly) {
  MultiBit terms = termNames(design);
  // A copy: destroying takes each row out of the index.
  const std::vector<Row> connected = termsOfNet(design).rows(net).copy();
  for (const Row term : connected) {
    if (!design.terms.isAlive(term) || (explicitOnly && terms.isImplicit(term))) {
      continue;
    }
    if (explicitOnly) {
      dropTerm(design, term);
    } else {
      terms.destroyWithOwners(term);
    }
  }
}

void leaveInstTermsOfNet(DesignDatabase &design, Row net, bool explicitOnly) {
  const std::vector<Row> connected = instTermsOfNet(design, net).rows(net).copy();
  for (const Row instTerm : connected) {
    const bool isImplicit = (design.instTerms.flags[instTerm] & kInstTermImplicit) != 0;
    if (!explicitOnly || !isImplicit) {
      instTermLosesNet(design, instTerm);
    }
  }
}

void netIsGoing(DesignDatabase &design, Row net) {
  leaveTermsOfNet(design, net, false);
  leaveInstTermsOfNet(design, net, false);
  leaveNet(design, net);
  leaveEquivalents(design, net);
  netNames(design).leave(net);
}

void termIsGoing(DesignDatabase &design, Row term) {
  leavePinsOfTerm(design, term);
  if (design.termsOfNet.isBuilt() && design.terms.net[term] != kNoRow) {
    design.termsOfNet.remove(design.terms.net[term], term);
  }
  termNames(design).leave(term);
}

void pinIsGoing(DesignDatabase &design, Row pin) {
  leavePin(design, pin);
  if (design.pinsOfTerm.isBuilt()) {
    design.pinsOfTerm.remove(design.pins.term[pin], pin);
  }
}

} // namespace

void leavePinsOfTerm(DesignDatabase &design, Row term) {
  const std::vector<Row> pins = pinsOfTerm(design).rows(term).copy();
  for (const Row pin : pins) {
    if (design.pins.isAlive(pin)) {
      design.destroyRow(design.pins, pin);
    }
  }
}

void dropNet(DesignDatabase &design, Row net) {
  const MultiBit nets = netNames(design);
  if (!nets.isNeeded(net)) {
    design.destroyRow(design.nets, net);
    return;
  }
  leaveTermsOfNet(design, net, true);
  leaveInstTermsOfNet(design, net, true);
  leaveNet(design, net);
  leaveEquivalents(design, net);
  design.properties().destroyOf(design.nets, net);
  design.nets.flags.set(net, kNetImplicit);
  design.nets.signalType.set(net, oacSignalSigType);
  design.nets.priority.set(net, 0);
  design.touch();
}

void dropTerm(DesignDatabase &design, Row term) {
  const MultiBit terms = termNames(design);
  if (!terms.isNeeded(term)) {
    design.destroyRow(design.terms, term);
    return;
  }
  leavePinsOfTerm(design, term);
  design.properties().destroyOf(design.terms, term);
  design.terms.flags.set(term, kTermImplicit);
  design.terms.position.set(term, oacNullIndex);
  design.touch();
}

void connectivityRowIsGoing(DesignDatabase &design, Table &table, Row row) {
  switch (table.id()) {
  case kNetTable:
    netIsGoing(design, row);
    break;
  case kTermTable:
    termIsGoing(design, row);
    break;
  case kPinTable:
    pinIsGoing(design, row);
    break;
  case kInstTable:
    instIsGoing(design, row);
    break;
  case kInstTermTable:
    instTermIsGoing(design, row);
    break;
  case kViaTable:
    viaIsGoing(design, row);
    break;
  case kViaHeaderTable: // its parameters go with it
    break;
  default:
    return;
  }
  design.noteAbandonedRows();
}

void refuse(const DesignDatabase &design, oaUInt4 id, const std::string &message) {
  raiseDesign(id, design.label() + ": " + message);
}

void getStoredName(const StringTable &strings, Row name, oaScalarName &out) {
  out.init(oaNativeNS(), strings.text(name).c_str());
}

void getStoredName(const StringTable &strings, Row name, const oaNameSpace &ns, oaString &out) {
  // The usual case by far: the native form is what is stored.
  if (typeid(ns) == typeid(oaNativeNS)) {
    strings.get(name, out);
    return;
  }
  oaScalarName scalar;
  getStoredName(strings, name, scalar);
  scalar.get(ns, out);
}

std::string automaticName(const NameIndex &index, const char *prefix, std::uint32_t &nextNumber) {
  std::string name;
  do {
    name = prefix + std::to_string(nextNumber++);
  } while (index.find(name) != kNoRow);
  return name;
}

NameIndex &netsByName(DesignDatabase &design) { return netNames(design).byName(); }
NameIndex &termsByName(DesignDatabase &design) { return termNames(design).byName(); }
NameIndex &instsByName(DesignDatabase &design) { return instNames(design).byName(); }
OwnerIndex &termsOfNet(DesignDatabase &design) {
  buildOwnerIndex(design.termsOfNet, design.terms, design.terms.net);
  return design.termsOfNet;
}
OwnerIndex &pinsOfTerm(DesignDatabase &design) {
  buildOwnerIndex(design.pinsOfTerm, design.pins, design.pins.term);
  return design.pinsOfTerm;
}
OwnerIndex &instsOfHeader(DesignDatabase &design) {
  buildOwnerIndex(design.instsOfHeader, design.insts, design.insts.header);
  return design.instsOfHeader;
}
OwnerIndex &instTermsOfInst(DesignDatabase &design) {
  buildOwnerIndex(design.instTermsOfInst, design.instTerms, design.instTerms.inst);
  return design.instTermsOfInst;
}
OwnerIndex &connectionIndexOf(DesignDatabase &design, Row net) {
  return isWideNet(design, net) ? design.instTermsOfWideNet : design.instTermsOfBitNet;
}
OwnerIndex &instTermsOfNet(DesignDatabase &design, Row net) {
  const bool isWide = isWideNet(design, net);
  OwnerIndex &index = connectionIndexOf(design, net);
  buildOwnerIndex(index, design.instTerms, design.instTerms.net,
                  [&](Row owner) { return isWideNet(design, owner) == isWide; });
  return index;
}

} // namespace kit
} // namespace OpenAccess_4
