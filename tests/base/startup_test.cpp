#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

#include "oa/oaBaseInit.h"
#include "oa/oaBaseMsgIds.h"
#include "oa/oaBuildInfo.h"
#include "oa/oaDesignException.h"
#include "oa/oaDMException.h"
#include "oa/oaException.h"
#include "oa/oaInstallation.h"
#include "oa/oaTechException.h"
#include "oa/oaTimer.h"
#include "raise.h"
#include "raised.h"

using namespace OpenAccess_4;

namespace {

TEST(Startup, RevisionsAreCheckedAtEveryCall) {
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(raisedBy([] { oaBaseInit(4, 506); }), oacInvalidMajorAPIRev);
    EXPECT_EQ(raisedBy([] { oaBaseInit(6, 0, 4); }), oacInvalidMajorAPIRev);
    EXPECT_EQ(raisedBy([] { oaBaseInit(5, 507); }), oacInvalidAPIRev);
    EXPECT_EQ(raisedBy([] { oaBaseInit(5, 506, 5); }), oacInvalidDataModelRev);
    EXPECT_EQ(raisedBy([] { oaBaseInit(5, 0); }), kNothingRaised);
    EXPECT_EQ(raisedBy([] { oaBaseInit(); }), kNothingRaised);
    EXPECT_EQ(raisedBy([] { kit::requireInitialised(); }), kNothingRaised);
    EXPECT_EQ(raisedBy([] { oaBaseInit(5, 506, oacDataModelRevNumber); }), kNothingRaised);
    EXPECT_EQ(raisedBy([] { oaBaseInit(5, 506, 3); }), oacInconsistentDataModelRev);
  }
  try {
    oaBaseInit(6, 1);
    FAIL();
  } catch (const oaCompatibilityError &error) {
    EXPECT_EQ(error.getKitBuildName(), "22.50.001");
    EXPECT_NE(std::string(error.getMsg()).find("6.1"), std::string::npos);
  }
}

TEST(Startup, ApplicationsOfANewerKitAreRefused) {
  for (const char *accepted : {"22.50.001", "22.49.999", "21.60.002", "4.0.0"})
    EXPECT_EQ(raisedBy([&] { oaBaseInitAppBuild(accepted); }), kNothingRaised) << accepted;
  EXPECT_EQ(oaBuildInfo::getAppBuildName(), "4.0.0");
  for (const char *refused : {"22.50.002", "22.51.000", "23.0.0", "22.50", "22.50.001x", "", "new"})
    EXPECT_EQ(raisedBy([&] { oaBaseInitAppBuild(refused); }), oacInvalidAPIRev) << refused;
  EXPECT_EQ(raisedBy([] { oaBaseInitAppBuild(nullptr); }), oacInvalidAPIRev);
  EXPECT_EQ(oaBuildInfo::getAppBuildName(), "4.0.0");
}

TEST(Startup, BuildInformation) {
  ASSERT_EQ(oaBuildInfo::getNumPackages(), 4U);
  EXPECT_EQ(oaBuildInfo::getPackages()[0]->getPackageName(), "oaBase");
  EXPECT_EQ(oaBuildInfo::getPackages()[3]->getPackageName(), "oaDesign");
  oaBuildInfo *const tech = oaBuildInfo::find("oaTech");
  ASSERT_NE(tech, nullptr);
  EXPECT_EQ(tech->getMajorReleaseNum(), 22U);
  EXPECT_EQ(tech->getMinorReleaseNum(), 50U);
  EXPECT_EQ(tech->getBuildNumber(), 1U);
  EXPECT_FALSE(tech->getBuildTime().isEmpty());
  EXPECT_EQ(oaBuildInfo::find("oaWafer"), nullptr);
  oaBuildInfoArray packages;
  oaBuildInfo::getPackages(packages);
  packages.sort();
  EXPECT_EQ(packages[1]->getPackageName(), "oaDM");
  EXPECT_EQ(packages[3]->getPackageName(), "oaTech");
}

TEST(Startup, InstallationIsWhereTheLibraryIs) {
  ASSERT_NE(oaInstallation::getInstallDir(), nullptr);
  ASSERT_NE(oaInstallation::getLibDir(), nullptr);
  EXPECT_EQ(oaInstallation::getInstallDir()[0], '/');
  const std::string install = oaInstallation::getInstallDir(), lib = oaInstallation::getLibDir();
  EXPECT_EQ(lib.substr(0, lib.rfind('/')), install);
}

// The directories are looked up once, so this needs a process of its own.
TEST(Startup, EnvironmentNamesAnotherInstallation) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  // In the process that checks, which comes here as well, it is another folder.
  std::string home = testing::TempDir() + "oahome.XXXXXX";
  ASSERT_NE(mkdtemp(home.data()), nullptr);
  std::filesystem::create_directories(home + "/data/plugins");
  const auto check = [&home] {
    setenv("OA_HOME", home.c_str(), 1);
    setenv("OA_PLUGIN_PATH", "/a:/b", 1);
    const bool isRight = oaInstallation::getInstallDir() == home && oaInstallation::getDataDir() == home + "/data" &&
                         oaInstallation::getPlugInDir() == home + "/data/plugins" && !oaInstallation::getBinDir() &&
                         !oaInstallation::getLibDir() && oaInstallation::getPlugInPath() == std::string("/a:/b");
    std::filesystem::remove_all(home);
    std::exit(isRight ? 0 : 1);
  };
  EXPECT_EXIT(check(), testing::ExitedWithCode(0), "");
  std::filesystem::remove_all(home);
}

// Each layer's error is caught as such, as the layer's exception and as the base of all, and as nothing else.
template <class Error, class Exception> void expectClasses(void (*raise)(oaUInt4, const std::string &)) {
  EXPECT_THROW(raise(1, "x"), Error);
  EXPECT_THROW(raise(1, "x"), Exception);
  try {
    raise(1234, "text");
  } catch (const oaException &exception) {
    EXPECT_EQ(exception.getMsgId(), 1234U);
    EXPECT_EQ(exception.getMsg(), "text");
    int classes = 0;
    classes += dynamic_cast<const oaError *>(&exception) != nullptr;
    classes += dynamic_cast<const oaDMException *>(&exception) != nullptr;
    classes += dynamic_cast<const oaTechException *>(&exception) != nullptr;
    classes += dynamic_cast<const oaDesignException *>(&exception) != nullptr;
    EXPECT_EQ(classes, 1);
  }
}

TEST(Exceptions, ClassesOfTheLayers) {
  expectClasses<oaError, oaException>(kit::raiseBase);
  expectClasses<oaDMError, oaDMException>(kit::raiseDM);
  expectClasses<oaTechError, oaTechException>(kit::raiseTech);
  expectClasses<oaDesignError, oaDesignException>(kit::raiseDesign);
}

TEST(Exceptions, SystemErrorsNameTheCause) {
  try {
    kit::raiseOS(ENOENT, "directory /x/y");
    FAIL();
  } catch (const oaOSError &error) {
    EXPECT_EQ(error.getMsgId(), oacOSError);
    EXPECT_EQ(error.getMsg(), "directory /x/y: No such file or directory");
  }
  EXPECT_EQ(oaException::getLastOSError(), oaUInt8(ENOENT));
}

TEST(Exceptions, ClientsMayThrowTheirOwn) {
  try {
    throw oaException("newer than the kit");
  } catch (const oaException &exception) {
    EXPECT_EQ(exception.getMsg(), "newer than the kit");
    EXPECT_EQ(exception.getMsgId(), oacNullIndex);
  }
}

TEST(Timers, StampsWrapAround) {
  oaTimeStamp stamp(UINT_MAX);
  EXPECT_EQ(oaUInt4(++stamp), 0U);
  EXPECT_EQ(oaUInt4(stamp++), 1U);
  stamp += 5;
  EXPECT_EQ(oaUInt4(stamp), 6U);
  oaTimer timer;
  EXPECT_GE(timer.getElapsed(), 0);
}

} // namespace
