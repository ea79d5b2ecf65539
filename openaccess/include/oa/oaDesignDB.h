#ifndef OADESIGNDB_H
#define OADESIGNDB_H

// Everything a client of designs needs: the layers below, and all classes of the design layer.

#include "oa/oaTechDB.h"

#include "oa/oaArc.h"
#include "oa/oaAttrType.h"
#include "oa/oaBlock.h"
#include "oa/oaDesign.h"
#include "oa/oaDesignEnums.h"
#include "oa/oaDesignException.h"
#include "oa/oaDesignMsgIds.h"
#include "oa/oaDesignObject.h"
#include "oa/oaDonut.h"
#include "oa/oaDot.h"
#include "oa/oaEllipse.h"
#include "oa/oaEvalText.h"
#include "oa/oaFig.h"
#include "oa/oaFont.h"
#include "oa/oaLine.h"
#include "oa/oaLPPHeader.h"
#include "oa/oaPath.h"
#include "oa/oaPathSeg.h"
#include "oa/oaPcell.h"
#include "oa/oaPolygon.h"
#include "oa/oaRect.h"
#include "oa/oaSegStyle.h"
#include "oa/oaShape.h"
#include "oa/oaText.h"
#include "oa/oaTextDisplay.h"
#include "oa/oaTextDisplays.h"

#include "oa/oaConnectivity.h"

namespace OpenAccess_4 {

// Starts the design layer and those below it. Work is done by the first call only, but each call checks the revisions:
// raises oacInvalidMajorAPIRev, oacInvalidAPIRev, oacInvalidDataModelRev or oacInconsistentDataModelRev.
void oaDesignInit(oaUInt4 apiMajorRev = oacAPIMajorRevNumber, oaUInt4 apiMinorRev = oacAPIMinorRevNumber,
                  oaUInt4 dataModelRev = oacDataModelRevNumber);

} // namespace OpenAccess_4

using OpenAccess_4::oaDesignInit;

#endif
