// The other name of oaDM.h.
#ifndef OADMDB_H
#define OADMDB_H

#include "oa/oaDM.h"

#endif
