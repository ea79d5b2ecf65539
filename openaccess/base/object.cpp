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

class PropertiesOfObject final : public kit::CollectionKind {
public:
  oaObject *next(const kit::CollectionQuestion &question, oaUInt4 &position, oaUInt4 &hint) const override {
    // `hint` is how many come behind the one returned last.
    const kit::Row following = position + 1;
    if (position != kit::kNoRow) {
      if (hint == 0) {
        return nullptr;
      }
      kit::PropertyTable &properties = question.table->database().properties();
      const std::uint8_t *kind = properties.readyKind(following, *question.table, question.owner);
      oaObject *property = kind != nullptr ? properties.readyHandle(following, *kind) : nullptr;
      if (__builtin_expect(property != nullptr, 1)) {
        position = following;
        --hint;
        return property;
      }
    }
    return search(question, position, hint);
  }
  oaUInt4 count(const kit::CollectionQuestion &question) const override {
    return question.table->database().properties().count(*question.table, question.owner);
  }

private:
  // Out of line, so that most steps need no stack.
  [[gnu::noinline]] static oaObject *search(const kit::CollectionQuestion &question, kit::Row &position,
                                            kit::Row &left) {
    kit::PropertyTable &properties = question.table->database().properties();
    const kit::Row found = properties.search(*question.table, question.owner, position, left);
    if (found == kit::kNoRow) {
      return nullptr;
    }
    position = found;
    return properties.handle(found, properties.kindOf(found));
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
  return table.database().properties().hasAny(table, row_);
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
