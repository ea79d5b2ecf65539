// A client that writes oa:: before every name and reaches the headers through their folder.
#include <gtest/gtest.h>

#include <cstring>

#include <oa/oaBase.h>
#include <oa/oaDMException.h>

#define OA oa::
#define CLIENT QualifiedClient
#include "clientidioms.h"
