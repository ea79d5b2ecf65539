#include "oa/oaLayer.h"

#include "oa/oaTech.h"
#include "raise.h"
#include "techreferences.h"

namespace OpenAccess_4 {

namespace {

using kit::kNoRow;
using kit::Row;
using kit::TechDatabase;

template <typename Layer> Layer *layerObject(TechDatabase &tech, Row row) {
  return static_cast<Layer *>(static_cast<oaObject *>(tech.layers.handle(row)));
}

// Only when the layer is of that type; oacUnknownType stands for any.
template <typename Layer, typename Key>
Layer *findLayer(const oaTech *tech, const Key &key, bool isLocal, oaTypeEnum type) {
  return kit::findInGraph(TechDatabase::of(tech), isLocal, [&](TechDatabase &at) {
    const Row row = at.findLayer(key);
    const bool isFound = row != kNoRow && (type == oacUnknownType || at.layers.kind[row] == type);
    return isFound ? layerObject<Layer>(at, row) : nullptr;
  });
}

// A number that may come from a file, as a value of its enumeration.
template <typename Enum> Enum checked(const TechDatabase &tech, oaUInt4 value, const char *what) {
  if (!oaEnumNamesOf(Enum()).contains(value)) {
    raiseBase(oacCorruptedDatabase, tech.label() + ": damaged: " + what + " " + std::to_string(value) + " is unknown");
  }
  return static_cast<Enum>(value);
}

// The physical layer of the material that comes next by mask number, upwards or downwards.
oaPhysicalLayer *neighbour(const oaPhysicalLayer *layer, oaMaterial material, bool isAbove) {
  TechDatabase &tech = TechDatabase::of(layer);
  const oaUInt4 mask = tech.layers.maskNumber[kit::rowOf(layer)];
  Row nearest = kNoRow;
  for (Row row = tech.layers.nextAlive(kNoRow); mask != oacUnsetMaskNumber && row != kNoRow;
       row = tech.layers.nextAlive(row)) {
    const oaUInt4 other = tech.layers.maskNumber[row];
    const bool fits = tech.layers.kind[row] == oacPhysicalLayerType && other != oacUnsetMaskNumber &&
                      tech.layers.material[row] == static_cast<oaMaterialEnum>(material) &&
                      (isAbove ? other > mask : other < mask);
    const bool isNearer = nearest == kNoRow ||
                          (isAbove ? other < tech.layers.maskNumber[nearest] : other > tech.layers.maskNumber[nearest]);
    if (fits && isNearer) {
      nearest = row;
    }
  }
  return layerObject<oaPhysicalLayer>(tech, nearest);
}

} // namespace

void oaLayer::destroy() { TechDatabase::of(this).destroyLayer(kit::rowOf(this)); }
oaLayerNum oaLayer::getNumber() const { return TechDatabase::of(this).layers.number[kit::rowOf(this)]; }
void oaLayer::getName(oaString &name) const {
  TechDatabase &tech = TechDatabase::of(this);
  tech.strings().get(tech.layers.name[kit::rowOf(this)], name);
}
void oaLayer::setNumber(oaLayerNum number) { TechDatabase::of(this).renumberLayer(kit::rowOf(this), number); }
void oaLayer::setName(const oaString &name) { TechDatabase::of(this).renameLayer(kit::rowOf(this), std::string(name)); }

oaLayer *oaLayer::find(const oaTech *tech, const oaString &name) { return find(tech, name, false); }
oaLayer *oaLayer::find(const oaTech *tech, oaLayerNum number) { return find(tech, number, false); }
oaLayer *oaLayer::find(const oaTech *tech, const oaString &name, oaBoolean local) {
  return findLayer<oaLayer>(tech, std::string(name), local, oacUnknownType);
}
oaLayer *oaLayer::find(const oaTech *tech, oaLayerNum number, oaBoolean local) {
  return findLayer<oaLayer>(tech, number, local, oacUnknownType);
}

oaMaterial oaPhysicalLayer::getMaterial() const {
  TechDatabase &tech = TechDatabase::of(this);
  return checked<oaMaterialEnum>(tech, tech.layers.material[kit::rowOf(this)], "material");
}

oaPrefRoutingDir oaPhysicalLayer::getPrefRoutingDir() const {
  TechDatabase &tech = TechDatabase::of(this);
  return checked<oaPrefRoutingDirEnum>(tech, tech.layers.routingDirection[kit::rowOf(this)], "routing direction");
}

oaUInt4 oaPhysicalLayer::getMaskNumber() const { return TechDatabase::of(this).layers.maskNumber[kit::rowOf(this)]; }

oaDist oaPhysicalLayer::getManufacturingGrid() const {
  TechDatabase &tech = TechDatabase::of(this);
  const Row row = kit::rowOf(this);
  return tech.layers.isGridSet[row] != 0 ? tech.layers.gridDbu[row] : tech.object()->getDefaultManufacturingGrid();
}

oaPhysicalLayer *oaPhysicalLayer::getLayerAbove(oaMaterial material) const { return neighbour(this, material, true); }
oaPhysicalLayer *oaPhysicalLayer::getLayerBelow(oaMaterial material) const { return neighbour(this, material, false); }

void oaPhysicalLayer::setMaterial(oaMaterial material) {
  TechDatabase &tech = TechDatabase::of(this);
  tech.layers.material.set(kit::rowOf(this), static_cast<std::uint8_t>(static_cast<oaMaterialEnum>(material)));
  tech.touch();
}

void oaPhysicalLayer::setPrefRoutingDir(oaPrefRoutingDir dir) {
  TechDatabase &tech = TechDatabase::of(this);
  tech.layers.routingDirection.set(kit::rowOf(this), static_cast<std::uint8_t>(static_cast<oaPrefRoutingDirEnum>(dir)));
  tech.touch();
}

void oaPhysicalLayer::setMaskNumber(oaUInt4 number) {
  TechDatabase &tech = TechDatabase::of(this);
  tech.layers.maskNumber.set(kit::rowOf(this), number);
  tech.touch();
}

void oaPhysicalLayer::setManufacturingGrid(oaDist grid) {
  TechDatabase &tech = TechDatabase::of(this);
  tech.layers.isGridSet.set(kit::rowOf(this), 1);
  tech.layers.gridDbu.set(kit::rowOf(this), grid);
  tech.touch();
}

void oaPhysicalLayer::resetManufacturingGrid() {
  TechDatabase &tech = TechDatabase::of(this);
  tech.layers.isGridSet.set(kit::rowOf(this), 0);
  tech.touch();
}

oaPhysicalLayer *oaPhysicalLayer::create(oaTech *tech, const oaString &name, oaLayerNum number, oaMaterial material,
                                         oaUInt4 maskNumber) {
  TechDatabase &database = TechDatabase::of(tech);
  const Row row = database.addLayer(oacPhysicalLayerType, std::string(name), number);
  database.layers.material.set(row, static_cast<std::uint8_t>(static_cast<oaMaterialEnum>(material)));
  database.layers.maskNumber.set(row, maskNumber);
  return layerObject<oaPhysicalLayer>(database, row);
}

oaPhysicalLayer *oaPhysicalLayer::find(const oaTech *tech, const oaString &name) { return find(tech, name, false); }
oaPhysicalLayer *oaPhysicalLayer::find(const oaTech *tech, oaLayerNum number) { return find(tech, number, false); }
oaPhysicalLayer *oaPhysicalLayer::find(const oaTech *tech, const oaString &name, oaBoolean local) {
  return findLayer<oaPhysicalLayer>(tech, std::string(name), local, oacPhysicalLayerType);
}
oaPhysicalLayer *oaPhysicalLayer::find(const oaTech *tech, oaLayerNum number, oaBoolean local) {
  return findLayer<oaPhysicalLayer>(tech, number, local, oacPhysicalLayerType);
}

oaLayer *oaDerivedLayer::getLayer1() const { return oaLayer::find(getTech(), getLayer1Num()); }

oaLayer *oaDerivedLayer::getLayer2() const { return oaLayer::find(getTech(), getLayer2Num()); }

oaLayerNum oaDerivedLayer::getLayer1Num() const { return TechDatabase::of(this).layers.layer1[kit::rowOf(this)]; }
oaLayerNum oaDerivedLayer::getLayer2Num() const { return TechDatabase::of(this).layers.layer2[kit::rowOf(this)]; }

oaLayerOp oaDerivedLayer::getOperation() const {
  TechDatabase &tech = TechDatabase::of(this);
  return checked<oaLayerOpEnum>(tech, tech.layers.operation[kit::rowOf(this)], "layer operation");
}

oaDerivedLayer *oaDerivedLayer::create(oaLayer *layer1, oaLayer *layer2, oaLayerOp operation, const oaString &name,
                                       oaLayerNum number) {
  return create(TechDatabase::of(layer1).object(), layer1, layer2, operation, name, number);
}

oaDerivedLayer *oaDerivedLayer::create(oaTech *tech, oaLayer *layer1, oaLayer *layer2, oaLayerOp operation,
                                       const oaString &name, oaLayerNum number) {
  TechDatabase &database = TechDatabase::of(tech);
  for (const oaLayer *layer : {layer1, layer2}) {
    if (!kit::contains(database.graph(), TechDatabase::of(layer))) {
      raiseTech(oacLayerNotInReferencedTech,
                database.label() + ": the layer to derive from belongs to " + TechDatabase::of(layer).label());
    }
  }
  const Row row = database.addLayer(oacDerivedLayerType, std::string(name), number);
  database.layers.layer1.set(row, layer1->getNumber());
  database.layers.layer2.set(row, layer2->getNumber());
  database.layers.operation.set(row, static_cast<std::uint8_t>(static_cast<oaLayerOpEnum>(operation)));
  return layerObject<oaDerivedLayer>(database, row);
}

oaDerivedLayer *oaDerivedLayer::find(const oaTech *tech, const oaString &name) { return find(tech, name, false); }
oaDerivedLayer *oaDerivedLayer::find(const oaTech *tech, oaLayerNum number) { return find(tech, number, false); }
oaDerivedLayer *oaDerivedLayer::find(const oaTech *tech, const oaString &name, oaBoolean local) {
  return findLayer<oaDerivedLayer>(tech, std::string(name), local, oacDerivedLayerType);
}
oaDerivedLayer *oaDerivedLayer::find(const oaTech *tech, oaLayerNum number, oaBoolean local) {
  return findLayer<oaDerivedLayer>(tech, number, local, oacDerivedLayerType);
}

oaDerivedLayer *oaDerivedLayer::find(const oaLayer *layer1, const oaLayer *layer2, oaLayerOp operation) {
  TechDatabase &tech = TechDatabase::of(layer1);
  const oaLayerNum number1 = layer1->getNumber();
  const oaLayerNum number2 = layer2->getNumber();
  for (Row row = tech.layers.nextAlive(kNoRow); row != kNoRow; row = tech.layers.nextAlive(row)) {
    if (tech.layers.kind[row] == oacDerivedLayerType && tech.layers.layer1[row] == number1 &&
        tech.layers.layer2[row] == number2 && tech.layers.operation[row] == static_cast<oaLayerOpEnum>(operation)) {
      return layerObject<oaDerivedLayer>(tech, row);
    }
  }
  return nullptr;
}

} // namespace OpenAccess_4
