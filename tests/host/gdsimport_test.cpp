#include "gdsimporter.h"

#include "gdsbytes.h"
#include "recordingwriter.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

struct Imported {
  Lines lines;
  Lines report;
  int problems = 0;
  std::string fault;
};

// Imports a file into a library whose database unit is a nanometre.
Imported import(const QByteArray &bytes, const QString &refusedCell = QString()) {
  constexpr double kMetresPerDbu = 1e-9;
  Imported result;
  ImportReport report;
  RecordingWriter writer;
  writer.refusedCell = refusedCell;
  try {
    const GdsParser parser(reinterpret_cast<const unsigned char *>(bytes.constData()), bytes.size(), "t.gds");
    const CoordinateScale scale(parser.metresPerDbu(), kMetresPerDbu);
    const GdsIndex index(parser, scale, report);
    GdsImporter importer(parser, index, scale, kMetresPerDbu, writer, report);
    importer.run([](qint64) {});
  } catch (const HostError &error) {
    result.fault = error.what();
  }
  result.lines = writer.lines;
  for (const QString &line : report.lines()) {
    result.report.push_back(line.toStdString());
  }
  result.problems = report.problemCount();
  return result;
}

// Imports a library whose one structure A holds what `body` adds, and leaves out the lines of the cell itself.
template <typename Body> Imported importStructure(Body body, double metresPerDbu = 1e-9) {
  GdsBytes gds;
  gds.head(metresPerDbu).structure("A");
  body(gds);
  Imported result = import(gds.endStructure().endLibrary().bytes);
  if (result.lines.size() >= 2) {
    result.lines.pop_back();
    result.lines.erase(result.lines.begin());
  }
  return result;
}

std::string onlyLine(const Imported &imported) {
  return imported.lines.size() == 1 ? imported.lines.front() : testing::PrintToString(imported.lines);
}

TEST(GdsImport, BoundariesBecomeBoxesOrPolygons) {
  const struct {
    const char *name;
    std::initializer_list<int> points;
    const char *line;
    const char *report;
  } cases[] = {
      {"rectangle", {0, 0, 0, 5, 10, 5, 10, 0, 0, 0}, "box 7/0 0,0 10,5", ""},
      {"rectangle the other way round", {10, 5, 0, 5, 0, 0, 10, 0, 10, 5}, "box 7/0 0,0 10,5", ""},
      {"rectangle not closed", {0, 0, 0, 5, 10, 5, 10, 0}, "box 7/0 0,0 10,5", ""},
      {"rectangle with points in its sides", {0, 0, 0, 2, 0, 5, 10, 5, 10, 0, 4, 0, 0, 0}, "box 7/0 0,0 10,5", ""},
      {"rectangle that starts in a side", {4, 0, 0, 0, 0, 5, 10, 5, 10, 0, 4, 0}, "box 7/0 0,0 10,5", ""},
      {"triangle", {0, 0, 10, 0, 0, 10, 0, 0}, "polygon 7/0 0,0 10,0 0,10", ""},
      {"trapezoid", {0, 0, 10, 0, 8, 5, 2, 5, 0, 0}, "polygon 7/0 0,0 10,0 8,5 2,5", ""},
      {"repeated points", {0, 0, 0, 0, 10, 0, 10, 0, 0, 10, 0, 0}, "polygon 7/0 0,0 10,0 0,10", ""},
      {"spike", {0, 0, 10, 0, 20, 0, 10, 0, 0, 10, 0, 0}, "polygon 7/0 0,0 10,0 0,10", ""},
      {"whole range",
       {-2147483647 - 1, -2147483647 - 1, 2147483647, -2147483647 - 1, 2147483647, 2147483647, -2147483647 - 1,
        2147483647},
       "box 7/0 -2147483648,-2147483648 2147483647,2147483647",
       ""},
      {"flat", {0, 0, 10, 0, 10, 0, 0, 0}, "{}", "a boundary or box without area"},
      {"slanted line there and back", {0, 0, 10, 7, 0, 0}, "{}", "a boundary or box without area"},
      {"two points", {0, 0, 10, 10}, "{}", "a boundary or box without area"},
      {"one point", {3, 3, 3, 3, 3, 3}, "{}", "a boundary or box without area"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const Imported imported = importStructure([&](GdsBytes &gds) { gds.boundary(7, c.points); });
    EXPECT_EQ(onlyLine(imported), c.line);
    EXPECT_THAT(testing::PrintToString(imported.report), HasSubstr(c.report));
    EXPECT_EQ(imported.report.empty(), *c.report == '\0');
    EXPECT_EQ(imported.problems, 0);
  }
}

TEST(GdsImport, BoxElementCountsAsABox) {
  const Imported imported = importStructure([](GdsBytes &gds) {
    gds.empty(GdsRecordType::Box).int16(GdsRecordType::Layer, {3}).int16(GdsRecordType::BoxType, {9});
    gds.xy({0, 0, 0, 5, 10, 5, 10, 0, 0, 0}).endElement();
  });
  EXPECT_THAT(imported.lines, ElementsAre("box 3/9 0,0 10,5"));
}

TEST(GdsImport, PathsKeepTheirEnds) {
  const struct {
    const char *name;
    int pathType, width, begin, end;
    std::initializer_list<int> points;
    const char *line;
    const char *report;
  } cases[] = {
      {"flush", 0, 10, 0, 0, {0, 0, 50, 0}, "path 1/0 width 10 caps 0 0,0 50,0", ""},
      {"round", 1, 10, 0, 0, {0, 0, 50, 0}, "path 1/0 width 10 caps 1 0,0 50,0", ""},
      {"extended by half", 2, 10, 0, 0, {0, 0, 50, 0}, "path 1/0 width 10 caps 2 0,0 50,0", ""},
      {"line", 2, 0, 0, 0, {0, 0, 50, 0}, "path 1/0 width 0 caps 2 0,0 50,0", ""},
      {"absolute width", 0, -10, 0, 0, {0, 0, 50, 0}, "path 1/0 width 10 caps 0 0,0 50,0", "width is absolute"},
      {"unknown type", 3, 10, 0, 0, {0, 0, 50, 0}, "path 1/0 width 10 caps 0 0,0 50,0", "path type 3 is not known"},
      {"points in between", 0, 10, 0, 0, {0, 0, 20, 0, 20, 0, 50, 0}, "path 1/0 width 10 caps 0 0,0 50,0", ""},
      {"free ends without extension", 4, 10, 0, 0, {0, 0, 50, 0}, "path 1/0 width 10 caps 0 0,0 50,0", ""},
      {"free ends of half the width", 4, 10, 5, 5, {0, 0, 50, 0}, "path 1/0 width 10 caps 2 0,0 50,0", ""},
      {"free ends", 4, 10, 3, 7, {0, 0, 50, 0, 50, 40}, "path 1/0 width 10 caps 0 -3,0 50,0 50,47", ""},
      {"free ends, downwards and left",
       4,
       10,
       3,
       7,
       {0, 0, 0, -40, -50, -40},
       "path 1/0 width 10 caps 0 0,3 0,-40 -57,-40",
       ""},
      {"ends cut back", 4, 10, -3, 0, {0, 0, 50, 0}, "path 1/0 width 10 caps 0 3,0 50,0", ""},
      {"slanted free end", 4, 10, 0, 10, {0, 0, 30, 40}, "polygon 1/0 -4,3 32,51 40,45 4,-3", "written as a polygon"},
      {"one flush point", 0, 10, 0, 0, {4, 4, 4, 4}, "{}", "a path of one point has no area"},
      {"one square point", 2, 10, 0, 0, {4, 4}, "box 1/0 -1,-1 9,9", "a path of one point is written as a box"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const Imported imported = importStructure([&](GdsBytes &gds) {
      if (c.pathType == 4) {
        gds.extendedPath(c.width, c.begin, c.end, c.points);
      } else {
        gds.path(c.pathType, c.width, c.points);
      }
    });
    EXPECT_EQ(onlyLine(imported), c.line);
    EXPECT_THAT(testing::PrintToString(imported.report), HasSubstr(c.report));
    EXPECT_EQ(imported.report.empty(), *c.report == '\0');
  }
}

TEST(GdsImport, PathThatTurnsStraightBackIsWrittenInPieces) {
  const Imported imported = importStructure([](GdsBytes &gds) { gds.extendedPath(10, 3, 4, {0, 0, 50, 0, 20, 0}); });
  EXPECT_THAT(imported.lines, ElementsAre("path 1/0 width 10 caps 0 -3,0 50,0", "path 1/0 width 10 caps 0 50,0 16,0"));
  EXPECT_THAT(imported.report, ElementsAre(HasSubstr("written in pieces")));
}

TEST(GdsImport, TextsKeepPlaceSizeAndOrientation) {
  const struct {
    const char *name;
    int presentation;
    bool mirrored;
    double magnification, angle;
    const char *line;
    const char *report;
  } cases[] = {
      {"upper left", 0, false, 1, 0, "text 1/0 \"t\" 5,6 height 1000 at 0 r0", ""},
      {"lower right", 10, false, 0.1, 90, "text 1/0 \"t\" 5,6 height 100 at 10 r90", ""},
      {"font is not kept", 0x35, true, 0.1, 270, "text 1/0 \"t\" 5,6 height 100 at 5 m270", ""},
      {"turned by more than a circle", 5, false, 0.1, 450, "text 1/0 \"t\" 5,6 height 100 at 5 r90", ""},
      {"turned backwards", 5, true, 0.1, -90, "text 1/0 \"t\" 5,6 height 100 at 5 m270", ""},
      {"slanted", 5, false, 0.1, 100, "text 1/0 \"t\" 5,6 height 100 at 5 r90", "slanted angle"},
      {"presentation without meaning", 3, false, 0.1, 0, "text 1/0 \"t\" 5,6 height 100 at 0 r0", "none of the nine"},
      {"height of a fraction", 0, false, 0.0001234, 0, "text 1/0 \"t\" 5,6 height 0 at 0 r0", "is rounded"},
      {"huge height", 0, false, 1e20, 0, "text 1/0 \"t\" 5,6 height 2147483647 at 0 r0", "does not fit in 32 bits"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const Imported imported =
        importStructure([&](GdsBytes &gds) { gds.label("t", c.presentation, c.mirrored, c.magnification, c.angle); });
    EXPECT_EQ(onlyLine(imported), c.line);
    EXPECT_THAT(testing::PrintToString(imported.report), HasSubstr(c.report));
    EXPECT_EQ(imported.report.empty(), *c.report == '\0');
  }
}

// Every structure refers to B, which follows later.
Imported importReferences(const std::function<void(GdsBytes &)> &body) {
  GdsBytes gds;
  gds.head().structure("A");
  body(gds);
  gds.endStructure().structure("B").boundary(1, {0, 0, 0, 2, 4, 2, 4, 0, 0, 0}).endStructure().endLibrary();
  Imported result = import(gds.bytes);
  const auto end = std::find(result.lines.begin(), result.lines.end(), "end");
  result.lines.erase(end, result.lines.end());
  result.lines.erase(result.lines.begin());
  return result;
}

TEST(GdsImport, ArraysAreAlignedWithTheAxesOrExpanded) {
  const struct {
    const char *name;
    int columns, rows;
    std::initializer_list<int> points;
    Lines lines;
  } cases[] = {
      {"columns in x", 3, 2, {1, 2, 31, 2, 1, 42}, {"array B 1,2 r90 3x2 pitch 10,20"}},
      {"columns in y", 3, 2, {1, 2, 1, 32, 41, 2}, {"array B 1,2 r90 2x3 pitch 20,10"}},
      {"negative pitch", 3, 2, {0, 0, -30, 0, 0, -40}, {"array B 0,0 r90 3x2 pitch -10,-20"}},
      {"one row", 3, 1, {0, 0, 30, 0, 0, 0}, {"array B 0,0 r90 3x1 pitch 10,0"}},
      {"one row whose pitch means nothing", 3, 1, {0, 0, 30, 0, 5, 7}, {"array B 0,0 r90 3x1 pitch 10,0"}},
      {"one column in x", 1, 3, {0, 0, 9, 9, 30, 0}, {"array B 0,0 r90 3x1 pitch 10,0"}},
      {"one element", 1, 1, {1, 2, 9, 9, 30, 0}, {"ref B 1,2 r90"}},
      {"skewed", 2, 2, {0, 0, 20, 2, 0, 20}, {"ref B 0,0 r90", "ref B 10,1 r90", "ref B 0,10 r90", "ref B 10,11 r90"}},
      {"broken pitch", 3, 1, {0, 0, 10, 0, 0, 0}, {"ref B 0,0 r90", "ref B 3,0 r90", "ref B 7,0 r90"}},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const Imported imported = importReferences([&](GdsBytes &gds) { gds.aref("B", c.columns, c.rows, c.points, 90); });
    EXPECT_EQ(imported.lines, c.lines);
    EXPECT_EQ(imported.report.empty(), c.lines.size() == 1);
  }
}

TEST(GdsImport, HugeSkewedArrayIsRefused) {
  const Imported imported = importReferences([](GdsBytes &gds) {
    gds.aref("B", 32767, 32767, {0, 0, 32767, 32767, 32767, -32767});
  });
  EXPECT_THAT(imported.fault, HasSubstr("structure A: skewed arrays expand to more than 4000000 references"));
}

TEST(GdsImport, MagnifiedAndSlantedReferencesAreFlattened) {
  const struct {
    const char *name;
    std::function<void(GdsBytes &)> body;
    Lines lines;
  } cases[] = {
      {"magnified",
       [](GdsBytes &gds) {
         gds.sref("B", {10, 20}, false, 0, 2.5);
       },
       {"box 1/0 10,20 20,25"}},
      {"magnified and turned",
       [](GdsBytes &gds) {
         gds.sref("B", {10, 20}, false, 90, 2);
       },
       {"box 1/0 6,20 10,28"}},
      {"mirrored and turned",
       [](GdsBytes &gds) {
         gds.sref("B", {0, 0}, true, 90, 2);
       },
       {"box 1/0 0,0 4,8"}},
      {"slanted",
       [](GdsBytes &gds) {
         gds.sref("B", {0, 0}, false, 45, 1);
       },
       {"polygon 1/0 0,0 -1,1 1,4 3,3"}},
      {"array",
       [](GdsBytes &gds) {
         gds.aref("B", 2, 1, {0, 0, 200, 0, 0, 0}, 0, 10);
       },
       {"box 1/0 0,0 40,20", "box 1/0 100,0 140,20"}},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const Imported imported = importReferences(c.body);
    EXPECT_EQ(imported.lines, c.lines);
    EXPECT_THAT(imported.report, ElementsAre(HasSubstr("a magnified or slanted reference is flattened")));
    EXPECT_EQ(imported.problems, 0);
  }
}

TEST(GdsImport, FlatteningTakesTextsPathsAndInnerReferencesAlong) {
  GdsBytes gds;
  gds.head().structure("TOP").sref("MID", {100, 0}, false, 90, 2).endStructure();
  gds.structure("MID").sref("LEAF", {10, 0}, true, 0).endStructure();
  gds.structure("LEAF")
      .label("t", 5, false, 0.1, 90)
      .path(0, 6, {0, 0, 0, 10})
      .path(0, -6, {0, 0, 0, 10})
      .endStructure();
  const Imported imported = import(gds.endLibrary().bytes);
  // LEAF's (x, y) is (10 + x, -y) in MID, and (100 + 2 y, 20 + 2 x) in TOP.
  EXPECT_THAT(Lines(imported.lines.begin(), imported.lines.begin() + 5),
              ElementsAre("cell TOP", "text 1/0 \"t\" 112,30 height 200 at 5 m0",
                          "path 1/0 width 12 caps 0 100,20 120,20", "path 1/0 width 6 caps 0 100,20 120,20", "end"));
}

TEST(GdsImport, BoundlessFlatteningEnds) {
  GdsBytes recursive;
  recursive.head().structure("A").sref("A", {0, 0}, false, 0, 2).boundary(1, {0, 0, 0, 1, 1, 1, 1, 0}).endStructure();
  const Imported once = import(recursive.endLibrary().bytes);
  EXPECT_THAT(once.lines, ElementsAre("cell A", "box 1/0 0,0 2,2", "box 1/0 0,0 1,1", "end"));
  EXPECT_GT(once.problems, 0);

  // Each level places the next one a hundred times.
  GdsBytes bomb;
  bomb.head().structure("TOP").sref("L0", {0, 0}, false, 0, 2).endStructure();
  for (int level = 0; level < 10; ++level) {
    bomb.structure("L" + QByteArray::number(level));
    bomb.aref("L" + QByteArray::number(level + 1), 10, 10, {0, 0, 0, 0, 0, 0}).endStructure();
  }
  bomb.structure("L10").endStructure();
  EXPECT_THAT(import(bomb.endLibrary().bytes).fault, HasSubstr("flatten to more than 4000000 objects"));

  GdsBytes deep;
  deep.head().structure("TOP").sref("L0", {0, 0}, false, 0, 2).endStructure();
  for (int level = 0; level < 3000; ++level) {
    deep.structure("L" + QByteArray::number(level)).sref("L" + QByteArray::number(level + 1), {0, 0}).endStructure();
  }
  EXPECT_THAT(import(deep.endLibrary().bytes).fault, HasSubstr("more than 1000 levels to flatten"));
}

TEST(GdsImport, OddHierarchiesAreToldAndWritten) {
  GdsBytes gds;
  gds.head().structure("A").sref("B", {0, 0}).sref("NONE", {1, 1}).endStructure();
  gds.structure("B").sref("A", {2, 2}).endStructure();
  gds.structure("A").boundary(1, {0, 0, 0, 1, 1, 1, 1, 0}).endStructure();
  gds.structure("").endStructure();
  const Imported imported = import(gds.endLibrary().bytes);
  EXPECT_THAT(imported.lines,
              ElementsAre("cell A", "ref B 0,0 r0", "ref NONE 1,1 r0", "end", "cell B", "ref A 2,2 r0", "end"));
  EXPECT_THAT(imported.report,
              testing::UnorderedElementsAre(HasSubstr("structure NONE is placed but not in the file"),
                                            HasSubstr("structure A places itself"), HasSubstr("is defined again"),
                                            HasSubstr("a structure without a name")));
  EXPECT_EQ(imported.problems, 2);
}

TEST(GdsImport, LongChainOfStructuresIsNoRecursionForTheStack) {
  GdsBytes gds;
  gds.head();
  constexpr int kLevels = 50000;
  for (int level = 0; level < kLevels; ++level) {
    gds.structure("L" + QByteArray::number(level))
        .sref("L" + QByteArray::number((level + 1) % kLevels), {0, 0})
        .endStructure();
  }
  const Imported imported = import(gds.endLibrary().bytes);
  EXPECT_THAT(imported.report, ElementsAre(HasSubstr("structure L0 places itself")));
  EXPECT_EQ(imported.lines.size(), 3U * kLevels);
}

TEST(GdsImport, RefusedCellIsLeftOutAndTheRestWritten) {
  GdsBytes gds;
  gds.head().structure("A").boundary(1, {0, 0, 0, 1, 1, 1, 1, 0}).endStructure().structure("B").endStructure();
  const Imported imported = import(gds.endLibrary().bytes, "A");
  EXPECT_THAT(imported.lines, ElementsAre("cell B", "end"));
  EXPECT_EQ(imported.problems, 1);
}

TEST(GdsImport, CoordinatesAreScaledExactlyOrRefused) {
  const struct {
    const char *name;
    double metresPerDbu;
    int x;
    const char *line;
    const char *fault;
  } cases[] = {
      {"same unit", 1e-9, 7, "box 1/0 0,0 7,4", ""},
      {"same unit, written a little off", 1.0000000001e-9, 7, "box 1/0 0,0 7,4", ""},
      {"coarser", 5e-9, -7, "box 1/0 -35,0 0,20", ""},
      {"finer", 0.5e-9, 8, "box 1/0 0,0 4,2", ""},
      {"third", 1e-9 / 3, 9, "", "structure A: coordinate 4 times 1/3 is not a whole number"},
      {"finer, not whole", 0.5e-9, 7, "", "structure A: coordinate 7 times 1/2 is not a whole number"},
      {"overflow", 1e-6, 2147484, "", "structure A: coordinate 2147484 times 1000 does not fit in 32 bits"},
      {"largest", 1e-6, 2147483, "box 1/0 0,0 2147483000,4000", ""},
      {"no simple ratio", 3.14159265358979e-9, 7, "", "have no simple ratio"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const Imported imported = importStructure(
        [&](GdsBytes &gds) {
          gds.boundary(1, {0, 0, 0, 4, c.x, 4, c.x, 0});
        },
        c.metresPerDbu);
    EXPECT_THAT(imported.fault, HasSubstr(c.fault));
    EXPECT_EQ(imported.fault.empty(), *c.fault == '\0');
    if (imported.fault.empty()) {
      EXPECT_EQ(onlyLine(imported), c.line);
    } else {
      EXPECT_THAT(imported.lines, IsEmpty()) << "nothing may be written before a refusal";
    }
  }
}

TEST(GdsImport, ExtensionThatLeavesTheRangeNamesItsStructure) {
  const Imported imported = importStructure([](GdsBytes &gds) {
    gds.extendedPath(10, 0, 2147483647, {0, 0, 2147483647, 0});
  });
  EXPECT_THAT(imported.fault, HasSubstr("structure A: coordinate 4294967294 does not fit in 32 bits"));
}

TEST(GdsImport, NodesAndPropertiesAreTold) {
  const Imported imported = importStructure([](GdsBytes &gds) {
    gds.empty(GdsRecordType::Node).int16(GdsRecordType::Layer, {1}).int16(GdsRecordType::NodeType, {0});
    gds.xy({0, 0}).endElement();
    gds.empty(GdsRecordType::Boundary).layer(1).xy({0, 0, 0, 1, 1, 1, 1, 0});
    gds.int16(GdsRecordType::PropAttr, {1}).text(GdsRecordType::PropValue, "v").endElement();
  });
  EXPECT_THAT(imported.lines, ElementsAre("box 1/0 0,0 1,1"));
  EXPECT_THAT(imported.report, ElementsAre(HasSubstr("a NODE has no counterpart"), HasSubstr("GDSII properties")));
}

} // namespace
