#include "oa/oaViaDef.h"

#include "oa/oaLayer.h"
#include "oa/oaNameSpaces.h"
#include "oa/oaScalarName.h"
#include "oa/oaTech.h"
#include "raise.h"
#include "techreferences.h"

namespace OpenAccess_4 {

namespace {

using kit::kNoRow;
using kit::Row;
using kit::TechDatabase;

constexpr std::uint8_t kHasImplant1 = 1;
constexpr std::uint8_t kHasImplant2 = 2;

template <typename ViaDef> ViaDef *viaDefObject(TechDatabase &tech, Row row) {
  return static_cast<ViaDef *>(static_cast<oaObject *>(tech.viaDefs.handle(row)));
}

oaPhysicalLayer *physicalLayer(const oaViaDef *def, oaLayerNum number) {
  return oaPhysicalLayer::find(TechDatabase::of(def).object(), number);
}

Row stdPayload(const oaStdViaDef *def) {
  TechDatabase &tech = TechDatabase::of(def);
  return tech.stdViaDefs.checkRow(tech.viaDefs.payload[kit::rowOf(def)], "a standard via definition");
}

Row customPayload(const oaCustomViaDef *def) {
  TechDatabase &tech = TechDatabase::of(def);
  return tech.customViaDefs.checkRow(tech.viaDefs.payload[kit::rowOf(def)], "a custom via definition");
}

oaLayerNum numberIn(TechDatabase &tech, const oaPhysicalLayer *layer) {
  if (!kit::contains(tech.graph(), TechDatabase::of(layer))) {
    raiseTech(oacLayerNotInReferencedTech,
              tech.label() + ": the layer of a via definition belongs to " + TechDatabase::of(layer).label());
  }
  return layer->getNumber();
}

std::string nativeTextOf(const oaScalarName &name) {
  oaString text;
  name.get(oaNativeNS(), text);
  return std::string(text);
}

void getName(const oaCustomViaDef *def, const kit::Column<Row> &column, oaScalarName &out) {
  oaString text;
  TechDatabase::of(def).strings().get(column[customPayload(def)], text);
  out.init(oaNativeNS(), text);
}

void getName(const oaCustomViaDef *def, const kit::Column<Row> &column, const oaNameSpace &ns, oaString &out) {
  oaScalarName name;
  getName(def, column, name);
  name.get(ns, out);
}

} // namespace

void oaViaDef::destroy() {
  TechDatabase &tech = TechDatabase::of(this);
  tech.destroyRow(tech.viaDefs, kit::rowOf(this));
}

void oaViaDef::getName(oaString &name) const {
  TechDatabase &tech = TechDatabase::of(this);
  tech.strings().get(tech.viaDefs.name[kit::rowOf(this)], name);
}

void oaViaDef::getLayers(oaPhysicalLayer *&layer1, oaPhysicalLayer *&layer2) const {
  layer1 = getLayer1();
  layer2 = getLayer2();
}

oaPhysicalLayer *oaViaDef::getLayer1() const { return physicalLayer(this, getLayer1Num()); }
oaPhysicalLayer *oaViaDef::getLayer2() const { return physicalLayer(this, getLayer2Num()); }
oaLayerNum oaViaDef::getLayer1Num() const { return TechDatabase::of(this).viaDefs.layer1[kit::rowOf(this)]; }
oaLayerNum oaViaDef::getLayer2Num() const { return TechDatabase::of(this).viaDefs.layer2[kit::rowOf(this)]; }
oaFloat oaViaDef::getResistancePerCut() const {
  return TechDatabase::of(this).viaDefs.resistancePerCut[kit::rowOf(this)];
}

void oaViaDef::setResistancePerCut(oaFloat resPerCut) {
  TechDatabase &tech = TechDatabase::of(this);
  tech.viaDefs.resistancePerCut.set(kit::rowOf(this), resPerCut);
  tech.touch();
}

oaViaDef *oaViaDef::find(const oaTech *tech, const oaString &name) { return find(tech, name, false); }
oaViaDef *oaViaDef::find(const oaTech *tech, const oaString &name, oaBoolean local) {
  return kit::findInGraph(TechDatabase::of(tech), local, [&](TechDatabase &at) {
    return viaDefObject<oaViaDef>(at, at.findViaDef(std::string(name)));
  });
}

void oaStdViaDef::getParams(oaViaParam &params) const {
  TechDatabase &tech = TechDatabase::of(this);
  params = kit::loadedViaParam(tech.stdViaDefs.params[stdPayload(this)], tech.missingCuts);
  // The definition is where defaults come from.
  for (oaUInt4 type = oacLayer1EncViaParamType; type <= oacCutHeightViaParamType; ++type) {
    params.setDefault(static_cast<oaViaParamTypeEnum>(type));
  }
}

void oaStdViaDef::setParams(const oaViaParam &params) {
  TechDatabase &tech = TechDatabase::of(this);
  tech.stdViaDefs.params.set(stdPayload(this), kit::storedViaParam(params, tech.missingCuts));
  tech.noteAbandonedRows();
  tech.touch();
}

oaBoolean oaStdViaDef::hasImplant1() const {
  return (TechDatabase::of(this).stdViaDefs.implants[stdPayload(this)] & kHasImplant1) != 0;
}
oaBoolean oaStdViaDef::hasImplant2() const {
  return (TechDatabase::of(this).stdViaDefs.implants[stdPayload(this)] & kHasImplant2) != 0;
}
oaPhysicalLayer *oaStdViaDef::getImplant1() const {
  return hasImplant1() ? physicalLayer(this, getImplant1Num()) : nullptr;
}
oaPhysicalLayer *oaStdViaDef::getImplant2() const {
  return hasImplant2() ? physicalLayer(this, getImplant2Num()) : nullptr;
}

oaLayerNum oaStdViaDef::getImplant1Num() const {
  if (!hasImplant1()) {
    raiseTech(oacStdViaDefDoesNotHaveImplant1,
              TechDatabase::of(this).label() + ": the via definition has no first implant");
  }
  return TechDatabase::of(this).stdViaDefs.implant1[stdPayload(this)];
}

oaLayerNum oaStdViaDef::getImplant2Num() const {
  if (!hasImplant2()) {
    raiseTech(oacStdViaDefDoesNotHaveImplant2,
              TechDatabase::of(this).label() + ": the via definition has no second implant");
  }
  return TechDatabase::of(this).stdViaDefs.implant2[stdPayload(this)];
}

oaStdViaDef *oaStdViaDef::create(oaTech *tech, const oaString &name, oaPhysicalLayer *layer1, oaPhysicalLayer *layer2,
                                 const oaViaParam &params, oaPhysicalLayer *implant1, oaPhysicalLayer *implant2) {
  TechDatabase &database = TechDatabase::of(tech);
  const oaLayerNum number1 = numberIn(database, layer1);
  const oaLayerNum number2 = numberIn(database, layer2);
  const oaLayerNum implantNumber1 = implant1 != nullptr ? numberIn(database, implant1) : 0;
  const oaLayerNum implantNumber2 = implant2 != nullptr ? numberIn(database, implant2) : 0;
  const Row row = database.addViaDef(oacStdViaDefType, std::string(name), number1, number2);
  kit::StdViaDefTable &table = database.stdViaDefs;
  const Row payload = table.addRow();
  table.params.set(payload, kit::storedViaParam(params, database.missingCuts));
  table.implant1.set(payload, implantNumber1);
  table.implant2.set(payload, implantNumber2);
  table.implants.set(payload, static_cast<std::uint8_t>((implant1 != nullptr ? kHasImplant1 : 0) |
                                                        (implant2 != nullptr ? kHasImplant2 : 0)));
  database.viaDefs.payload.set(row, payload);
  return viaDefObject<oaStdViaDef>(database, row);
}

void oaCustomViaDef::getLibName(oaScalarName &libName) const {
  OpenAccess_4::getName(this, TechDatabase::of(this).customViaDefs.lib, libName);
}
void oaCustomViaDef::getCellName(oaScalarName &cellName) const {
  OpenAccess_4::getName(this, TechDatabase::of(this).customViaDefs.cell, cellName);
}
void oaCustomViaDef::getViewName(oaScalarName &viewName) const {
  OpenAccess_4::getName(this, TechDatabase::of(this).customViaDefs.view, viewName);
}
void oaCustomViaDef::getLibName(const oaNameSpace &ns, oaString &out) const {
  OpenAccess_4::getName(this, TechDatabase::of(this).customViaDefs.lib, ns, out);
}
void oaCustomViaDef::getCellName(const oaNameSpace &ns, oaString &out) const {
  OpenAccess_4::getName(this, TechDatabase::of(this).customViaDefs.cell, ns, out);
}
void oaCustomViaDef::getViewName(const oaNameSpace &ns, oaString &out) const {
  OpenAccess_4::getName(this, TechDatabase::of(this).customViaDefs.view, ns, out);
}

void oaCustomViaDef::setMaster(const oaScalarName &libName, const oaScalarName &cellName,
                               const oaScalarName &viewName) {
  TechDatabase &tech = TechDatabase::of(this);
  const Row row = customPayload(this);
  tech.customViaDefs.lib.set(row, tech.strings().intern(nativeTextOf(libName)));
  tech.customViaDefs.cell.set(row, tech.strings().intern(nativeTextOf(cellName)));
  tech.customViaDefs.view.set(row, tech.strings().intern(nativeTextOf(viewName)));
  tech.noteAbandonedRows();
  tech.touch();
}

oaCustomViaDef *oaCustomViaDef::create(oaTech *tech, const oaString &name, const oaScalarName &libName,
                                       const oaScalarName &cellName, const oaScalarName &viewName,
                                       oaPhysicalLayer *layer1, oaPhysicalLayer *layer2) {
  TechDatabase &database = TechDatabase::of(tech);
  const oaLayerNum number1 = numberIn(database, layer1);
  const oaLayerNum number2 = numberIn(database, layer2);
  const Row row = database.addViaDef(oacCustomViaDefType, std::string(name), number1, number2);
  database.viaDefs.payload.set(row, database.customViaDefs.addRow());
  oaCustomViaDef *def = viaDefObject<oaCustomViaDef>(database, row);
  def->setMaster(libName, cellName, viewName);
  return def;
}

} // namespace OpenAccess_4
