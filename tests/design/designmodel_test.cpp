#include "designtest.h"

#include <map>
#include <random>
#include <vector>

// Random operations on a design and on plain containers, compared after each reopen: borrowed, owned and saved columns
// alike.
namespace designtest {

class DesignModel : public DesignTest, public testing::WithParamInterface<unsigned> {
protected:
  // What the test knows of a shape.
  struct Expected {
    std::string type, contents;
    oaLayerNum layer;
    oaPurposeNum purpose;
    std::string net;
    int property; // 0: none
  };

  static std::string contentsOf(oaShape *shape) {
    oaPointArray points;
    oaString text;
    switch (oaTypeEnum(shape->getType())) {
    case oacPolygonType:
      static_cast<oaPolygon *>(shape)->getPoints(points);
      return textOf(points);
    case oacPathType: {
      const oaPath *path = static_cast<oaPath *>(shape);
      path->getPoints(points);
      return textOf(points) + " width " + std::to_string(path->getWidth());
    }
    case oacTextType:
      static_cast<oaText *>(shape)->getText(text);
      return std::string(text) + " " + boxOf(shape);
    default:
      return boxOf(shape);
    }
  }
  static Expected seen(oaShape *shape) {
    oaString net;
    if (shape->hasNet()) {
      shape->getNet()->getName(oaNativeNS(), net);
    }
    const oaProp *prop = oaProp::find(shape, "p");
    return {std::string(shape->getType().getName()),
            contentsOf(shape),
            shape->getLayerNum(),
            shape->getPurposeNum(),
            std::string(net),
            prop == nullptr ? 0 : static_cast<const oaIntProp *>(prop)->getValue()};
  }
  static std::string lineOf(const Expected &shape) {
    return shape.type + " " + shape.contents + " on " + std::to_string(shape.layer) + "/" +
           std::to_string(shape.purpose) + " net " + shape.net + " p " + std::to_string(shape.property);
  }

  int number(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
  oaBox randomBox() {
    const oaCoord x = number(1000), y = number(1000);
    return oaBox(x, y, x + 1 + number(50), y + 1 + number(50));
  }
  oaShape *addShape(oaBlock *block) {
    const oaLayerNum layer = number(4);
    const oaPurposeNum purpose = number(3);
    const oaBox box = randomBox();
    switch (number(5)) {
    case 0:
      return oaPolygon::create(
          block, layer, purpose,
          pointsOf({{box.left(), box.bottom()}, {box.right(), box.bottom()}, {box.left(), box.top()}}));
    case 1:
      return oaPath::create(
          block, layer, purpose, 2 * number(5),
          pointsOf({{box.left(), box.bottom()}, {box.right(), box.bottom()}, {box.right(), box.top()}}));
    case 2:
      return oaText::create(block, layer, purpose, std::string(number(20), 'x').c_str(), box.lowerLeft(),
                            oacLowerLeftTextAlign, oacR0, oacStickFont, number(30));
    case 3:
      return oaEllipse::create(block, layer, purpose, box);
    default:
      return oaRect::create(block, layer, purpose, box);
    }
  }
  void changeShape(oaBlock *block, oaShape *shape) {
    switch (number(7)) {
    case 0:
      shape->move(oaTransform(number(20) - 10, number(20) - 10));
      break;
    case 1:
      shape->setLPP(number(4), number(3));
      break;
    case 2:
      if (shape->hasNet()) {
        shape->removeFromNet();
      } else {
        const oaName name(scalar("N" + std::to_string(number(5))));
        oaNet *net = oaNet::find(block, name);
        shape->addToNet(net != nullptr ? net : oaNet::create(block, name));
      }
      break;
    case 3:
      if (oaProp *prop = oaProp::find(shape, "p")) {
        prop->destroy();
      } else {
        oaIntProp::create(shape, "p", 1 + number(1000));
      }
      break;
    case 4:
      if (shape->getType() == oacEllipseType) {
        static_cast<oaEllipse *>(shape)->convertToPolygon(8);
      } else if (shape->getType() == oacRectType) {
        static_cast<oaRect *>(shape)->convertToPolygon();
      }
      break;
    case 5:
      if (shape->getType() == oacTextType) {
        static_cast<oaText *>(shape)->setText(std::string(number(30), 'y').c_str());
      }
      break;
    default:
      if (shape->getType() == oacPolygonType) {
        oaPointArray points;
        static_cast<oaPolygon *>(shape)->getPoints(points);
        points.append(oaPoint(-1 - number(100), 5000 + number(100)));
        if (!points.hasExtraPoints()) {
          static_cast<oaPolygon *>(shape)->setPoints(points);
        }
      }
      break;
    }
  }
  // What the model says of the block, against what the kit says: every shape in order, headers, nets, the box.
  static void compare(oaBlock *block, const std::vector<Expected> &model) {
    std::map<std::pair<oaLayerNum, oaPurposeNum>, unsigned> headers;
    std::map<std::string, unsigned> nets;
    oaBox box;
    std::size_t index = 0;
    oaIter<oaShape> shapes(block->getShapes());
    while (oaShape *shape = shapes.getNext()) {
      ASSERT_LT(index, model.size());
      EXPECT_EQ(lineOf(seen(shape)), lineOf(model[index]));
      ++headers[{model[index].layer, model[index].purpose}];
      ++nets[model[index].net];
      oaBox own;
      shape->getBBox(own);
      box.merge(own);
      ++index;
    }
    EXPECT_EQ(index, model.size());
    EXPECT_EQ(boxOf(block), textOf(box));
    EXPECT_EQ(block->getLPPHeaders().getCount(), headers.size());
    for (const auto &header : headers) {
      const oaLPPHeader *found = oaLPPHeader::find(block, header.first.first, header.first.second);
      ASSERT_NE(found, nullptr);
      EXPECT_EQ(found->getShapes().getCount(), header.second);
    }
    oaIter<oaNet> each(block->getNets());
    while (oaNet *net = each.getNext()) {
      oaString name;
      net->getName(oaNativeNS(), name);
      EXPECT_EQ(net->getShapes().getCount(), nets[std::string(name)]);
    }
  }

  std::mt19937 random_{GetParam()};
};

TEST_P(DesignModel, ReopenedDesignsHoldWhatTheModelHolds) {
  RecordProperty("seed", static_cast<int>(GetParam()));
  SCOPED_TRACE("seed " + std::to_string(GetParam()));
  oaBlock *block = newBlock();
  std::vector<Expected> model;
  for (int round = 0; round < 12; ++round) {
    std::vector<oaShape *> shapes;
    oaIter<oaShape> each(block->getShapes());
    while (oaShape *shape = each.getNext()) {
      shapes.push_back(shape);
    }
    // Some rounds read an index first, so that it has to follow the changes.
    if (round % 3 == 0) {
      compare(block, model);
    }
    for (int step = 0; step < 150; ++step) {
      const int what = number(10);
      if (shapes.empty() || what < 5) {
        shapes.push_back(addShape(block));
        model.push_back(seen(shapes.back()));
        continue;
      }
      const std::size_t index = static_cast<std::size_t>(number(static_cast<int>(shapes.size())));
      if (what < 7) {
        shapes[index]->destroy();
        shapes.erase(shapes.begin() + static_cast<std::ptrdiff_t>(index));
        model.erase(model.begin() + static_cast<std::ptrdiff_t>(index));
      } else {
        changeShape(block, shapes[index]);
        model[index] = seen(shapes[index]);
      }
    }
    compare(block, model);
    block->getDesign()->save();
    compare(block, model); // the design in memory is the same after saving
    if (round % 2 == 0) {
      block->getDesign()->close();
      block = openExisting("top", 'a')->getTopBlock();
      compare(block, model);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, DesignModel, testing::Values(1U, 20240229U, 77U));

} // namespace designtest
