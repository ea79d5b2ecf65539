#include "dmtest.h"

#include <algorithm>
#include <chrono>
#include <thread>

using namespace dmtest;

namespace {

class Access : public DMTest {
protected:
  Access() : lib(createLib("L")) {}
  ~Access() override {
    if (lib->isValid()) {
      lib->close();
    }
  }
  // In another process: opens the same directory and takes access.
  std::function<void()> holding(oaLibAccessEnum kind) {
    return [this, kind] {
      oaLib *same = oaLib::open(named("same"), path("L").c_str());
      EXPECT_TRUE(same->getAccess(kind));
    };
  }
  oaLib *lib;
};

TEST_F(Access, NestsAndIsCounted) {
  EXPECT_EQ(lib->getAccessLevel(), oacNoLibAccessLevel);
  EXPECT_EQ(raisedBy([&] { lib->releaseAccess(); }), oacLibReleaseNoAccess);
  EXPECT_EQ(raisedBy([&] { lib->getCells(); }), oacLibAccessDenied);
  EXPECT_TRUE(lib->getAccess(oaLibAccess("read")));
  EXPECT_TRUE(lib->getAccess(oacReadLibAccess, 0));
  EXPECT_EQ(raisedBy([&] { lib->getAccess(oacWriteLibAccess); }), oacLibAccessCannotUpgrade);
  EXPECT_EQ(raisedBy([&] { oaCell::get(lib, named("c")); }), oacLibAccessDenied);
  lib->releaseAccess();
  EXPECT_EQ(lib->getAccessLevel(), oacReadLibAccessLevel);
  lib->releaseAccess();
  EXPECT_TRUE(lib->getAccess(oacWriteLibAccess));
  oaCell *cell = oaCell::get(lib, named("c"));
  EXPECT_TRUE(lib->getAccess(oacReadLibAccess)) << "reading inside writing";
  EXPECT_EQ(lib->getAccessLevel(), oacWriteLibAccessLevel);
  lib->releaseAccess();
  EXPECT_TRUE(cell->isValid());
  lib->releaseAccess();
  EXPECT_FALSE(cell->isValid());
  EXPECT_EQ(raisedBy([&] { cell->getCellViews(); }), oacDeletedDatabase);
}

TEST_F(Access, BetweenProcesses) {
  const struct {
    const char *name;
    oaLibAccessEnum held, wanted;
    bool isGranted;
  } cases[] = {
      {"two readers", oacReadLibAccess, oacReadLibAccess, true},
      {"reader keeps a writer out", oacReadLibAccess, oacWriteLibAccess, false},
      {"writer keeps a reader out", oacWriteLibAccess, oacReadLibAccess, false},
      {"one writer", oacWriteLibAccess, oacWriteLibAccess, false},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    OtherProcess other(holding(c.held));
    ASSERT_TRUE(other.isReady());
    EXPECT_EQ(lib->getAccess(c.wanted), c.isGranted);
    other.finish();
    if (!c.isGranted) {
      EXPECT_EQ(lib->getAccessLevel(), oacNoLibAccessLevel);
      EXPECT_TRUE(lib->getAccess(c.wanted)) << "free once the other process has ended";
    }
    lib->releaseAccess();
  }
}

TEST_F(Access, WaitsAsLongAsItWasTold) {
  OtherProcess other(holding(oacWriteLibAccess));
  ASSERT_TRUE(other.isReady());
  const auto secondsFor = [&](oaUInt4 timeout, bool expected) {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(lib->getAccess(oacReadLibAccess, timeout), expected);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  };
  // A busy machine may hold up one request or another, but not all of them.
  double shortest = secondsFor(0, false);
  for (int more = 0; more < 9 && shortest >= 0.8; ++more) {
    shortest = std::min(shortest, secondsFor(0, false));
  }
  EXPECT_LT(shortest, 0.8);
  EXPECT_GE(secondsFor(1, false), 1.0);
  std::thread release([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    other.kill();
  });
  EXPECT_LT(secondsFor(60, true), 30.0) << "a killed owner's access is free at once";
  release.join();
  lib->releaseAccess();
}

TEST_F(Access, ReadOnlyLibraryGivesNoWriteAccess) {
  lib->close();
  lib = oaLib::open(named("L"), path("L").c_str(), "", oacReadOnlyLibMode);
  EXPECT_EQ(raisedBy([&] { lib->getAccess(oacWriteLibAccess); }), oacNoWriteAccessOnReadOnlyLib);
  EXPECT_TRUE(lib->getAccess(oacReadLibAccess));
  lib->releaseAccess();
}

TEST_F(Access, LibraryWithoutItsFileRaises) {
  std::filesystem::remove(path("L/.oalib"));
  EXPECT_EQ(raisedBy([&] { lib->getAccess(oacReadLibAccess); }), oacCannotOpenLibDataFile);
}

TEST_F(Access, SavingNeedsWhatNobodyHolds) {
  oaLibDMData *data = oaLibDMData::open(named("L"), 'a');
  oaIntProp::create(data, "n", 1);
  lib->getAccess(oacReadLibAccess);
  EXPECT_EQ(raisedBy([&] { data->save(); }), oacDMDataHasReadNeedWriteAccess);
  lib->releaseAccess();
  {
    OtherProcess other(holding(oacReadLibAccess));
    ASSERT_TRUE(other.isReady());
    EXPECT_EQ(raisedBy([&] { data->save(); }), oacDMDataCannotGetWriteAccess);
    EXPECT_FALSE(std::filesystem::exists(path("L/data.dm")));
  }
  lib->getAccess(oacWriteLibAccess);
  data->save();
  lib->releaseAccess();
  data->close();
  EXPECT_TRUE(std::filesystem::exists(path("L/data.dm")));
}

} // namespace
