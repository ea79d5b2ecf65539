// The number of this build; the release numbers are in oaTypes.h.
#ifndef OPENACCESS_BUILDNUMBER_H
#define OPENACCESS_BUILDNUMBER_H

#include "oa/oaTypes.h"

#define OPENACCESS_BUILD_NUMBER 1
// Release and build number with points between them, the latter with three digits.
#define OPENACCESS_BUILD_TEXT "22.50.001"

static_assert(OA_MAJOR_RELEASE_NUM == 22 && OA_MINOR_RELEASE_NUM == 50 && OPENACCESS_BUILD_NUMBER == 1,
              "OPENACCESS_BUILD_TEXT says other numbers");

#endif
