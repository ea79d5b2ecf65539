#include <gtest/gtest.h>

#include "hosterror.h"
#include "layermap.h"

namespace {

TEST(LayerMap, ReadsEachFormOfTable) {
  const struct {
    const char *name, *text;
    int layer, datatype;
    const char *layerName;
  } cases[] = {
      {"comma-separated", "Layer name,Purpose,GDS layer:datatype,Description\nmet1,drawing,68:20,Metal 1\r\n", 68, 20,
       "met1"},
      {"quoted purposes, the first counts", "n,p,layer:datatype,d\ndiff,\"drawing, text\",65:20,\"a, \"\"b\"\"\"\n", 65,
       20, "diff"},
      {"purpose beside drawing", "met1,pin,68:16,\n", 68, 16, "met1 pin"},
      {"headings and layers without a pair", "a,drawing,1:0,\n,,,\nMask level data,,,\npwell,cut,,\nb,drawing,2:0,\n",
       2, 0, "b"},
      {"repeated pair, the first drawing wins", "a,pin,1:0,\nb,drawing,1:0,\nc,drawing,1:0,\n", 1, 0, "b"},
      {"router map", "# comment\n#EDI Layer\nMetal1  NET,SPNET,PIN,LEFPIN,VIA  8  0\n", 8, 0, "Metal1"},
      {"router map, pin only", "Metal1 PIN,LEFPIN 8 2\n", 8, 2, "Metal1 pin"},
      {"router map, via after its pins", "Via1 PIN 19 0\nVia1 LEFPIN 19 0\nVia1 VIA 19 0\n", 19, 0, "Via1"},
      {"router map, names", "Metal1 NET 8 0\nNAME Metal1/PIN 8 25\n", 8, 25, "Metal1 label"},
      {"router map, unknown kind", "Metal1 NET 8 0\nSeal CROWN,JEWEL 9 4\n", 9, 4, "Seal crown"},
      {"own", "# layer datatype name\n  5   1 gate #FF8000 dots\n", 5, 1, "gate"},
      {"layer that is not in the table", "5 1 gate\n", 5, 2, ""},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(LayerMap::fromText(c.text, "t").style(c.layer, c.datatype).name.toStdString(), c.layerName);
  }
}

TEST(LayerMap, BadLinesAreNamedWithFileAndLine) {
  const struct {
    const char *name, *text, *message;
  } cases[] = {
      {"no table", "\n\nhello world\n", "layer map f.map line 3: \"hello world\" is no layer table"},
      {"pair is no pair", "a,drawing,1:0,\nb,drawing,7,\n", "line 2: \"7\" is no layer:datatype"},
      {"pair without numbers", "a,drawing,1:0,\nb,drawing,x:1,\n", "line 2: \"x\" is no layer number"},
      {"open quote", "a,drawing,1:0,\nb,\"drawing,2:0,\n", "line 2: a quoted field is not closed"},
      {"too few fields", "a,drawing,1:0,\nb,c\n", "line 2: expected name,purpose,layer:datatype,description, found 2"},
      {"router map, words", "M NET 1 0\nM NET 1\n", "line 2: expected \"name kinds layer datatype\", found 3"},
      {"router map, number", "M NET 1 0\nM NET 1 -1\n", "line 2: \"-1\" is no datatype number"},
      {"own, no name", "1 0 a\n2 0\n", "line 2: expected \"layer datatype name"},
      {"own, colour", "1 0 a #12345\n", "line 1: \"#12345\" is no colour, expected #rrggbb"},
      {"own, pattern", "1 0 a #123456 tartan\n",
       "line 1: \"tartan\" is no fill pattern, expected one of: solid outline"},
      {"own, twice", "1 0 a\n1 0 b\n", "line 2: layer 1/0 stands in the table already"},
      {"number too large", "99999999999 0 a\n", "is no "},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    try {
      LayerMap::fromText(c.text, "f.map");
      ADD_FAILURE() << "accepted";
    } catch (const HostError &error) {
      EXPECT_NE(std::string(error.what()).find(c.message), std::string::npos) << error.what();
    }
  }
  EXPECT_THROW(LayerMap::fromFile("/nonexistent/layers.map"), HostError);
}

TEST(LayerMap, ColoursPatternsAndPaintingOrder) {
  const LayerMap own = LayerMap::fromText("9 0 top #102030 grid\n3 0 below\n", "t");
  EXPECT_EQ(own.style(9, 0).colour, QColor(0x10, 0x20, 0x30));
  EXPECT_EQ(own.style(9, 0).pattern, FillPattern::Grid);
  EXPECT_TRUE(own.style(9, 0).isFixed);
  EXPECT_FALSE(own.style(3, 0).isFixed);
  EXPECT_LT(own.paintingRank(9, 0), own.paintingRank(3, 0)) << "order of the lines, not of the numbers";
  EXPECT_EQ(own.paintingRank(5, 0), -1);

  // Well-known names stack like a chip, whatever their numbers.
  const LayerMap stack =
      LayerMap::fromText("met1,drawing,1:0,\npoly,drawing,2:0,\nnwell,drawing,3:0,\nhvtp,drawing,4:0,\n", "t");
  EXPECT_LT(stack.paintingRank(4, 0), stack.paintingRank(3, 0));
  EXPECT_LT(stack.paintingRank(3, 0), stack.paintingRank(2, 0));
  EXPECT_LT(stack.paintingRank(2, 0), stack.paintingRank(1, 0));

  // Neighbouring layers without a name can be told apart, also on paper.
  for (int layer = 0; layer < 100; ++layer) {
    const QColor first = generatedStyle(layer, 0).colour, second = generatedStyle(layer + 1, 0).colour;
    const int distance = std::abs(first.hslHue() - second.hslHue());
    EXPECT_GT(std::min(distance, 360 - distance), 60) << layer;
    EXPECT_LT(readableOn(first, Qt::white, 3).lightness(), 150) << layer;
  }
}

} // namespace
