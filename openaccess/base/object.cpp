#include "oa/oaObject.h"

#include "collection.h"
#include "database.h"
#include "oa/oaBaseMsgIds.h"
#include "oa/oaDomain.h"
#include "oa/oaProp.h"
#include "properties.h"
#include "raise.h"

namespace OpenAccess_4 {

namespace {

kit::DatabaseKind databaseKindOf(const oaObject *object) { return kit::databaseOf(object).kind(); }

class PropertiesOfObject : public kit::OwnedRowsKind {
protected:
  kit::RowSpan members(const kit::CollectionQuestion &question) const override {
    return question.table->database().properties().of(*question.table, question.owner);
  }
  kit::Table &memberTable(const kit::CollectionQuestion &question) const override {
    return question.table->database().properties();
  }
};

} // namespace

void oaObject::raiseDead() { kit::raiseDeadObject(); }

oaBoolean oaObject::isValid() const {
  // Clients call this on pointers that may be NULL; a compiler may assume `this` is not, hence the detour.
  const oaObject *volatile object = this;
  return object != nullptr && object->table_ != nullptr;
}

oaDomain oaObject::getDomain() const {
  // Modules and occurrences do not exist in this kit: what lies inside a design is in the block domain.
  const kit::Table &table = kit::liveTable(this);
  const bool inBlock = table.database().kind() == kit::DatabaseKind::design && table.id() != kit::kDatabaseTable;
  return oaDomain(inBlock ? oacBlockDomain : oacNoDomain);
}

oaBoolean oaObject::isTech() const { return getType() == oacTechType; }
oaBoolean oaObject::isDesign() const { return getType() == oacDesignType; }
oaBoolean oaObject::isWafer() const { return false; }
oaBoolean oaObject::isDM() const {
  const oaTypeEnum type = getType();
  return type == oacLibType || (type >= oacCellType && type <= oacDMFileType);
}
oaBoolean oaObject::isDMData() const {
  const oaTypeEnum type = getType();
  return type >= oacLibDMDataType && type <= oacCellViewDMDataType;
}
oaBoolean oaObject::isSession() const { return getType() == oacSessionType; }
oaBoolean oaObject::isProp() const {
  const oaTypeEnum type = getType();
  return type >= oacIntPropType && type <= oacEnumPropType;
}
oaBoolean oaObject::isGroup() const { return false; }
oaBoolean oaObject::isGroupMember() const { return false; }
oaBoolean oaObject::isValue() const { return false; }
oaBoolean oaObject::inGroup() const { return false; }

oaBoolean oaObject::hasProp() const {
  kit::Table &table = kit::liveTable(this);
  return !table.database().properties().of(table, row_).empty();
}

oaObject *oaObject::getDatabase() const {
  if (databaseKindOf(this) == kit::DatabaseKind::session) {
    raiseBase(oacNoObjectDB, "an object of type " + std::string(getType().getName()) + " belongs to no database");
  }
  return kit::databaseOf(this).self();
}

oaCollection<oaProp, oaObject> oaObject::getProps() const {
  static const PropertiesOfObject kind;
  return kit::CollectionAccess::make<oaCollection<oaProp, oaObject>>(kind, &kit::liveTable(this), row_);
}

} // namespace OpenAccess_4
