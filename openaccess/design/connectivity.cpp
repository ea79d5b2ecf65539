#include "connectivity.h"

#include "connectivityaccess.h"
#include "figureindexes.h"

#include <algorithm>
#include <typeinfo>

namespace OpenAccess_4 {
namespace kit {

namespace {

template <typename TableType> void buildNameIndex(NameIndex &index, TableType &table, const StringTable &strings) {
  if (index.isBuilt()) {
    return;
  }
  index.clear();
  for (Row row = table.nextAlive(kNoRow); row != kNoRow; row = table.nextAlive(row)) {
    index.add(strings.text(table.name[row]), row);
  }
  index.setBuilt();
}

template <typename TableType>
void buildOwnerIndex(OwnerIndex &index, const TableType &table, const Column<Row> &owners) {
  if (index.isBuilt()) {
    return;
  }
  index.clear();
  for (Row row = table.nextAlive(kNoRow); row != kNoRow; row = table.nextAlive(row)) {
    const Row owner = owners[row];
    if (owner != kNoRow) {
      index.add(owner, row);
    }
  }
  index.setBuilt();
}

template <typename TableType> void destroyAll(DesignDatabase &design, TableType &table, const std::vector<Row> &rows) {
  // A copy: destroying takes each row out of the index.
  const std::vector<Row> going = rows;
  for (const Row row : going) {
    if (table.isAlive(row)) {
      design.destroyRow(table, row);
    }
  }
}

void netIsGoing(DesignDatabase &design, Row net) {
  destroyAll(design, design.terms, termsOfNet(design).rows(net));
  const std::vector<Row> connections = instTermsOfNet(design).rows(net);
  for (const Row instTerm : connections) {
    design.instTermsOfNet.remove(net, instTerm);
    design.instTerms.net.set(instTerm, kNoRow);
  }
  leaveNet(design, net);
  if (design.netsByName.isBuilt()) {
    design.netsByName.remove(design.strings().text(design.nets.name[net]), net);
  }
}

void termIsGoing(DesignDatabase &design, Row term) {
  destroyAll(design, design.pins, pinsOfTerm(design).rows(term));
  if (design.termsOfNet.isBuilt()) {
    design.termsOfNet.remove(design.terms.net[term], term);
  }
  if (design.termsByName.isBuilt()) {
    design.termsByName.remove(design.strings().text(design.terms.name[term]), term);
  }
}

void pinIsGoing(DesignDatabase &design, Row pin) {
  leavePin(design, pin);
  if (design.pinsOfTerm.isBuilt()) {
    design.pinsOfTerm.remove(design.pins.term[pin], pin);
  }
}

void instIsGoing(DesignDatabase &design, Row inst) {
  destroyAll(design, design.instTerms, instTermsOfInst(design).rows(inst));
  if (design.instsByName.isBuilt()) {
    design.instsByName.remove(design.strings().text(design.insts.name[inst]), inst);
  }
  leaveInstHeader(design, inst);
}

void instTermIsGoing(DesignDatabase &design, Row instTerm) {
  if (design.instTermsOfInst.isBuilt()) {
    design.instTermsOfInst.remove(design.instTerms.inst[instTerm], instTerm);
  }
  if (design.instTermsOfNet.isBuilt() && design.instTerms.net[instTerm] != kNoRow) {
    design.instTermsOfNet.remove(design.instTerms.net[instTerm], instTerm);
  }
}

} // namespace

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

bool isUsableScalarName(const oaName &name) {
  return name.getType() == oacScalarNameType && !nativeText(name).empty() &&
         nativeText(name).find('/') == std::string::npos;
}

std::string checkScalarName(const DesignDatabase &design, const oaName &name, const char *what, oaUInt4 emptyId,
                            oaUInt4 hierId) {
  const std::string text = nativeText(name);
  if (text.empty()) {
    refuse(design, emptyId, std::string("a ") + what + " needs a name that is not empty");
  }
  if (text.find('/') != std::string::npos) {
    refuse(design, hierId,
           std::string(what) + " " + text + ": the name leads into a hierarchy (\"/\") that does not exist");
  }
  if (name.getType() != oacScalarNameType) {
    raiseBase(oacNotYetSupported,
              design.label() + ": " + what + " " + text + ": bus, bit and bundle names are not supported yet");
  }
  return text;
}

std::string automaticName(const NameIndex &index, const char *prefix, std::uint32_t &nextNumber) {
  std::string name;
  do {
    name = prefix + std::to_string(nextNumber++);
  } while (index.find(name) != kNoRow);
  return name;
}

NameIndex &netsByName(DesignDatabase &design) {
  buildNameIndex(design.netsByName, design.nets, design.strings());
  return design.netsByName;
}
NameIndex &termsByName(DesignDatabase &design) {
  buildNameIndex(design.termsByName, design.terms, design.strings());
  return design.termsByName;
}
NameIndex &instsByName(DesignDatabase &design) {
  buildNameIndex(design.instsByName, design.insts, design.strings());
  return design.instsByName;
}
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
OwnerIndex &instTermsOfNet(DesignDatabase &design) {
  buildOwnerIndex(design.instTermsOfNet, design.instTerms, design.instTerms.net);
  return design.instTermsOfNet;
}

} // namespace kit
} // namespace OpenAccess_4
