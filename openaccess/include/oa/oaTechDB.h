// Everything of the technology layer and the layers under it.
#ifndef OATECHDB_H
#define OATECHDB_H

#include "oa/oaDM.h"

#include "oa/oaLayer.h"
#include "oa/oaPurpose.h"
#include "oa/oaTech.h"
#include "oa/oaTechException.h"
#include "oa/oaTechHeader.h"
#include "oa/oaTechInit.h"
#include "oa/oaTechMsgIds.h"
#include "oa/oaTechObject.h"
#include "oa/oaTechObserver.h"
#include "oa/oaTechTypes.h"
#include "oa/oaViaDef.h"
#include "oa/oaViaParam.h"

#endif
