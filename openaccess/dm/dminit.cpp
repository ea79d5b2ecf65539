#include "oa/oaDMInit.h"

#include "oa/oaBaseInit.h"

void oaDMInit(OpenAccess_4::oaUInt4 majorRev, OpenAccess_4::oaUInt4 minorRev, OpenAccess_4::oaUInt4 dataModelRev) {
  oaBaseInit(majorRev, minorRev, dataModelRev);
}

void oaDMInit(OpenAccess_4::oaUInt4 majorRev, OpenAccess_4::oaUInt4 minorRev) { oaBaseInit(majorRev, minorRev); }
