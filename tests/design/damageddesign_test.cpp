#include "designaccess.h"
#include "designtest.h"

#include <functional>
#include <limits>

// Design files that are not what they should be: a named exception, never a crash, and no reading of what is not there.
namespace designtest {

class DamagedDesign : public DesignTest {
protected:
  // A design with something in every table of shapes.
  std::string bytesOfFullDesign() {
    oaBlock *block = newBlock("full");
    oaNet *net = oaNet::create(block, oaName(scalar("A")));
    oaPin *pin = oaPin::create(oaTerm::create(net, oaName(scalar("A"))));
    const oaPointArray bend = pointsOf({{0, 0}, {10, 0}, {10, 10}});
    for (oaCoord i = 0; i < 40; ++i) {
      oaRect::create(block, i % 4, 1, oaBox(i, 0, i + 10, 10))->addToNet(net);
      oaPolygon::create(block, 1, 1, bend);
      oaPath::create(block, 1, 1, 2, bend, oacVariablePathStyle, 1, 2)->addToPin(pin);
      oaPathSeg::create(block, 1, 1, oaPoint(0, 0), oaPoint(9, 9),
                        oaSegStyle(4, oacExtendEndStyle, oacChamferEndStyle));
      oaLine::create(block, 1, 1, bend);
      oaArc::create(block, 1, 1, oaBox(0, 0, 20, 20), 0.5, 2.5);
      oaDonut::create(block, 1, 1, oaPoint(0, 0), 10, 5);
      oaDot::create(block, 1, 1, oaPoint(1, 1), 2, 2);
      oaText::create(block, 1, 1, "text", oaPoint(0, 0), oacCenterLeftTextAlign, oacR90, oacRomanFont, 10)
          ->addToPin(pin);
    }
    oaIntProp *prop = oaIntProp::create(net, "w", 5);
    oaPropDisplay::create(prop, 1, 2, oaPoint(0, 0), oacLowerLeftTextAlign, oacR0, oacStickFont, 10);
    oaScalarInst::create(block, scalar(libName()), scalar("inv"), scalar("layout"), scalar("I1"), oaTransform(5, 5));
    block->getDesign()->save();
    block->getDesign()->close();
    return bytesOf(file("full"));
  }

  // Everything that a client can read, through every kind of access.
  static void readShape(oaShape *shape) {
    oaPointArray points;
    oaString text;
    oaBox box;
    shape->getBBox(box);
    shape->getLayerNum();
    shape->getPurposeNum();
    shape->getHeader();
    shape->getNet();
    shape->getPin();
    switch (oaTypeEnum(shape->getType())) {
    case oacPolygonType:
      static_cast<oaPolygon *>(shape)->getPoints(points);
      break;
    case oacLineType:
      static_cast<oaLine *>(shape)->getPoints(points);
      break;
    case oacPathType:
      static_cast<oaPath *>(shape)->getPoints(points);
      static_cast<oaPath *>(shape)->getBoundary(points);
      break;
    case oacPathSegType: {
      oaSegStyle style;
      static_cast<oaPathSeg *>(shape)->getStyle(style);
      static_cast<oaPathSeg *>(shape)->getBoundary(points);
      break;
    }
    case oacArcType:
      static_cast<oaArc *>(shape)->getPoints(points);
      break;
    case oacDonutType:
      static_cast<oaDonut *>(shape)->getBoundary(points);
      break;
    case oacDotType:
      static_cast<oaDot *>(shape)->getWidth();
      break;
    case oacTextType:
      static_cast<oaText *>(shape)->getText(text);
      static_cast<oaText *>(shape)->getAlignment();
      break;
    case oacPropDisplayType:
      static_cast<oaTextDisplay *>(shape)->getText(text);
      break;
    default:
      break;
    }
  }
  void readEverything() {
    oaBlock *block = openExisting("full", 'r')->getTopBlock();
    if (block == nullptr) {
      return;
    }
    oaBox box;
    oaString text;
    block->getBBox(box);
    oaIter<oaShape> shapes(block->getShapes());
    while (oaShape *shape = shapes.getNext()) {
      readShape(shape);
    }
    oaIter<oaLPPHeader> headers(block->getLPPHeaders());
    while (oaLPPHeader *header = headers.getNext()) {
      header->getShapes().getCount();
      header->getLayerHeader();
    }
    oaIter<oaNet> nets(block->getNets());
    while (oaNet *net = nets.getNext()) {
      net->getName(oaNativeNS(), text);
      net->getShapes().getCount();
      net->getTerms().getCount();
      oaIter<oaProp> props(net->getProps());
      while (oaProp *prop = props.getNext()) {
        prop->getValue(text);
      }
    }
    oaIter<oaPin> pins(block->getPins());
    while (oaPin *pin = pins.getNext()) {
      pin->getFigs().getCount();
      pin->getTerm();
    }
    oaIter<oaInst> insts(block->getInsts());
    while (oaInst *inst = insts.getNext()) {
      inst->getName(oaNativeNS(), text);
      inst->getCellName(oaNativeNS(), text);
      inst->getBBox(box);
    }
  }
  // The message of what reading raised; empty when nothing was. Any other kind of exception fails the test by itself.
  std::string readDamaged(const std::string &bytes) {
    writeBytes(file("full"), bytes);
    std::string message;
    try {
      readEverything();
    } catch (const oaException &exception) {
      message = std::string(exception.getMsg());
    }
    if (oaDesign *design = find("full")) {
      design->purge();
    }
    return message;
  }
};

TEST_F(DamagedDesign, TheUndamagedOneReads) { EXPECT_EQ(readDamaged(bytesOfFullDesign()), ""); }

TEST_F(DamagedDesign, FlippedBytesAreFoundWhereverTheyMatter) {
  const std::string good = bytesOfFullDesign();
  unsigned found = 0, flips = 0;
  // A step that meets each part of the header, the directory and every column.
  for (std::size_t at = 0; at < good.size(); at += at < 2048 ? 5 : 23) {
    std::string bytes = good;
    bytes[at] = static_cast<char>(bytes[at] ^ 0x5a);
    SCOPED_TRACE("byte " + std::to_string(at));
    const std::string message = readDamaged(bytes);
    ++flips;
    if (!message.empty()) {
      ++found;
      EXPECT_TRUE(message.find("full/layout") != std::string::npos || message.find("layout.oa") != std::string::npos)
          << message;
    }
  }
  // What nothing reads (padding, names of columns for people, savedTime) may go unnoticed.
  EXPECT_GT(found * 2, flips) << found << " of " << flips;
}

TEST_F(DamagedDesign, WrongSizesAreRefused) {
  const std::string good = bytesOfFullDesign();
  for (const std::size_t length :
       {std::size_t(1), std::size_t(7), std::size_t(40), good.size() / 4, good.size() / 2, good.size() - 1}) {
    SCOPED_TRACE(length);
    EXPECT_NE(readDamaged(good.substr(0, length)), "");
  }
  readDamaged(good + std::string(100, '\0')); // more than there should be: read or refused, but no crash
  EXPECT_NE(readDamaged(""), "");
  EXPECT_NE(readDamaged(std::string(4096, '\0')), "");
  EXPECT_NE(readDamaged("this is no design\n"), "");
}

// Files whose checksums are right and whose contents are not: written by a design whose rows are changed behind the
// API's back.
TEST_F(DamagedDesign, WrongRowsAreFoundWhenTheyAreUsed) {
  using kit::DesignDatabase;
  const struct {
    const char *name;
    std::function<void(DesignDatabase &)> damage;
    const char *table; // named by the message
  } cases[] = {
      {"kind of no shape", [](DesignDatabase &d) { d.shapes.kind.set(0, oacScalarNetType); }, "table shapes"},
      {"kind with another payload", [](DesignDatabase &d) { d.shapes.kind.set(0, oacPathType); }, "table paths"},
      {"header out of range", [](DesignDatabase &d) { d.shapes.lpp.set(0, 1000); }, "table lpps"},
      {"payload out of range", [](DesignDatabase &d) { d.shapes.payload.set(1, 1000000); }, "table outlines"},
      {"no payload", [](DesignDatabase &d) { d.shapes.payload.set(8, kit::kNoRow); }, "table texts"},
      {"net out of range", [](DesignDatabase &d) { d.shapes.net.set(0, 77); }, "table nets"},
      {"pin out of range", [](DesignDatabase &d) { d.shapes.pin.set(8, 77); }, "table pins"},
      {"points beyond the pool",
       [](DesignDatabase &d) {
         d.outlines.points.set(0, {0xfffffff0U, 100});
       },
       "table points"},
      {"more points than the pool has",
       [](DesignDatabase &d) {
         d.outlines.points.set(0, {1, 0xffffffffU});
       },
       "table points"},
      {"path style",
       [](DesignDatabase &d) {
         kit::PathTable::Path path = d.paths.paths[0];
         path.style = 4;
         d.paths.paths.set(0, path);
       },
       "table paths, row 0"},
      {"end style",
       [](DesignDatabase &d) {
         kit::PathSegTable::Segment segment = d.pathSegs.segments[0];
         segment.endStyle.style = 5;
         d.pathSegs.segments.set(0, segment);
       },
       "table pathSegs, row 0"},
      {"text orientation",
       [](DesignDatabase &d) {
         kit::TextStyle style = d.texts.style[0];
         style.orient = 8;
         d.texts.style.set(0, style);
       },
       "table texts, row 0"},
      {"text out of range", [](DesignDatabase &d) { d.texts.text.set(0, 5000); }, "text 5000"},
      {"display format", [](DesignDatabase &d) { d.textDisplays.format.set(0, 3); }, "table textDisplays, row 0"},
      {"angle that is no number",
       [](DesignDatabase &d) {
         kit::ArcTable::Arc arc = d.arcs.arcs[0];
         arc.startRadians = std::numeric_limits<double>::quiet_NaN();
         d.arcs.arcs.set(0, arc);
       },
       "table arcs, row 0"},
      {"layer without a header", [](DesignDatabase &d) { d.layerHeaders.layer.set(0, 99); }, "table lpps"},
      {"two blocks",
       [](DesignDatabase &d) {
         const kit::Row row = d.blocks.addRow();
         d.blocks.kind.set(row, oacBlockType);
       },
       "table blocks"},
  };
  const std::string good = bytesOfFullDesign();
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    writeBytes(file("full"), good);
    oaDesign *design = openExisting("full", 'a');
    c.damage(kit::designOf(design));
    design->save();
    design->purge();
    const std::string message = readDamaged(bytesOf(file("full")));
    EXPECT_NE(message.find(c.table), std::string::npos) << message;
    EXPECT_NE(message.find("full/layout"), std::string::npos) << message;
  }
}

TEST_F(DamagedDesign, DisplaysOfNothingAreDropped) {
  oaBlock *block = newBlock("full");
  oaIntProp *prop = oaIntProp::create(block, "w", 5);
  oaPropDisplay::create(prop, 1, 2, oaPoint(0, 0), oacLowerLeftTextAlign, oacR0, oacStickFont, 10);
  kit::designOf(block).textDisplays.objectRow.set(0, 4000);
  block->getDesign()->save();
  block->getDesign()->close();
  block = openExisting("full", 'r')->getTopBlock();
  EXPECT_TRUE(block->getShapes().isEmpty());
  EXPECT_EQ(boxOf(block), "none");
  EXPECT_FALSE(block->getDesign()->isModified());
}

} // namespace designtest
