// getParameter(): the parameters of a parametric cell in three lists.

#include "schematictest.h"
#include "testevaluator.h"

using namespace oa;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class ParameterQueryTest : public SchematicTest {
protected:
  void create(const char *cell, const oaParamArray *defaults) {
    const SchematicBuilder builder(cell, "layout", SchematicBuilder::schematic);
    if (defaults) {
      evaluator.define(builder.design(), *defaults);
    }
  }
  void query(const char *cell, const char *lib = "lib") {
    recorder.clear();
    plugIn.getParameter(lib, cell, "layout", &names, &types, &values);
  }
  static oaDesign *opened(const char *cell) { return oaDesign::find(scalar("lib"), scalar(cell), scalar("layout")); }

  TestEvaluator evaluator{"blocks", [](oaDesign *design, const oaParamArray &) { oaBlock::create(design); }};
  QStringList names{"before"}, types{"before"}, values{"before"};
};

TEST_F(ParameterQueryTest, AppendsNameTypeAndValueOfEach) {
  oaParam time;
  time.setName("t");
  time.setTimeVal(1);
  const oaParamArray defaults =
      paramsOf({oaParam("w", oaDouble(1e-6)), oaParam("f", oaFloat(0.5f)), oaParam("m", oaInt4(-2)),
                booleanParam("on", true), booleanParam("off", false), oaParam("model", oaString("nch \"lvt\"\n<x>")),
                oaParam("none", oaString("")), time});
  create("pc", &defaults);
  query("pc");
  EXPECT_EQ(names, QStringList({"before", "w", "f", "m", "on", "off", "model", "none", "t"}));
  EXPECT_EQ(types,
            QStringList({"before", "double", "double", "int", "list", "list", "string", "string", "unsupported"}));
  EXPECT_EQ(values,
            QStringList({"before", "1e-06", "0.5", "-2", "true false", "false true", "nch \"lvt\"\n<x>", "", ""}));
  EXPECT_THAT(recorder.lines(), IsEmpty());
  EXPECT_EQ(evaluator.evaluationCount(), 1) << "the defaults are proved by an evaluation";
  EXPECT_EQ(opened("pc"), nullptr) << "left open";
  query("pc");
  EXPECT_EQ(names.size(), 17);
}

TEST_F(ParameterQueryTest, OrdinaryCellHasNone) {
  create("plain", nullptr);
  query("plain");
  EXPECT_EQ(names, QStringList("before"));
  EXPECT_EQ(types, QStringList("before"));
  EXPECT_EQ(values, QStringList("before"));
  EXPECT_THAT(recorder.lines(), IsEmpty());
  EXPECT_EQ(opened("plain"), nullptr);
}

TEST_F(ParameterQueryTest, DefaultsAreToldWithoutTheEvaluatorToo) {
  const oaParamArray defaults = paramsOf({oaParam("m", oaInt4(2))});
  create("pc", &defaults);
  evaluator.unlink();
  query("pc");
  EXPECT_EQ(values, QStringList({"before", "2"}));
}

TEST_F(ParameterQueryTest, WhatCannotBeOpenedIsReportedAndChangesNothing) {
  for (const char *lib : {"lib", "nowhere"}) {
    SCOPED_TRACE(lib);
    EXPECT_EQ(printedBy([&] { query("none", lib); }), "");
    EXPECT_THAT(recorder.lines(), ElementsAre(HasSubstr("reportError \"Aborted.\" 1 \"")));
    EXPECT_EQ(names, QStringList("before"));
  }
}

TEST_F(ParameterQueryTest, DebuggingPrintsALine) {
  const oaParamArray defaults = paramsOf({oaParam("m", oaInt4(2))});
  create("pc", &defaults);
  oaConvert::debug = true;
  EXPECT_EQ(printedBy([&] { query("pc"); }), "parametric cell load parameter\n");
  oaConvert::debug = false;
}

} // namespace
