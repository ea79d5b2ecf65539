#include "techtest.h"

using namespace techtest;

namespace {

// Technologies of L (derived), M and N (bases); L refers to M, and M to N, unless a test does it itself.
class References : public TechTest {
protected:
  References() : third(createLib("N")) {
    derived = oaTech::create(lib);
    base = oaTech::create(other);
    root = oaTech::create(third);
    oaPhysicalLayer::create(derived, "top", 30);
    oaPhysicalLayer::create(base, "metal", 20);
    oaPhysicalLayer::create(root, "poly", 10);
  }
  ~References() override {
    for (oaLib *at : {lib, other, third}) {
      if (oaTech *tech = oaTech::find(at)) {
        tech->purge();
      }
    }
    third->close();
  }
  static void refer(oaTech *from, std::vector<oaTech *> to) {
    oaTechArray refs;
    for (oaTech *tech : to) {
      refs.append(tech);
    }
    from->setRefs(refs);
  }
  void chain() {
    refer(base, {root});
    refer(derived, {base});
  }
  void saveAndCloseAll() {
    for (oaTech *tech : {derived, base, root}) {
      tech->save();
    }
    for (oaTech *tech : {derived, base, root}) {
      tech->close();
    }
  }
  oaLib *third;
  oaTech *derived, *base, *root;
};

TEST_F(References, SearchIsDepthFirstAndOwnFirst) {
  oaPurpose::create(root, "pin", 7);
  chain();
  EXPECT_EQ(textOf<oaLayer>(derived->getLayers()), "top metal poly");
  EXPECT_EQ(textOf<oaLayer>(derived->getLayers(oacTechIterLocal)), "top");
  EXPECT_EQ(textOf<oaLayer>(base->getLayers()), "metal poly");
  EXPECT_EQ(derived->getPurposes().getCount(), 12u) << "the reserved ones come once";
  EXPECT_EQ(oaLayer::find(derived, "poly"), oaLayer::find(root, 10));
  EXPECT_EQ(oaPhysicalLayer::find(derived, 20), oaLayer::find(base, "metal"));
  EXPECT_EQ(oaLayer::find(derived, "poly", true), nullptr);
  EXPECT_EQ(oaLayer::find(root, "top"), nullptr) << "references lead one way";
  EXPECT_EQ(oaPurpose::find(derived, "pin")->getTech(), root);
  EXPECT_EQ(oaPurpose::find(derived, 7, true), nullptr);
  refer(base, {});
  refer(derived, {root, base});
  EXPECT_EQ(textOf<oaLayer>(derived->getLayers()), "top poly metal");
  oaPhysicalLayer::find(derived, "poly")->destroy();
  EXPECT_EQ(textOf<oaLayer>(derived->getLayers()), "top metal");
}

TEST_F(References, AreSavedAndOpenWhatTheyNeed) {
  chain();
  saveAndCloseAll();
  EXPECT_EQ(oaTech::find(third), nullptr);
  derived = oaTech::open(lib);
  EXPECT_EQ(textOf<oaLayer>(derived->getLayers()), "top metal poly");
  EXPECT_EQ(oaTech::find(third)->getMode(), 'r');
  EXPECT_FALSE(derived->hasUnboundRefs());
  oaTechHeaderArray headers;
  derived->getTechHeaders(headers);
  ASSERT_EQ(headers.getNumElements(), 2u);
  oaString name;
  headers[0]->getRefLibName(oaNativeNS(), name);
  EXPECT_EQ(name, "M");
  EXPECT_EQ(headers[1]->getRefTech(), oaTech::find(third));
  EXPECT_EQ(headers[1]->getTech(), oaTech::find(other));
  EXPECT_EQ(headers[1]->getType(), oacTechHeaderType);
  derived->getTechHeaders(headers, true);
  EXPECT_EQ(headers.getNumElements(), 1u);
  EXPECT_EQ(oaTechHeader::find(derived, named("M")), headers[0]);
  EXPECT_EQ(oaTechHeader::find(derived, oaTech::find(third)), nullptr) << "not its own reference";
  EXPECT_EQ(oaTech::find(other)->getUsedIn().getCount(), 1u);
  EXPECT_TRUE(derived->getUsedIn().isEmpty());
  derived->close();
  EXPECT_EQ(oaTech::getOpenTechs().getCount(), 0u) << "what was opened for it closes with it";
}

TEST_F(References, MissingOnesAreUnbound) {
  chain();
  saveAndCloseAll();
  oaTech::destroy(third);
  derived = oaTech::open(lib);
  EXPECT_EQ(textOf<oaLayer>(derived->getLayers()), "top metal");
  EXPECT_TRUE(derived->hasUnboundRefs());
  EXPECT_EQ(oaTechHeader::find(oaTech::find(other), named("N"))->getRefTech(), nullptr);
  EXPECT_TRUE(oaTechHeader::find(derived, named("M"))->isBound());
  oaTech::find(other)->purge();
  EXPECT_EQ(textOf<oaLayer>(derived->getLayers()), "top metal") << "opened once more";
}

TEST_F(References, CirclesAndConflictsAreRefused) {
  chain();
  EXPECT_EQ(raisedBy([&] { refer(root, {derived}); }), oacInvalidTech);
  EXPECT_EQ(raisedBy([&] { refer(root, {root}); }), oacInvalidTech);
  const oaViewType *layout = oaViewType::get(oacMaskLayout);
  const struct {
    const char *name;
    oaUInt4 id;
    std::function<void(oaTech *)> make;
  } cases[] = {
      {"layer name", oacLayerNameExists, [](oaTech *tech) { oaPhysicalLayer::create(tech, "metal", 99); }},
      {"layer number", oacLayerNumberExists, [](oaTech *tech) { oaPhysicalLayer::create(tech, "other", 20); }},
      {"purpose name", oacPurposeNameExists, [](oaTech *tech) { oaPurpose::create(tech, "pin", 99); }},
      {"purpose number", oacPurposeNumberExists, [](oaTech *tech) { oaPurpose::create(tech, "other", 7); }},
      {"via definition", oacViaDefExists,
       [](oaTech *tech) {
         oaPhysicalLayer *layer = oaPhysicalLayer::find(tech, "first");
         oaCustomViaDef::create(tech, "via", named("L"), named("via"), named("layout"), layer, layer);
       }},
      {"units", oacInvalidDBUPerUU, [=](oaTech *tech) { tech->setDBUPerUU(layout, 2000); }},
  };
  oaPurpose::create(base, "pin", 7);
  oaPhysicalLayer *metal = oaPhysicalLayer::find(base, "metal");
  oaCustomViaDef::create(base, "via", named("M"), named("via"), named("layout"), metal, metal);
  base->setDBUPerUU(layout, 1000);
  oaLib *fourth = createLib("K");
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    oaTech *tech = oaTech::create(fourth);
    oaPhysicalLayer::create(tech, "first", 50);
    // In a technology that refers to the base, and in one that the same derived technology refers to beside it.
    refer(tech, {base});
    EXPECT_EQ(raisedBy([&] { c.make(tech); }), c.id);
    tech->unsetRefs();
    refer(derived, {base, tech});
    EXPECT_EQ(raisedBy([&] { c.make(tech); }), c.id);
    refer(derived, {base});
    // The conflict is there before the reference.
    EXPECT_EQ(raisedBy([&] { c.make(tech); }), kNothingRaised);
    EXPECT_EQ(raisedBy([&] { refer(tech, {base}); }), c.id);
    EXPECT_EQ(raisedBy([&] { refer(derived, {base, tech}); }), c.id);
    EXPECT_EQ(derived->getLayers().getCount(), 3u) << "the refused references are not there";
    tech->close();
  }
  fourth->close();
}

TEST_F(References, UnitsAndDefaultsComeFromTheFirstThatHasThem) {
  chain();
  const oaViewType *layout = oaViewType::get(oacMaskLayout);
  root->setDBUPerUU(layout, 2000);
  root->setDefaultManufacturingGrid(5);
  base->setProcessFamily("middle");
  EXPECT_EQ(derived->getDBUPerUU(layout), 2000u);
  EXPECT_EQ(derived->getDBUPerUU(layout, true), 1000u);
  EXPECT_EQ(derived->getDBUPerUU(oaViewType::get(oacSchematic)), 160u);
  EXPECT_FALSE(derived->isDBUPerUUSet(layout));
  EXPECT_EQ(derived->getDefaultManufacturingGrid(), 5u);
  EXPECT_EQ(derived->getDefaultManufacturingGrid(true), 0u);
  derived->setDefaultManufacturingGrid(10);
  EXPECT_EQ(derived->getDefaultManufacturingGrid(), 10u);
  EXPECT_TRUE(derived->hasProcessFamily());
  EXPECT_FALSE(derived->hasProcessFamily(true));
  EXPECT_FALSE(root->hasProcessFamily());
}

TEST_F(References, DerivedLayersAndViaDefinitionsUseLayersInReach) {
  oaPhysicalLayer *poly = oaPhysicalLayer::find(root, "poly");
  oaPhysicalLayer *top = oaPhysicalLayer::find(derived, "top");
  EXPECT_EQ(raisedBy([&] { oaDerivedLayer::create(derived, top, poly, oacAndLayerOp, "x", 40); }),
            oacLayerNotInReferencedTech);
  chain();
  const oaDerivedLayer *layer = oaDerivedLayer::create(derived, top, poly, oacAndLayerOp, "x", 40);
  EXPECT_EQ(layer->getLayer2(), poly);
  oaViaDef *via = oaCustomViaDef::create(derived, "via", named("L"), named("v"), named("layout"), poly, top);
  EXPECT_EQ(via->getLayer1(), poly);
  EXPECT_EQ(raisedBy([&] { oaDerivedLayer::create(root, top, poly, oacAndLayerOp, "y", 41); }),
            oacLayerNotInReferencedTech);
  derived->unsetRefs();
  EXPECT_EQ(layer->getLayer2(), nullptr);
  EXPECT_EQ(layer->getLayer2Num(), 10u);
}

struct ConflictLog : oaObserver<oaTech> {
  ConflictLog() : oaObserver<oaTech>(1) {}
  void onConflict(oaTech *, oaUInt4 msgId, const oaString &msg) override {
    ids.push_back(msgId);
    text = std::string(msg);
  }
  std::vector<oaUInt4> ids;
  std::string text;
};

TEST_F(References, ConflictThatAnotherProcessMadeIsTold) {
  chain();
  saveAndCloseAll();
  OtherProcess editor([&] {
    oaTech *tech = oaTech::open(third, 'a');
    oaPhysicalLayer::create(tech, "metal", 21);
    tech->save();
    tech->close();
  });
  ASSERT_TRUE(editor.isReady());
  editor.finish();
  ConflictLog log;
  derived = oaTech::open(lib);
  EXPECT_EQ(oaLayer::find(derived, "metal")->getNumber(), 20u) << "the first one met";
  EXPECT_EQ(derived->getLayers().getCount(), 4u);
  ASSERT_FALSE(log.ids.empty());
  EXPECT_EQ(log.ids.front(), oacLayerNameExists);
  EXPECT_THAT(log.text, testing::HasSubstr("technology of M and technology of N: both have a layer of the name"));
}

// No call makes a circle within one process, but two can make one together.
TEST_F(References, CircleOnDiskEndsEachWalk) {
  refer(derived, {base});
  derived->save();
  derived->close();
  base->save();
  base->close();
  std::filesystem::copy_file(path("L/tech.db"), path("kept.db"));
  oaTech::destroy(lib);
  derived = oaTech::create(lib);
  base = oaTech::open(other, 'a');
  refer(base, {derived});
  base->save();
  base->close();
  derived->close();
  std::filesystem::copy_file(path("kept.db"), path("L/tech.db"));
  derived = oaTech::open(lib);
  EXPECT_EQ(textOf<oaLayer>(derived->getLayers()), "top metal");
  EXPECT_EQ(oaLayer::find(derived, "none"), nullptr);
  EXPECT_FALSE(derived->hasUnboundRefs());
}

} // namespace
