// Units of a technology and what else belongs to it as a whole.
#include "oa/oaTech.h"

#include "raise.h"
#include "techreferences.h"
#include "viewtypes.h"

#include <cmath>
#include <limits>

namespace OpenAccess_4 {

namespace {

using kit::Row;
using kit::TechDatabase;
using kit::ViewTypes;

// The nearest value of the type; the type's limits for what lies beyond them, 0 for what is no number.
template <typename Integer> Integer nearest(double value) {
  using Limits = std::numeric_limits<Integer>;
  if (std::isnan(value)) {
    return 0;
  }
  const double rounded = std::round(value);
  // The highest 64-bit number is no double; from there on every double is beyond it.
  if (rounded >= static_cast<double>(Limits::max())) {
    return Limits::max();
  }
  return rounded <= static_cast<double>(Limits::min()) ? Limits::min() : static_cast<Integer>(rounded);
}

double dbuPerUU(const oaTech *tech, const oaViewType *viewType) { return tech->getDBUPerUU(viewType); }

TechDatabase *withProcessFamily(TechDatabase &tech) {
  return tech.attributes.processFamily[0] != kit::kNoString ? &tech : nullptr;
}

} // namespace

oaUInt4 oaTech::getDBUPerUU(const oaViewType *viewType) const { return getDBUPerUU(viewType, false); }
oaUInt4 oaTech::getDBUPerUU(const oaViewType *viewType, oaBoolean local) const {
  return kit::dbuPerUU(&TechDatabase::of(this), ViewTypes::rowOfType(viewType), local);
}
oaUserUnitsType oaTech::getUserUnits(const oaViewType *viewType) const { return getUserUnits(viewType, false); }
oaUserUnitsType oaTech::getUserUnits(const oaViewType *viewType, oaBoolean local) const {
  return oaUserUnitsType(kit::userUnits(&TechDatabase::of(this), ViewTypes::rowOfType(viewType), local));
}

void oaTech::setDBUPerUU(const oaViewType *viewType, oaUInt4 value) {
  TechDatabase &tech = TechDatabase::of(this);
  const Row type = ViewTypes::rowOfType(viewType);
  if (value == 0) {
    raiseTech(oacInvalidDBUPerUU, tech.label() + ": 0 database units a user unit for view type " +
                                      ViewTypes::instance().nameOf(type) + ", expected at least 1");
  }
  const Row row = tech.getUnits(type);
  for (TechDatabase *other : kit::techsInReach(tech)) {
    const Row otherRow = other == &tech ? kit::kNoRow : other->findUnits(type);
    const oaUInt4 otherValue = otherRow == kit::kNoRow ? 0 : other->units.dbuPerUU[otherRow];
    if (otherValue != 0 && otherValue != value) {
      raiseTech(oacInvalidDBUPerUU, tech.label() + ": " + std::to_string(value) +
                                        " database units a user unit for view type " +
                                        ViewTypes::instance().nameOf(type) + ", but " + other->label() + " has " +
                                        std::to_string(otherValue) + ", and one refers to the other");
    }
  }
  tech.units.dbuPerUU.set(row, value);
  tech.touch();
}

void oaTech::setUserUnits(const oaViewType *viewType, oaUserUnitsType value) {
  TechDatabase &tech = TechDatabase::of(this);
  const Row row = tech.getUnits(ViewTypes::rowOfType(viewType));
  tech.units.userUnits.set(row, static_cast<std::uint8_t>(static_cast<oaUserUnitsTypeEnum>(value)));
  tech.units.isUserUnitsSet.set(row, 1);
  tech.touch();
}

void oaTech::unsetDBUPerUU(const oaViewType *viewType) {
  TechDatabase &tech = TechDatabase::of(this);
  tech.units.dbuPerUU.set(tech.getUnits(ViewTypes::rowOfType(viewType)), 0);
  tech.touch();
}

void oaTech::unsetUserUnits(const oaViewType *viewType) {
  TechDatabase &tech = TechDatabase::of(this);
  tech.units.isUserUnitsSet.set(tech.getUnits(ViewTypes::rowOfType(viewType)), 0);
  tech.touch();
}

oaBoolean oaTech::isDBUPerUUSet(const oaViewType *viewType) const {
  TechDatabase &tech = TechDatabase::of(this);
  const Row row = tech.findUnits(ViewTypes::rowOfType(viewType));
  return row != kit::kNoRow && tech.units.dbuPerUU[row] != 0;
}

oaBoolean oaTech::isUserUnitsSet(const oaViewType *viewType) const {
  TechDatabase &tech = TechDatabase::of(this);
  const Row row = tech.findUnits(ViewTypes::rowOfType(viewType));
  return row != kit::kNoRow && tech.units.isUserUnitsSet[row] != 0;
}

oaUInt4 oaTech::getDefaultDBUPerUU(const oaViewType *viewType) {
  return kit::defaultDbuPerUU(ViewTypes::rowOfType(viewType));
}
oaUserUnitsType oaTech::getDefaultUserUnits(const oaViewType *viewType) {
  return oaUserUnitsType(kit::defaultUserUnits(ViewTypes::rowOfType(viewType)));
}
oaDist oaTech::getDefaultDefaultManufacturingGrid() { return 0; }

oaDist oaTech::getDefaultManufacturingGrid() const { return getDefaultManufacturingGrid(false); }
oaDist oaTech::getDefaultManufacturingGrid(oaBoolean local) const {
  const TechDatabase *owner = kit::findInGraph(TechDatabase::of(this), local, [](TechDatabase &tech) {
    return tech.attributes.isGridSet[0] != 0 ? &tech : nullptr;
  });
  return owner != nullptr ? owner->attributes.gridDbu[0] : getDefaultDefaultManufacturingGrid();
}

void oaTech::setDefaultManufacturingGrid(oaDist grid) {
  TechDatabase &tech = TechDatabase::of(this);
  tech.attributes.gridDbu.set(0, grid);
  tech.attributes.isGridSet.set(0, 1);
  tech.touch();
}

void oaTech::unsetDefaultManufacturingGrid() {
  TechDatabase &tech = TechDatabase::of(this);
  tech.attributes.isGridSet.set(0, 0);
  tech.touch();
}

oaBoolean oaTech::isDefaultManufacturingGridSet() const { return TechDatabase::of(this).attributes.isGridSet[0] != 0; }

void oaTech::setProcessFamily(const oaString &processFamily) {
  TechDatabase &tech = TechDatabase::of(this);
  tech.attributes.processFamily.set(0, tech.strings().add(std::string(processFamily)));
  tech.noteAbandonedRows();
  tech.touch();
}

void oaTech::unsetProcessFamily() { setProcessFamily(""); }

void oaTech::getProcessFamily(oaString &processFamily, oaBoolean local) const {
  TechDatabase *owner = kit::findInGraph(TechDatabase::of(this), local, withProcessFamily);
  if (owner == nullptr) {
    processFamily = "";
  } else {
    owner->strings().get(owner->attributes.processFamily[0], processFamily);
  }
}

oaBoolean oaTech::hasProcessFamily(oaBoolean local) const {
  return kit::findInGraph(TechDatabase::of(this), local, withProcessFamily) != nullptr;
}

oaInt4 oaTech::uuToDBU(const oaViewType *viewType, oaDouble value) {
  return nearest<oaInt4>(value * dbuPerUU(this, viewType));
}
oaUInt4 oaTech::uuToDBUDistance(const oaViewType *viewType, oaDouble value) {
  return nearest<oaUInt4>(value * dbuPerUU(this, viewType));
}
oaUInt8 oaTech::uuToDBUArea(const oaViewType *viewType, oaDouble value) {
  const double scale = dbuPerUU(this, viewType);
  return nearest<oaUInt8>(value * scale * scale);
}
oaDouble oaTech::dbuToUU(const oaViewType *viewType, oaInt4 value) { return value / dbuPerUU(this, viewType); }
oaDouble oaTech::dbuToUUDistance(const oaViewType *viewType, oaUInt4 value) { return value / dbuPerUU(this, viewType); }
oaDouble oaTech::dbuToUUArea(const oaViewType *viewType, oaUInt8 value) {
  const double scale = dbuPerUU(this, viewType);
  return static_cast<double>(value) / scale / scale;
}

} // namespace OpenAccess_4
