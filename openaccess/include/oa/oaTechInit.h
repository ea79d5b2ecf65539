#ifndef OATECHINIT_H
#define OATECHINIT_H

#include "oa/oaTypes.h"

// Starts the kit up to this layer, the layers below first. Arguments, repeated calls and errors as for oaBaseInit().
void oaTechInit(OpenAccess_4::oaUInt4 majorRev, OpenAccess_4::oaUInt4 minorRev, OpenAccess_4::oaUInt4 dataModelRev);
// With the newest data model.
void oaTechInit(OpenAccess_4::oaUInt4 majorRev = oacAPIMajorRevNumber,
                OpenAccess_4::oaUInt4 minorRev = oacAPIMinorRevNumber);

namespace OpenAccess_4 {
using ::oaTechInit;
}

#endif
