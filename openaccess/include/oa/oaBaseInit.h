// Start-up of the base layer. The functions are global and named in the namespace too, since clients call them either
// way.
#ifndef OABASEINIT_H
#define OABASEINIT_H

#include "oa/oaTypes.h"

/// Starts the base layer; only the first call does anything, but each checks its arguments. Raises
/// oacInvalidMajorAPIRev when the major revision is another than the kit's, oacInvalidAPIRev when the minor one is
/// newer, oacInvalidDataModelRev when the data model is newer, oacInconsistentDataModelRev when two calls name
/// different data models.
void oaBaseInit(OpenAccess_4::oaUInt4 majorRev, OpenAccess_4::oaUInt4 minorRev, OpenAccess_4::oaUInt4 dataModelRev);
/// As above with the newest data model.
void oaBaseInit(OpenAccess_4::oaUInt4 majorRev = oacAPIMajorRevNumber,
                OpenAccess_4::oaUInt4 minorRev = oacAPIMinorRevNumber);

/// Raises oacInvalidAPIRev when an application that was built with the kit `appBuild` ("22.50.001") is newer than this
/// kit. To be called before any start-up; looked up by name in liboaBase.so.
extern "C" void oaBaseInitAppBuild(const char *appBuild);

namespace OpenAccess_4 {
using ::oaBaseInit;
}

#endif
