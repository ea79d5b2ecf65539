#include "schematichost.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

using testing::HasSubstr;

class Components : public SchematicHost {
protected:
  static SymbolModel inverter() {
    SymbolModel symbol;
    symbol.ports = {portAt("A", 0, 0), portAt("D<3:0>", 40, 0), portAt("VDD", 0, 99, "", "", true)};
    symbol.shapes = {shapeOf(SchematicShape::Kind::Polyline, {{0, 0}, {40, 0}}),
                     shapeOf(SchematicShape::Kind::Text, {{5, 30}}, "blue", "inv")};
    symbol.data = {{"prefix", "X\nY"}, {"offset", "3 -4"}};
    return symbol;
  }
};

TEST_F(Components, ListComesFromTheLibraryAndIsRefreshed) {
  createLib("lib");
  writeSymbol("lib", "inv", inverter());
  writeSymbol("lib", "small@nand", inverter());
  writeSchematic("lib", "top", SchematicModel());
  EXPECT_EQ(output("components lib", "lib"), "inv\n");
  writeSymbol("lib", "buf", inverter());
  EXPECT_EQ(output("components lib", "lib"), "inv\n");
  EXPECT_EQ(output("components lib --refresh", "lib"), "buf\ninv\n");
  EXPECT_EQ(output("components lib", "lib"), "buf\ninv\n");
}

TEST_F(Components, SignalsOfOneAreTextOrJson) {
  createLib("shown");
  writeSymbol("shown", "small@inv", inverter());
  const std::string text = output("component shown small@inv", "shown");
  for (const char *line : {"compData \"prefix\\nX\\nY\" 4\n", "compOffset 3,-4\n", "compPort 0,0 \"A\"\n",
                           "compPort 40,0 \"D<3:0>\"\n", "compPort 0,99 \"VDD\"\ncompSetGlobal true\n",
                           "compPolyline [0,0 40,0] \"red\"\n", "compText 5,30 \"blue\" \"inv\"\n"}) {
    EXPECT_THAT(text, HasSubstr(line));
  }
  const HostResult json = host().run("component shown small@inv --format json");
  for (const QByteArray &line : json.output.trimmed().split('\n')) {
    EXPECT_TRUE(QJsonDocument::fromJson(line).isArray()) << line.constData();
  }
}

TEST_F(Components, SymbolModelHoldsWhatTheSignalsSay) {
  createLib("model");
  writeSymbol("model", "inv", inverter());
  SymbolModel symbol;
  SymbolReceiver receiver(plugIn, symbol);
  EXPECT_FALSE(receiver.hasReceived());
  plugIn.loadComponent("model", "inv");
  EXPECT_TRUE(receiver.hasReceived());
  emit plugIn.compData("described", ComponentCdfData);
  emit plugIn.compData("owner\nme", ComponentLibraryProperty);
  emit plugIn.compData("?", 9);
  EXPECT_EQ(receiver.problems(), QStringList("compData with the unknown type 9"));
  EXPECT_EQ(symbol.libraryData, (std::vector<QPair<QString, QString>>{{"owner", "me"}}));
  EXPECT_EQ(symbol.description, "described");
  EXPECT_EQ(symbol.offset, QPoint(3, -4));
  EXPECT_EQ(symbol.data, inverter().data);
  ASSERT_EQ(symbol.ports.size(), 3u);
  EXPECT_TRUE(symbol.ports[2].isGlobal);
  EXPECT_EQ(symbol.ports[1].name, "D<3:0>");
  ASSERT_EQ(symbol.shapes.size(), 2u);
  EXPECT_EQ(symbol.shapes[1].text, "inv");
  EXPECT_EQ(symbol.order.size(), 5u);
}

TEST_F(Components, UnknownNamesAreTold) {
  createLib("known");
  writeSymbol("known", "inv", inverter());
  const struct {
    const char *arguments, *errors;
  } cases[] = {
      {"components none", "oahost: library none is not known"},
      {"component none inv", "oahost: library none is not known"},
      {"component known nand", "oahost: library known has no component nand: cell nand has no view symbol"},
      {"component known small@inv", "oahost: library known has no component small@inv: cell inv has no view small"},
      {"read known inv schematic", "oahost: cell inv of library known has no view schematic"},
      {"read known none", "oahost: library known has no cell none"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.arguments);
    const HostResult result = host().run(c.arguments);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr(c.errors));
  }
}

TEST_F(Components, ReadTakesTheFirstViewThatExists) {
  createLib("views");
  writeSymbol("views", "inv", inverter());
  EXPECT_EQ(output("read views inv", "views"), output("read views inv symbol", "views"));
  writeSchematic("views", "inv", SchematicModel());
  EXPECT_THAT(output("read views inv", "views"), HasSubstr("addCellNumData 4 \"schematic\""));
}

// What the plug-in throws, and a file that it cannot open, end the command with a message that names the view.
TEST_F(Components, UnreadableSchematicsAreNamed) {
  createLib("broken");
  writeSchematic("broken", "corrupt", SchematicModel());
  using namespace oa;
  const auto scalar = [](const char *text) { return oaScalarName(oaConvert::ns, text); };
  oaDesign *blockless = oaDesign::open(scalar("broken"), scalar("blockless"), scalar("schematic"),
                                       oaViewType::get(oaReservedViewType(oacSchematic)), 'w');
  blockless->save();
  blockless->close();
  const HostResult thrown = host().run("read broken blockless");
  EXPECT_EQ(thrown.exitCode, 1);
  EXPECT_EQ(thrown.errors, "oahost: broken/blockless/schematic: no data\n");
  EXPECT_THAT(thrown.output.toStdString(), HasSubstr("addCellNumData 3 \"blockless\"\n"));
  host().write("broken/corrupt/schematic/sch.oa", "garbage");
  const HostResult corrupt = host().run("copy broken corrupt broken other");
  EXPECT_EQ(corrupt.exitCode, 1);
  EXPECT_THAT(corrupt.errors, HasSubstr("oahost: broken/corrupt/schematic could not be read as a schematic"));
}

// Signals that make no sense come from no plug-in of ours, but a host must survive them.
TEST_F(Components, SenselessSignalsAreToldAndLeftOut) {
  SchematicModel model;
  SchematicReceiver receiver(plugIn, model);
  emit plugIn.setDataString("w", "1");
  emit plugIn.upgradeToVectorPlacement(0, 3);
  emit plugIn.addPlacement("inv", "lib.oa", QPoint(1, 2), "R45");
  emit plugIn.setDataPoint(2, QPoint());
  emit plugIn.addPort(QPoint(), "A[1:0]");
  emit plugIn.setDataString("colour", "red");
  emit plugIn.setGlobal(true);
  emit plugIn.addWireDot(QPoint());
  emit plugIn.setGlobal(true);
  EXPECT_EQ(receiver.problems().size(), 6);
  EXPECT_EQ(receiver.problems()[2],
            "the placement of inv at (1, 2): orientation \"R45\" is not known, taken as unrotated");
  ASSERT_EQ(model.placements.size(), 1u);
  EXPECT_EQ(model.placements[0].library, "lib");
  EXPECT_FALSE(model.placements[0].isVector);
  EXPECT_EQ(model.ports[0].name, "A<1:0>");
  emit plugIn.addPlacement("res", "lib", QPoint(), "");
  EXPECT_EQ(model.placements[1].device, "TarnwickdaleComponent@res");
}

} // namespace
