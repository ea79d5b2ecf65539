// What is drawn for a standard via. All boxes were computed by hand.

#include "viatest.h"

#include <functional>

using namespace viatest;

namespace {

class StdViaMasters : public Vias {};

// Two columns, three rows, two of the cuts left out; no value is that of a new object, and no size is even.
oaViaParam everything() {
  oaViaParam params;
  params.setCutLayer(30);
  params.setCutWidth(101);
  params.setCutHeight(61);
  params.setCutColumns(2);
  params.setCutRows(3);
  params.setCutSpacing(oaVector(7, 9));
  params.setOriginOffset(oaVector(13, -17));
  params.setLayer1Enc(oaVector(4, 6));
  params.setLayer2Enc(oaVector(-2, 8));
  params.setLayer1Offset(oaVector(100, -200));
  params.setLayer2Offset(oaVector(-30, 40));
  params.setImplant1Enc(oaVector(11, 12));
  params.setImplant2Enc(oaVector(-3, 5));
  params.setCutPatternVal(1, 0, false);
  params.setCutPatternVal(2, 1, false);
  return params;
}

} // namespace

TEST_F(StdViaMasters, DrawCutsMetalsAndImplants) {
  const auto with = [](const std::function<void(oaViaParam &)> &change) {
    oaViaParam params = oneCut();
    change(params);
    return params;
  };
  const struct {
    const char *name;
    oaViaParam params;
    bool hasImplants;
    oaDist gridDbu; // of the cut layer
    Lines rects;
  } cases[] = {
      {"one cut", oneCut(), false, 0, {"30: -50 -40 50 40", "31: -60 -60 60 60", "32: -80 -45 80 45"}},
      {"3 columns, 2 rows",
       with([](oaViaParam &p) {
         p.setCutHeight(60);
         p.setCutColumns(3);
         p.setCutRows(2);
         p.setCutSpacing(oaVector(50, 40));
         p.setLayer1Enc(oaVector(0, 0));
       }),
       false,
       0,
       {"30: -200 -80 -100 -20", "30: -50 -80 50 -20", "30: 100 -80 200 -20", "30: -200 20 -100 80", "30: -50 20 50 80",
        "30: 100 20 200 80", "31: -200 -80 200 80", "32: -230 -85 230 85"}},
      {"odd size keeps its size",
       with([](oaViaParam &p) {
         p.setCutWidth(101);
         p.setCutHeight(1);
       }),
       false,
       0,
       {"30: -51 -1 50 0", "31: -61 -21 60 20", "32: -81 -6 80 5"}},
      {"every value",
       everything(),
       true,
       0,
       {"30: -92 -118 9 -57", "30: 16 -118 117 -57", "30: 16 -48 117 13", "30: -92 22 9 83", "31: 4 -324 221 -111",
        "32: -120 -86 85 131", "5: -7 -336 232 -99", "6: -117 -91 82 136"}},
      {"implants that the definition lacks",
       with([](oaViaParam &p) { p.setImplant1Enc(oaVector(9, 9)); }),
       false,
       0,
       {"30: -50 -40 50 40", "31: -60 -60 60 60", "32: -80 -45 80 45"}},
      {"several cuts keep to the grid",
       with([](oaViaParam &p) {
         p.setCutColumns(2);
         p.setCutSpacing(oaVector(30, 0));
         p.setLayer2Enc(oaVector(0, 0));
       }),
       false,
       12,
       {"30: -120 -48 -20 32", "30: 10 -48 110 32", "31: -130 -68 120 52", "32: -120 -48 110 32"}},
      {"a single cut does not", oneCut(), false, 12, {"30: -50 -40 50 40", "31: -60 -60 60 60", "32: -80 -45 80 45"}},
      {"negative spacing",
       with([](oaViaParam &p) {
         p.setCutColumns(2);
         p.setCutSpacing(oaVector(-20, 0));
       }),
       false,
       0,
       {"30: -90 -40 10 40", "30: -10 -40 90 40", "31: -100 -60 100 60", "32: -120 -45 120 45"}},
      {"no cut layer",
       with([](oaViaParam &p) { p.setCutLayer(oaViaParam().getCutLayer()); }),
       false,
       0,
       {"31: -60 -60 60 60", "32: -80 -45 80 45"}},
      {"metal smaller than nothing",
       with([](oaViaParam &p) { p.setLayer2Enc(oaVector(-50, 0)); }),
       false,
       0,
       {"30: -50 -40 50 40", "31: -60 -60 60 60"}},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    cut_->setManufacturingGrid(c.gridDbu);
    oaStdViaDef *def = oaStdViaDef::create(tech_, c.name, m1_, m2_, c.params, c.hasImplants ? nplus_ : NULL,
                                           c.hasImplants ? pplus_ : NULL);
    oaDesign *master = oaDesign::open(def);
    EXPECT_EQ(rectsOf(master), c.rects);
    // The same from the via's parameters instead of the definition's.
    oaViaParam own = c.params;
    oaDesign *again = oaDesign::open(def, &own);
    EXPECT_EQ(again, master);
    again->close();
    master->close();
  }
}

TEST_F(StdViaMasters, TechnologyGridHoldsWhereTheLayerHasNone) {
  tech_->setDefaultManufacturingGrid(50);
  oaViaParam params = oneCut();
  params.setCutRows(2);
  oaDesign *master = oaDesign::open(stdDef("v", params));
  EXPECT_EQ(rectsOf(master)[0], "30: -50 -100 50 -20");
  master->close();
}

TEST_F(StdViaMasters, AreDesignsInMemoryOnly) {
  oaStdViaDef *def = stdDef("via-1");
  oaDesign *master = oaDesign::open(def);
  const oaNativeNS ns;
  oaString lib, cell, view;
  master->getLibName(ns, lib);
  master->getCellName(ns, cell);
  master->getViewName(ns, view);
  EXPECT_EQ(std::string(lib), libName());
  EXPECT_EQ(std::string(cell), "via-1");
  EXPECT_EQ(std::string(view), "layout");
  EXPECT_EQ(master->getMode(), 's');
  EXPECT_EQ(master->getViewType(), oaViewType::get(oacMaskLayout));
  EXPECT_EQ(master->getTech(), tech_);
  EXPECT_TRUE(master->isStdViaMaster());
  EXPECT_FALSE(design_->isStdViaMaster());
  EXPECT_FALSE(master->isSuperMaster() || master->isSubMaster() || master->isModified());
  EXPECT_EQ(oaDesign::find(scalar(libName()), scalar("via-1"), scalar("layout")), nullptr);
  EXPECT_FALSE(oaDesign::exists(scalar(libName()), scalar("via-1"), scalar("layout")));

  oaViaParam params;
  master->getParams(params);
  EXPECT_TRUE(params.isEqual(oneCut()));
  EXPECT_EQ(idRaisedBy([&] { design_->getParams(params); }), oacInvalidStdViaMaster);
  oaParamArray none;
  EXPECT_EQ(idRaisedBy([&] { master->getParams(none); }), oacInvalidPcellMaster);
  EXPECT_EQ(idRaisedBy([&] { master->save(); }), oacSaveScratchModeDesign);
  EXPECT_EQ(idRaisedBy([&] { master->getLib(); }), oacCannotFindObjectForViaMaster);
  master->revert();
  EXPECT_EQ(rectsOf(master).size(), 3u);
  master->close();
  EXPECT_FALSE(master->isValid());
}

TEST_F(StdViaMasters, OneForEachDistinctParameterSet) {
  oaStdViaDef *def = stdDef("v");
  oaViaParam two = columns(2);
  oaViaParam three = columns(3);
  oaViaParam sameAsDefinition;
  sameAsDefinition.setCutWidth(100);
  oaDesign *master = oaDesign::open(def);
  oaDesign *masterOfTwo = oaDesign::open(def, &two);
  EXPECT_NE(masterOfTwo, master);
  EXPECT_NE(oaDesign::open(def, &three), masterOfTwo);
  EXPECT_EQ(oaDesign::open(def, &sameAsDefinition), master);
  EXPECT_EQ(oaDesign::open(def, &two), masterOfTwo);
  EXPECT_EQ(masterOfTwo->getRefCount(), 2u);
  EXPECT_NE(oaDesign::open(stdDef("w")), master) << "another definition with the same values";
  oaViaParam pattern = two;
  pattern.setCutPatternVal(0, 1, false);
  EXPECT_NE(oaDesign::open(def, &pattern), masterOfTwo);
  masterOfTwo->close();
  EXPECT_TRUE(masterOfTwo->isValid());
  masterOfTwo->close();
  EXPECT_FALSE(masterOfTwo->isValid());
  EXPECT_EQ(rectsOf(oaDesign::open(def, &two)).size(), 4u);
}

TEST_F(StdViaMasters, WhatCannotBeDrawnIsRefused) {
  oaViaParam tooMany = oneCut();
  tooMany.setCutColumns(0xffffffffU);
  tooMany.setCutRows(0xffffffffU);
  oaViaParam tooLarge = oneCut();
  tooLarge.setLayer1Offset(oaVector(2147483600, 0));
  oaStdViaDef *def = stdDef("v");
  EXPECT_EQ(idRaisedBy([&] { oaDesign::open(def, &tooMany); }), oacNotYetSupported);
  EXPECT_EQ(idRaisedBy([&] { oaDesign::open(def, &tooLarge); }), oacRectBBoxInvalid);
  // Vias of them are unbound.
  const oaStdVia *via = place(def, 0, 0, &tooLarge);
  EXPECT_EQ(via->getMaster(), nullptr);
  EXPECT_EQ(boxOf(via), "none");
  EXPECT_EQ(boxOf(block_), "none");
}
