// Everything of the library layer.
#ifndef OADM_H
#define OADM_H

#include "oa/oaBase.h"

#include "oa/oaCell.h"
#include "oa/oaCellView.h"
#include "oa/oaDMAttr.h"
#include "oa/oaDMData.h"
#include "oa/oaDMException.h"
#include "oa/oaDMFile.h"
#include "oa/oaDMInit.h"
#include "oa/oaDMMsgIds.h"
#include "oa/oaDMObject.h"
#include "oa/oaDMTypes.h"
#include "oa/oaLib.h"
#include "oa/oaLibDefList.h"
#include "oa/oaLibDefListObserver.h"
#include "oa/oaObserver.h"
#include "oa/oaSession.h"
#include "oa/oaView.h"
#include "oa/oaViewType.h"

#endif
