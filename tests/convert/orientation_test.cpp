#include "oaconvert.h"

#include <climits>

#include <gtest/gtest.h>

using namespace oa;

namespace {

TEST(OrientationText, CountsQuarterTurnsTheHostsWay) {
  const struct {
    oaOrientEnum orient;
    const char *text;
  } cases[] = {
      {oacR0, ""},      {oacR90, "R270"},    {oacR180, "R180"}, {oacR270, "R90"},
      {oacMY, "R180M"}, {oacMYR90, "R270M"}, {oacMX, "M"},      {oacMXR90, "R90M"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.text);
    const QString text = oaConvert::toTrans(c.orient);
    EXPECT_EQ(text, QString(c.text));
    EXPECT_FALSE(text.isNull());
  }
}

TEST(OrientationParser, AcceptsQuarterTurnsAndMirrors) {
  const struct {
    const char *text;
    oaOrientEnum orient;
  } cases[] = {
      {"", oacR0},         {"R0", oacR0},      {"R90", oacR90},       {"R180", oacR180},      {"R270", oacR270},
      {"M", oacMX},        {"MR90", oacMYR90}, {"R90M", oacMYR90},    {"M R90", oacMYR90},    {"R180M", oacMY},
      {"R270M", oacMXR90}, {"MM", oacR0},      {"MMM", oacMX},        {"MR90M", oacR90},      {"  R90 ", oacR90},
      {"r90", oacR0},      {"m", oacR0},       {"90", oacR0},         {"R90.0", oacR90},      {"R90R90", oacR180},
      {"R90R-90", oacR0},  {"R-90", oacR0},    {"R-45", oacR0},       {"R", oacR0},           {"RM", oacMX},
      {"Rx90", oacR0},     {"R 90", oacR90},   {"R90 R180", oacR270}, {"R0.00000009", oacR0},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.text);
    bool ok = false;
    EXPECT_EQ(oaConvert::toOaOrient(c.text, &ok), c.orient);
    EXPECT_TRUE(ok);
    EXPECT_EQ(oaConvert::toOaOrient(c.text, nullptr), c.orient);
  }
}

TEST(OrientationParser, RefusesOtherAnglesUnreduced) {
  for (const char *text : {"R45", "R360", "R450", "MR45", "R0.5", "R90R1", "R1e2"}) {
    SCOPED_TRACE(text);
    bool ok = true;
    EXPECT_EQ(oaConvert::toOaOrient(text, &ok), oacR0);
    EXPECT_FALSE(ok);
    EXPECT_EQ(oaConvert::toOaOrient(text, nullptr), oacR0);
  }
}

TEST(OrientationParser, PrintsARefusedAngleInDiagnosticModeOnly) {
  testing::internal::CaptureStdout();
  oaConvert::toOaOrient("R45", nullptr);
  oaConvert::debug = true;
  oaConvert::toOaOrient("R45", nullptr);
  oaConvert::toOaOrient("R90", nullptr);
  oaConvert::debug = false;
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "angle 45.000000\n");
}

TEST(OrientationOfAngle, SnapsToTheNearestQuarterTurn) {
  const struct {
    int degrees;
    oaOrientEnum orient;
  } cases[] = {
      {0, oacR0},     {44, oacR0},     {45, oacR90},    {90, oacR90},      {135, oacR90},      {136, oacR180},
      {225, oacR180}, {226, oacR270},  {315, oacR270},  {316, oacR0},      {360, oacR0},       {361, oacR0},
      {405, oacR90},  {720, oacR0},    {1035, oacR270}, {-45, oacR270},    {-44, oacR0},       {-90, oacR270},
      {-360, oacR0},  {-405, oacR270}, {-1000, oacR90}, {INT_MAX, oacR90}, {INT_MIN, oacR270},
  };
  for (const auto &c : cases) {
    EXPECT_EQ(oaConvert::toOaOrient(c.degrees), c.orient) << c.degrees << " degrees";
  }
}

TEST(TextAlignment, CodesAreHorizontalPlusFourTimesVertical) {
  const struct {
    oaTextAlignEnum alignment;
    int code;
  } cases[] = {
      {oacUpperLeftTextAlign, 0},   {oacCenterLeftTextAlign, 4},   {oacLowerLeftTextAlign, 8},
      {oacUpperCenterTextAlign, 1}, {oacCenterCenterTextAlign, 5}, {oacLowerCenterTextAlign, 9},
      {oacUpperRightTextAlign, 2},  {oacCenterRightTextAlign, 6},  {oacLowerRightTextAlign, 10},
  };
  for (const auto &c : cases) {
    EXPECT_EQ(oaConvert::toTextPresentation(c.alignment), c.code);
    EXPECT_EQ(oaConvert::toOaTextAlign(c.code), c.alignment);
  }
  for (int code : {3, 7, 11, 100, -1, INT_MIN}) {
    EXPECT_EQ(oaConvert::toOaTextAlign(code), oacUpperLeftTextAlign) << "code " << code;
  }
}

} // namespace
