#include "techtest.h"

using namespace techtest;

namespace {

class Modes : public TechTest {};

TEST_F(Modes, CreateOpenSaveClose) {
  EXPECT_FALSE(oaTech::exists(lib));
  EXPECT_EQ(raisedBy([&] { oaTech::open(lib, 'r'); }), oacCannotFindLibraryTech);
  EXPECT_EQ(raisedBy([&] { oaTech::open(named("none"), 'r'); }), oacTechLibNotFound);
  EXPECT_EQ(raisedBy([&] { oaTech::open(lib, 'x'); }), oacOpenUndefinedModeTech);
  oaTech *tech = oaTech::create(named("L"));
  EXPECT_EQ(tech->getMode(), 'w');
  EXPECT_EQ(tech->getLib(), lib);
  EXPECT_EQ(raisedBy([&] { oaTech::create(lib); }), oacTechAlreadyExists);
  EXPECT_EQ(raisedBy([&] { oaTech::destroy(lib); }), oacDestroyTechOpen);
  EXPECT_TRUE(oaTech::exists(lib)) << "open, though not on disk";
  EXPECT_FALSE(std::filesystem::exists(path("L/tech.db")));
  oaPhysicalLayer::create(tech, "a", 1);
  tech->save();
  EXPECT_EQ(tech->getMode(), 'a');
  EXPECT_GT(tech->getLastSavedTime(), 0);
  EXPECT_EQ(oaTech::find(lib), tech);
  EXPECT_EQ(oaTech::open(lib), tech);
  EXPECT_EQ(tech->getRefCount(), 2u);
  tech->close();
  tech->close();
  EXPECT_FALSE(tech->isValid());
  EXPECT_EQ(oaTech::find(lib), nullptr);

  tech = oaTech::open(lib, 'r');
  oaPhysicalLayer::create(tech, "b", 2);
  EXPECT_TRUE(tech->isModified()) << "may be changed in memory";
  EXPECT_EQ(raisedBy([&] { tech->save(); }), oacSaveReadOnlyTech);
  tech->close();
  tech = oaTech::open(lib, 'w');
  EXPECT_TRUE(tech->getLayers().isEmpty());
  tech->close();
  tech = oaTech::open(lib, 'r');
  EXPECT_EQ(textOf<oaLayer>(tech->getLayers()), "a") << "never saved";
  tech->saveAs(named("M"));
  tech->close();
  oaTech::destroy(lib);
  EXPECT_FALSE(oaTech::exists(lib));
  tech = oaTech::open(other);
  EXPECT_EQ(textOf<oaLayer>(tech->getLayers()), "a");
  tech->close();
}

TEST_F(Modes, ReopenRules) {
  oaTech *tech = oaTech::create(lib);
  oaPhysicalLayer::create(tech, "a", 1);
  tech = reopened(tech);
  const struct {
    char from, to, mode;
    oaUInt4 id;
    bool isEmptied;
  } cases[] = {
      {'r', 'r', 'r', kNothingRaised, false},
      {'r', 'a', 'a', kNothingRaised, false},
      {'r', 'w', 'w', kNothingRaised, true},
      {'a', 'r', 'r', kNothingRaised, false},
      {'a', 'w', 'w', kNothingRaised, true},
      {'w', 'a', 'w', kNothingRaised, true},
      {'w', 'r', 'w', oacCannotDowngradeDatabase, true},
  };
  tech->close();
  for (const auto &c : cases) {
    SCOPED_TRACE(std::string(1, c.from) + " to " + c.to);
    tech = oaTech::open(lib, c.from);
    EXPECT_EQ(raisedBy([&] { tech->reopen(c.to); }), c.id);
    EXPECT_EQ(tech->getMode(), c.mode);
    EXPECT_EQ(tech->getRefCount(), 1u);
    EXPECT_EQ(tech->getLayers().isEmpty(), c.isEmptied);
    EXPECT_EQ(tech->getPurposes().getCount(), 11u);
    tech->close();
  }
  tech = oaTech::open(lib, 'a');
  oaLayer *layer = oaLayer::find(tech, "a");
  layer->setName("changed");
  EXPECT_EQ(raisedBy([&] { tech->reopen('r'); }), oacCannotDowngradeDatabase);
  tech->revert();
  EXPECT_FALSE(layer->isValid());
  EXPECT_EQ(textOf<oaLayer>(tech->getLayers()), "a");
  tech->close();
}

TEST_F(Modes, ReadOnlyLibraryCanBeRead) {
  oaTech::create(lib)->save();
  oaTech::find(lib)->close();
  lib->close();
  lib = oaLib::open(named("L"), path("L").c_str(), "", oacReadOnlyLibMode);
  EXPECT_EQ(raisedBy([&] { oaTech::open(lib, 'a'); }), oacTechCannotObtainWriteAccess);
  oaTech *tech = oaTech::open(lib, 'r');
  EXPECT_EQ(raisedBy([&] { tech->reopen('a'); }), oacTechCannotObtainWriteAccess);
  EXPECT_EQ(tech->getMode(), 'r');
  tech->close();
}

TEST_F(Modes, EditorInAnotherProcess) {
  oaTech::create(lib)->save();
  oaTech::find(lib)->close();
  OtherProcess editor([&] { oaTech::open(lib, 'a'); });
  ASSERT_TRUE(editor.isReady());
  EXPECT_EQ(raisedBy([&] { oaTech::open(lib, 'a'); }), oacCannotLockTech);
  oaTech *tech = oaTech::open(lib, 'r');
  EXPECT_EQ(raisedBy([&] { tech->reopen('a'); }), oacCannotLockTech);
  EXPECT_EQ(tech->getMode(), 'r');
  editor.kill();
  tech->reopen('a');
  EXPECT_EQ(tech->getMode(), 'a');
  tech->close();
}

} // namespace
