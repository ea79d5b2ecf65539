#include "designtest.h"

#include <cmath>
#include <functional>
#include <set>
#include <vector>

// Shapes that change their class or go while they are walked over.
namespace designtest {

class Conversions : public DesignTest {};

TEST_F(Conversions, KeepPointerLayerAttachmentAndProperties) {
  oaBlock *block = newBlock();
  oaNet *net = oaNet::create(block, oaName(scalar("A")));
  const oaPointArray bend = pointsOf({{0, 0}, {10, 0}, {10, 10}});
  const struct {
    const char *name;
    oaShape *shape;
    std::function<oaShape *(oaShape *)> convert;
    oaTypeEnum type;
    const char *box;
  } cases[] = {
      {"rectangle", oaRect::create(block, 3, 4, oaBox(0, 0, 10, 5)),
       [](oaShape *s) { return static_cast<oaRect *>(s)->convertToPolygon(); }, oacPolygonType, "(0 0) (10 5)"},
      {"ellipse", oaEllipse::create(block, 3, 4, oaBox(0, 0, 100, 50)),
       [](oaShape *s) { return static_cast<oaEllipse *>(s)->convertToPolygon(); }, oacPolygonType, "(0 0) (100 50)"},
      {"smallest ellipse", oaEllipse::create(block, 3, 4, oaBox(0, 0, 1, 1)),
       [](oaShape *s) { return static_cast<oaEllipse *>(s)->convertToPolygon(); }, oacPolygonType, "(0 0) (1 1)"},
      {"donut", oaDonut::create(block, 3, 4, oaPoint(0, 0), 50, 20),
       [](oaShape *s) { return static_cast<oaDonut *>(s)->convertToPolygon(); }, oacPolygonType, "(-50 -50) (50 50)"},
      {"path", oaPath::create(block, 3, 4, 4, bend),
       [](oaShape *s) { return static_cast<oaPath *>(s)->convertToPolygon(); }, oacPolygonType, "(0 -2) (12 10)"},
      {"polygon", oaPolygon::create(block, 3, 4, pointsOf({{0, 5}, {10, 5}, {10, 0}, {0, 0}})),
       [](oaShape *s) { return static_cast<oaPolygon *>(s)->convertToRect(); }, oacRectType, "(0 0) (10 5)"},
      {"arc", oaArc::create(block, 3, 4, oaBox(-10, -10, 10, 10), 0, M_PI),
       [](oaShape *s) { return static_cast<oaArc *>(s)->convertToLine(); }, oacLineType, "(-10 0) (10 10)"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    c.shape->addToNet(net);
    oaStringProp::create(c.shape, "owner", c.name);
    EXPECT_EQ(c.convert(c.shape), c.shape);
    EXPECT_EQ(c.shape->getType(), c.type);
    EXPECT_EQ(boxOf(c.shape), c.box);
    EXPECT_EQ(c.shape->getLayerNum() * 10 + c.shape->getPurposeNum(), 34U);
    EXPECT_EQ(c.shape->getNet(), net);
    oaString value;
    oaProp::find(c.shape, "owner")->getValue(value);
    EXPECT_EQ(value, c.name);
  }
  // A member function of the class that it was must not touch it any more.
  EXPECT_EQ(idRaisedBy([&] { static_cast<oaPath *>(cases[4].shape)->getWidth(); }), oacInvalidReference);
  // The outline of the path is what its boundary was.
  oaPointArray points;
  static_cast<oaPolygon *>(cases[4].shape)->getPoints(points);
  EXPECT_EQ(textOf(points), "(0 2) (8 2) (8 10) (12 10) (12 -2) (0 -2)");
  block = reopened(block);
  EXPECT_EQ(typesOf(block->getShapes()), "Polygon Polygon Polygon Polygon Polygon Rect Line");
  EXPECT_EQ(oaNet::find(block, oaName(scalar("A")))->getShapes().getCount(), 7U);
}

TEST_F(Conversions, OfAPathWithoutAreaAreRefused) {
  oaPath *path = oaPath::create(newBlock(), 1, 2, 0, pointsOf({{0, 0}, {10, 0}}));
  EXPECT_EQ(idRaisedBy([&] { path->convertToPolygon(); }), oacPolygonTooFewPoints);
  EXPECT_EQ(path->getType(), oacPathType);
}

TEST_F(Conversions, DuringAWalkOverAReadOnlyDesignMeetEachShapeOnceAndStayInMemory) {
  oaBlock *block = newBlock();
  for (oaCoord i = 0; i < 100; ++i) {
    oaEllipse::create(block, 1, 2, oaBox(i, 0, i + 20, 20));
    oaRect::create(block, 1, 2, oaBox(i, 0, i + 20, 20));
  }
  block = reopened(block);
  std::set<oaShape *> met;
  oaIter<oaShape> shapes(block->getShapes());
  while (oaShape *shape = shapes.getNext()) {
    EXPECT_TRUE(met.insert(shape).second);
    if (shape->getType() == oacEllipseType) {
      static_cast<oaEllipse *>(shape)->convertToPolygon();
    }
  }
  EXPECT_EQ(met.size(), 200U);
  EXPECT_TRUE(block->getDesign()->isModified());
  EXPECT_EQ(idRaisedBy([&] { block->getDesign()->save(); }), oacSaveReadOnlyDesign);
  block->getDesign()->close();
  block = openExisting("top", 'r')->getTopBlock();
  EXPECT_EQ(typesOf(block->getShapes()).substr(0, 12), "Ellipse Rect");
}

TEST_F(Conversions, DestroyingDuringAWalkSkipsNothing) {
  oaBlock *block = newBlock();
  const struct {
    const char *name;
    std::function<oaIter<oaShape>()> walk;
  } walks[] = {
      {"of the block", [&] { return oaIter<oaShape>(block->getShapes()); }},
      {"of a header", [&] { return oaIter<oaShape>(oaLPPHeader::find(block, 1, 2)->getShapes()); }},
      {"of a net", [&] { return oaIter<oaShape>(oaNet::find(block, oaName(scalar("A")))->getShapes()); }},
  };
  oaNet *net = oaNet::create(block, oaName(scalar("A")));
  for (const auto &walk : walks) {
    SCOPED_TRACE(walk.name);
    for (oaCoord i = 1; i <= 100; ++i) {
      oaRect::create(block, 1, 2, oaBox(0, 0, i, i))->addToNet(net);
    }
    // Every third stays; of the others some go when they are met, some one step later.
    oaIter<oaShape> shapes = walk.walk();
    unsigned met = 0;
    oaShape *previous = nullptr;
    while (oaShape *shape = shapes.getNext()) {
      if (previous != nullptr) {
        previous->destroy();
        previous = nullptr;
      }
      ++met;
      if (met % 3 == 1) {
        shape->destroy();
        EXPECT_FALSE(shape->isValid());
      } else if (met % 3 == 2) {
        previous = shape;
      }
    }
    EXPECT_EQ(met, 100U);
    EXPECT_EQ(block->getShapes().getCount(), 33U + (previous != nullptr ? 1 : 0));
    oaIter<oaShape> rest(block->getShapes());
    while (oaShape *shape = rest.getNext()) {
      shape->destroy();
    }
    EXPECT_EQ(oaLPPHeader::find(block, 1, 2), nullptr);
    EXPECT_TRUE(net->isValid());
  }
}

} // namespace designtest
