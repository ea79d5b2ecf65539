// oahost copy of schematics: a copy is not written where a cell of its hierarchy is placed from.

#include "schematichost.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

// top places mid and another library's pad, mid places leaf.
class SchematicCopyTarget : public SchematicHost {
protected:
  void fill() {
    createLib("deep");
    createLib("beside");
    write("deep", "leaf", {});
    write("deep", "unused", {});
    write("beside", "pad", {});
    write("deep", "mid", {placementOf("deep", "leaf", "u1", 0, 0)});
    write("deep", "top", {placementOf("deep", "mid", "u1", 0, 0), placementOf("beside", "pad", "u2", 200, 0)});
  }
  void write(const char *lib, const char *cell, const std::vector<SchematicPlacement> &placed) {
    SymbolModel symbol;
    symbol.ports = {portAt("A", 0, 0, "input")};
    writeSymbol(lib, cell, symbol);
    SchematicModel model;
    model.placements = placed;
    model.ports = {portAt("A", 500, 500)};
    writeSchematic(lib, cell, model);
  }
  static HostResult run(const QString &arguments) { return host().run(arguments.split(' ')); }
};

TEST_F(SchematicCopyTarget, CellsThatAreBelowAreNotWrittenOver) {
  fill();
  const QString elsewhere = " --to elsewhere --path " + host().path("elsewhere");
  const struct {
    QString arguments;
    const char *error;
  } cases[] = {
      {"copy deep top schematic mid" + elsewhere, "cell deep/top cannot be copied to elsewhere/mid: below "
                                                  "deep/top/schematic, this is where deep/mid is placed from"},
      {"copy deep top schematic leaf" + elsewhere, "this is where deep/leaf is placed from"},
      {"copy deep top schematic leaf --top-only" + elsewhere, "this is where deep/leaf is placed from"},
      {"copy deep mid deep leaf --replace", "this is where deep/leaf is placed from"},
      {"copy deep top deep leaf --replace", "below deep/top/schematic, this is where deep/leaf is placed from"},
      {"copy deep top beside pad --replace", "this is where beside/pad is placed from"},
  };
  const QStringList kept{"dump deep leaf", "dump deep leaf symbol", "dump beside pad", "cells beside"};
  QList<QByteArray> before;
  for (const QString &command : kept)
    before.append(run(command).output);
  for (const auto &c : cases) {
    SCOPED_TRACE(c.arguments.toStdString());
    const HostResult result = run(c.arguments);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.errors, HasSubstr(c.error));
    EXPECT_FALSE(QDir(host().path("elsewhere")).exists());
    for (int i = 0; i < kept.size(); ++i)
      EXPECT_EQ(run(kept[i]).output, before[i]);
  }
  const HostResult allowed = run("copy deep top deep unused --replace");
  EXPECT_EQ(allowed.exitCode, 0) << allowed.errors;
}

} // namespace
