#include "designtest.h"

#include <cmath>
#include <functional>

// Moving, copying, layers, nets and pins.
namespace designtest {

class Figures : public DesignTest {};

TEST_F(Figures, TransformsAreTheSameForMovesAndCopies) {
  // Each shape, and its box after a quarter turn followed by (100, 0), and after mirroring about the x axis.
  const oaTransform turn(100, 0, oacR90), mirror(0, 0, oacMX);
  const oaSegStyle ends(4, oacTruncateEndStyle, oacVariableEndStyle, 0, 7);
  const struct {
    const char *name;
    std::function<oaShape *(oaBlock *)> create;
    const char *box, *turned, *mirrored;
  } cases[] = {
      {"rectangle", [](oaBlock *b) { return oaRect::create(b, 3, 4, oaBox(1, 2, 11, 5)); }, "(1 2) (11 5)",
       "(95 1) (98 11)", "(1 -5) (11 -2)"},
      {"polygon",
       [](oaBlock *b) {
         return oaPolygon::create(b, 3, 4, pointsOf({{0, 0}, {10, 0}, {0, 5}}));
       },
       "(0 0) (10 5)", "(95 0) (100 10)", "(0 -5) (10 0)"},
      {"line",
       [](oaBlock *b) {
         return oaLine::create(b, 3, 4, pointsOf({{0, 0}, {10, 0}, {10, 5}}));
       },
       "(0 0) (10 5)", "(95 0) (100 10)", "(0 -5) (10 0)"},
      {"path",
       [](oaBlock *b) {
         return oaPath::create(b, 3, 4, 4, pointsOf({{0, 0}, {10, 0}}), oacVariablePathStyle, 0, 5);
       },
       "(0 -2) (15 2)", "(98 0) (102 15)", "(0 -2) (15 2)"},
      {"segment", [&](oaBlock *b) { return oaPathSeg::create(b, 3, 4, oaPoint(0, 0), oaPoint(10, 0), ends); },
       "(0 -2) (17 2)", "(98 0) (102 17)", "(0 -2) (17 2)"},
      {"ellipse", [](oaBlock *b) { return oaEllipse::create(b, 3, 4, oaBox(0, 0, 10, 4)); }, "(0 0) (10 4)",
       "(96 0) (100 10)", "(0 -4) (10 0)"},
      {"arc", [](oaBlock *b) { return oaArc::create(b, 3, 4, oaBox(-20, -10, 20, 10), 0, M_PI / 2); }, "(0 0) (20 10)",
       "(90 0) (100 20)", "(0 -10) (20 0)"},
      {"donut", [](oaBlock *b) { return oaDonut::create(b, 3, 4, oaPoint(10, 0), 5, 2); }, "(5 -5) (15 5)",
       "(95 5) (105 15)", "(5 -5) (15 5)"},
      {"dot", [](oaBlock *b) { return oaDot::create(b, 3, 4, oaPoint(10, 0), 4, 2); }, "(8 -1) (12 1)",
       "(99 8) (101 12)", "(8 -1) (12 1)"},
      {"text",
       [](oaBlock *b) {
         return oaText::create(b, 3, 4, "ab", oaPoint(10, 0), oacLowerLeftTextAlign, oacR0, oacStickFont, 10);
       },
       "(10 0) (22 10)", "(90 10) (100 22)", "(10 -10) (22 0)"},
  };
  oaBlock *block = newBlock();
  oaBlock *other = newBlock("other");
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    oaShape *shape = c.create(block);
    EXPECT_EQ(boxOf(shape), c.box);
    oaFig *copy = shape->copy(turn);
    EXPECT_EQ(boxOf(copy), c.turned);
    EXPECT_EQ(boxOf(shape->copy(turn, other)), c.turned);
    EXPECT_EQ(boxOf(shape->copy(mirror)), c.mirrored);
    EXPECT_EQ(boxOf(shape), c.box);
    EXPECT_EQ(copy->getType(), shape->getType());
    EXPECT_EQ(static_cast<oaShape *>(copy)->getLayerNum() * 10 + static_cast<oaShape *>(copy)->getPurposeNum(), 34U);
    shape->move(turn);
    EXPECT_EQ(boxOf(shape), c.turned);
    oaTransform back;
    turn.invert(back);
    shape->move(back);
    EXPECT_EQ(boxOf(shape), c.box);
    oaFig *moved = shape->move(oaTransform(), other);
    EXPECT_FALSE(shape->isValid());
    EXPECT_EQ(boxOf(moved), c.box);
    EXPECT_EQ(static_cast<oaBlockObject *>(moved)->getBlock(), other);
  }
  // Everything that was copied reads back as it was.
  oaBox before, after;
  other->getBBox(before);
  const std::string types = typesOf(other->getShapes());
  other = reopened(other);
  other->getBBox(after);
  EXPECT_EQ(textOf(after), textOf(before));
  EXPECT_EQ(typesOf(other->getShapes()), types);
}

TEST_F(Figures, ScalingChangesWidthsAndRadiiToo) {
  oaBlock *block = newBlock();
  oaPath *path = oaPath::create(block, 1, 2, 4, pointsOf({{0, 0}, {10, 0}}));
  path->transform(2.0, M_PI / 2);
  oaPointArray points;
  path->getPoints(points);
  EXPECT_EQ(textOf(points), "(0 0) (0 20)");
  EXPECT_EQ(path->getWidth(), 8U);
  EXPECT_EQ(boxOf(path), "(-4 0) (4 20)");
  oaDonut *donut = oaDonut::create(block, 1, 2, oaPoint(10, 0), 10, 5);
  donut->transform(0.5, M_PI);
  EXPECT_EQ(boxOf(donut), "(-10 -5) (0 5)");
}

TEST_F(Figures, TheBoxOfTheBlockIsExact) {
  oaBlock *block = newBlock();
  EXPECT_EQ(boxOf(block), "none");
  oaRect *small = oaRect::create(block, 1, 2, oaBox(0, 0, 10, 10));
  oaRect *large = oaRect::create(block, 1, 2, oaBox(-50, -50, 50, 50));
  EXPECT_EQ(boxOf(block), "(-50 -50) (50 50)");
  small->move(oaTransform(45, 0));
  EXPECT_EQ(boxOf(block), "(-50 -50) (55 50)");
  large->setBBox(oaBox(0, 0, 20, 20));
  EXPECT_EQ(boxOf(block), "(0 0) (55 20)");
  large->destroy();
  EXPECT_EQ(boxOf(block), "(45 0) (55 10)");
  block = reopened(block);
  EXPECT_EQ(boxOf(block), "(45 0) (55 10)");
  oaIter<oaShape>(block->getShapes()).getNext()->destroy();
  EXPECT_EQ(boxOf(block), "none");
}

TEST_F(Figures, HeadersComeWithTheFirstShapeAndGoWithTheLast) {
  oaBlock *block = newBlock();
  oaRect *a = oaRect::create(block, 1, 10, oaBox(0, 0, 5, 5));
  oaRect *b = oaRect::create(block, 1, 20, oaBox(0, 0, 7, 7));
  oaRect::create(block, 1, 10, oaBox(0, 0, 9, 9));
  oaLPPHeader *header = oaLPPHeader::find(block, 1, 10);
  EXPECT_EQ(a->getHeader(), header);
  EXPECT_EQ(header->getShapes().getCount(), 2U);
  EXPECT_EQ(block->getLPPHeaders().getCount(), 2U);
  EXPECT_EQ(block->getLayerHeaders().getCount(), 1U);
  oaLayerHeader *layer = oaLayerHeader::find(block, 1);
  EXPECT_EQ(header->getLayerHeader(), layer);
  EXPECT_EQ(layer->getLPPHeaders().getCount(), 2U);
  EXPECT_EQ(header->getLayer(), nullptr);
  EXPECT_FALSE(header->isBound());

  b->setLPP(2, 30);
  EXPECT_EQ(oaLPPHeader::find(block, 1, 20), nullptr);
  EXPECT_EQ(oaLPPHeader::find(block, 2, 30)->getShapes().getCount(), 1U);
  EXPECT_EQ(b->getLayerNum() * 100 + b->getPurposeNum(), 230U);
  // Away and back: it is met once.
  a->setLayerNum(2);
  a->setLayerNum(1);
  EXPECT_EQ(header->getShapes().getCount(), 2U);
  oaBox box;
  header->getShapeBBox(box);
  EXPECT_EQ(textOf(box), "(0 0) (9 9)");
  block = reopened(block);
  EXPECT_EQ(block->getLPPHeaders().getCount(), 2U);
  EXPECT_EQ(oaLPPHeader::find(block, 1, 10)->getShapes().getCount(), 2U);
  oaIter<oaShape> shapes(block->getShapes());
  while (oaShape *shape = shapes.getNext()) {
    shape->destroy();
  }
  EXPECT_TRUE(block->getLPPHeaders().isEmpty());
  EXPECT_EQ(oaLayerHeader::find(block, 2), nullptr);
  oaRect::create(block, 2, 30, oaBox(0, 0, 1, 1));
  EXPECT_EQ(oaLPPHeader::find(block, 2, 30)->getShapes().getCount(), 1U);
}

TEST_F(Figures, LayersAndPurposesBindToTheTechnology) {
  oaTech *tech = oaTech::create(lib());
  oaLayer *metal = oaPhysicalLayer::create(tech, "metal", 7);
  oaBlock *block = newBlock();
  oaRect::create(block, 7, oavPurposeNumberDrawing, oaBox(0, 0, 1, 1));
  const oaLPPHeader *header = oaLPPHeader::find(block, 7, oavPurposeNumberDrawing);
  EXPECT_EQ(header->getLayer(), metal);
  EXPECT_TRUE(header->isBound());
  EXPECT_EQ(block->getDesign()->getTech(), tech);
  tech->setDBUPerUU(oaViewType::get(oacMaskLayout), 2000);
  EXPECT_EQ(block->getDBUPerUU(), 2000U);
  tech->purge();
  EXPECT_EQ(block->getDBUPerUU(), 1000U);
}

TEST_F(Figures, AreOnANetOrInAPinButNeverBoth) {
  oaBlock *block = newBlock();
  oaNet *net = oaNet::create(block, oaName(scalar("A")));
  oaNet *other = oaNet::create(block, oaName(scalar("B")));
  oaTerm *term = oaTerm::create(net, oaName(scalar("A")));
  oaPin *pin = oaPin::create(term);
  oaPin *otherPin = oaPin::create(term);
  oaRect *rect = oaRect::create(block, 1, 2, oaBox(0, 0, 5, 5));
  oaText *text = oaText::create(block, 1, 2, "A", oaPoint(0, 0), oacLowerLeftTextAlign, oacR0, oacStickFont, 5);
  EXPECT_FALSE(rect->hasNet() || rect->hasPin());

  rect->addToNet(net);
  EXPECT_EQ(idRaisedBy([&] { rect->addToPin(pin); }), oacCannotAddNetFigToPin);
  EXPECT_FALSE(rect->hasPin());
  rect->addToNet(other);
  EXPECT_EQ(rect->getNet(), other);
  EXPECT_TRUE(net->getShapes().isEmpty());
  rect->removeFromNet();
  rect->addToPin(pin);
  text->addToPin(pin);
  EXPECT_EQ(idRaisedBy([&] { rect->addToNet(net); }), oacCannotAddPinFigToNet);
  EXPECT_FALSE(rect->hasNet()) << "a pin's figure has no net of its own";
  EXPECT_EQ(rect->getNet(), nullptr);
  rect->addToPin(otherPin);
  rect->addToPin(pin);
  EXPECT_EQ(pin->getFigs().getCount(), 2U);
  EXPECT_TRUE(otherPin->getFigs().isEmpty());

  oaBlock *elsewhere = newBlock("elsewhere");
  oaNet *strange = oaNet::create(elsewhere, oaName(scalar("A")));
  oaPin *strangePin = oaPin::create(oaTerm::create(strange, oaName(scalar("A"))));
  rect->removeFromPin();
  EXPECT_EQ(idRaisedBy([&] { rect->addToNet(strange); }), oacNetFigNotInSameBlock);
  EXPECT_EQ(idRaisedBy([&] { rect->addToPin(strangePin); }), oacPinAndFigNotInSameBlock);
  rect->addToPin(pin);

  // Copies are attached to nothing; attachments come back from the file.
  EXPECT_FALSE(static_cast<oaShape *>(rect->copy(oaTransform(9, 9)))->hasPin());
  block = reopened(block);
  oaIter<oaShape> shapes(block->getShapes());
  EXPECT_TRUE(shapes.getNext()->hasPin());
  oaPin *stored = shapes.getNext()->getPin();
  ASSERT_NE(stored, nullptr);
  EXPECT_EQ(stored->getFigs().getCount(), 2U);
  // Figures outlive their pin.
  stored->destroy();
  EXPECT_EQ(block->getShapes().getCount(), 3U);
  EXPECT_FALSE(oaIter<oaShape>(block->getShapes()).getNext()->hasPin());
}

TEST_F(Figures, DestroyingABlockTakesEverything) {
  oaBlock *block = newBlock();
  oaRect::create(block, 1, 2, oaBox(0, 0, 5, 5))->addToNet(oaNet::create(block, oaName(scalar("A"))));
  oaDesign *design = block->getDesign();
  block->destroy();
  EXPECT_EQ(design->getTopBlock(), nullptr);
  block = oaBlock::create(design);
  EXPECT_TRUE(block->getShapes().isEmpty());
  EXPECT_TRUE(block->getNets().isEmpty());
  EXPECT_EQ(boxOf(block), "none");
  EXPECT_EQ(boxOf(reopened(block)), "none");
}

} // namespace designtest
