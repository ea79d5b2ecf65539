// The client that says "using namespace oa".
#include "oaDesignDB.h"

#include <gtest/gtest.h>

using namespace oa;

#define OA
#define CLIENT UsingClient
#define CLIENT_NAME(name) UsingClient##name
#include "designclient.h"
