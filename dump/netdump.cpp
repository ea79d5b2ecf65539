// Nets, terminals, pins and the definitions of buses.

#include "oadump.h"

#include <algorithm>
#include <unordered_set>

#include "objectnames.h"

using namespace oa;

namespace {

// Every object of the block, implicit ones included.
const oaUInt4 kAllNets = oacNetIterAll;
const oaUInt4 kAllTerms = oacTermIterAll;

std::string accessText(oaUInt4 directions) {
  const struct {
    oaUInt4 direction;
    const char *name;
  } kDirections[] = {{oacTop, "top"}, {oacBottom, "bottom"}, {oacLeft, "left"}, {oacRight, "right"}};
  std::string text;
  for (const auto &known : kDirections) {
    if (directions & known.direction) {
      text += (text.empty() ? "" : ",") + std::string(known.name);
      directions &= ~known.direction;
    }
  }
  if (directions != 0) {
    text += (text.empty() ? "" : ",") + std::to_string(directions);
  }
  return text.empty() ? "none" : text;
}

bool isBitNet(const oaNet *net) {
  const oaTypeEnum type = net->getType();
  return type == oacScalarNetType || type == oacBusNetBitType;
}

} // namespace

void oaDump::writeNets() {
  DumpEntries entries;
  oaIter<oaNet> nets(block_->getNets(kAllNets));
  while (const oaNet *net = nets.getNext()) {
    const bool isImplicit = net->isImplicit();
    if (isImplicit && !hasFacts(net)) {
      continue;
    }
    DumpText &text = entries.text();
    text.begin(1, "net").word(nullptr, netText(net));
    if (isImplicit) {
      text.flag("implicit", true);
    } else {
      text.word("sigType", net->getSigType().getName()).flag("global", net->isGlobal());
      text.number("priority", net->getPriority());
    }
    text.end();
    writeExtras(text, net, 2);
    entries.add();
  }
  writeSection("nets", entries);
}

// Sets of equivalent nets, each told by its preferred net.
void oaDump::writeEquivalences() {
  DumpEntries entries;
  std::unordered_set<const oaNet *> told;
  oaIter<oaNet> nets(block_->getNets(kAllNets));
  while (const oaNet *net = nets.getNext()) {
    if (!isBitNet(net) || told.count(net) > 0) {
      continue;
    }
    const oaBitNet *bit = static_cast<const oaBitNet *>(net);
    std::vector<std::string> others;
    const oaBitNet *preferred = bit->getPreferredEquivalent();
    oaIter<oaBitNet> members(bit->getEquivalentNets());
    while (const oaBitNet *member = members.getNext()) {
      if (told.insert(member).second && member != preferred) {
        others.push_back(netText(member));
      }
    }
    if (others.empty()) {
      continue;
    }
    std::sort(others.begin(), others.end());
    entries.text().begin(1, "preferred").word(nullptr, netText(preferred)).word(nullptr, "equivalent");
    for (const std::string &other : others) {
      entries.text().word(nullptr, other);
    }
    entries.text().end();
    entries.add();
  }
  writeSection("equivalences", entries);
}

void oaDump::writeTerms() {
  DumpEntries entries;
  oaIter<oaTerm> terms(block_->getTerms(kAllTerms));
  while (const oaTerm *term = terms.getNext()) {
    const bool isImplicit = term->isImplicit();
    if (isImplicit && !hasFacts(term)) {
      continue;
    }
    DumpText &text = entries.text();
    text.begin(1, "term").word(nullptr, nameTextOf(term));
    if (isImplicit) {
      text.flag("implicit", true);
    } else {
      const oaUInt4 position = term->getPosition();
      text.word("net", netText(term->getNet())).word("type", term->getTermType().getName());
      text.flag("interface", term->isInterface());
      if (position != oacNullIndex) {
        text.number("position", position);
      }
    }
    text.end();
    writeExtras(text, term, 2);
    writePins(text, term, 2);
    entries.add();
  }
  writeSection("terms", entries);
}

void oaDump::writePins(DumpText &text, const oaTerm *term, int level) {
  DumpEntries entries;
  oaIter<oaPin> pins(term->getPins());
  while (const oaPin *pin = pins.getNext()) {
    oaString name;
    pin->getName(name);
    entries.text().begin(level, "pin").quoted(nullptr, name).word("access", accessText(pin->getAccessDir()));
    entries.text().word("status", pin->getPlacementStatus().getName()).word("type", pin->getPinType().getName()).end();
    writeExtras(entries.text(), pin, level + 1);
    entries.add();
  }
  entries.moveTo(text);
}

template <typename Definition>
void oaDump::addDefinition(DumpEntries &entries, const char *what, const Definition *def) {
  // One that came with its first bus or bit says nothing that they do not say.
  if (def->isImplicit() && def->getBitOrder() == oacNoneBitOrder && !hasFacts(def)) {
    return;
  }
  oaScalarName name;
  def->getName(name);
  entries.text().begin(1, what).word(nullptr, nameText(name)).word("order", def->getBitOrder().getName());
  entries.text().flag("implicit", def->isImplicit()).end();
  writeExtras(entries.text(), def, 2);
  entries.add();
}

void oaDump::writeBusDefinitions() {
  DumpEntries entries;
  oaIter<oaBusNetDef> nets(block_->getBusNetDefs());
  while (const oaBusNetDef *def = nets.getNext()) {
    addDefinition(entries, "busNetDef", def);
  }
  oaIter<oaBusTermDef> terms(block_->getBusTermDefs());
  while (const oaBusTermDef *def = terms.getNext()) {
    addDefinition(entries, "busTermDef", def);
  }
  oaIter<oaVectorInstDef> insts(block_->getVectorInstDefs());
  while (const oaVectorInstDef *def = insts.getNext()) {
    addDefinition(entries, "vectorInstDef", def);
  }
  writeSection("definitions", entries);
}
