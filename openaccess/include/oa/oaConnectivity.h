#ifndef OACONNECTIVITY_H
#define OACONNECTIVITY_H

// Nets, terminals, pins, and the placements of masters.

#include "oa/oaBusNet.h"
#include "oa/oaBusTerm.h"
#include "oa/oaInst.h"
#include "oa/oaInstHeader.h"
#include "oa/oaInstTerm.h"
#include "oa/oaNet.h"
#include "oa/oaPin.h"
#include "oa/oaRef.h"
#include "oa/oaTerm.h"
#include "oa/oaVectorInst.h"
#include "oa/oaVia.h"

#endif
