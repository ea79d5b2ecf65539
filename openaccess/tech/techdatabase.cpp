#include "techdatabase.h"

#include "oa/oaTech.h"
#include "raise.h"
#include "techreferences.h"
#include "viewtypes.h"

#include <cstddef>

namespace OpenAccess_4 {
namespace kit {

namespace {

constexpr OpenErrorIds kIds = {
    raiseTech,
    oacOpenUndefinedModeTech,
    oacTechFileDoesNotExist,
    oacSaveReadOnlyTech,
    0,
    oacCannotLockTech,
    oacTechCannotObtainWriteAccess,
    oacTechHasReadNeedWriteAccess,
    oacTechLibNotFound,
    oacTechFileDoesNotExist,
};

constexpr oaPurposeNum kFirstReservedNumber = 0xffff0000U;
constexpr oaPurposeNum kReservedPurposes = 11;

struct DefaultUnits {
  Row viewType;
  oaUInt4 dbuPerUU;
  oaUserUnitsTypeEnum userUnits;
};
constexpr DefaultUnits kDefaultUnits[] = {
    {oacMaskLayout, 1000, oacMicron}, {oacSchematic, 160, oacInch},     {oacSchematicSymbol, 160, oacInch},
    {oacNetlist, 160, oacInch},       {oacHierDesign, 1000, oacMicron},
};

const DefaultUnits &defaultUnitsOf(Row viewType) {
  for (const DefaultUnits &units : kDefaultUnits) {
    if (units.viewType == viewType) {
      return units;
    }
  }
  raiseTech(oacInvalidTechViewType,
            "view type " + ViewTypes::instance().nameOf(viewType) + ": has no units; only design types have");
}

} // namespace

TechAttributesTable::TechAttributesTable(Database &database)
    : Table(database, kTechAttributesTable, "attributes", TableLife::kinds) {
  setKindColumn(kind);
  processFamily.refersTo(kStringTable);
}

UnitsTable::UnitsTable(Database &database) : Table(database, kUnitsTable, "units", TableLife::kinds) {
  setKindColumn(kind);
}

LayerTable::LayerTable(Database &database) : Table(database, kLayerTable, "layers", TableLife::kinds) {
  setKindColumn(kind);
  name.refersTo(kStringTable);
}

PurposeTable::PurposeTable(Database &database) : Table(database, kPurposeTable, "purposes", TableLife::kinds) {
  setKindColumn(kind);
  name.refersTo(kStringTable);
}

ViaDefTable::ViaDefTable(Database &database) : Table(database, kViaDefTable, "via definitions", TableLife::kinds) {
  setKindColumn(kind);
  name.refersTo(kStringTable);
  payload.refersTo([](const Table &table, Row row) -> std::uint16_t {
    return table.kindOf(row) == oacStdViaDefType ? kStdViaDefTable : kCustomViaDefTable;
  });
}

StdViaDefTable::StdViaDefTable(Database &database)
    : Table(database, kStdViaDefTable, "standard via definitions", TableLife::referenced) {
  params.spansPool(kTechMissingCutTable, offsetof(ViaParamValues, missingBegin),
                   offsetof(ViaParamValues, missingCount));
}

CustomViaDefTable::CustomViaDefTable(Database &database)
    : Table(database, kCustomViaDefTable, "custom via definitions", TableLife::referenced) {
  lib.refersTo(kStringTable);
  cell.refersTo(kStringTable);
  view.refersTo(kStringTable);
}

TechDatabase::TechDatabase(DatabasePlace place)
    : OpenDatabase(DatabaseKind::technology, oacTechType, kIds, std::move(place)) {}

const OpenErrorIds &TechDatabase::errorIdsOfLayer() { return kIds; }

oaTech *TechDatabase::object() { return static_cast<oaTech *>(static_cast<oaTechObject *>(self())); }

TechDatabase &TechDatabase::of(const oaTechObject *object) { return static_cast<TechDatabase &>(databaseOf(object)); }

OpenRegistry<TechDatabase> &TechDatabase::registry() {
  // Never destroyed: technologies that are open at the end of the process are dropped with it.
  static OpenRegistry<TechDatabase> &registry = *new OpenRegistry<TechDatabase>;
  return registry;
}

void TechDatabase::initialiseNew() {
  attributes.kind.set(attributes.addRow(), oacTechType);
  addReservedPurposes();
}

void TechDatabase::afterLoad() {
  // A file need not be one that this kit wrote; every technology has its attributes and the reserved purposes all the
  // same.
  if (attributes.rowCount() == 0) {
    attributes.kind.set(attributes.addRow(), oacTechType);
  }
  addReservedPurposes();
}

void TechDatabase::addReservedPurposes() {
  for (oaPurposeNum type = 0; type < kReservedPurposes; ++type) {
    const oaPurposeNum number = oavPurposeNumberDrawing - type;
    if (findPurpose(number) != kNoRow) {
      continue;
    }
    const std::string name(oaEnumNamesOf(oaPurposeTypeEnum()).nameOf(type));
    const Row row = purposes.addRow();
    purposes.kind.set(row, oacPurposeType);
    purposes.name.set(row, strings().add(name));
    purposes.number.set(row, number);
    purposesByName_.add(name, row);
    purposesByNumber_.emplace(number, row);
  }
}

std::uint64_t TechDatabase::changes_ = 0;

void TechDatabase::contentsChanged() {
  ++changes_;
  releaseReferences();
  areIndexesBuilt_ = false;
  layersByName_.clear();
  purposesByName_.clear();
  viaDefsByName_.clear();
  layersByNumber_.clear();
  purposesByNumber_.clear();
}

void TechDatabase::buildIndexes() {
  if (areIndexesBuilt_) {
    return;
  }
  areIndexesBuilt_ = true;
  for (Row row = layers.nextAlive(kNoRow); row != kNoRow; row = layers.nextAlive(row)) {
    layersByName_.add(strings().text(layers.name[row]), row);
    layersByNumber_.emplace(layers.number[row], row);
  }
  for (Row row = purposes.nextAlive(kNoRow); row != kNoRow; row = purposes.nextAlive(row)) {
    purposesByName_.add(strings().text(purposes.name[row]), row);
    purposesByNumber_.emplace(purposes.number[row], row);
  }
  for (Row row = viaDefs.nextAlive(kNoRow); row != kNoRow; row = viaDefs.nextAlive(row)) {
    viaDefsByName_.add(strings().text(viaDefs.name[row]), row);
  }
}

Row TechDatabase::findLayer(const std::string &name) {
  buildIndexes();
  return layersByName_.find(name);
}

Row TechDatabase::findLayer(oaLayerNum number) {
  buildIndexes();
  const auto found = layersByNumber_.find(number);
  return found == layersByNumber_.end() ? kNoRow : found->second;
}

Row TechDatabase::findPurpose(const std::string &name) {
  buildIndexes();
  return purposesByName_.find(name);
}

Row TechDatabase::findPurpose(oaPurposeNum number) {
  buildIndexes();
  const auto found = purposesByNumber_.find(number);
  return found == purposesByNumber_.end() ? kNoRow : found->second;
}

Row TechDatabase::findViaDef(const std::string &name) {
  buildIndexes();
  return viaDefsByName_.find(name);
}

void TechDatabase::checkLayerName(const std::string &name) {
  for (TechDatabase *tech : techsInReach(*this)) {
    if (tech->findLayer(name) != kNoRow) {
      raiseTech(oacLayerNameExists, tech->label() + ": there is a layer of the name \"" + name + "\" already");
    }
  }
}

void TechDatabase::checkLayerNumber(oaLayerNum number) {
  for (TechDatabase *tech : techsInReach(*this)) {
    if (tech->findLayer(number) != kNoRow) {
      raiseTech(oacLayerNumberExists,
                tech->label() + ": there is a layer of the number " + std::to_string(number) + " already");
    }
  }
}

Row TechDatabase::addLayer(oaTypeEnum type, const std::string &name, oaLayerNum number) {
  checkLayerName(name);
  checkLayerNumber(number);
  const Row row = layers.addRow();
  layers.kind.set(row, static_cast<std::uint8_t>(type));
  layers.name.set(row, strings().add(name));
  layers.number.set(row, number);
  layersByName_.add(name, row);
  layersByNumber_.emplace(number, row);
  touch();
  return row;
}

void TechDatabase::renameLayer(Row row, const std::string &name) {
  const std::string old = strings().text(layers.name[row]);
  if (old == name) {
    return;
  }
  checkLayerName(name);
  layersByName_.remove(old, row);
  layersByName_.add(name, row);
  layers.name.set(row, strings().add(name));
  noteAbandonedRows();
  touch();
}

void TechDatabase::renumberLayer(Row row, oaLayerNum number) {
  const oaLayerNum old = layers.number[row];
  if (old == number) {
    return;
  }
  checkLayerNumber(number);
  destroyUsersOfLayer(old);
  layersByNumber_.erase(old);
  layersByNumber_.emplace(number, row);
  layers.number.set(row, number);
  touch();
}

void TechDatabase::checkPurposeName(const std::string &name) {
  for (TechDatabase *tech : techsInReach(*this)) {
    if (tech->findPurpose(name) != kNoRow) {
      raiseTech(oacPurposeNameExists, tech->label() + ": there is a purpose of the name \"" + name + "\" already");
    }
  }
}

void TechDatabase::checkPurposeNumber(oaPurposeNum number) {
  if (number >= kFirstReservedNumber) {
    raiseTech(oacPurposeNumberIsReserved, label() + ": purpose number " + std::to_string(number) +
                                              " is kept for reserved purposes; numbers below " +
                                              std::to_string(kFirstReservedNumber) + " are free");
  }
  for (TechDatabase *tech : techsInReach(*this)) {
    if (tech->findPurpose(number) != kNoRow) {
      raiseTech(oacPurposeNumberExists,
                tech->label() + ": there is a purpose of the number " + std::to_string(number) + " already");
    }
  }
}

Row TechDatabase::addPurpose(const std::string &name, oaPurposeNum number) {
  checkPurposeNumber(number);
  checkPurposeName(name);
  const Row row = purposes.addRow();
  purposes.kind.set(row, oacPurposeType);
  purposes.name.set(row, strings().add(name));
  purposes.number.set(row, number);
  purposesByName_.add(name, row);
  purposesByNumber_.emplace(number, row);
  touch();
  return row;
}

void TechDatabase::renamePurpose(Row row, const std::string &name) {
  const std::string old = strings().text(purposes.name[row]);
  if (old == name) {
    return;
  }
  checkPurposeName(name);
  purposesByName_.remove(old, row);
  purposesByName_.add(name, row);
  purposes.name.set(row, strings().add(name));
  noteAbandonedRows();
  touch();
}

void TechDatabase::renumberPurpose(Row row, oaPurposeNum number) {
  const oaPurposeNum old = purposes.number[row];
  if (old == number) {
    return;
  }
  checkPurposeNumber(number);
  purposesByNumber_.erase(old);
  purposesByNumber_.emplace(number, row);
  purposes.number.set(row, number);
  touch();
}

Row TechDatabase::addViaDef(oaTypeEnum type, const std::string &name, oaLayerNum layer1, oaLayerNum layer2) {
  for (TechDatabase *tech : techsInReach(*this)) {
    if (tech->findViaDef(name) != kNoRow) {
      raiseTech(oacViaDefExists, tech->label() + ": there is a via definition of the name \"" + name + "\" already");
    }
  }
  const Row row = viaDefs.addRow();
  viaDefs.kind.set(row, static_cast<std::uint8_t>(type));
  viaDefs.name.set(row, strings().add(name));
  viaDefs.layer1.set(row, layer1);
  viaDefs.layer2.set(row, layer2);
  viaDefsByName_.add(name, row);
  touch();
  return row;
}

void TechDatabase::rowIsGoing(Table &table, Row row) {
  ++changes_;
  buildIndexes();
  if (&table == &layers) {
    const oaLayerNum number = layers.number[row];
    layersByName_.remove(strings().text(layers.name[row]), row);
    layersByNumber_.erase(number);
  } else if (&table == &purposes) {
    purposesByName_.remove(strings().text(purposes.name[row]), row);
    purposesByNumber_.erase(purposes.number[row]);
  } else if (&table == &viaDefs) {
    viaDefsByName_.remove(strings().text(viaDefs.name[row]), row);
  }
}

void TechDatabase::destroyLayer(Row row) {
  const oaLayerNum number = layers.number[row];
  destroyRow(layers, row);
  destroyUsersOfLayer(number);
}

// Derived layers may be derived from derived layers, in a circle if a file says so.
void TechDatabase::destroyUsersOfLayer(oaLayerNum number) {
  std::vector<oaLayerNum> gone = {number};
  while (!gone.empty()) {
    const oaLayerNum used = gone.back();
    gone.pop_back();
    for (Row row = layers.nextAlive(kNoRow); row != kNoRow; row = layers.nextAlive(row)) {
      const bool isUser =
          layers.kind[row] == oacDerivedLayerType && (layers.layer1[row] == used || layers.layer2[row] == used);
      if (isUser && layers.number[row] != number) {
        gone.push_back(layers.number[row]);
        destroyRow(layers, row);
      }
    }
    for (Row row = viaDefs.nextAlive(kNoRow); row != kNoRow; row = viaDefs.nextAlive(row)) {
      if (viaDefs.layer1[row] == used || viaDefs.layer2[row] == used) {
        destroyRow(viaDefs, row);
      }
    }
  }
}

Row TechDatabase::findUnits(Row viewType) {
  for (Row row = units.nextAlive(kNoRow); row != kNoRow; row = units.nextAlive(row)) {
    if (units.viewType[row] == viewType) {
      return row;
    }
  }
  return kNoRow;
}

Row TechDatabase::getUnits(Row viewType) {
  defaultUnitsOf(viewType);
  Row row = findUnits(viewType);
  if (row == kNoRow) {
    row = units.addRow();
    units.kind.set(row, oacTechType);
    units.viewType.set(row, viewType);
  }
  return row;
}

oaUInt4 defaultDbuPerUU(Row viewType) { return defaultUnitsOf(viewType).dbuPerUU; }
oaUserUnitsTypeEnum defaultUserUnits(Row viewType) { return defaultUnitsOf(viewType).userUnits; }

oaUInt4 dbuPerUU(TechDatabase *tech, Row viewType, bool isLocal) {
  const oaUInt4 byDefault = defaultDbuPerUU(viewType);
  TechDatabase *owner = tech == nullptr ? nullptr : findInGraph(*tech, isLocal, [&](TechDatabase &at) {
    const Row row = at.findUnits(viewType);
    return row == kNoRow || at.units.dbuPerUU[row] == 0 ? nullptr : &at;
  });
  return owner == nullptr ? byDefault : owner->units.dbuPerUU[owner->findUnits(viewType)];
}

oaUserUnitsTypeEnum userUnits(TechDatabase *tech, Row viewType, bool isLocal) {
  const oaUserUnitsTypeEnum byDefault = defaultUserUnits(viewType);
  TechDatabase *owner = tech == nullptr ? nullptr : findInGraph(*tech, isLocal, [&](TechDatabase &at) {
    const Row row = at.findUnits(viewType);
    return row == kNoRow || at.units.isUserUnitsSet[row] == 0 ? nullptr : &at;
  });
  if (owner == nullptr) {
    return byDefault;
  }
  const oaUInt4 stored = owner->units.userUnits[owner->findUnits(viewType)];
  if (!oaEnumNamesOf(oaUserUnitsTypeEnum()).contains(stored)) {
    raiseBase(oacCorruptedDatabase, owner->label() + ": damaged: user unit " + std::to_string(stored) + " is unknown");
  }
  return static_cast<oaUserUnitsTypeEnum>(stored);
}

} // namespace kit
} // namespace OpenAccess_4
