// A layout client as they are written, in two dialects: OA is "oa::" in one and nothing in the other. That it compiles
// is half of the test.
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

static const OA oaNativeNS kNativeNS;

// Clients reopen the namespace to add templates derived from kit classes.
namespace OpenAccess_4 {
template <class T> class CLIENT_NAME(Counting) : public oaIter<T> {
public:
  using oaIter<T>::oaIter;
  unsigned rest() {
    unsigned members = 0;
    while (this->getNext() != NULL) {
      ++members;
    }
    return members;
  }
};
} // namespace OpenAccess_4

// A library in a folder of its own, as a client sets it up.
class CLIENT : public testing::Test {
protected:
  CLIENT() {
    try {
      oaDesignInit(oacAPIMajorRevNumber, oacAPIMinorRevNumber, oacDataModelRevNumber);
    } catch (OA oaCompatibilityError &error) {
      std::cerr << error.getMsg() << std::endl;
      throw;
    }
    std::string pattern = (std::filesystem::temp_directory_path() / "client-XXXXXX").string();
    folder_ = ::mkdtemp(pattern.data());
    libName_ = OA oaScalarName(kNativeNS, folder_.filename().c_str());
    const std::string path = (folder_ / "lib").string();
    if (!OA oaLib::exists(path.c_str())) {
      lib_ = OA oaLib::create(libName_, path.c_str());
    }
  }
  ~CLIENT() override {
    lib_->close();
    std::filesystem::remove_all(folder_);
  }

  OA oaScalarName name(const char *text) const { return OA oaScalarName(kNativeNS, text); }
  OA oaDesign *make(const char *cell) const {
    OA oaDesign *design =
        OA oaDesign::open(libName_, name(cell), name("layout"), OA oaViewType::get(OA oacMaskLayout), 'w');
    OA oaBlock::create(design);
    return design;
  }

  std::filesystem::path folder_;
  OA oaScalarName libName_;
  OA oaLib *lib_ = nullptr;
};

static std::string describe(OA oaShape *shape) {
  std::ostringstream out;
  OA oaBox box;
  shape->getBBox(box);
  out << shape->getType().getName() << ' ' << shape->getLayerNum() << ' ' << box.left() << ' ' << box.bottom() << ' '
      << box.right() << ' ' << box.top();
  switch (shape->getType()) {
  case OA oacPathType: {
    OA oaPath *path = (OA oaPath *)shape;
    OA oaPointArray points;
    path->getPoints(points);
    out << " width " << path->getWidth() << " points " << points.getNumElements();
    if (path->getStyle() == OA oacVariablePathStyle) {
      out << " ext " << path->getBeginExt();
    }
    break;
  }
  case OA oacTextType: {
    OA oaString text;
    static_cast<OA oaText *>(shape)->getText(text);
    out << " \"" << text << '"';
    break;
  }
  default:
    break;
  }
  return out.str();
}

TEST_F(CLIENT, WritesShapesAndReadsThemBack) {
  OA oaDesign *design = make("shapes");
  OA oaBlock *block = design->getTopBlock();
  OA oaPointArray points;
  points.append(OA oaPoint(0, 0));
  points.append(OA oaPoint(100, 0));
  points.append(OA oaPoint(100, 50));
  OA oaRect::create(block, 4, OA oavPurposeNumberDrawing, OA oaBox(0, 0, 10, 5));
  OA oaPath::create(block, 5, 0, OA oaDist(8), points, OA oacVariablePathStyle, 2, 3);
  OA oaPath::create(block, 5, 0, 8, points);
  OA oaPolygon::create(block, 6, 0, points);
  OA oaText::create(block, 7, 1, "pin A", OA oaPoint(1, 2), OA oaTextAlign(OA oacLowerLeftTextAlign),
                    OA oaOrient(OA oacR0), OA oaFont(OA oacRomanFont), OA oaDist(1000), false, true, true);
  OA oaEvalText::create(block, 7, 1, "[@cellName]", OA oaPoint(1, 2), OA oacLowerLeftTextAlign, OA oaOrient("R90"),
                        OA oacStickFont, 10, NULL);
  design->save();
  EXPECT_EQ(design->getMode(), 'a');
  design->close();

  design = OA oaDesign::open(libName_, name("shapes"), name("layout"), 'r');
  ASSERT_TRUE(design->isValid());
  std::vector<std::string> lines;
  OA oaIter<OA oaShape> shapes = design->getTopBlock()->getShapes();
  while (OA oaShape *shape = shapes.next()) {
    lines.push_back(describe(shape));
  }
  ASSERT_EQ(lines.size(), 6U);
  EXPECT_EQ(lines[0], "Rect 4 0 0 10 5");
  EXPECT_EQ(lines[1], "Path 5 -2 -4 104 53 width 8 points 3 ext 2");
  EXPECT_EQ(lines[3], "Polygon 6 0 0 100 50");
  EXPECT_EQ(lines[4].substr(0, 4) + lines[4].substr(lines[4].size() - 7), "Text\"pin A\"");
  shapes.reset();
  EXPECT_EQ(shapes.getNext()->getType().getName(), "Rect");
  OA oaIter<OA oaLPPHeader> headers(design->getTopBlock()->getLPPHeaders());
  std::map<OA oaLayerNum, unsigned> shapesOfLayer;
  while (OA oaLPPHeader *header = headers.getNext()) {
    shapesOfLayer[header->getLayerNum()] += header->getShapes().getCount();
  }
  EXPECT_EQ(shapesOfLayer[5], 2U);
  design->close();
  EXPECT_FALSE(design->isValid());
}

TEST_F(CLIENT, CopiesFiguresInLoopsAndAsksCollectionsOnTemporaries) {
  OA oaDesign *design = make("copies");
  OA oaBlock *block = design->getTopBlock();
  OA oaRect *rect = OA oaRect::create(block, 1, 2, OA oaBox(0, 0, 10, 10));
  for (int i = 1; i < 4; ++i) {
    OA oaFig *copy = rect->copy(OA oaTransform(i * 20, 0));
    EXPECT_EQ(((OA oaShape *)copy)->getLayerNum(), 1U);
  }
  EXPECT_EQ(block->getShapes().getCount(), 4U);
  EXPECT_EQ(OA CLIENT_NAME(Counting) < OA oaShape > (block->getShapes()).rest(), 4U);
  EXPECT_FALSE(block->getShapes().isEmpty());
  EXPECT_TRUE(block->getShapes().includes(rect));
  OA oaCollection<OA oaNet, OA oaBlock> nets(block->getNets(oacNetIterAll | oacNetIterNotImplicit));
  EXPECT_EQ(nets.getCount(), 0U);
  design->close();
}

TEST_F(CLIENT, ConnectsAndWalksFromTermsToFigures) {
  OA oaDesign *design = make("inv");
  OA oaBlock *block = design->getTopBlock();
  OA oaNet *net = OA oaNet::create(block, OA oaName(kNativeNS, "A"), OA oacSignalSigType);
  OA oaTerm *term = OA oaTerm::create(net, OA oaName(kNativeNS, "A"), OA oacInputTermType);
  OA oaPin *pin = OA oaPin::create(term, oacTop | oacLeft);
  OA oaRect::create(block, 1, 2, OA oaBox(0, 0, 10, 10))->addToPin(pin);
  design->save();

  EXPECT_EQ(OA oaTerm::find(block, OA oaName(kNativeNS, "A")), term);
  OA oaIter<OA oaTerm> terms(block->getTerms());
  while (OA oaTerm *each = terms.getNext()) {
    OA oaIter<OA oaPin> pins(each->getPins());
    OA oaIter<OA oaPinFig> figs(pins.getNext()->getFigs());
    OA oaPinFig *fig = figs.getNext();
    OA oaBox box;
    fig->getBBox(box);
    EXPECT_EQ(box.right(), 10);
    EXPECT_EQ(fig->getPin()->getTerm()->getNet(), net);
    EXPECT_FALSE(fig->hasNet());
  }
  design->close();
}

TEST_F(CLIENT, PlacesMastersAndKeepsMapsOfPointers) {
  OA oaDesign *master = make("leaf");
  OA oaRect::create(master->getTopBlock(), 1, 2, OA oaBox(0, 0, 10, 20));
  master->save();
  OA oaDesign *top = make("placed");
  OA oaBlock *block = top->getTopBlock();
  OA oaScalarInst::create(block, master, name("I1"), OA oaTransform(100, 0, OA oacR90));
  OA oaScalarInst::create(block, libName_, name("leaf"), name("layout"), name("I2"),
                          OA oaTransform(OA oaPoint(0, 100)));
  std::map<OA oaDesign *, OA oaInst *> users;
  std::map<OA oaInst *, int> numbers;
  OA oaIter<OA oaInst> insts(block->getInsts());
  while (OA oaInst *inst = insts.getNext()) {
    numbers[inst] = static_cast<int>(numbers.size());
    users[inst->getMaster()] = inst;
    OA oaIter<OA oaShape> shapes(inst->getMaster()->getTopBlock()->getShapes());
    EXPECT_NE(shapes.getNext(), nullptr);
    switch (inst->getOrient()) {
    case OA oacR90: {
      OA oaBox box;
      inst->getBBox(box);
      EXPECT_EQ(box.left(), 80);
      break;
    }
    default:
      inst->setOrigin(OA oaPoint(0, 50));
      break;
    }
  }
  EXPECT_EQ(users.size(), 1U);
  EXPECT_EQ(users.begin()->first, master);
  EXPECT_EQ(numbers.size(), 2U);
  EXPECT_TRUE(top->isModified());
  OA oaBox box;
  block->getBBox(box);
  EXPECT_EQ(box.top(), 70);
  top->save();
  top->close();
  // The other use of the master is the client's own.
  EXPECT_EQ(OA oaDesign::find(libName_, name("leaf"), name("layout")), master);
  master->close();
}

TEST_F(CLIENT, CatchesByClass) {
  int caught = 0;
  try {
    OA oaDesign::open(libName_, name("nowhere"), name("layout"), 'r');
  } catch (OA oaDesignError &error) {
    caught += error.getMsgId() == OA oacCannotFindDesign;
  }
  try {
    OA oaDesign::open(libName_, name("nowhere"), name("layout"), 'r');
  } catch (OA oaDesignException &error) {
    ++caught;
  }
  try {
    OA oaDesign *design = make("catches");
    OA oaRect::create(design->getTopBlock(), 1, 2, OA oaBox());
  } catch (const OA oaException &error) {
    std::string text(error.getMsg());
    caught += !text.empty();
  }
  EXPECT_EQ(caught, 3);
  OA oaDesign::find(libName_, name("catches"), name("layout"))->purge();
}
