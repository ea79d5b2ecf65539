#include "placementsender.h"

#include <cstdio>

#include "hostdatanames.h"
#include "hostsyntax.h"
#include "pointtext.h"

using namespace oa;

namespace {

// Tells the host that a symbol lives in an OpenAccess library.
const char kLibrarySuffix[] = ".oa";

// The number by which the host knows the point of setDataPoint() as the offset of a placement's label.
const int kLabelOffsetPoint = 1;

// The first character tells for nearly all.
bool isLabelOffset(const oaString &name) {
  const oaChar *characters = name;
  return *characters == 'l' && name == "labelOffset";
}

// An iterated instance I1[0:3], and a single bit of one, is I1 to the host. False when there is nothing to cut.
bool cutRange(oaString &name) {
  const oaUInt4 bracket = name.index('[');
  const bool isRange = bracket > 0 && bracket < name.getLength();
  if (isRange) {
    name[bracket] = '\0';
  }
  return isRange;
}

} // namespace

PlacementSender::PlacementSender(oaPlugInMain &host, WalkFaults &faults)
    : host_(host), faults_(faults), addPlacement_(host, "addPlacement(QString,QString,QPoint,QString)"),
      setDataString_(host, "setDataString(QString,QString)"),
      setVectorPlacementConnection_(host, "setVectorPlacementConnection(QString,QString)"), debug_(oaConvert::debug),
      deviceNameKey_(QLatin1String("devicename")) {
  for (int orient = 0; orient < 8; ++orient) {
    trans_[orient] = oaConvert::toTrans(oaOrient(oaOrientEnum(orient)));
  }
}

void PlacementSender::send(oaBlock *block) {
  findPlacementsOnBuses(block);
  oaIter<oaInst> insts(block->getInsts(oacInstIterNotImplicit));
  while (oaInst *inst = insts.getNext()) {
    faults_.guardObject([&] { sendInst(block, inst); });
  }
}

void PlacementSender::findPlacementsOnBuses(oaBlock *block) {
  knowsPlacementsOnBuses_ = false;
  faults_.guardObject([&] {
    oaIter<oaBusNetDef> defs(block->getBusNetDefs());
    while (const oaBusNetDef *def = defs.getNext()) {
      oaIter<oaBusNet> buses(def->getBusNets());
      while (const oaBusNet *bus = buses.getNext()) {
        addPlacementsOn(bus);
      }
    }
    oaIter<oaNet> bundles(block->getNets(oacNetIterBundle));
    while (const oaNet *bundle = bundles.getNext()) {
      addPlacementsOn(bundle);
    }
    knowsPlacementsOnBuses_ = true;
  });
}

void PlacementSender::addPlacementsOn(const oaNet *net) {
  oaIter<oaInstTerm> instTerms(net->getInstTerms());
  while (const oaInstTerm *instTerm = instTerms.getNext()) {
    const oaInst *inst = instTerm->getInst();
    if (inst->getType() != oacVectorInstType) { // which are looked at anyway
      placementsOnBuses_.insert(inst);
    }
  }
}

void PlacementSender::sendInst(oaBlock *block, oaInst *inst) {
  if (debug_) {
    printMaster(inst);
  }
  const Symbol &symbol = symbolOf(inst);
  oaTransform xform;
  inst->getTransform(xform);
  emit addPlacement_(symbol.device, symbol.library, QPoint(xform.xOffset(), xform.yOffset()),
                     trans_[int(oaOrientEnum(xform.orient())) & 7]);
  if (debug_) {
    std::printf("set parameter...");
  }
  sendProperties(inst);
  const oaVectorInstDef *def = readName(inst);
  emit setDataString_(deviceNameKey_, qtName_.set(name_));
  const bool isIterated = inst->getNumBits() > 1;
  if (isIterated) {
    sendIteration(def ? def : oaVectorInstDef::find(block, oaScalarName(oaConvert::ns, name_)));
  }
  if (isIterated || inst->getType() == oacVectorInstType || !knowsPlacementsOnBuses_ ||
      placementsOnBuses_.count(inst) != 0) {
    sendConnections(inst, isIterated);
  }
  if (debug_) {
    std::printf("set instance name...");
    std::printf("end instance %s\n", static_cast<const oaChar *>(name_));
  }
}

const PlacementSender::Symbol &PlacementSender::symbolOf(oaInst *inst) {
  const auto known = symbolByHeader_.find(inst->getHeader());
  if (known != symbolByHeader_.end()) {
    return known->second;
  }
  oaString lib;
  oaString cell;
  oaString view;
  inst->getLibName(oaConvert::ns, lib);
  inst->getCellName(oaConvert::ns, cell);
  inst->getViewName(oaConvert::ns, view);
  Symbol symbol;
  if (view == hostdata::kComponentView) { // the host finds it itself, so its library is named plainly
    symbol.device = oaConvert::toString(cell);
    symbol.library = oaConvert::toString(lib);
  } else {
    symbol.device = oaConvert::toDeviceName(oaConvert::toString(cell), oaConvert::toString(view));
    symbol.library = oaConvert::toString(lib) + QLatin1String(kLibrarySuffix);
  }
  return symbolByHeader_.emplace(inst->getHeader(), symbol).first->second;
}

void PlacementSender::sendProperties(oaInst *inst) {
  oaIter<oaProp> properties(inst->getProps());
  for (int place = 0; oaProp *property = properties.getNext(); ++place) {
    property->getName(name_);
    property->getValue(value_);
    if (debug_) {
      std::printf("inst prop (%s): %s\n", static_cast<const oaChar *>(name_), static_cast<const oaChar *>(value_));
    }
    if (isLabelOffset(name_)) {
      emit host_.setDataPoint(kLabelOffsetPoint, pointOfText(value_));
    } else {
      emit setDataString_(propertyNames_.at(place, name_), qtValue_.set(value_));
    }
  }
}

// The base name of an iterated instance is that of its definition, without the range that would be cut off again.
const oaVectorInstDef *PlacementSender::readName(oaInst *inst) {
  const oaVectorInstDef *def = nullptr;
  if (inst->getType() == oacVectorInstType) {
    def = static_cast<oaVectorInst *>(inst)->getDef();
    def->getName(oaConvert::ns, name_);
  } else {
    inst->getName(oaConvert::ns, name_);
  }
  return cutRange(name_) ? nullptr : def;
}

void PlacementSender::sendIteration(const oaVectorInstDef *def) {
  if (!def) {
    return;
  }
  oaIter<oaVectorInst> insts(def->getVectorInsts());
  if (const oaVectorInst *first = insts.getNext()) {
    emit host_.upgradeToVectorPlacement(int(first->getStart()), int(first->getStop()));
  }
}

void PlacementSender::sendConnections(oaInst *inst, bool isIterated) {
  oaIter<oaInstTerm> instTerms(inst->getInstTerms(oacInstTermIterNotImplicit));
  while (const oaInstTerm *instTerm = instTerms.getNext()) {
    faults_.guardObject([&] { sendConnection(instTerm, isIterated); });
  }
}

void PlacementSender::sendConnection(const oaInstTerm *instTerm, bool isIterated) {
  if (!isIterated && instTerm->getNumBits() < 2) {
    return;
  }
  const oaNet *net = instTerm->getNet();
  if (!net || !readTermName(instTerm)) {
    return;
  }
  const QString &netName = netNameOf(net);
  if (!netName.isEmpty()) {
    toHostName(termText_);
    emit setVectorPlacementConnection_(qtName_.set(termText_), netName);
  }
}

const QString &PlacementSender::netNameOf(const oaNet *net) {
  const auto known = nameByNet_.find(net);
  if (known != nameByNet_.end()) {
    return known->second;
  }
  net->getName(oaConvert::ns, netText_);
  toHostName(netText_);
  return nameByNet_.emplace(net, oaConvert::toString(netText_)).first->second;
}

// A connection by position has a name only when the symbol is at hand.
bool PlacementSender::readTermName(const oaInstTerm *instTerm) {
  if (!instTerm->usesTermPosition()) {
    instTerm->getTermName(oaConvert::ns, termText_);
    return true;
  }
  if (const oaTerm *term = instTerm->getTerm()) {
    term->getName(oaConvert::ns, termText_);
    return true;
  }
  emit host_.reportError(oaPlugInMain::tr("connection by position, but the terminal is not found in the symbol"), 1,
                         oaConvert::toString(name_) + QLatin1Char(' ') +
                             oaConvert::toString(instTerm->getTermPosition()));
  return false;
}

void PlacementSender::printMaster(const oaInst *inst) {
  oaString lib;
  oaString cell;
  oaString view;
  inst->getLibName(oaConvert::ns, lib);
  inst->getCellName(oaConvert::ns, cell);
  inst->getViewName(oaConvert::ns, view);
  std::printf("need symbol %s %s %s\n", static_cast<const oaChar *>(lib), static_cast<const oaChar *>(cell),
              static_cast<const oaChar *>(view));
}
