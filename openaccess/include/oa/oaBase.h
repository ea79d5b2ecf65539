// The base layer of the kit: text, names, geometry, parameters, exceptions, objects, properties.
#ifndef OABASE_H
#define OABASE_H

#include "oa/oaArray.h"
#include "oa/oaBaseInit.h"
#include "oa/oaBaseMsgIds.h"
#include "oa/oaBox.h"
#include "oa/oaBuildInfo.h"
#include "oa/oaBundleName.h"
#include "oa/oaDomain.h"
#include "oa/oaEnumWrapper.h"
#include "oa/oaException.h"
#include "oa/oaInstallation.h"
#include "oa/oaName.h"
#include "oa/oaNameSpaces.h"
#include "oa/oaOrient.h"
#include "oa/oaParam.h"
#include "oa/oaPoint.h"
#include "oa/oaPointArray.h"
#include "oa/oaScalarName.h"
#include "oa/oaSegment.h"
#include "oa/oaSimpleName.h"
#include "oa/oaString.h"
#include "oa/oaTimer.h"
#include "oa/oaTransform.h"
#include "oa/oaType.h"
#include "oa/oaTypes.h"
#include "oa/oaVector.h"
#include "oa/oaVectorBitName.h"
#include "oa/oaVectorName.h"

#include "oa/oaCollection.h"
#include "oa/oaObject.h"
#include "oa/oaProp.h"
#include "oa/oaSession.h"

#endif
