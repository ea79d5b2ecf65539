#include "oa/oaTechObject.h"

#include "oa/oaTech.h"
#include "techdatabase.h"

namespace OpenAccess_4 {

oaTech *oaTechObject::getTech() const { return kit::TechDatabase::of(this).object(); }

oaBoolean oaTechObject::isLayer() const {
  const oaTypeEnum type = getType();
  return type == oacPhysicalLayerType || type == oacDerivedLayerType;
}

oaBoolean oaTechObject::isViaDef() const {
  const oaTypeEnum type = getType();
  return type == oacStdViaDefType || type == oacCustomViaDefType;
}

} // namespace OpenAccess_4
