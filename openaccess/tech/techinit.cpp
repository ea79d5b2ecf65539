#include "oa/oaTechInit.h"

#include "oa/oaDMInit.h"

void oaTechInit(OpenAccess_4::oaUInt4 majorRev, OpenAccess_4::oaUInt4 minorRev, OpenAccess_4::oaUInt4 dataModelRev) {
  oaDMInit(majorRev, minorRev, dataModelRev);
}

void oaTechInit(OpenAccess_4::oaUInt4 majorRev, OpenAccess_4::oaUInt4 minorRev) { oaDMInit(majorRev, minorRev); }
