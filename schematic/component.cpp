// The operation that sends one component: its data, then the drawing of its symbol.

#include <cstdio>

#include "componentdrawing.h"
#include "designname.h"
#include "dmdataholder.h"
#include "hostdatanames.h"
#include "oapluginmain.h"
#include "qttoolkit.h"
#include "saveguard.h"
#include "walkfaults.h"

using namespace oa;

namespace {

const char kCdfProperty[] = "cdfData";
// Property of a symbol's design, "x y": the point of the drawing that the host takes for the component's origin.
const char kOffsetProperty[] = "offset";

// Sends all properties of an object but the one that is left out.
void sendProperties(oaPlugInMain &host, const oaObject *object, const char *leftOut, ComponentDataType type) {
  oaString name;
  oaString value;
  oaIter<oaProp> properties(object->getProps());
  while (const oaProp *property = properties.getNext()) {
    property->getName(name);
    if (leftOut && name == leftOut) {
      continue;
    }
    property->getValue(value);
    emit host.compData(oaConvert::toString(name) + QLatin1Char('\n') + oaConvert::toString(value), type);
  }
}

void sendLibraryProperties(oaPlugInMain &host, const DesignName &symbol) {
  if (!oaLibDMData::exists(symbol.lib)) {
    return;
  }
  const DMDataHolder<oaLibDMData> data(oaLibDMData::open(symbol.lib, 'r'));
  sendProperties(host, data.get(), hostdata::kCachedComponents, ComponentLibraryProperty);
}

void sendCellProperties(oaPlugInMain &host, const DesignName &symbol) {
  if (!oaCellDMData::exists(symbol.lib, symbol.cell)) {
    return;
  }
  const DMDataHolder<oaCellDMData> data(oaCellDMData::open(symbol.lib, symbol.cell, 'r'));
  sendProperties(host, data.get(), kCdfProperty, ComponentCellProperty);
}

void sendCdf(oaPlugInMain &host, const DesignName &symbol) {
  if (!oaCellDMData::exists(symbol.lib, symbol.cell)) {
    return;
  }
  const DMDataHolder<oaCellDMData> data(oaCellDMData::open(symbol.lib, symbol.cell, 'r'));
  if (const oaProp *property = oaProp::find(data.get(), kCdfProperty)) {
    oaString value;
    property->getValue(value);
    emit host.compData(oaConvert::toString(value), ComponentCdfData);
  }
}

void sendParameters(oaPlugInMain &host, oaDesign *design) {
  const QString text = oaConvert::toParameterString(design);
  if (!text.isEmpty()) {
    emit host.compData(text, ComponentParameterText);
  }
}

QPoint offsetOf(const oaDesign *design) {
  const oaProp *property = oaProp::find(design, kOffsetProperty);
  if (!property) {
    return QPoint(0, 0);
  }
  oaString value;
  property->getValue(value);
  return oaConvert::stringToPoint(oaConvert::toString(value));
}

// A part of the data that cannot be read does not keep the others from the host.
void sendComponent(oaPlugInMain &host, const DesignName &symbol, oaDesign *design, WalkFaults &faults) {
  faults.guardKind([&] { sendParameters(host, design); });
  faults.guardKind([&] { sendCdf(host, symbol); });
  faults.guardKind([&] { sendLibraryProperties(host, symbol); });
  faults.guardKind([&] { sendCellProperties(host, symbol); });
  faults.guardKind([&] { sendProperties(host, design, nullptr, ComponentDesignProperty); });
  faults.guardKind([&] { emit host.compOffset(offsetOf(design)); });
  faults.guardKind([&] { ComponentDrawing(host, faults).send(design->getTopBlock()); });
}

} // namespace

void oaPlugInMain::loadComponent(QString lib, QString device) {
  const QString path = lib + '/' + device;
  const auto load = [&] {
    oaConvert::init();
    const DesignName symbol(lib, oaConvert::toCellName(device), oaConvert::toViewName(device));
    if (!getLib(symbol.lib, "")) {
      throw tr("library not found");
    }
    DesignHolder design(symbol.open());
    if (design.get()->isSuperMaster()) {
      symbol.evaluateDefaults(design);
    }
    if (!design.get()->getTopBlock()) {
      throw tr("no data");
    }
    WalkFaults faults(*this, "loadComponent", path);
    sendComponent(*this, symbol, design.get(), faults);
  };
  try {
    saving(*this, "loadComponent", load, [&] { return path; });
  } catch (const QString &text) {
    std::printf("ERROR (loadComponent): %s \n", toolkit::toEightBit(text).constData());
    emit reportError(text, 1, QLatin1String("loadComponent: ") + path);
  }
}
