#include "gdsexporter.h"

#include "gdsimporter.h"
#include "recordingwriter.h"

#include <gmock/gmock.h>
#include <QBuffer>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr double kMetresPerDbu = 1e-9;

struct Exported {
  QByteArray bytes;
  std::vector<std::string> report;
  int problems = 0;
};

Exported exportModel(LayoutModel &model) {
  model.setUnits(0.001, kMetresPerDbu);
  Exported result;
  QBuffer buffer(&result.bytes);
  buffer.open(QIODevice::WriteOnly);
  GdsWriter writer(buffer, "t.gds");
  ImportReport report;
  GdsExporter(model, writer, report).run("LIB", [](qint64) {});
  for (const QString &line : report.lines()) {
    result.report.push_back(line.toStdString());
  }
  result.problems = report.problemCount();
  return result;
}

std::vector<std::string> importLines(const QByteArray &bytes) {
  const GdsParser parser(reinterpret_cast<const unsigned char *>(bytes.constData()), bytes.size(), "t.gds");
  const CoordinateScale scale(parser.metresPerDbu(), kMetresPerDbu);
  ImportReport report;
  RecordingWriter writer;
  const GdsIndex index(parser, scale, report);
  GdsImporter(parser, index, scale, kMetresPerDbu, writer, report).run([](qint64) {});
  return writer.lines;
}

LayoutCell &define(LayoutModel &model, const QString &name) {
  LayoutCell &cell = model.cell(model.cellIndex(name));
  cell.isDefined = true;
  return cell;
}

TEST(GdsExport, EverythingComesBackFromTheFileInItsOrder) {
  LayoutModel model;
  const CellIndex leaf = model.cellIndex("LEAF");
  define(model, "LEAF");
  LayoutCell &top = define(model, "TOP");
  const LayerIndex metal = model.layerIndex(68, 20);
  const LayerIndex last = model.layerIndex(65535, 32767);
  top.addBox({-5, -6, 7, 8, metal});
  top.addPolygon(QPolygon(QVector<QPoint>{QPoint(0, 0), QPoint(10, 0), QPoint(0, 10)}), last);
  top.addBox({1, 1, 2, 2, metal});
  top.addPath(QPolygon(QVector<QPoint>{QPoint(0, 0), QPoint(10, 0)}), {0, 0, metal, 4, 0, 0, 0});
  top.addPath(QPolygon(QVector<QPoint>{QPoint(0, 0), QPoint(10, 0)}), {0, 0, metal, 4, 1, 0, 0});
  top.addPath(QPolygon(QVector<QPoint>{QPoint(0, 0), QPoint(10, 0)}), {0, 0, metal, 4, 2, 0, 0});
  top.addPath(QPolygon(QVector<QPoint>{QPoint(0, 0), QPoint(10, 0)}), {0, 0, metal, 4, 0, 1, 3});
  top.addPath(QPolygon(QVector<QPoint>{QPoint(0, 0), QPoint(10, 9)}), {0, 0, metal, 0, 0, 0, 0});
  top.addText({"a<0>", QPoint(3, 4), 250, metal, 9, Orientation(true, 3)});
  top.addText({"odd", QPoint(3, 4), 1000, metal, 0, Orientation()});
  for (const bool mirrored : {false, true}) {
    for (int turns = 0; turns < 4; ++turns) {
      const Orientation orientation(mirrored, turns);
      top.references.push_back({leaf, QPoint(turns, 0), orientation, false, 1, 1, 0, 0, "I"});
      top.references.push_back({leaf, QPoint(turns, 1), orientation, true, 3, 2, 10, -20, "I"});
    }
  }
  const Exported exported = exportModel(model);
  std::vector<std::string> expected = {"cell LEAF",
                                       "end",
                                       "cell TOP",
                                       "box 68/20 -5,-6 7,8",
                                       "polygon 65535/32767 0,0 10,0 0,10",
                                       "box 68/20 1,1 2,2",
                                       "path 68/20 width 4 caps 0 0,0 10,0",
                                       "path 68/20 width 4 caps 1 0,0 10,0",
                                       "path 68/20 width 4 caps 2 0,0 10,0",
                                       "path 68/20 width 4 caps 0 -1,0 13,0",
                                       "path 68/20 width 0 caps 0 0,0 10,9",
                                       "text 68/20 \"a<0>\" 3,4 height 250 at 9 m270",
                                       "text 68/20 \"odd\" 3,4 height 1000 at 0 r0"};
  for (const char *orientation : {"r0", "r90", "r180", "r270", "m0", "m90", "m180", "m270"}) {
    const int x = std::atoi(orientation + 1) / 90;
    expected.push_back(QString("ref LEAF %1,0 %2").arg(x).arg(orientation).toStdString());
    expected.push_back(QString("array LEAF %1,1 %2 3x2 pitch 10,-20").arg(x).arg(orientation).toStdString());
  }
  expected.push_back("end");
  EXPECT_EQ(importLines(exported.bytes), expected);
  EXPECT_THAT(exported.report, testing::IsEmpty());
}

TEST(GdsExport, LongPolygonIsContinuedInFurtherRecords) {
  LayoutModel model;
  LayoutCell &cell = define(model, "A");
  // A comb without redundant points.
  QPolygon comb;
  for (int i = 0; i < 20000; ++i) {
    comb.append(QPoint(10 * (i / 2), i % 4 == 1 || i % 4 == 2 ? 100 : 50));
  }
  comb.append(QPoint(comb.last().x() + 7, 0));
  comb.append(QPoint(-7, 0));
  cell.addPolygon(comb, model.layerIndex(1, 0));
  const Exported exported = exportModel(model);
  EXPECT_THAT(exported.report, ElementsAre(HasSubstr("more points than one XY record holds")));
  const std::vector<std::string> lines = importLines(exported.bytes);
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(std::count(lines[1].begin(), lines[1].end(), ','), comb.size());
}

TEST(GdsExport, LargeArraysAreCut) {
  LayoutModel model;
  const CellIndex leaf = model.cellIndex("LEAF");
  define(model, "LEAF");
  LayoutCell &top = define(model, "TOP");
  top.references.push_back({leaf, QPoint(0, 0), Orientation(), true, 40000, 1, 10, 0, ""});
  // The last element fits, one pitch further does not.
  top.references.push_back({leaf, QPoint(2147483000, 0), Orientation(), true, 2, 1, 500, 0, ""});
  const Exported exported = exportModel(model);
  const std::vector<std::string> lines = importLines(exported.bytes);
  EXPECT_THAT(std::vector<std::string>(lines.begin() + 3, lines.end() - 1),
              ElementsAre("array LEAF 0,0 r0 32767x1 pitch 10,0", "array LEAF 327670,0 r0 7233x1 pitch 10,0",
                          "ref LEAF 2147483000,0 r0", "ref LEAF 2147483500,0 r0"));
  EXPECT_THAT(exported.report, ElementsAre(HasSubstr("written as single references")));
}

TEST(GdsExport, WhatGdsiiCannotHoldIsTold) {
  LayoutModel model;
  LayoutCell &cell = define(model, "a_name_of_more_than_thirty_two_characters~lib");
  cell.addBox({0, 0, 1, 1, model.layerIndex(65536, 0)});
  cell.addBox({0, 0, 1, 1, model.layerIndex(0, -1)});
  cell.references.push_back({model.cellIndex("NONE"), QPoint(0, 0), Orientation(), false, 1, 1, 0, 0, ""});
  const Exported exported = exportModel(model);
  EXPECT_THAT(exported.report,
              ElementsAre(HasSubstr("longer than the 32 characters"), HasSubstr("characters other than"),
                          HasSubstr("layer 65536 datatype 0"), HasSubstr("layer 0 datatype -1"),
                          HasSubstr("cell NONE is placed but did not arrive")));
  EXPECT_EQ(exported.problems, 2);
}

} // namespace
