#include "netlistmaster.h"

#include <cstring>

#include "designholder.h"
#include "errorguard.h"
#include "hostdatanames.h"
#include "hostsyntax.h"
#include "oapluginmain.h"

using namespace oa;

namespace {

std::string hostTextOf(oaString text) {
  toHostName(text);
  return static_cast<const oaChar *>(text);
}

template <typename Name> void appendBits(const Name &name, std::vector<std::string> &bits) {
  const oaUInt4 count = name.getNumBits();
  oaString text;
  for (oaUInt4 i = 0; i < count; ++i) {
    name.getBitName(oaConvert::ns, i, text);
    bits.push_back(hostTextOf(text));
  }
}

// The bits of a name in written order, repeats included. Member by member: to ask a bundle for each of its bits would
// walk over the members again and again.
std::vector<std::string> bitsOf(const oaName &name) {
  std::vector<std::string> bits;
  bits.reserve(name.getNumBits());
  if (name.getType() != oacBundleNameType) {
    appendBits(name, bits);
    return bits;
  }
  const oaBundleName &bundle = *name.getBundle();
  for (oaUInt4 i = 0; i < bundle.getNumMembers(); ++i) {
    for (oaUInt4 repeat = bundle[i].getRepeat(); repeat > 0; --repeat) {
      appendBits(bundle[i], bits);
    }
  }
  return bits;
}

// A parametric master that could not be evaluated is empty; the terminals of the one behind it are better than none.
oaBlock *topBlockOf(oaDesign *master) {
  oaBlock *block = master->getTopBlock();
  if (!block && master->isSubMaster()) {
    oaDesign *super = master->getSuperMaster();
    block = super ? super->getTopBlock() : nullptr;
  }
  return block;
}

} // namespace

NetlistMaster::NetlistMaster(oaInst *inst) {
  oaString lib;
  oaString cell;
  oaString view;
  inst->getLibName(oaConvert::ns, lib);
  inst->getCellName(oaConvert::ns, cell);
  inst->getViewName(oaConvert::ns, view);
  const QString cellName = oaConvert::toString(cell);
  const QString viewName = oaConvert::toString(view);
  path_ = oaConvert::toString(lib) + QLatin1Char('/') + cellName + QLatin1Char('/') + viewName;
  deviceName_ =
      viewName == QLatin1String(hostdata::kComponentView) ? cellName : oaConvert::toDeviceName(cellName, viewName);
  guard::reporting([&] { readTerminals(inst); }, [this](const QString &cause) { fault_ = cause; });
}

void NetlistMaster::readTerminals(oaInst *inst) {
  oaDesign *master = inst->getMaster();
  if (!master) {
    // Which says nothing of the reason; opening raises it.
    oaScalarName lib;
    oaScalarName cell;
    oaScalarName view;
    inst->getLibName(lib);
    inst->getCellName(cell);
    inst->getViewName(view);
    const DesignHolder opened(oaDesign::open(lib, cell, view, 'r'));
    fault_ = oaPlugInMain::tr("it cannot be bound");
    return;
  }
  oaBlock *block = topBlockOf(master);
  if (!block) {
    fault_ = oaPlugInMain::tr("it is empty");
    return;
  }
  oaIter<oaTerm> terms(block->getTerms());
  while (oaTerm *term = terms.getNext()) {
    addTerminal(term);
  }
}

void NetlistMaster::addTerminal(oaTerm *term) {
  oaName name;
  term->getName(name);
  std::vector<size_t> places;
  for (const std::string &bit : bitsOf(name)) {
    const auto inserted = placeOfBit_.emplace(bit, size_t(terminals_.size()));
    if (inserted.second) {
      terminals_.append(toolkit::fromEightBit(bit.c_str()));
    }
    places.push_back(inserted.first->second);
  }
  oaString text;
  name.get(oaConvert::ns, text);
  placesOfTerminal_.emplace(hostTextOf(text), places);
}

NetlistMaster::Terminal &NetlistMaster::terminalOf(oaInstTerm *connection, size_t order) {
  if (connection->usesTermPosition()) {
    text_ = oaConvert::toOaString(QString::fromLatin1("#%1").arg(connection->getTermPosition()));
  } else {
    connection->getTermName(oaConvert::ns, text_);
  }
  const oaChar *text = text_;
  if (order < guesses_.size() && std::strcmp(guesses_[order]->first.c_str(), text) == 0) {
    return guesses_[order]->second;
  }
  auto found = terminalsByName_.find(text);
  if (found == terminalsByName_.end()) {
    found = terminalsByName_.emplace(text, resolve(connection)).first;
  }
  if (order == guesses_.size()) {
    guesses_.push_back(&*found);
  } else if (order < guesses_.size()) {
    guesses_[order] = &*found;
  }
  return found->second;
}

// The kind of a terminal's name may differ between instance and master ("A<3>" as a scalar, a bit or a bundle of one
// member), so only the text counts: first that of a whole terminal, then that of each bit.
NetlistMaster::Terminal NetlistMaster::resolve(oaInstTerm *connection) const {
  oaName name;
  if (!connection->usesTermPosition()) {
    connection->getTermName(name);
  } else if (oaTerm *term = connection->getTerm()) {
    term->getName(name);
  } else {
    name = oaScalarName(oaConvert::ns, text_);
  }
  oaString text;
  name.get(oaConvert::ns, text);
  const std::string hostText = hostTextOf(text);
  Terminal terminal;
  terminal.name = toolkit::fromEightBit(hostText.c_str());
  const auto whole = placesOfTerminal_.find(hostText);
  if (whole != placesOfTerminal_.end()) {
    terminal.places = whole->second;
    return terminal;
  }
  const std::vector<std::string> bits = bitsOf(name);
  for (const std::string &bit : bits) {
    terminal.bitNames.append(toolkit::fromEightBit(bit.c_str()));
    const auto place = placeOfBit_.find(bit);
    if (place != placeOfBit_.end()) {
      terminal.places.push_back(place->second);
    }
  }
  // A terminal of which the master has a part only is listed whole under its own name.
  if (terminal.places.size() != bits.size()) {
    terminal.places.clear();
  }
  return terminal;
}
