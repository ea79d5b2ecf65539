#ifndef OATECHOBJECT_H
#define OATECHOBJECT_H

#include "oa/oaObject.h"
#include "oa/oaTechTypes.h"

namespace OpenAccess_4 {

class oaTech;

// A technology or something in one.
class oaTechObject : public oaObject {
public:
  oaTech *getTech() const;
  oaBoolean isLayer() const;
  oaBoolean isViaDef() const;
};

} // namespace OpenAccess_4

#endif
