// A client that says "using namespace oa" and includes the headers bare.
#include <gtest/gtest.h>

#include <cstring>

#include "oaBase.h"
#include "oaDMException.h"

using namespace oa;

#define OA
#define CLIENT UsingClient
#include "clientidioms.h"

namespace OpenAccess_4 {
// Clients reopen the namespace to derive from the kit's templates.
class oaClientArray : public oaArray<oaBox> {
public:
  oaClientArray() : oaArray<oaBox>(2) {}
};
} // namespace OpenAccess_4

TEST(UsingClient, DerivesFromTemplates) {
  oaClientArray array;
  array.append(oaBox(0, 0, 1, 1));
  EXPECT_EQ(array.find(oaBox(0, 0, 1, 1)), 0U);
}
