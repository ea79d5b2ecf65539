#ifndef OAPROP_H
#define OAPROP_H

#include "oa/oaObject.h"
#include "oa/oaString.h"

namespace OpenAccess_4 {

// A named value on any object of a design, technology or management data, properties included. Names are unique on an
// object, whatever the class of the property, and case counts. Properties die with their owner. Those on libraries,
// cells and views live in the session only and are never saved: management data (oaLibDMData, oaCellDMData, ...) is the
// lasting place.
//
// The create functions of all classes raise oacPropNameUsed when the object has a property of that name,
// oacInvalidObjForProp for an object that cannot carry any, and oacInvalidNameLength for an empty name.
class oaProp : public oaObject {
public:
  void destroy();
  oaObject *getOwner() const;
  void getName(oaString &name) const;
  // The value as text: numbers as printf's %d and %g, booleans as "true" and "false", times as ctime() without the line
  // feed, the bytes of an application property up to the first zero byte, and "oaHierProp" for a hierarchical property.
  void getValue(oaString &value) const;
  // Raises oacPropNameUsed.
  void setName(const oaString &name);
  // Moves to another object of the same database; to one of another database it is copied and destroyed here.
  oaProp *moveTo(oaObject *object);
  // Copies with all properties on it.
  oaProp *copyTo(oaObject *object) const;
  // NULL when there is none. `crossDomain` makes no difference in this kit.
  static oaProp *find(const oaObject *object, const oaString &name, oaBoolean crossDomain = false);
};

} // namespace OpenAccess_4

#include "oa/oaProps.h"

#endif
