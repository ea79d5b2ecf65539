#include "oapluginmain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ownprocess.h"
#include "signalrecorder.h"

using namespace oa;

namespace {

typedef std::vector<std::string> Lines;

oaScalarName scalar(const char *name) { return oaScalarName(oaConvert::ns, name); }

struct LayerEntry {
  const char *name;
  oaLayerNum number;
};

// A library "chip" whose technology has the layers, in that order; made by a process of its own and left out of the
// lib.defs that the tests see.
class Layers : public testing::Test {
protected:
  void makeLibrary(const std::vector<LayerEntry> &layers, bool hasTech = true) const {
    const ScratchFolder maker;
    ASSERT_TRUE(inOwnProcess(maker, [&] {
      ASSERT_TRUE(oaConvert::checkLib("chip", QString::fromStdString((folder.path() / "chip").string()), true));
      if (!hasTech) {
        return;
      }
      oaTech *tech = oaTech::create(scalar("chip"));
      for (const LayerEntry &layer : layers) {
        oaPhysicalLayer::create(tech, layer.name, layer.number);
      }
      tech->save();
      tech->close();
    }));
  }
  QString techFile() const { return QString::fromStdString((folder.path() / "chip" / "tech.db").string()); }
  ScratchFolder folder;
};

TEST_F(Layers, ArriveInTheirOrderAfterAllWereSwitchedOff) {
  makeLibrary({{"metal2", 5}, {"poly", 2}});
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    SignalRecorder recorder(&plugIn);
    EXPECT_EQ(plugIn.importLayer(techFile(), 10), QString());
    Lines expected;
    for (int i = 0; i < 10; ++i) {
      expected.push_back("disableLayer " + std::to_string(i));
    }
    expected.insert(expected.end(),
                    {"enableLayer 5", "setLayerName 5 \"metal2\"", "enableLayer 2", "setLayerName 2 \"poly\""});
    EXPECT_EQ(recorder.lines(), expected);
    EXPECT_NE(oaTech::find(scalar("chip")), nullptr) << "stays open";
    EXPECT_EQ(plugIn.currentTech, nullptr);
    EXPECT_EQ(plugIn.getLibs(), QStringList("chip")) << "the library is known from now on";
  }));
}

TEST_F(Layers, NumbersThatTheHostCannotShowAreSkipped) {
  makeLibrary({{"high", 10}, {"last", 9}, {"negative", 0xffffffff}, {"most negative", 0x80000000}});
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    SignalRecorder recorder(&plugIn);
    for (const int count : {0, 9, -1}) {
      EXPECT_EQ(plugIn.importLayer(techFile(), count), QString());
      EXPECT_EQ(recorder.lines(), Lines()) << "the host keeps its table";
    }
    EXPECT_EQ(plugIn.importLayer(techFile(), 10), QString());
    EXPECT_EQ(recorder.lines({"enableLayer", "setLayerName"}), (Lines{"enableLayer 9", "setLayerName 9 \"last\""}));
    plugIn.init(false);
    oaConvert::debug = true;
    EXPECT_EQ(printedBy([&] { plugIn.importLayer(techFile(), 1); }),
              "open tech dbl chip (" + (folder.path() / "chip").string() +
                  ")\nlayer 10 = high\nlayer 9 = last\nlayer -1 = negative\nlayer -2147483648 = most negative\n"
                  "layer load end\n");
  }));
}

TEST_F(Layers, DerivedLayersAndReferencedTechnologiesAreSentToo) {
  makeLibrary({{"a", 1}, {"b", 2}});
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    plugIn.importLayer(techFile(), 0);
    oaTech *tech = oaTech::open(scalar("chip"), 'a');
    oaDerivedLayer::create(oaLayer::find(tech, "a"), oaLayer::find(tech, "b"), oacAndLayerOp, "ab", 3);
    plugIn.checkLib("base", QString::fromStdString((folder.path() / "base").string()), true);
    oaTech *base = oaTech::create(scalar("base"));
    oaPhysicalLayer::create(base, "c", 0);
    oaTechArray references;
    references.append(base);
    tech->setRefs(references);
    SignalRecorder recorder(&plugIn);
    plugIn.importLayer(techFile(), 10);
    EXPECT_EQ(recorder.lines({"enableLayer"}),
              (Lines{"enableLayer 1", "enableLayer 2", "enableLayer 3", "enableLayer 0"}));
  }));
}

TEST_F(Layers, LibraryIsFoundByNameWithoutADatabaseFile) {
  makeLibrary({{"a", 1}});
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    SignalRecorder recorder(&plugIn);
    const QString directory = QString::fromStdString((folder.path() / "chip").string());
    EXPECT_EQ(plugIn.importLayer("chip", 2), "Not a valid OpenAccess Library") << "not open yet";
    plugIn.checkLib("chip", directory, false);
    for (const QString &location : {QString("chip"), directory, directory + "//"}) {
      recorder.clear();
      EXPECT_EQ(plugIn.importLayer(location, 2), QString());
      EXPECT_EQ(recorder.lines({"enableLayer"}), Lines{"enableLayer 1"});
    }
  }));
}

TEST_F(Layers, FailuresAreReturnedAndPrinted) {
  makeLibrary({}, false);
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    SignalRecorder recorder(&plugIn);
    for (const char *location : {"/nowhere/chip/tech.db", "chip/tech.db", "tech.db", ".db", "none"}) {
      SCOPED_TRACE(location);
      EXPECT_EQ(printedBy([&] { EXPECT_EQ(plugIn.importLayer(location, 10), "Not a valid OpenAccess Library"); }),
                "error Not a valid OpenAccess Library\n");
    }
    EXPECT_THAT(printedBy([&] {
                  EXPECT_THAT(plugIn.importLayer(techFile(), 10).toStdString(),
                              testing::HasSubstr("technology of chip: there is none"));
                }),
                testing::StartsWith("error technology of chip: there is none"));
    EXPECT_EQ(recorder.lines(), Lines());
  }));
}

// Opens chip/cell/layout as the current design.
void beginDesign(oaPlugInMain &plugIn) {
  plugIn.currentDesign =
      oaDesign::open(scalar("chip"), scalar("cell"), scalar("layout"), oaViewType::get(oacMaskLayout), 'w');
}

TEST_F(Layers, CurrentTechnologyIsOpenedReopenedAndCreated) {
  makeLibrary({{"a", 1}});
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    plugIn.init(false);
    plugIn.checkLib("chip", QString::fromStdString((folder.path() / "chip").string()), false);
    plugIn.openTech('r');
    EXPECT_EQ(plugIn.currentTech, nullptr) << "there is no current design";
    beginDesign(plugIn);
    plugIn.openTech('r');
    ASSERT_EQ(plugIn.currentTech, oaTech::find(scalar("chip")));
    const oaUInt4 count = plugIn.currentTech->getRefCount();
    plugIn.openTech('r');
    EXPECT_EQ(plugIn.currentTech->getMode(), 'r');
    plugIn.openTech('a');
    EXPECT_EQ(plugIn.currentTech->getMode(), 'a');
    EXPECT_EQ(plugIn.currentTech->getRefCount(), count) << "not opened once more";
    EXPECT_NE(oaLayer::find(plugIn.currentTech, "a"), nullptr);
    // Dead with its last close; the field still points there.
    plugIn.currentTech->purge();
    plugIn.openTech('r');
    EXPECT_TRUE(plugIn.currentTech->isValid());
  }));
}

TEST_F(Layers, LibraryWithoutTechnologyGetsOne) {
  makeLibrary({}, false);
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    plugIn.init(false);
    plugIn.checkLib("chip", QString::fromStdString((folder.path() / "chip").string()), false);
    beginDesign(plugIn);
    plugIn.openTech('a');
    ASSERT_NE(plugIn.currentTech, nullptr);
    EXPECT_EQ(plugIn.currentTech->getLib(), oaLib::find(scalar("chip")));
    oaPhysicalLayer::create(plugIn.currentTech, "new", 7);
    plugIn.currentTech->save();
  }));
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    SignalRecorder recorder(&plugIn);
    EXPECT_EQ(plugIn.importLayer(techFile(), 8), QString());
    EXPECT_EQ(recorder.lines({"setLayerName"}), Lines{"setLayerName 7 \"new\""});
  }));
}

TEST_F(Layers, TechnologyOfALibraryIsOpenedWithoutKeepingAccess) {
  makeLibrary({{"a", 1}});
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    plugIn.init(false);
    EXPECT_EQ(printedBy([&] { EXPECT_EQ(oaConvert::openTechLib("chip"), nullptr); }), "") << "not known";
    plugIn.checkLib("chip", QString::fromStdString((folder.path() / "chip").string()), false);
    plugIn.checkLib("bare", QString::fromStdString((folder.path() / "bare").string()), true);
    oaTech *tech = oaConvert::openTechLib("chip");
    ASSERT_NE(tech, nullptr);
    EXPECT_EQ(tech->getMode(), 'r');
    EXPECT_EQ(printedBy([&] { EXPECT_EQ(oaConvert::openTechLib("bare"), nullptr); }), "can not open tech lib bare");
    EXPECT_EQ(oaLib::find(scalar("chip"))->getAccessLevel(), oacNoLibAccessLevel);
    EXPECT_EQ(oaLib::find(scalar("bare"))->getAccessLevel(), oacNoLibAccessLevel);
  }));
}

} // namespace
