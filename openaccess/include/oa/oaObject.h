#ifndef OAOBJECT_H
#define OAOBJECT_H

#include "oa/oaCollection.h"
#include "oa/oaType.h"
#include "oa/oaTypes.h"

namespace OpenAccess_4 {

class oaDomain;
class oaObject;
class oaProp;

namespace kit {
class Table;
struct HandleBlock;
Table *tableOf(const oaObject *object);
oaUInt4 rowOf(const oaObject *object);
Table &liveTable(const oaObject *object);
oaUInt2 asideOf(const oaObject *object);
} // namespace kit

// A handle on one row of a database. All object classes derive from this one and add no data, so a pointer may be cast
// along the class hierarchy. Handles are made by the database only; a pointer stays the same as long as the database is
// open, and reads as invalid afterwards: isValid() is false and every other call raises oacDeletedDatabase.
class oaObject {
public:
  oaObject(const oaObject &) = delete;
  oaObject &operator=(const oaObject &) = delete;

  // False for NULL and for objects that were destroyed or whose database was closed.
  oaBoolean isValid() const;
  oaType getType() const {
    if (type_ == 0) {
      raiseDead();
    }
    return oaType(static_cast<oaTypeEnum>(type_));
  }
  oaDomain getDomain() const;
  oaBoolean isTech() const;
  oaBoolean isDesign() const;
  oaBoolean isDM() const;
  oaBoolean isDMData() const;
  oaBoolean isWafer() const;
  oaBoolean isSession() const;
  oaBoolean isProp() const;
  oaBoolean isGroup() const;
  oaBoolean isGroupMember() const;
  oaBoolean isValue() const;
  oaBoolean hasProp() const;
  oaBoolean inGroup() const;
  // The design, technology or management data this object belongs to; raises oacNoObjectDB for session objects.
  oaObject *getDatabase() const;
  // Properties in the order of their creation.
  oaCollection<oaProp, oaObject> getProps() const;

private:
  friend class kit::Table;
  friend struct kit::HandleBlock;
  friend kit::Table *kit::tableOf(const oaObject *object);
  friend oaUInt4 kit::rowOf(const oaObject *object);
  friend kit::Table &kit::liveTable(const oaObject *object);
  friend oaUInt2 kit::asideOf(const oaObject *object);

  oaObject() = default;
  [[noreturn]] static void raiseDead();

  kit::Table *table_ = nullptr;
  oaUInt4 row_ = 0;
  oaUInt2 type_ = 0;
  oaUInt2 aside_ = 0; // what a table remembers to answer sooner, 0 for nothing; see kit::Table::handle
};

// An object of the session: libraries, library definitions, view types.
class oaSession;
class oaSessionObject : public oaObject {
public:
  oaSession *getSession() const;
};

} // namespace OpenAccess_4

#endif
