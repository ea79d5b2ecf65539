// oahost params, and read and render with --param, on a library with a parametric cell.

#include "hostprocess.h"
#include "oapluginmain.h"
#include "testevaluator.h"

#include <gmock/gmock.h>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

using namespace oa;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

oaScalarName scalar(const char *text) { return oaScalarName(oaNativeNS(), text); }

// The library "lib" with the parametric cell "pc", whose evaluator is loaded from the plug-in path, and the ordinary
// cell "plain". It is made once: libraries live as long as the process.
class ParamsCommand : public testing::Test {
protected:
  static void SetUpTestSuite() {
    qputenv("OA_PLUGIN_PATH", EVALUATOR_DIR);
    qputenv("HOME", host().path("").toLocal8Bit());
    QDir::setCurrent(host().path(""));
    oaPlugInMain plugIn;
    plugIn.init(false);
    ASSERT_TRUE(plugIn.checkLib("lib", host().path("lib"), true));
    ASSERT_TRUE(plugIn.checkLib("lone", host().path("lone"), true));
    const struct {
      const char *lib, *cell, *view;
      oaReservedViewTypeEnum type;
      int m; // of a parametric cell
    } cellViews[] = {{"lib", "pc", "layout", oacMaskLayout, 2},
                     {"lib", "broken", "layout", oacMaskLayout, -1},
                     {"lone", "broken", "layout", oacMaskLayout, -1},
                     {"lib", "plain", "layout", oacMaskLayout, 0},
                     {"lib", "plain", "schematic", oacSchematic, 0}};
    oaParam time;
    time.setName("t");
    time.setTimeVal(5);
    for (const auto &cellView : cellViews) {
      oaDesign *design = oaDesign::open(scalar(cellView.lib), scalar(cellView.cell), scalar(cellView.view),
                                        oaViewType::get(oaReservedViewType(cellView.type)), 'w');
      oaBlock::create(design);
      if (cellView.m != 0) {
        design->defineSuperMaster(
            oaPcellLink::getPcellDef("boxes"),
            paramsOf({oaParam("m", oaInt4(cellView.m)), oaParam("width", oaDouble(1.5e-6)), booleanParam("on", false),
                      oaParam("model", oaString("nch lvt\nx")), oaParam("none", oaString("")), time}));
      }
      design->save();
      design->close();
    }
  }

  static HostProcess &host() {
    static HostProcess process;
    return process;
  }
  static std::string output(const char *arguments) {
    const HostResult result = host().run(arguments);
    EXPECT_EQ(result.exitCode, 0) << arguments;
    EXPECT_EQ(result.errors, "") << arguments;
    return result.output.toStdString();
  }
};

TEST_F(ParamsCommand, ListsNameTypeAndDefault) {
  const char kTable[] = "m      int          2\n"
                        "width  double       1.5e-06\n"
                        "on     list         false true\n"
                        "model  string       nch lvt\\nx\n"
                        "none   string\n"
                        "t      unsupported\n";
  EXPECT_EQ(output("params lib pc layout"), kTable);
  EXPECT_EQ(output("params lib pc"), kTable);
  const QJsonArray json = QJsonDocument::fromJson(host().run("params lib pc --format json").output).array();
  ASSERT_EQ(json.size(), 6);
  EXPECT_EQ(json.at(3).toObject(), (QJsonObject{{"name", "model"}, {"type", "string"}, {"value", "nch lvt\nx"}}));
}

TEST_F(ParamsCommand, CellWithoutParametersIsSaid) {
  const HostResult result = host().run("params lib plain layout");
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors, HasSubstr("lib/plain/layout has no parameters"));
}

TEST_F(ParamsCommand, ReadSendsTheVariant) {
  const std::string text = output("read lib pc layout --param m=3 --param model=a=b");
  EXPECT_THAT(text, AllOf(HasSubstr("addCellDataInt \"m\" 3\n"), HasSubstr("addCellData \"model\" \"a=b\"\n"),
                          HasSubstr("addBox 400 0 100 100 4 0\n"), Not(HasSubstr("addBox 600"))));
  EXPECT_THAT(output("read --param m=1 lib pc --format count"), HasSubstr("layer 4/0 boxes 1 "));
  EXPECT_THAT(output("read lib pc --param model="), HasSubstr("addCellData \"model\" \"\"\n"));
}

TEST_F(ParamsCommand, WrongParametersAreRefused) {
  const struct {
    const char *arguments, *error;
    int exitCode;
  } cases[] = {
      {"read lib pc --param m", "\"m\" has no =, expected NAME=VALUE", 2},
      {"read lib pc --param =3", "has no name, expected NAME=VALUE", 2},
      {"read lib pc --param m=1 --param m=2", "--param m is given twice", 1},
      {"read lib pc --param m=2.5", "m of lib/pc/layout expects an integer", 1},
      {"read lib pc --param width=wide", "width of lib/pc/layout expects a number", 1},
      {"read lib pc --param width=nan", "width of lib/pc/layout expects a number", 1},
      {"read lib pc --param width=-inf", "width of lib/pc/layout expects a number", 1},
      {"read lib pc --param t=5", "t of lib/pc/layout is of a type that has no text to set it by", 1},
      {"read lib pc --param on=1", "on of lib/pc/layout expects true or false", 1},
      {"read lib plain schematic --param m=1", "lib/plain/schematic is no layout: --param does not apply", 1},
      {"render lib plain schematic -o x.png --param m=1", "--levels and --param do not apply to it", 1},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.arguments);
    const HostResult result = host().run(c.arguments);
    EXPECT_EQ(result.exitCode, c.exitCode);
    EXPECT_THAT(result.errors, HasSubstr(c.error));
    EXPECT_EQ(result.output, "");
  }
}

TEST_F(ParamsCommand, UnknownParametersAreSaidAndLeftOut) {
  HostResult result = host().run("read lib pc --param x=1 --param m=1");
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_THAT(result.errors, HasSubstr("lib/pc/layout has no parameter x, which is left out; it has m, width, on, "));
  EXPECT_THAT(result.output.toStdString(), AllOf(HasSubstr("\"m\" 1"), Not(HasSubstr("addBox 200"))));
  result = host().run("read lib plain layout --param x=1");
  EXPECT_THAT(result.errors, HasSubstr("lib/plain/layout has no parameter x, which is left out; it has none"));
  EXPECT_THAT(result.output.toStdString(), HasSubstr("addCell \"plain\""));
}

// How many of the picture's pixels are not the colour of its corner.
int drawnPixels(const QString &file) {
  const QImage image(file);
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      count += image.pixel(x, y) != image.pixel(0, 0) ? 1 : 0;
    }
  }
  return count;
}

// The window in user units needs the units, which come with the cell as it is by default only.
TEST_F(ParamsCommand, RenderDrawsTheVariant) {
  int drawn[3] = {};
  for (const int m : {0, 1, 2}) {
    const std::string file = std::to_string(m) + ".png";
    EXPECT_EQ(output(("render lib pc --no-legend --no-texts --size 400x400 --window 0,0,0.5,0.5 -o " + file +
                      " --param m=" + std::to_string(m))
                         .c_str()),
              "");
    drawn[m] = drawnPixels(host().path(QString::fromStdString(file)));
  }
  const int oneBox = drawn[1] - drawn[0];
  EXPECT_GT(oneBox, 500);
  EXPECT_NEAR(drawn[2] - drawn[1], oneBox, 0.2 * oneBox);
}

// Nor do the units come with a cell whose defaults cannot be drawn.
TEST_F(ParamsCommand, RenderTakesTheUnitsOfOtherCells) {
  int drawn[2] = {};
  for (const int i : {0, 1}) {
    const QString file = QString("units%1.png").arg(i);
    EXPECT_EQ(
        output(QString("render lib %1 --no-legend --no-texts --size 400x400 --window 0,0,0.5,0.5 -o %2 --param m=1")
                   .arg(i == 0 ? "pc" : "broken", file)
                   .toLatin1()),
        "");
    drawn[i] = drawnPixels(host().path(file));
  }
  EXPECT_GT(drawn[0], 500);
  EXPECT_NEAR(drawn[1], drawn[0], 0.2 * drawn[0]) << "but for the title";
  const HostResult refused = host().run("render lone broken --window 0,0,1,1 -o refused.png --param m=1");
  EXPECT_EQ(refused.exitCode, 1);
  EXPECT_THAT(refused.errors, HasSubstr("--window is in user units, and nothing tells those of lone"));
  EXPECT_FALSE(QFile::exists(host().path("refused.png")));
  EXPECT_EQ(host().run("render lone broken -o whole.png --param m=1").exitCode, 0);
}

TEST_F(ParamsCommand, FailingAndMissingEvaluatorsAreSaid) {
  HostResult result = host().run("read lib pc --param m=-1");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors,
              AllOf(HasSubstr("no layout data or parametic cell can not be created"), HasSubstr("m is negative")));
  qunsetenv("OA_PLUGIN_PATH");
  result = host().run("read lib pc layout");
  qputenv("OA_PLUGIN_PATH", EVALUATOR_DIR);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, HasSubstr("require OpenAccess-parametric-cell-plugin 'boxes' may not be available"));
  EXPECT_THAT(result.output.toStdString(), AllOf(HasSubstr("addCellDataInt \"m\" 2"), HasSubstr("endCell")));
}

} // namespace
