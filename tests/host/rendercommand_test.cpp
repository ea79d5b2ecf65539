// oahost render on schematics and symbols in a library.

#include "schematichost.h"

namespace {

using testing::HasSubstr;
using testing::Not;

class RenderCommand : public SchematicHost {
protected:
  // A cell with a symbol and a schematic that places it with others.
  void fill(const QString &lib) {
    createLib(lib);
    SymbolModel symbol;
    symbol.shapes = {shapeOf(SchematicShape::Kind::Rect, {{-40, -20}, {40, 20}}),
                     shapeOf(SchematicShape::Kind::EvalText, {{-30, 0}}, "", "@symname of @size")};
    symbol.ports = {portAt("A", -60, 0, "input"), portAt("Y", 60, 0, "output")};
    writeSymbol(lib, "inv", symbol);
    SchematicModel model;
    model.placements = {placementOf(lib, "inv", "I1", 0, 0), placementOf(lib, "gone", "I2", 300, 0)};
    model.placements[0].data = {{"size", "8"}};
    model.wires = {{points({{-200, 0}, {-60, 0}}), false}};
    model.ports = {portAt("IN", -200, 0, "input")};
    model.labels = {{"net_a", QPoint(-100, 0), QPoint(0, 5)}};
    writeSchematic(lib, "top", model);
    writeSymbol(lib, "top", symbol);
  }
  HostResult render(const QString &arguments) { return host().run(("render " + arguments).split(' ')); }
  std::string picture(const QString &name) { return host().read(name).toStdString(); }
};

TEST_F(RenderCommand, DrawsSchematicsWithTheSymbolsOfTheirLibraries) {
  fill("renderlib");
  const HostResult result = render("renderlib top -o top.svg");
  EXPECT_THAT(result.errors, HasSubstr("gone"));
  const std::string svg = picture("top.svg");
  for (const char *words : {">renderlib / top / schematic<", ">inv of 8<", ">I1<", ">gone<", ">I2<", ">IN<", ">net_a<"})
    EXPECT_THAT(svg, HasSubstr(words));
  EXPECT_EQ(render("renderlib top schematic -o top.png --size 300x200 --background dark").exitCode, result.exitCode);
  EXPECT_EQ(picture("top.png").substr(1, 3), "PNG");
}

TEST_F(RenderCommand, DrawsSymbols) {
  fill("rendersymbols");
  EXPECT_EQ(render("rendersymbols top symbol -o top.svg").exitCode, 0);
  EXPECT_THAT(picture("top.svg"), HasSubstr(">@symname of @size<"));
  EXPECT_EQ(render("rendersymbols inv -o inv.svg --no-texts").exitCode, 0) << "the only view is the default";
  EXPECT_THAT(picture("inv.svg"), HasSubstr(">rendersymbols / inv / symbol<"));
  EXPECT_THAT(picture("inv.svg"), Not(HasSubstr("@symname")));
}

TEST_F(RenderCommand, RefusesWhatIsForLayoutsOnly) {
  fill("renderrefusals");
  const HostResult result = render("renderrefusals top -o refused.svg --levels 2");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, HasSubstr("renderrefusals/top/schematic is no layout"));
  EXPECT_FALSE(QFile::exists(host().path("refused.svg")));
}

} // namespace
