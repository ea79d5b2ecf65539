#include "oa/oaPurpose.h"

#include "oa/oaTech.h"
#include "raise.h"
#include "techreferences.h"

namespace OpenAccess_4 {

namespace {

using kit::Row;
using kit::TechDatabase;

oaPurpose *purposeObject(TechDatabase &tech, Row row) {
  return static_cast<oaPurpose *>(static_cast<oaObject *>(tech.purposes.handle(row)));
}

void refuseReserved(const oaPurpose *purpose, oaUInt4 id, const char *what) {
  if (purpose->isReserved()) {
    oaString name;
    purpose->getName(name);
    raiseTech(id,
              TechDatabase::of(purpose).label() + ": the reserved purpose " + std::string(name) + " cannot be " + what);
  }
}

} // namespace

void oaPurpose::destroy() {
  refuseReserved(this, oacCannotDestroyReservedPurpose, "destroyed");
  TechDatabase &tech = TechDatabase::of(this);
  tech.destroyRow(tech.purposes, kit::rowOf(this));
}

oaPurposeNum oaPurpose::getNumber() const { return TechDatabase::of(this).purposes.number[kit::rowOf(this)]; }

void oaPurpose::getName(oaString &name) const {
  TechDatabase &tech = TechDatabase::of(this);
  tech.strings().get(tech.purposes.name[kit::rowOf(this)], name);
}

oaPurposeType oaPurpose::getPurposeType() const { return oaPurposeType(oaPurposeType::get(getNumber())); }
oaBoolean oaPurpose::isReserved() const { return getNumber() >= oavPurposeNumberFillOPC; }

void oaPurpose::setNumber(oaPurposeNum number) {
  refuseReserved(this, oacCannotChangeReservedPurpose, "changed");
  TechDatabase::of(this).renumberPurpose(kit::rowOf(this), number);
}

void oaPurpose::setName(const oaString &name) {
  refuseReserved(this, oacCannotChangeReservedPurpose, "changed");
  TechDatabase::of(this).renamePurpose(kit::rowOf(this), std::string(name));
}

oaPurpose *oaPurpose::create(oaTech *tech, const oaString &name, oaPurposeNum number) {
  TechDatabase &database = TechDatabase::of(tech);
  return purposeObject(database, database.addPurpose(std::string(name), number));
}

oaPurpose *oaPurpose::find(const oaTech *tech, const oaString &name) { return find(tech, name, false); }
oaPurpose *oaPurpose::find(const oaTech *tech, oaPurposeNum number) { return find(tech, number, false); }
oaPurpose *oaPurpose::find(const oaTech *tech, const oaString &name, oaBoolean local) {
  return kit::findInGraph(TechDatabase::of(tech), local,
                          [&](TechDatabase &at) { return purposeObject(at, at.findPurpose(std::string(name))); });
}
oaPurpose *oaPurpose::find(const oaTech *tech, oaPurposeNum number, oaBoolean local) {
  return kit::findInGraph(TechDatabase::of(tech), local,
                          [&](TechDatabase &at) { return purposeObject(at, at.findPurpose(number)); });
}

oaPurpose *oaPurpose::get(oaTech *tech, oaPurposeType type) {
  return find(tech, oavPurposeNumberDrawing - static_cast<oaPurposeNum>(static_cast<oaPurposeTypeEnum>(type)));
}

} // namespace OpenAccess_4
