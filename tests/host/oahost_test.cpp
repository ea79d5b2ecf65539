#include "gdsbytes.h"
#include "hostprocess.h"

#include <gmock/gmock.h>
#include <QJsonArray>
#include <QJsonDocument>

#include <sys/stat.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using Type = GdsRecordType;

// One leaf cell placed in all eight orientations, as arrays, and shapes of every kind.
QByteArray sampleFile() {
  GdsBytes gds;
  gds.head().structure("TOP").boundary(68, {0, 0, 0, 50, 100, 50, 100, 0, 0, 0});
  gds.boundary(69, {0, 0, 100, 0, 0, 100, 0, 0}).path(0, 10, {0, 0, 0, 90}).path(1, 10, {0, 0, 0, 90});
  gds.path(2, 10, {0, 0, 0, 90}).extendedPath(10, 2, 3, {0, 0, 0, 90}).path(0, 0, {0, 0, 70, 90});
  gds.label("A<0:7>", 0, false, 0.25, 0).label("say \"hi\"", 5, false, 0.1, 90).label("m", 10, true, 1, 270);
  for (int i = 0; i < 8; ++i) {
    gds.sref("LEAF", {1000 * i, 0}, i >= 4, 90 * (i % 4));
  }
  gds.aref("LEAF", 3, 2, {0, 500, 60, 500, 0, 540}).aref("LEAF", 4, 2, {0, 900, 0, 980, -60, 900}, 90);
  gds.aref("LEAF", 1, 1, {0, 1500, 10, 1500, 0, 1510}).aref("LEAF", 2, 1, {0, 2000, 20, 2020, 0, 2000});
  gds.endStructure().structure("LEAF").boundary(1, {0, 0, 0, 5, 10, 5, 10, 0, 0, 0}).endStructure();
  return gds.endLibrary().bytes;
}

class OaHost : public testing::Test {
protected:
  HostProcess host;

  void import(const QByteArray &bytes, const QString &lib, int exitCode = 0) {
    host.write(lib + ".gds", bytes);
    const HostResult result = host.run({"import-gds", lib + ".gds", "--lib", lib, "--path", lib + "_dir"});
    ASSERT_EQ(result.exitCode, exitCode) << result.errors;
  }
  // The stream of a cell with the library's name taken out.
  std::string stream(const QString &lib, const QString &cell) {
    const HostResult result = host.run({"read", lib, cell});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    QString text = QString::fromUtf8(result.output);
    return text.replace("addCellNumData 1 \"" + lib + '"', "addCellNumData 1 LIB").toStdString();
  }
};

TEST_F(OaHost, ImportedLayoutComesBackAsSignals) {
  import(sampleFile(), "demo");
  const HostResult result = host.run("read demo TOP");
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.errors, "");
  const std::string start = "setUnits 0.001 9.999999999999999e-10\n" // 1e-6 / 1000
                            "addCell \"TOP\"\n"
                            "addCellNumData 1 \"demo\"\n"
                            "addCellNumData 3 \"TOP\"\n"
                            "addCellNumData 4 \"layout\"\n"
                            "addBox 0 0 100 50 68 0\n"
                            "addPolygon [0,0 100,0 0,100] 69 0\n"
                            "addPath [0,0 0,90] 1 0 10 0 0 0\n"
                            "addPath [0,0 0,90] 1 0 10 1 0 0\n"
                            "addPath [0,0 0,90] 1 0 10 2 0 0\n"
                            "addPath [0,-2 0,93] 1 0 10 0 0 0\n"
                            "addPath [0,0 70,90] 1 0 0 0 0 0\n"
                            "addText \"A<0:7>\" 5,6 250 1 0 0 \"\"\n"
                            "addText \"say \\\"hi\\\"\" 5,6 100 1 0 5 \"R270\"\n"
                            "addText \"m\" 5,6 1000 1 0 10 \"R270M\"\n"
                            "existCell \"LEAF\"\n"
                            "addCell \"LEAF\"\n"
                            "addCellNumData 1 \"demo\"\n"
                            "addCellNumData 3 \"LEAF\"\n"
                            "addCellNumData 4 \"layout\"\n"
                            "addBox 0 0 10 5 1 0\n"
                            "endCell\n"
                            "addCellRef \"LEAF\" 0,0 \"\" ";
  EXPECT_EQ(result.output.toStdString().substr(0, start.size()), start);
  const std::string rest = result.output.toStdString().substr(start.size());
  for (const char *line :
       {"\"LEAF\" 1000,0 \"R270\"", "\"LEAF\" 2000,0 \"R180\"", "\"LEAF\" 3000,0 \"R90\"", "\"LEAF\" 4000,0 \"M\"",
        "\"LEAF\" 5000,0 \"R90M\"", "\"LEAF\" 6000,0 \"R180M\"", "\"LEAF\" 7000,0 \"R270M\"",
        "addCellRefArray \"LEAF\" 0,500 20 20 3 2 \"\"", "addCellRefArray \"LEAF\" 0,900 -30 20 2 4 \"R270\"",
        "addCellRef \"LEAF\" 0,1500 \"\"", "addCellRef \"LEAF\" 10,2010 \"\"", "setCurrentCell \"TOP\""}) {
    EXPECT_THAT(rest, HasSubstr(line));
  }
}

TEST_F(OaHost, ExportedFileImportsToTheSameStream) {
  import(sampleFile(), "first");
  const HostResult exported = host.run("export-gds first TOP -o out.gds");
  ASSERT_EQ(exported.exitCode, 0) << exported.errors;
  import(host.read("out.gds"), "other");
  EXPECT_EQ(stream("other", "TOP"), stream("first", "TOP"));
  host.run("export-gds other TOP -o again.gds");
  EXPECT_EQ(host.read("again.gds").replace("other", "first"), host.read("out.gds"));
}

TEST_F(OaHost, CopiedLayoutHasTheSameStream) {
  import(sampleFile(), "first");
  import(GdsBytes().head().structure("OTHER").endStructure().endLibrary().bytes, "second");
  ASSERT_EQ(host.run("copy first TOP second").exitCode, 0);
  EXPECT_EQ(stream("second", "TOP"), stream("first", "TOP"));
  EXPECT_THAT(host.run("copy first TOP second").errors, HasSubstr("library second has a cell TOP already"));
  EXPECT_EQ(host.run("copy first TOP second --replace").exitCode, 0);
  ASSERT_EQ(host.run("copy first TOP first TWIN").exitCode, 0);
  EXPECT_THAT(host.run("cells first").output.toStdString(), "LEAF\nTOP\nTWIN\n");
}

TEST_F(OaHost, CountReportsSignalsAndShapes) {
  import(sampleFile(), "demo");
  const HostResult result = host.run("read demo TOP --format count");
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  for (const char *line :
       {"signal addBox 2\n", "signal addPath 5\n", "signal existCell 13\n",
        "layer 1/0 boxes 1 polygons 0 paths 5 texts 3\n", "layer 68/0 boxes 1 polygons 0 paths 0 texts 0\n",
        "layer 69/0 boxes 0 polygons 1 paths 0 texts 0\n", "cells 2\n", "references 11\n", "arrays 2\n",
        "array-elements 14\n", "shapes 11\n", "texts 3\n", "seconds "}) {
    EXPECT_THAT(result.output.toStdString(), HasSubstr(line));
  }
}

TEST_F(OaHost, EachJsonLineIsAnArray) {
  import(sampleFile(), "demo");
  const HostResult result = host.run("read demo TOP --format json");
  const QList<QByteArray> lines = result.output.trimmed().split('\n');
  EXPECT_GT(lines.size(), 30);
  for (const QByteArray &line : lines) {
    EXPECT_TRUE(QJsonDocument::fromJson(line).isArray()) << line.constData();
  }
  EXPECT_TRUE(lines.contains("[\"addBox\",0,0,100,50,68,0]"));
  EXPECT_TRUE(lines.contains("[\"addPolygon\",[[0,0],[100,0],[0,100]],69,0]"));
}

TEST_F(OaHost, DiagnosticsStayOutOfTheData) {
  import(sampleFile(), "demo");
  const HostResult plain = host.run("read demo TOP");
  const HostResult debug = host.run("--debug read demo TOP");
  EXPECT_EQ(debug.output, plain.output);
  EXPECT_EQ(debug.exitCode, 0);
  EXPECT_THAT(debug.errors, HasSubstr("load cell TOP\n"));
}

TEST_F(OaHost, QueriesAnswerOrSayWhatIsUnknown) {
  import(sampleFile(), "demo");
  const struct {
    const char *arguments;
    int exitCode;
    const char *output;
    const char *errors;
  } cases[] = {
      {"libs", 0, "demo\n", ""},
      {"cells demo", 0, "LEAF\nTOP\n", ""},
      {"views demo TOP", 0, "layout\n", ""},
      {"view-type demo TOP layout", 0, "maskLayout\n", ""},
      {"info", 0, "lib.defs file:", ""},
      {"--version", 0, "oahost 1.", ""},
      {"--help", 0, "import-gds", ""},
      {"cells none", 1, "", "oahost: library none is not known"},
      {"views demo none", 1, "", "oahost: library demo has no cell none"},
      {"view-type demo TOP none", 1, "", "oahost: cell TOP of library demo has no view none"},
      {"view-type demo none layout", 1, "", "oahost: library demo has no cell none"},
      {"read none TOP", 1, "", "oahost: library none is not known"},
      {"read demo none", 1, "", "oahost: library demo has no cell none"},
      {"export-gds demo none -o x.gds", 1, "", "oahost: library demo has no cell none"},
      {"copy demo TOP none", 1, "", "oahost: library none is not known"},
      {"copy demo TOP demo", 1, "", "would be copied onto itself"},
      {"import-gds none.gds --lib demo", 1, "", "oahost: none.gds: "},
      {"import-gds demo.gds --lib new", 1, "", "library new is not known; --path says where to make it"},
      {"import-gds demo.gds --lib demo --path elsewhere", 1, "", "library demo is known already, at "},
      {"import-gds . --lib demo", 1, "", ". is a directory"},
      {"export-gds demo TOP -o no/such/folder/x.gds", 1, "", "oahost: no/such/folder/x.gds: "},
      {"", 2, "", "oahost: "},
      {"cells", 2, "", "oahost: LIB is required"},
      {"frobnicate", 2, "", "oahost: "},
      {"read demo TOP --format xml", 2, "", "oahost: --format"},
      {"--plugin none.so libs", 1, "", "plug-in none.so does not exist"},
      {"--plugin demo.gds libs", 1, "", "plug-in demo.gds cannot be loaded"},
      {"--lib-defs-home none libs", 1, "", "none is not a directory"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.arguments);
    const HostResult result = host.run(c.arguments);
    EXPECT_EQ(result.exitCode, c.exitCode) << result.errors;
    EXPECT_THAT(result.output.toStdString(), HasSubstr(c.output));
    EXPECT_EQ(result.output.isEmpty(), *c.output == '\0');
    EXPECT_THAT(result.errors, HasSubstr(c.errors));
    EXPECT_EQ(result.errors.empty(), *c.errors == '\0');
  }
  EXPECT_TRUE(host.read("x.gds").isEmpty());
}

TEST_F(OaHost, UnusableFilesMakeNoLibrary) {
  const QByteArray whole = sampleFile();
  const struct {
    const char *name;
    QByteArray bytes;
    const char *errors;
  } cases[] = {
      {"empty", "", "empty.gds: byte 0: the file is empty"},
      {"foreign", "%SEMI-OASIS\r\n", "foreign.gds: byte 0: no GDSII file"},
      {"cut", whole.left(whole.size() / 2 + 1), "cut.gds: byte "},
      {"units",
       GdsBytes().head(0.3e-9).structure("A").boundary(1, {1, 1, 2, 2, 3, 1}).endStructure().endLibrary().bytes,
       "is not a whole number of the library's database units"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    host.write(QString(c.name) + ".gds", c.bytes);
    const HostResult result = host.run({"import-gds", QString(c.name) + ".gds", "--lib", "bad", "--path", "bad_dir"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.errors, HasSubstr(c.errors));
    EXPECT_FALSE(QDir(host.path("bad_dir")).exists());
  }
}

TEST_F(OaHost, ImportTellsWhatItReplacesAndWhichLayersTheMapLacks) {
  import(sampleFile(), "demo");
  host.write("layers.map", "68 0 metal\n1 0 poly\n");
  const HostResult result = host.run("import-gds demo.gds --lib demo --layers layers.map");
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_THAT(result.errors,
              HasSubstr("oahost: library demo: the layouts of 2 cells that it had already are replaced"));
  EXPECT_THAT(result.errors, HasSubstr("layers that the layer map does not name: 69/0\n"));
}

TEST_F(OaHost, FailedExportKeepsTheOldFile) {
  import(sampleFile(), "demo");
  host.write("out.gds", "old");
  EXPECT_EQ(host.run("export-gds demo none -o out.gds").exitCode, 1);
  EXPECT_EQ(host.read("out.gds"), "old");
}

TEST_F(OaHost, OutputThatIsNoOrdinaryFileIsRefused) {
  import(sampleFile(), "demo");
  const std::string pipe = host.path("pipe.png").toStdString();
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const char *arguments : {"export-gds demo TOP -o pipe.png", "render demo TOP -o pipe.png"}) {
    const HostResult result = host.run(arguments);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.errors, "oahost: pipe.png: is no ordinary file\n");
    struct stat status;
    ASSERT_EQ(stat(pipe.c_str(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
  }
  EXPECT_THAT(host.run("export-gds demo TOP -o demo_dir").errors, HasSubstr("demo_dir: is no ordinary file"));
}

TEST_F(OaHost, UnreadableLibraryDefinitionsAreNamed) {
  host.write("one.gds", sampleFile());
  host.write("lib.defs", "\x8f\x01 garbage \xff\n(((");
  for (const char *arguments : {"import-gds one.gds --lib demo --path demo_dir", "cells demo", "read demo TOP"}) {
    SCOPED_TRACE(arguments);
    const HostResult result = host.run(arguments);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.errors, HasSubstr(host.path("lib.defs").toStdString() + " cannot be read"));
  }
  EXPECT_FALSE(QDir(host.path("demo_dir")).exists());
  EXPECT_EQ(host.run("--debug libs").exitCode, 1);
}

TEST_F(OaHost, LibraryThatCannotBeMadeOrOpenedIsExplained) {
  import(sampleFile(), "demo");
  QDir(host.path("")).mkpath("full/sub");
  const struct {
    QStringList arguments;
    const char *errors;
  } cases[] = {
      {{"import-gds", "demo.gds", "--lib", "a", "--path", "no/such"}, "there is no directory "},
      {{"import-gds", "demo.gds", "--lib", "a/b", "--path", "new"}, "\"a/b\" is no name of a library"},
      {{"import-gds", "demo.gds", "--lib", "a", "--path", "demo.gds"}, "it is no directory"},
      {{"import-gds", "demo.gds", "--lib", "a", "--path", "."}, "the directory exists and is not empty"},
      {{"import-gds", "demo.gds", "--lib", "a", "--path", QString(300, 'n')}, "the path is too long"},
      {{"import-gds", "demo.gds", "--lib", QString::fromUtf8("\u20ac"), "--path", "new"}, "only Latin-1"},
      {{"import-gds", "demo.gds", "--lib", "a", "--path", QString::fromUtf8("\u4e2d")}, "has to be ASCII here"},
      {{"read", "demo", QString::fromUtf8("\u20ac")}, "only Latin-1"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.arguments.join(' ').toStdString());
    const HostResult result = host.run(c.arguments);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.errors, HasSubstr(c.errors));
    EXPECT_FALSE(QDir(host.path("new")).exists());
  }
  ASSERT_TRUE(QDir(host.path("demo_dir")).removeRecursively());
  const HostResult gone = host.run("cells demo");
  EXPECT_EQ(gone.exitCode, 1);
  EXPECT_THAT(gone.errors, HasSubstr("its directory cannot be opened: there is no directory "));
}

TEST_F(OaHost, CoarserFileIsScaledToTheLibrary) {
  import(GdsBytes()
             .head(1e-8, 0.01)
             .structure("A")
             .boundary(1, {0, 0, 0, 5, 10, 5, 10, 0, 0, 0})
             .label("t", 0, false, 0.5, 0)
             .endStructure()
             .endLibrary()
             .bytes,
         "demo");
  EXPECT_THAT(stream("demo", "A"), HasSubstr("addBox 0 0 100 50 1 0\naddText \"t\" 50,60 500 1 0 0 \"\"\n"));
}

TEST_F(OaHost, CellsThatPlaceEachOtherAreReadOnceAndTold) {
  GdsBytes gds;
  gds.head().structure("A").sref("B", {1, 2}).endStructure().structure("B").sref("A", {3, 4}).endStructure();
  import(gds.endLibrary().bytes, "demo");
  const HostResult result = host.run("read demo A");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, HasSubstr("oahost: recursive cell reference"));
  EXPECT_EQ(result.output.count("addCell \""), 2);
  EXPECT_THAT(result.output.toStdString(), HasSubstr("addCellRef \"A\" 3,4"));
  host.run("export-gds demo A -o out.gds");
  EXPECT_FALSE(host.read("out.gds").isEmpty());
}

TEST_F(OaHost, MissingMasterIsToldWhileTheRestIsRead) {
  GdsBytes gds;
  gds.head().structure("A").sref("NONE", {1, 2}).boundary(1, {0, 0, 0, 5, 10, 5, 10, 0, 0, 0}).endStructure();
  import(gds.endLibrary().bytes, "demo");
  const HostResult result = host.run("read demo A");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.output.toStdString(), HasSubstr("addBox 0 0 10 5 1 0\n"));
  EXPECT_THAT(result.output.toStdString(), Not(HasSubstr("addCellRef")));
  EXPECT_THAT(result.errors, HasSubstr("oahost: cell not found"));
  // A later import looks at the cell for its units, and must not fail for it.
  import(sampleFile(), "other");
  EXPECT_EQ(host.run("import-gds other.gds --lib demo").exitCode, 0);
}

TEST_F(OaHost, UnusualCellNamesAreWrittenAndFoundOrRefused) {
  const struct {
    QByteArray name;
    const char *errors;
  } cases[] = {
      {"a.b", ""},
      {"..", ""},
      {"a b", ""},
      {"a[3]", ""},
      {"a<0>", ""},
      {"\xe4", ""},
      {"A?$_", ""},
      {QByteArray(100, 'n'), ""},
      {"x/y", "demo/x/y/layout could not be opened for writing"},
      {"../../y", "demo/../../y/layout could not be opened for writing"},
      {QByteArray(1000, 'n'), "could not be opened for writing"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name.constData());
    GdsBytes gds;
    gds.head().structure(c.name).boundary(1, {0, 0, 0, 5, 10, 5, 10, 0, 0, 0}).endStructure().endLibrary();
    host.write("one.gds", gds.bytes);
    const HostResult imported = host.run("import-gds one.gds --lib demo --path demo_dir");
    EXPECT_THAT(imported.errors, HasSubstr(c.errors));
    // A refusal is told once, and not with names of any length.
    EXPECT_THAT(imported.errors, Not(HasSubstr("ERROR (")));
    EXPECT_THAT(imported.errors, Not(HasSubstr(std::string(200, 'n'))));
    ASSERT_EQ(imported.exitCode, *c.errors == '\0' ? 0 : 1) << imported.errors;
    if (imported.exitCode == 0) {
      const HostResult result = host.run({"read", "demo", QString::fromLatin1(c.name)});
      EXPECT_EQ(result.exitCode, 0) << result.errors;
      EXPECT_THAT(result.output.toStdString(), HasSubstr("addBox 0 0 10 5 1 0\n"));
    }
  }
  // The library, lib.defs and the file itself: no name has left the library.
  EXPECT_EQ(QDir(host.path("")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 3);
}

} // namespace
