// Shapes, connectivity and the bracket of the layout writer.

#include <csignal>

#include <sys/resource.h>

#include "layouttest.h"

using namespace oa;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

namespace {

class WriterTest : public LayoutTest {
protected:
  Lines shapesOf(const std::string &cell) { return OpenCell("lib", cell).shapes(); }
};

QPolygon polygon(std::initializer_list<QPoint> points) { return QPolygon(QVector<QPoint>(points)); }

const struct {
  const char *name;
  void (*save)(oaPlugInMain &);
  const char *shape; // null: refused
} kShapes[] = {
    {"box", [](oaPlugInMain &p) { p.saveBox(QRect(QPoint(0, 10), QPoint(20, 0)), 4, 2); }, "Rect 4/2 (0 0 20 10)"},
    {"box the wrong way up", [](oaPlugInMain &p) { p.saveBox(QRect(QPoint(0, 0), QPoint(20, 10)), 4, 2); }, nullptr},
    {"flat box", [](oaPlugInMain &p) { p.saveBox(QRect(QPoint(0, 0), QPoint(20, 0)), 4, 2); }, nullptr},
    {"datatype 0 is purpose 0", [](oaPlugInMain &p) { p.saveBox(QRect(QPoint(0, 1), QPoint(1, 0)), 0, 0); },
     "Rect 0/0 (0 0 1 1)"},
    {"polygon",
     [](oaPlugInMain &p) {
       p.savePolygon(4, 2, polygon({{0, 0}, {9, 0}, {0, 7}}));
     },
     "Polygon 4/2 (0 0) (9 0) (0 7)"},
    {"closed polygon with points in a line",
     [](oaPlugInMain &p) {
       p.savePolygon(4, 2, polygon({{0, 0}, {5, 0}, {9, 0}, {9, 0}, {0, 7}, {0, 0}}));
     },
     "Polygon 4/2 (0 0) (9 0) (0 7)"},
    {"polygon of two points",
     [](oaPlugInMain &p) {
       p.savePolygon(4, 2, polygon({{0, 0}, {9, 0}}));
     },
     nullptr},
    {"polygon in a line",
     [](oaPlugInMain &p) {
       p.savePolygon(4, 2, polygon({{0, 0}, {9, 0}, {20, 0}}));
     },
     nullptr},
    {"path with flush ends",
     [](oaPlugInMain &p) {
       p.savePath(polygon({{0, 0}, {9, 0}}), 4, 4, 2, 0);
     },
     "Path 4/2 style 0 width 4 (0 0) (9 0)"},
    {"path with round ends",
     [](oaPlugInMain &p) {
       p.savePath(polygon({{0, 0}, {9, 0}}), 4, 4, 2, 1);
     },
     "Path 4/2 style 2 width 4 (0 0) (9 0)"},
    {"path with extended ends",
     [](oaPlugInMain &p) {
       p.savePath(polygon({{0, 0}, {9, 0}}), 5, 4, 2, 2);
     },
     "Path 4/2 style 1 width 5 (0 0) (9 0)"},
    {"path with other caps",
     [](oaPlugInMain &p) {
       p.savePath(polygon({{0, 0}, {9, 0}}), 4, 4, 2, 3);
     },
     "Path 4/2 style 0 width 4 (0 0) (9 0)"},
    {"path with a repeated point",
     [](oaPlugInMain &p) {
       p.savePath(polygon({{0, 0}, {9, 0}, {9, 0}, {9, 5}}), 4, 4, 2, 0);
     },
     "Path 4/2 style 0 width 4 (0 0) (9 0) (9 5)"},
    {"path of one point",
     [](oaPlugInMain &p) {
       p.savePath(polygon({{0, 0}}), 4, 4, 2, 0);
     },
     nullptr},
    {"path without width",
     [](oaPlugInMain &p) {
       p.savePath(polygon({{0, 0}, {9, 5}}), 0, 4, 2, 2);
     },
     "Line 4/2 (0 0) (9 5)"},
    {"path with negative width",
     [](oaPlugInMain &p) {
       p.savePath(polygon({{0, 0}, {9, 5}}), -4, 4, 2, 1);
     },
     "Line 4/2 (0 0) (9 5)"},
    {"text", [](oaPlugInMain &p) { p.saveText(4, 2, "a b", QPoint(1, -2), 9, "R270M", 30); },
     "Text 4/2 \"a b\" (1 -2) align 5 orient 7 font 5 height 30"},
};

TEST_F(WriterTest, EachSignalHasItsShapeAndARefusalLosesNothingElse) {
  Lines expected;
  size_t refusals = 0;
  beginLayout("cell");
  for (const auto &shape : kShapes) {
    shape.save(plugIn);
    if (shape.shape) {
      expected.push_back(shape.shape);
    } else {
      ++refusals;
    }
  }
  plugIn.saveClose();
  EXPECT_EQ(shapesOf("cell"), expected);
  EXPECT_EQ(reports().size(), refusals);
  EXPECT_THAT(reports(), testing::Each(HasSubstr("layer 4/2")));
}

TEST_F(WriterTest, RefusalIsPrintedWithTheOperation) {
  beginLayout("cell");
  testing::internal::CaptureStdout();
  plugIn.saveBox(QRect(QPoint(5, 5), QPoint(5, 0)), 1, 1);
  plugIn.saveClose();
  EXPECT_THAT(testing::internal::GetCapturedStdout(), testing::MatchesRegex("ERROR \\(saveBox\\): .+ \n"));
}

TEST_F(WriterTest, NonOrthogonalTextIsToldAndWrittenUnrotated) {
  beginLayout("cell");
  plugIn.saveText(4, 2, "x", QPoint(0, 0), 0, "R45", 10);
  plugIn.saveClose();
  EXPECT_THAT(reports(), ElementsAre("reportError \"non orthogonal text is not supported in OpenAccess\" 2 \"R45\""));
  EXPECT_THAT(shapesOf("cell"), ElementsAre("Text 4/2 \"x\" (0 0) align 0 orient 0 font 5 height 10"));
}

Lines netsOf(const std::string &cell) {
  const OpenCell open("lib", cell);
  Lines lines;
  oaIter<oaNet> nets((*open)->getNets());
  while (oaNet *net = nets.getNext()) {
    oaString name;
    net->getName(oaConvert::ns, name);
    std::string line(name);
    oaIter<oaTerm> terms(net->getTerms());
    while (oaTerm *term = terms.getNext()) {
      term->getName(oaConvert::ns, name);
      line += std::string(" term ") + static_cast<const oaChar *>(name) + " figures";
      oaIter<oaPin> pins(term->getPins());
      while (oaPin *pin = pins.getNext()) {
        line += ' ' + std::to_string(pin->getFigs().getCount());
      }
    }
    lines.push_back(line);
  }
  return lines;
}

TEST_F(WriterTest, ReplacedConnectivityIsWhatTheHostNames) {
  beginLayout("cell", true, {"old"}, {"old"});
  plugIn.saveClose();
  beginLayout("cell", true, {"A", "inner", "a/b", "B", "A"}, {"B", "A", "unused"});
  plugIn.saveText(4, 2, "A", QPoint(0, 0), 0, "", 10);
  plugIn.saveText(4, 2, "inner", QPoint(0, 0), 0, "", 10);
  plugIn.saveClose();
  EXPECT_THAT(netsOf("cell"), UnorderedElementsAre("A term A figures 1", "inner", "B term B figures 0"));
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("net a/b"), HasSubstr("net A")));
}

TEST_F(WriterTest, KeptConnectivityOutlivesTheShapes) {
  {
    CellBuilder cell("lib", "cell");
    cell.rect(1, 1, 0, 0, 10, 10)->addToPin(cell.pin("A"));
    oaScalarNet::create(*cell, scalar("inner"));
    cell.inst("I1", "leaf");
  }
  beginLayout("cell", false, {"ignored"}, {"ignored"});
  plugIn.saveText(4, 2, "A", QPoint(0, 0), 0, "", 10);
  plugIn.saveBox(QRect(QPoint(0, 7), QPoint(3, 0)), 1, 1);
  plugIn.saveClose();
  EXPECT_THAT(netsOf("cell"), UnorderedElementsAre("A term A figures 1", "inner"));
  EXPECT_THAT(shapesOf("cell"),
              ElementsAre("Text 4/2 \"A\" (0 0) align 0 orient 0 font 5 height 10", "Rect 1/1 (0 0 3 7)"));
  EXPECT_TRUE((*OpenCell("lib", "cell"))->getInsts().isEmpty());
  EXPECT_THAT(reports(), ElementsAre());
}

TEST_F(WriterTest, OperationsOutsideTheBracketAreToldAndHarmless) {
  recorder.clear();
  plugIn.saveBox(QRect(QPoint(0, 10), QPoint(20, 0)), 4, 2);
  plugIn.savePolygon(4, 2, polygon({{0, 0}, {9, 0}, {0, 7}}));
  plugIn.savePath(polygon({{0, 0}, {9, 0}}), 4, 4, 2, 0);
  plugIn.saveText(4, 2, "x", QPoint(0, 0), 0, "", 10);
  plugIn.saveCellref("lib", "leaf", "layout", QPoint(0, 0), "", "", {}, {}, {}, {});
  plugIn.saveCellrefArray("lib", "leaf", "layout", QPoint(0, 0), "", "", {}, {}, 1, 1, 1, 1);
  plugIn.saveClose();
  EXPECT_EQ(reports().size(), 7u);
  EXPECT_THAT(reports(), testing::Each(HasSubstr("no design is open for writing")));
}

TEST_F(WriterTest, DesignLeftOpenIsDroppedAndTold) {
  beginLayout("first");
  plugIn.saveBox(QRect(QPoint(0, 10), QPoint(20, 0)), 4, 2);
  beginLayout("second");
  EXPECT_THAT(
      reports(),
      ElementsAre("reportError \"a design was left open, its unsaved changes are lost\" 1 \"lib/first/layout\""));
  plugIn.saveClose();
  EXPECT_EQ(oaDesign::getOpenDesigns().getCount(), 0u);
}

TEST_F(WriterTest, UnknownLibraryIsTold) {
  recorder.clear();
  plugIn.saveLayout("nolib", "cell", "layout", true, {}, {});
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("saveLayout: nolib/cell/layout")));
  EXPECT_EQ(plugIn.currentDesign, nullptr);
}

// A disk that takes no more ends the save with a report; the design is closed and the old one is still there.
TEST_F(WriterTest, FailedSaveKeepsTheOldDesignAndClosesTheNewOne) {
  beginLayout("cell");
  plugIn.saveBox(QRect(QPoint(0, 10), QPoint(20, 0)), 4, 2);
  plugIn.saveClose();
  beginLayout("cell");
  for (int i = 0; i < 20000; ++i) {
    plugIn.saveBox(QRect(QPoint(i, i + 10), QPoint(i + 20, i)), 4, 2);
  }
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before;
  getrlimit(RLIMIT_FSIZE, &before);
  rlimit small = before;
  small.rlim_cur = 4096;
  setrlimit(RLIMIT_FSIZE, &small);
  recorder.clear();
  testing::internal::CaptureStdout();
  plugIn.saveClose();
  setrlimit(RLIMIT_FSIZE, &before); // before the captured text, which is a file too
  EXPECT_THAT(testing::internal::GetCapturedStdout(), testing::StartsWith("ERROR (saveClose): "));
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("saveClose: lib/cell/layout")));
  EXPECT_EQ(plugIn.currentDesign, nullptr);
  EXPECT_EQ(plugIn.currentBlock, nullptr);
  EXPECT_EQ(oaDesign::getOpenDesigns().getCount(), 0u);
  EXPECT_THAT(shapesOf("cell"), ElementsAre("Rect 4/2 (0 0 20 10)"));
}

TEST_F(WriterTest, TechnologyOpenForWritingIsSavedAndClosed) {
  oaTech *tech = oaTech::create(scalar("lib"));
  oaPhysicalLayer::create(tech, "metal1", 31);
  plugIn.currentTech = tech;
  beginLayout("cell");
  plugIn.saveClose();
  EXPECT_EQ(plugIn.currentTech, tech);
  oaTech *stored = oaTech::open(scalar("lib"), 'r');
  EXPECT_NE(oaLayer::find(stored, "metal1"), nullptr);
  EXPECT_FALSE(stored->isModified());
  beginLayout("cell"); // the pointer of a technology that was closed must not be followed
  plugIn.saveClose();
  EXPECT_THAT(reports(), ElementsAre());
}

} // namespace
