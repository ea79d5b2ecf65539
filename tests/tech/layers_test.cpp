#include "techtest.h"

using namespace techtest;

namespace {

class Layers : public TechTest {
protected:
  Layers() : tech(oaTech::create(lib)) {}
  ~Layers() override { tech->purge(); }
  oaTech *tech;
};

TEST_F(Layers, KeepTheirAttributesAndOrder) {
  oaPhysicalLayer *metal2 = oaPhysicalLayer::create(tech, "metal2", 5, oacMetalMaterial, 20);
  oaPhysicalLayer *metal1 = oaPhysicalLayer::create(tech, "metal1", 2, oacMetalMaterial, 10);
  oaPhysicalLayer::create(tech, "text", 0xfffffffe);
  metal1->setPrefRoutingDir(oacHorzPrefRoutingDir);
  metal1->setManufacturingGrid(5);
  oaDerivedLayer::create(metal1, metal2, oacAndLayerOp, "overlap", 100);
  tech->setDefaultManufacturingGrid(2);

  tech = reopened(tech);
  EXPECT_EQ(textOf<oaLayer>(tech->getLayers()), "metal2 metal1 text overlap");
  EXPECT_EQ(textOf<oaLayer>(tech->getLayers(oacTechIterLocal)), "metal2 metal1 text overlap");
  metal1 = oaPhysicalLayer::find(tech, "metal1");
  metal2 = oaPhysicalLayer::find(tech, 5);
  EXPECT_EQ(metal1->getMaterial(), oacMetalMaterial);
  EXPECT_EQ(metal1->getPrefRoutingDir(), oacHorzPrefRoutingDir);
  EXPECT_EQ(metal1->getMaskNumber(), 10u);
  EXPECT_EQ(metal1->getManufacturingGrid(), 5u);
  EXPECT_EQ(metal2->getManufacturingGrid(), 2u);
  EXPECT_EQ(metal1->getLayerAbove(oacMetalMaterial), metal2);
  EXPECT_EQ(metal1->getLayerBelow(oacMetalMaterial), nullptr);
  EXPECT_EQ(oaLayer::find(tech, 0xfffffffe)->getNumber(), 0xfffffffeu);
  const oaDerivedLayer *overlap = oaDerivedLayer::find(metal1, metal2, oacAndLayerOp);
  ASSERT_NE(overlap, nullptr);
  EXPECT_EQ(overlap->getType(), oacDerivedLayerType);
  EXPECT_EQ(overlap->getLayer2(), metal2);
  EXPECT_EQ(oaPhysicalLayer::find(tech, "overlap"), nullptr) << "a derived layer is not a physical one";
  EXPECT_EQ(oaLayer::find(tech, "none", true), nullptr);
}

TEST_F(Layers, NamesAndNumbersAreUsedOnce) {
  oaPhysicalLayer *a = oaPhysicalLayer::create(tech, "a", 1);
  oaPhysicalLayer *b = oaPhysicalLayer::create(tech, "b", 2);
  EXPECT_EQ(raisedBy([&] { oaPhysicalLayer::create(tech, "a", 3); }), oacLayerNameExists);
  EXPECT_EQ(raisedBy([&] { oaPhysicalLayer::create(tech, "c", 1); }), oacLayerNumberExists);
  EXPECT_EQ(raisedBy([&] { b->setName("a"); }), oacLayerNameExists);
  EXPECT_EQ(raisedBy([&] { b->setNumber(1); }), oacLayerNumberExists);
  EXPECT_EQ(tech->getLayers().getCount(), 2u);
  a->setName("z");
  a->setNumber(9);
  a->setNumber(9);
  EXPECT_EQ(oaLayer::find(tech, "a"), nullptr);
  EXPECT_EQ(oaLayer::find(tech, 1), nullptr);
  EXPECT_EQ(oaLayer::find(tech, "z"), oaLayer::find(tech, 9));
  EXPECT_NO_THROW(oaPhysicalLayer::create(tech, "a", 1));
  tech = reopened(tech);
  EXPECT_EQ(textOf<oaLayer>(tech->getLayers()), "z b a");
}

TEST_F(Layers, DestroyedLayerTakesItsUsersAlong) {
  oaPhysicalLayer *a = oaPhysicalLayer::create(tech, "a", 1);
  oaPhysicalLayer *b = oaPhysicalLayer::create(tech, "b", 2);
  oaPhysicalLayer *c = oaPhysicalLayer::create(tech, "c", 3);
  oaDerivedLayer *ab = oaDerivedLayer::create(a, b, oacOrLayerOp, "ab", 10);
  oaDerivedLayer::create(ab, c, oacNotLayerOp, "abc", 11);
  oaDerivedLayer::create(b, c, oacXorLayerOp, "bc", 12);
  oaCustomViaDef::create(tech, "ac", named("L"), named("v"), named("layout"), a, c);
  a->destroy();
  EXPECT_FALSE(ab->isValid());
  EXPECT_EQ(textOf<oaLayer>(tech->getLayers()), "b c bc");
  EXPECT_TRUE(tech->getViaDefs().isEmpty());
  tech = reopened(tech);
  EXPECT_EQ(textOf<oaLayer>(tech->getLayers()), "b c bc");
}

TEST_F(Layers, ReservedPurposesAreAlwaysThere) {
  const std::string reserved =
      "drawing fill slot OPCSerif OPCAntiSerif annotation gapFill redundant oaAny oaNo oaFillOPC";
  EXPECT_EQ(textOf<oaPurpose>(tech->getPurposes()), reserved);
  EXPECT_FALSE(tech->isModified());
  oaPurpose *drawing = oaPurpose::get(tech, oacDrawingPurposeType);
  EXPECT_EQ(drawing->getNumber(), 0xffffffffu);
  EXPECT_EQ(oaPurpose::find(tech, "annotation")->getNumber(), 0xfffffffau);
  EXPECT_EQ(oaPurpose::find(tech, oavPurposeNumberFillOPC)->getPurposeType(), oacFillOPCPurposeType);
  EXPECT_EQ(raisedBy([&] { drawing->destroy(); }), oacCannotDestroyReservedPurpose);
  EXPECT_EQ(raisedBy([&] { drawing->setName("x"); }), oacCannotChangeReservedPurpose);
  EXPECT_EQ(raisedBy([&] { oaPurpose::create(tech, "pin", 0xffff0000); }), oacPurposeNumberIsReserved);
  EXPECT_EQ(raisedBy([&] { oaPurpose::create(tech, "fill", 1); }), oacPurposeNameExists);

  oaPurpose *pin = oaPurpose::create(tech, "pin", 0xfffeffff);
  EXPECT_EQ(raisedBy([&] { oaPurpose::create(tech, "pin2", 0xfffeffff); }), oacPurposeNumberExists);
  EXPECT_EQ(pin->getPurposeType(), oacDrawingPurposeType);
  EXPECT_FALSE(pin->isReserved());
  pin->setNumber(0);
  tech = reopened(tech);
  EXPECT_EQ(textOf<oaPurpose>(tech->getPurposes()), reserved + " pin");
  EXPECT_NE(oaPurpose::find(tech, 0U), nullptr);
}

TEST_F(Layers, UnitsOfEachViewType) {
  const struct {
    oaReservedViewTypeEnum type;
    oaUInt4 dbuPerUU;
    oaUserUnitsTypeEnum userUnits;
  } cases[] = {
      {oacMaskLayout, 1000, oacMicron}, {oacSchematic, 160, oacInch},     {oacSchematicSymbol, 160, oacInch},
      {oacNetlist, 160, oacInch},       {oacHierDesign, 1000, oacMicron},
  };
  for (const auto &c : cases) {
    const oaViewType *type = oaViewType::get(c.type);
    EXPECT_EQ(tech->getDBUPerUU(type), c.dbuPerUU);
    EXPECT_EQ(tech->getUserUnits(type), c.userUnits);
    EXPECT_FALSE(tech->isDBUPerUUSet(type));
  }
  const oaViewType *layout = oaViewType::get(oacMaskLayout);
  EXPECT_EQ(raisedBy([&] { tech->getDBUPerUU(oaViewType::get(oacVerilogText)); }), oacInvalidTechViewType);
  EXPECT_EQ(raisedBy([&] { tech->setDBUPerUU(layout, 0); }), oacInvalidDBUPerUU);
  tech->setDBUPerUU(layout, 2000);
  tech->setUserUnits(layout, oacNanometer);
  tech->setProcessFamily("own process");
  tech = reopened(tech);
  EXPECT_EQ(tech->getDBUPerUU(layout), 2000u);
  EXPECT_EQ(tech->getUserUnits(layout), oacNanometer);
  EXPECT_EQ(tech->getDBUPerUU(oaViewType::get(oacSchematic)), 160u);
  oaString family;
  tech->getProcessFamily(family);
  EXPECT_EQ(family, "own process");
  EXPECT_EQ(tech->uuToDBU(layout, -0.00174), -3);
  EXPECT_EQ(tech->uuToDBU(layout, 1e30), INT_MAX);
  EXPECT_EQ(tech->uuToDBUDistance(layout, -1.0), 0u);
  EXPECT_EQ(tech->uuToDBUArea(layout, 2.0), 8000000u);
  EXPECT_DOUBLE_EQ(tech->dbuToUU(layout, -500), -0.25);
  EXPECT_DOUBLE_EQ(tech->dbuToUUArea(layout, 8000000), 2.0);
  tech->unsetDBUPerUU(layout);
  EXPECT_EQ(tech->getDBUPerUU(layout), 1000u);
}

} // namespace
