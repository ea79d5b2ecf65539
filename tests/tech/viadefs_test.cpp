#include "techtest.h"

using namespace techtest;

namespace {

class ViaDefs : public TechTest {
protected:
  ViaDefs() : tech(oaTech::create(lib)) {
    poly = oaPhysicalLayer::create(tech, "poly", 1, oacPolyMaterial);
    metal = oaPhysicalLayer::create(tech, "metal", 2, oacMetalMaterial);
    implant = oaPhysicalLayer::create(tech, "nplus", 3, oacNImplantMaterial);
  }
  ~ViaDefs() override { tech->purge(); }
  oaTech *tech;
  oaPhysicalLayer *poly, *metal, *implant;
};

TEST_F(ViaDefs, ParametersSurviveSaving) {
  oaViaParam params;
  params.setLayer1Enc(oaVector(1, -2));
  params.setOriginOffset(oaVector(-3, 4));
  params.setCutSpacing(oaVector(50, 60));
  params.setCutWidth(100);
  params.setCutHeight(110);
  params.setCutLayer(7);
  params.setCutRows(2);
  params.setCutColumns(3);
  params.setCutPatternVal(1, 2, false);
  oaStdViaDef::create(tech, "std", poly, metal, params, NULL, implant);
  oaCustomViaDef::create(tech, "custom", named("L"), named("via-cell"), named("layout"), poly, metal)
      ->setResistancePerCut(1.5F);
  EXPECT_EQ(raisedBy([&] { oaStdViaDef::create(tech, "custom", poly, metal, params); }), oacViaDefExists);

  tech = reopened(tech);
  EXPECT_EQ(textOf<oaViaDef>(tech->getViaDefs()), "std custom");
  const auto *std = static_cast<const oaStdViaDef *>(oaViaDef::find(tech, "std"));
  EXPECT_EQ(std->getType(), oacStdViaDefType);
  oaViaParam loaded;
  std->getParams(loaded);
  EXPECT_TRUE(loaded.isEqual(params));
  EXPECT_FALSE(loaded == params) << "a definition's values are all defaults";
  EXPECT_TRUE(loaded.hasDefault(oacCutSizeViaParamType));
  EXPECT_FALSE(loaded.getCutPatternVal(1, 2));
  EXPECT_FALSE(std->hasImplant1());
  EXPECT_EQ(raisedBy([&] { std->getImplant1Num(); }), oacStdViaDefDoesNotHaveImplant1);
  EXPECT_EQ(std->getImplant2Num(), 3u);
  EXPECT_EQ(std->getLayer1(), oaPhysicalLayer::find(tech, "poly"));

  const auto *custom = static_cast<const oaCustomViaDef *>(oaViaDef::find(tech, "custom"));
  oaScalarName cell;
  custom->getCellName(cell);
  EXPECT_EQ(cell, named("via-cell"));
  EXPECT_EQ(custom->getResistancePerCut(), 1.5F);
}

TEST_F(ViaDefs, DestroyedRowsLeaveTheOthersWhole) {
  oaViaParam params;
  for (oaUInt4 i = 0; i < 3; ++i) {
    params.setCutRows(4 + i);
    params.setCutPatternVal(i, 0, false);
    oaStdViaDef::create(tech, ("v" + std::to_string(i)).c_str(), poly, metal, params);
  }
  oaViaDef::find(tech, "v0")->destroy();
  tech = reopened(tech);
  static_cast<oaStdViaDef *>(oaViaDef::find(tech, "v2"))->getParams(params);
  EXPECT_EQ(params.getCutRows(), 6u);
  EXPECT_FALSE(params.getCutPatternVal(2, 0));
  EXPECT_TRUE(params.getCutPatternVal(1, 0));
}

TEST(ViaParam, FlagsAndPattern) {
  oaViaParam params;
  EXPECT_EQ(params.getCutRows(), 1u);
  EXPECT_TRUE(params.hasDefault(oacCutLayerViaParamType));
  params.setCutWidth(5);
  EXPECT_FALSE(params.hasDefault(oacCutWidthViaParamType));
  EXPECT_FALSE(params.hasDefault(oacCutSizeViaParamType)) << "the size is width and height";
  params.setDefault(oacCutSizeViaParamType);
  EXPECT_TRUE(params.hasDefault(oacCutWidthViaParamType));
  EXPECT_EQ(params.getCutWidth(), 5u);
  params.setAllNonDefault();
  EXPECT_FALSE(params.hasAnyDefaults());

  params.setCutColumns(2);
  EXPECT_EQ(dmtest::raisedBy([&] { params.setCutColumns(0); }), oacZeroColumnsSpecifiedForViaParam);
  EXPECT_EQ(dmtest::raisedBy([&] { params.setCutRows(0); }), oacZeroRowsSpecifiedForViaParam);
  EXPECT_EQ(dmtest::raisedBy([&] { params.getCutPatternVal(1, 0); }), oacInvalidViaParamRowNumber);
  EXPECT_EQ(dmtest::raisedBy([&] { params.setCutPatternVal(0, 2, false); }), oacInvalidViaParamColumnNumber);
  params.setCutPatternVal(0, 1, false);
  EXPECT_FALSE(params.hasDefaultCutPattern());
  params.setCutRows(2);
  EXPECT_TRUE(params.hasDefaultCutPattern()) << "a new size has all its cuts";
}

} // namespace
