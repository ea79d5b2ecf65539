#include "kitversion.h"

#include <string>

#include <gtest/gtest.h>

#include <oa/oaDesignDB.h>

namespace {

TEST(KitVersion, KitOfThisBuildIsAccepted) { EXPECT_NO_THROW(requireKitVersion("liboaBase.so")); }

TEST(KitVersion, MissingBaseLibraryThrowsTheLetterE) {
  try {
    requireKitVersion("liboaNoSuchLibrary.so");
    FAIL() << "nothing was thrown";
  } catch (char character) {
    EXPECT_EQ(character, 'E');
  }
}

TEST(KitVersion, LibraryWithoutTheEntryIsTooOld) {
  try {
    requireKitVersion("libm.so.6");
    FAIL() << "nothing was thrown";
  } catch (const oa::oaException &exception) {
    EXPECT_STREQ(exception.getMsg(),
                 "The application is compiled with an OpenAccess kit of version 22.50.001, which is newer "
                 "than the OpenAccess kit being used.");
  }
}

} // namespace
