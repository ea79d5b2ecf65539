// oahost copy of layouts: what is read is written so that it reads the same again.

#include "hostprocess.h"
#include "oapluginmain.h"
#include "testevaluator.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using namespace oa;
using testing::HasSubstr;

oaScalarName scalar(const char *text) { return oaScalarName(oaNativeNS(), text); }
oaDesign *open(const char *lib, const char *cell, const char *view, char mode) {
  return oaDesign::open(scalar(lib), scalar(cell), scalar(view), oaViewType::get(oacMaskLayout), mode);
}

// The library "source", with a database unit of its own, and the library "other" with one cell. They are made once:
// libraries live as long as the process.
class LayoutCopyCommand : public testing::Test {
protected:
  static void SetUpTestSuite() {
    qputenv("OA_PLUGIN_PATH", EVALUATOR_DIR);
    qputenv("HOME", host().path("").toLocal8Bit());
    QDir::setCurrent(host().path(""));
    oaPlugInMain plugIn;
    plugIn.init(false);
    ASSERT_TRUE(plugIn.checkLib("source", host().path("source"), true));
    ASSERT_TRUE(plugIn.checkLib("other", host().path("other"), true));
    makeTechnology();
    makeLeaf("source", "leaf", "layout");
    makeLeaf("source", "leaf", "abstract");
    makeLeaf("source", "drawn", "layout");
    makeLeaf("other", "pad", "layout");
    makeParametric("pc", 2);
    makeParametric("broken", -1);
    makeTop();
    placeAlone("chip", "top");
  }

  static void makeTechnology() {
    oaTech *tech = oaTech::create(scalar("source"));
    tech->setDBUPerUU(oaViewType::get(oacMaskLayout), 2000);
    tech->setDefaultManufacturingGrid(7);
    oaPhysicalLayer *m1 = oaPhysicalLayer::create(tech, "metal1", 31, oacMetalMaterial);
    oaPhysicalLayer *m2 = oaPhysicalLayer::create(tech, "metal2", 32, oacMetalMaterial);
    oaPhysicalLayer *implant = oaPhysicalLayer::create(tech, "nplus", 5, oacNImplantMaterial);
    oaPhysicalLayer::create(tech, "via", 33, oacCutMaterial)->setManufacturingGrid(5);
    oaPurpose::create(tech, "pin", 16);
    oaViaParam params;
    params.setCutLayer(30);
    params.setCutWidth(100);
    params.setCutHeight(80);
    params.setLayer1Enc(oaVector(10, 20));
    oaStdViaDef::create(tech, "V", m1, m2, params, implant);
    oaCustomViaDef::create(tech, "C", scalar("source"), scalar("drawn"), scalar("layout"), m1, m2);
    oaCustomViaDef::create(tech, "P", scalar("source"), scalar("pc"), scalar("layout"), m1, m2);
    tech->save();
    tech->close();
  }
  static void makeLeaf(const char *lib, const char *cell, const char *view) {
    oaDesign *design = open(lib, cell, view, 'w');
    oaBlock *block = oaBlock::create(design);
    oaRect::create(block, 31, 16, oaBox(0, 0, 40, 20));
    oaText::create(block, 31, 16, cell, oaPoint(5, 5), oacCenterCenterTextAlign, oacMXR90, oacRomanFont, 12);
    design->save();
    design->close();
  }
  // m boxes; the evaluator is loaded by the programs.
  static void makeParametric(const char *cell, int m) {
    oaDesign *design = open("source", cell, "layout", 'w');
    oaBlock::create(design);
    oaParamArray defaults;
    for (const oaParam &param :
         {oaParam("m", oaInt4(m)), oaParam("width", oaDouble(1.5e-6)), booleanParam("on", false),
          oaParam("model", oaString("nch lvt\nx")), oaParam("f", oaFloat(0.1F)), oaParam("layer1", oaInt4(8))})
      defaults.append(param);
    design->defineSuperMaster(oaPcellLink::getPcellDef("boxes"), defaults);
    design->save();
    design->close();
  }
  static void placeAlone(const char *cell, const char *master) {
    oaDesign *design = open("source", cell, "layout", 'w');
    oaScalarInst::create(oaBlock::create(design), scalar("source"), scalar(master), scalar("layout"), scalar("I1"),
                         oaTransform(0, 0, oacR0));
    design->save();
    design->close();
  }
  static void makeTop() {
    oaDesign *design = open("source", "top", "layout", 'w');
    oaBlock *block = oaBlock::create(design);
    oaRect::create(block, 32, 0, oaBox(-100, -100, 100, 100));
    oaParamArray params;
    for (const oaParam &param : {oaParam("m", oaInt4(3)), oaParam("width", oaDouble(0.1)), booleanParam("on", true)})
      params.append(param);
    const auto place = [&](const char *lib, const char *cell, const char *view, const char *name, oaOrientEnum orient,
                           const oaParamArray *given = nullptr) {
      oaScalarInst::create(block, scalar(lib), scalar(cell), scalar(view), scalar(name), oaTransform(7, 9, orient),
                           given);
    };
    place("source", "leaf", "layout", "I1", oacMXR90);
    place("source", "leaf", "abstract", "I2", oacR270);
    place("other", "pad", "layout", "I3", oacMY);
    place("source", "pc", "layout", "P1", oacR90, &params);
    place("source", "pc", "layout", "P2", oacR0);
    for (const char *cell : {"leaf", "pc"})
      oaArrayInst::create(block, scalar("source"), scalar(cell), scalar("layout"), scalar(cell),
                          oaTransform(50, 60, oacR180), -70, 80, 2, 3, cell[0] == 'p' ? &params : nullptr);
    placeVias(block, params);
    design->save();
    design->close();
  }
  // The layers of a via's definition come behind parameters of its master, whatever those are called.
  static void placeVias(oaBlock *block, oaParamArray params) {
    params.append(oaParam("layer1", oaInt4(9)));
    oaTech *tech = oaTech::open(scalar("source"), 'r');
    const auto *standard = static_cast<oaStdViaDef *>(oaViaDef::find(tech, "V"));
    oaStdVia::create(block, standard, oaTransform(200, 0, oacMYR90));
    oaViaParam every;
    every.setCutLayer(33);
    every.setCutWidth(11);
    every.setCutHeight(12);
    every.setCutRows(2);
    every.setCutColumns(3);
    every.setCutSpacing(oaVector(13, 14));
    every.setOriginOffset(oaVector(-15, 16));
    every.setLayer1Enc(oaVector(17, 18));
    every.setLayer2Enc(oaVector(19, 20));
    every.setLayer1Offset(oaVector(-21, 22));
    every.setLayer2Offset(oaVector(23, -24));
    every.setImplant1Enc(oaVector(25, 26));
    every.setImplant2Enc(oaVector(27, 28));
    oaStdVia::create(block, standard, oaTransform(300, 0, oacR270), &every);
    oaViaParam pair;
    pair.setCutColumns(2); // of a layer that the technology does not know
    oaStdVia::create(block, standard, oaTransform(350, 0, oacR0), &pair);
    for (const oaParamArray *given :
         {static_cast<const oaParamArray *>(nullptr), static_cast<const oaParamArray *>(&params)})
      oaCustomVia::create(block, static_cast<oaCustomViaDef *>(oaViaDef::find(tech, given ? "P" : "C")),
                          oaTransform(400, given ? 100 : 0, oacMX), given);
    tech->close();
  }

  static HostProcess &host() {
    static HostProcess process;
    return process;
  }
  static HostResult run(const QString &arguments) { return host().run(arguments.split(' ')); }
  // The signals with `lib` for the name of the copied library; variants that are placed from "source" carry its name.
  static std::string stream(const char *lib) {
    const HostResult result = run(QStringLiteral("read %1 top layout").arg(lib));
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    QString text = QString::fromLatin1(result.output);
    text.replace("~source", "").replace("\"source\"", "LIB").replace(QStringLiteral("\"%1\"").arg(lib), "LIB");
    return text.toStdString();
  }
};

TEST_F(LayoutCopyCommand, NewLibraryReadsTheSame) {
  const HostResult copied = run("copy source top layout --to fresh --path " + host().path("fresh"));
  EXPECT_EQ(copied.exitCode, 0) << copied.errors;
  EXPECT_THAT(copied.errors, HasSubstr("a parametric cell cannot be copied and is placed from where it is "
                                       "(source/pc/layout)"));
  const std::string before = stream("source");
  for (const char *part :
       {"setUnits 5e-04 ", "\"oaStdVia\"", "\"oaCustomVia\"", "addCellRef \"leaf_abstract\" 7,9 \"R90\" \"I2\"",
        "addCellData \"on\" \"true\"", "\"pad~other\"", "addCellRefArray \"pc~"})
    EXPECT_THAT(before, HasSubstr(part));
  EXPECT_EQ(stream("fresh"), before);
  EXPECT_EQ(run("cells fresh").output, "drawn\nleaf\ntop\n");
  EXPECT_EQ(run("views fresh leaf").output, "abstract\nlayout\n");
  EXPECT_EQ(run("layers fresh").output, run("layers source").output);
  EXPECT_THAT(run("dump fresh top layout").output.toStdString(), HasSubstr("\"C\" master=./\"drawn\"/\"layout\""));
}

TEST_F(LayoutCopyCommand, FormsOfTheCommandLine) {
  ASSERT_EQ(run("register target").exitCode, 0);
  const struct {
    const char *arguments;
    int exitCode;
    const char *error, *cells;
  } cases[] = {
      {"copy source top", 2, "TARGETLIB", ""},
      {"copy source top target --path elsewhere", 2, "--path requires --to", ""},
      {"copy source top layout --to target --view layout", 2, "--view", ""},
      {"copy source top layout --to nowhere", 1, "library nowhere is not known", ""},
      {"copy source leaf none --to target", 1, "cell leaf of library source has no view none", ""},
      {"copy source leaf abstract two --to target", 1, "has another size (library target: 0.001 um", "two\n"},
      {"copy source leaf target", 1, "", "leaf\ntwo\n"},
      {"copy source leaf layout --to target", 1, "library target has a cell leaf already, with a view layout",
       "leaf\ntwo\n"},
      {"copy source leaf --view abstract --to target", 1, "", "leaf\ntwo\n"},
      {"copy source leaf layout --to source", 1, "source/leaf/layout would be copied onto itself", "leaf\ntwo\n"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.arguments);
    const HostResult result = run(c.arguments);
    EXPECT_EQ(result.exitCode, c.exitCode);
    EXPECT_THAT(result.errors, HasSubstr(c.error));
    EXPECT_EQ(run("cells target").output, c.cells);
  }
  EXPECT_EQ(run("views target two").output, "abstract\n");
  EXPECT_EQ(run("views target leaf").output, "abstract\nlayout\n");
}

// A library with a technology that reads the source's layouts in the same size.
oaTech *makeLibrary(const QString &lib, const QString &path) {
  oaPlugInMain plugIn;
  plugIn.init(false);
  EXPECT_TRUE(plugIn.checkLib(lib, path, true));
  oaTech *tech = oaTech::create(scalar(lib.toLatin1()));
  tech->setDBUPerUU(oaViewType::get(oacMaskLayout), 2000);
  tech->setDefaultManufacturingGrid(7);
  return tech;
}
void saveAndClose(oaTech *tech) {
  tech->save();
  tech->close();
}

TEST_F(LayoutCopyCommand, DefinitionsGetTheLayersTheyNeed) {
  oaTech *tech = makeLibrary("ready", host().path("ready"));
  oaPhysicalLayer::create(tech, "metal1", 99);
  oaPhysicalLayer::create(tech, "31", 98);
  saveAndClose(tech);
  HostResult copied = run("copy source top ready");
  EXPECT_EQ(copied.exitCode, 0) << copied.errors;
  EXPECT_THAT(copied.errors, HasSubstr("library ready: layer 31 is called metal1_31, since metal1 is taken"));
  EXPECT_EQ(stream("ready"), stream("source"));
  QList<QByteArray> layers = run("layers ready").output.trimmed().split('\n');
  std::sort(layers.begin(), layers.end());
  EXPECT_EQ(layers, (QList<QByteArray>{"31 metal1_31", "32 metal2", "33 via", "5 nplus", "98 31", "99 metal1"}));
  tech = oaTech::open(scalar("ready"), 'r');
  tech->revert();
  EXPECT_EQ(oaPhysicalLayer::find(tech, 33)->getMaterial(), oacCutMaterial);
  tech->close();
  copied = run("copy source top ready --replace");
  EXPECT_EQ(copied.exitCode, 0) << copied.errors;
  EXPECT_EQ(stream("ready"), stream("source"));
}

TEST_F(LayoutCopyCommand, WhatTechnologiesKeepFromBeingTheSameIsTold) {
  oaTech *tech = makeLibrary("otherwise", host().path("otherwise"));
  tech->setDefaultManufacturingGrid(2);
  oaPhysicalLayer *m1 = oaPhysicalLayer::create(tech, "metal1", 31);
  oaCustomViaDef::create(tech, "C", scalar("other"), scalar("pad"), scalar("layout"), m1, m1);
  saveAndClose(tech);
  HostResult copied = run("copy source top otherwise");
  EXPECT_EQ(copied.exitCode, 1);
  for (const char *part : {"the library has another via definition of that name, which the copied vias get (C)",
                           "the library has another manufacturing grid, so the cuts of vias lie elsewhere (V)"})
    EXPECT_THAT(copied.errors, HasSubstr(part));

  saveAndClose(makeLibrary("base", host().path("base")));
  ASSERT_EQ(run("register attached").exitCode, 0);
  ASSERT_EQ(host().run({"tcl", "-c", "oa::TechAttach [oa::LibFind attached] base"}).exitCode, 0);
  copied = run("copy source top attached");
  EXPECT_EQ(copied.exitCode, 1);
  EXPECT_THAT(copied.errors,
              HasSubstr("2 times: a custom via definition is not made in the technology of another library (first: C, "
                        "library attached uses the technology of base)"));
  EXPECT_THAT(run("read attached top layout").output.toStdString(), HasSubstr("\"oaStdVia\""));
}

TEST_F(LayoutCopyCommand, CellsThatAreBelowAreNotWrittenOver) {
  ASSERT_EQ(run("register safe").exitCode, 0);
  ASSERT_EQ(run("copy source leaf layout --to safe").exitCode, 1); // another size
  const QString elsewhere = " --path " + host().path("elsewhere");
  const struct {
    QString arguments;
    const char *error, *kept;
  } cases[] = {
      {"copy source top layout leaf --to elsewhere" + elsewhere,
       "source/top/layout cannot be copied to elsewhere/leaf/layout: below source/top/layout, this is where "
       "source/leaf/layout is placed from",
       "safe leaf"},
      {"copy source top layout leaf --to elsewhere --top-only" + elsewhere, "elsewhere/leaf/layout", "safe leaf"},
      {"copy source top safe leaf --replace --top-only", "safe/leaf/layout: below", "safe leaf"},
      {"copy source top layout drawn --to elsewhere" + elsewhere, "source/drawn/layout is placed", "source drawn"},
      {"copy source top source leaf --replace", "source/leaf/layout is placed from", "source leaf"},
      {"copy source top source pc --replace", "source/pc/layout is placed from", "source pc"},
      {"copy source chip source leaf --replace", "below source/chip/layout, this is where", "source leaf"},
      {"copy source top other pad --replace", "other/pad/layout is placed from", "other pad"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.arguments.toStdString());
    const QString dump = QStringLiteral("dump %1 layout").arg(c.kept);
    const QByteArray before = run(dump).output;
    const HostResult result = run(c.arguments);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.errors, HasSubstr(c.error));
    EXPECT_FALSE(before.isEmpty());
    EXPECT_EQ(run(dump).output, before);
    EXPECT_FALSE(QDir(host().path("elsewhere")).exists());
  }
}

// Cells that share others can go to one library.
TEST_F(LayoutCopyCommand, CellsBelowThatAreThereStay) {
  ASSERT_EQ(run("copy source top layout --to first --path " + host().path("first")).exitCode, 0);
  saveAndClose(makeLibrary("shared", host().path("shared")));
  ASSERT_EQ(run("copy first top shared earlier").exitCode, 0);
  oaDesign *drawn = open("shared", "drawn", "layout", 'a');
  oaRect::create(drawn->getTopBlock(), 31, 0, oaBox(0, 0, 1, 1));
  drawn->save();
  drawn->close();
  const QByteArray before = run("dump shared drawn layout").output;
  HostResult copied = run("copy first top shared");
  EXPECT_EQ(copied.exitCode, 0) << copied.errors;
  const std::string kept = "a placed cell is in the library already and stays as it is there";
  EXPECT_THAT(copied.errors, HasSubstr("2 times: " + kept + " (first: shared/leaf/"));
  EXPECT_THAT(copied.errors, HasSubstr(kept + ", although its dump is another one (shared/drawn/layout)"));
  EXPECT_EQ(run("dump shared drawn layout").output, before);
  EXPECT_EQ(run("views shared top").output, "layout\n");
  copied = run("copy first top shared");
  EXPECT_EQ(copied.exitCode, 1);
  EXPECT_THAT(copied.errors, HasSubstr("library shared has a cell top already"));
  EXPECT_THAT(copied.errors, testing::Not(HasSubstr(kept)));
  EXPECT_EQ(run("copy first top shared --replace").exitCode, 0);
  EXPECT_EQ(run("diff first drawn layout shared drawn layout").output, "");
}

TEST_F(LayoutCopyCommand, WhatCannotBeReadReplacesNothing) {
  ASSERT_EQ(run("copy source leaf layout broken --to kept --path " + host().path("kept")).exitCode, 0);
  const QByteArray before = run("dump kept broken layout").output;
  HostResult result = run("copy source broken kept --replace");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, HasSubstr("source/broken/layout is not copied: nothing of it could be read"));
  EXPECT_EQ(run("dump kept broken layout").output, before);

  qunsetenv("OA_PLUGIN_PATH");
  result = run("copy source pc layout --to never --path " + host().path("never"));
  qputenv("OA_PLUGIN_PATH", EVALUATOR_DIR);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, HasSubstr("source/pc/layout is not copied"));
  EXPECT_FALSE(QDir(host().path("never")).exists());
}

TEST_F(LayoutCopyCommand, InsideOneLibraryOnlyTheCellIsCopied) {
  const HostResult copied = run("copy source top source twin");
  EXPECT_EQ(copied.exitCode, 0) << copied.errors;
  EXPECT_EQ(run("diff source top layout source twin layout").output, "");
  EXPECT_EQ(run("rm source twin").exitCode, 0);
}

} // namespace
