// The client that writes "oa::" in front of everything.
#include <oa/oaDesignDB.h>

#include <gtest/gtest.h>

#define OA oa::
#define CLIENT QualifiedClient
#define CLIENT_NAME(name) QualifiedClient##name
#include "designclient.h"
