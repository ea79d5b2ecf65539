#include "oaconvert.h"
#include "parametertext.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

using namespace oa;

namespace {

oaParam boolean(const char *name, bool value) {
  oaParam param;
  param.setName(name);
  param.setBooleanVal(value);
  return param;
}

// One parameter of each type that a host can set.
oaParamArray everyType() {
  oaParamArray params;
  params.append(oaParam("w", oaDouble(1.5e-6)));
  params.append(oaParam("m", oaInt4(2)));
  params.append(oaParam("f", oaFloat(0.5f)));
  params.append(oaParam("model", oaString("nch lvt")));
  params.append(boolean("on", true));
  return params;
}

// "w=1.5e-06 m=2 ..." of a parameter array; doubles in full.
std::string textOf(const oaParamArray &params) {
  QStringList parts;
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    oaString name;
    params[i].getName(name);
    QString value;
    switch (oaParamTypeEnum(params[i].getType())) {
    case oacIntParamType:
      value = QString::number(params[i].getIntVal());
      break;
    case oacFloatParamType:
      value = QString::number(double(params[i].getFloatVal()), 'g', 9);
      break;
    case oacDoubleParamType:
      value = QString::number(params[i].getDoubleVal(), 'g', 17);
      break;
    case oacStringParamType:
      value = '"' + QString::fromLatin1(params[i].getStringVal()) + '"';
      break;
    case oacBooleanParamType:
      value = params[i].getBooleanVal() ? "true" : "false";
      break;
    default:
      value = "?";
      break;
    }
    parts << oaConvert::toString(name) + '=' + value;
  }
  return parts.join(" ").toStdString();
}

TEST(ParameterToken, HoldsNoBlankAndIsNeverEmpty) {
  const struct {
    const char *text, *token;
  } cases[] = {
      {"", "&nbsp;"},
      {"plain", "plain"},
      {"a b", "a&sp;b"},
      {"  ", "&sp;&sp;"},
      {"x<y>", "x&lt;y&gt;"},
      {"say \"it's\"", "say&sp;&quote;it&rsquo;s&quote;"},
      {"two\nlines", "two&newline;lines"},
      {"&sp;", "&sp;"},
      {"tab\tand\rreturn", "tab\tand\rreturn"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(oaConvert::putString(c.text), QString(c.token));
  }
}

TEST(ParameterText, HasATypeAndAValueForTheHost) {
  oaParam time;
  time.setName("t");
  time.setTimeVal(5);
  const oaByte bytes[] = {1, 2, 3};
  const struct {
    oaParam param;
    const char *type, *value;
  } cases[] = {
      {oaParam("i", oaInt4(-2147483647)), "int", "-2147483647"},
      {oaParam("f", oaFloat(0.5f)), "double", "0.5"},
      {oaParam("f", oaFloat(0.1f)), "double", "0.1"},
      {oaParam("d", oaDouble(1e-6)), "double", "1e-06"},
      {oaParam("d", oaDouble(1.5e-6)), "double", "1.5e-06"},
      {oaParam("d", oaDouble(1234567.0)), "double", "1.23457e+06"},
      {oaParam("d", oaDouble(100000.0)), "double", "100000"},
      {oaParam("d", oaDouble(1.0 / 3)), "double", "0.333333"},
      {boolean("b", true), "list", "true false"},
      {boolean("b", false), "list", "false true"},
      {oaParam("s", oaString("a b")), "string", "a b"},
      {oaParam("s", oaString("")), "string", ""},
      {oaParam("blob", "tool", 3, bytes), "unsupported", ""},
      {time, "unsupported", ""},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(std::string(c.type) + ' ' + c.value);
    const ParameterText text = toParameterText(c.param);
    EXPECT_STREQ(text.type, c.type);
    EXPECT_EQ(text.value, QString(c.value));
  }
}

TEST(MergeParameter, SetsNamedValuesInTheirOwnType) {
  const struct {
    const char *name;
    QStringList names, values;
    const char *merged;
  } cases[] = {
      {"nothing named", {}, {}, "w=1.5e-06 m=2 f=0.5 model=\"nch lvt\" on=true"},
      {"host's order does not matter", {"m", "w"}, {"7", "2.5"}, "w=2.5 m=7 f=0.5 model=\"nch lvt\" on=true"},
      {"foreign names are dropped", {"x", "W"}, {"7", "8"}, "w=1.5e-06 m=2 f=0.5 model=\"nch lvt\" on=true"},
      {"a name given twice comes twice", {"m", "m"}, {"1", "3"}, "w=1.5e-06 m=1 m=3 f=0.5 model=\"nch lvt\" on=true"},
      {"no numbers", {"w", "m", "f"}, {"a", "2.5", ""}, "w=0 m=0 f=0 model=\"nch lvt\" on=true"},
      {"float is narrowed", {"f"}, {"0.1"}, "w=1.5e-06 m=2 f=0.100000001 model=\"nch lvt\" on=true"},
      {"only true is true", {"on"}, {"TRUE"}, "w=1.5e-06 m=2 f=0.5 model=\"nch lvt\" on=false"},
      {"one is not true", {"on", "model"}, {"1", "pch"}, "w=1.5e-06 m=2 f=0.5 model=\"pch\" on=false"},
      {"true", {"on"}, {"true"}, "w=1.5e-06 m=2 f=0.5 model=\"nch lvt\" on=true"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(textOf(oaConvert::mergeParameter(everyType(), c.names, c.values)),
              QString(c.merged).replace("1.5e-06", QString::number(1.5e-6, 'g', 17)).toStdString());
  }
}

TEST(MergeParameter, LeavesOtherTypesAndTheArgumentAlone) {
  const oaByte bytes[] = {1, 2, 3};
  oaParamArray params;
  params.append(oaParam("blob", "tool", 3, bytes));
  params.append(oaParam("m", oaInt4(2)));
  const oaParamArray merged = oaConvert::mergeParameter(params, {"blob", "m"}, {"9", "9"});
  ASSERT_EQ(merged.getNumElements(), 2u);
  EXPECT_EQ(merged[0], params[0]);
  EXPECT_EQ(textOf(params), "blob=? m=2");
}

TEST(GetParameter, AnswersTheFirstExactMatch) {
  const QStringList names = {"w", "l", "w"}, values = {"1", "2", "3"};
  EXPECT_EQ(oaConvert::getParameter_("w", names, values, "d"), QString("1"));
  EXPECT_EQ(oaConvert::getParameter_("l", names, values, "d"), QString("2"));
  EXPECT_EQ(oaConvert::getParameter_("L", names, values, "d"), QString("d"));
}

TEST(ParameterListing, PrintsOneLineEach) {
  oaParamArray params = everyType();
  params.append(boolean("off", false));
  params.append(oaParam("big", oaDouble(16777217.0)));
  testing::internal::CaptureStdout();
  oaConvert::printOaParamArray(oaParamArray());
  oaConvert::printOaParamArray(params);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "0: w (double) 0.000002\n"
                                                    "1: m (int) 2\n"
                                                    "2: f (float) 0.500000\n"
                                                    "3: model (string) nch lvt\n"
                                                    "4: on (bool) true\n"
                                                    "5: off (bool) false\n"
                                                    "6: big (double) 16777216.000000\n");
}

TEST(ParameterText, OfAnOrdinaryDesignIsEmpty) {
  std::string pattern = (std::filesystem::temp_directory_path() / "tarnwickdale.XXXXXX").string();
  const std::filesystem::path folder = mkdtemp(pattern.data());
  oaDesignInit(5, 506);
  oaLib::create(oaConvert::toOaScalarName("lib"), (folder / "lib").c_str());
  oaDesign *design = oaDesign::open(oaConvert::toOaScalarName("lib"), oaConvert::toOaScalarName("cell"),
                                    oaConvert::toOaScalarName("layout"), oaViewType::get(oacMaskLayout), 'w');
  EXPECT_EQ(oaConvert::toParameterString(design), QString());
  design->close();
  std::filesystem::remove_all(folder);
}

} // namespace
