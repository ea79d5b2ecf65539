#include <gtest/gtest.h>

#include <cstring>

#include "oa/oaBaseMsgIds.h"
#include "oa/oaParam.h"
#include "raised.h"

using namespace OpenAccess_4;

namespace {

const oaByte kBytes[] = {1, 0, 2};

oaParamArray oneOfEach() {
  oaParamArray params;
  params.append(oaParam("i", 7));
  params.append(oaParam("f", 0.5F));
  params.append(oaParam("s", oaString("text")));
  params.append(oaParam("a", oaString("type"), 3, kBytes));
  params.append(oaParam("d", 0.25));
  oaParam flag("b", 0), time("t", 0);
  flag.setBooleanVal(true);
  time.setTimeVal(1 + oaTime(UINT_MAX));
  params.append(flag);
  params.append(time);
  return params;
}

TEST(Params, EachGetterAnswersItsOwnTypeOnly) {
  const oaParamArray params = oneOfEach();
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    const oaParam &param = params[i];
    SCOPED_TRACE(param.getType().getName());
    ASSERT_EQ(param.getType(), static_cast<oaParamTypeEnum>(i));
    oaString text;
    oaByte bytes[3];
    const oaUInt4 raised[] = {raisedBy([&] { param.getIntVal(); }),    raisedBy([&] { param.getFloatVal(); }),
                              raisedBy([&] { param.getStringVal(); }), raisedBy([&] { param.getAppVal(bytes); }),
                              raisedBy([&] { param.getDoubleVal(); }), raisedBy([&] { param.getBooleanVal(); }),
                              raisedBy([&] { param.getTimeVal(); })};
    for (oaUInt4 type = 0; type < 7; ++type)
      EXPECT_EQ(raised[type], type == i ? kNothingRaised : 213U)
          << oaParamType(static_cast<oaParamTypeEnum>(type)).getName();
    EXPECT_EQ(raisedBy([&] { param.getAppType(text); }), i == oacAppParamType ? kNothingRaised : 213U);
  }
}

TEST(Params, ValuesComeBack) {
  const oaParamArray params = oneOfEach();
  EXPECT_EQ(params[0].getIntVal(), 7);
  EXPECT_EQ(params[1].getFloatVal(), 0.5F);
  EXPECT_STREQ(params[2].getStringVal(), "text");
  EXPECT_EQ(params[4].getDoubleVal(), 0.25);
  EXPECT_TRUE(params[5].getBooleanVal());
  EXPECT_EQ(params[6].getTimeVal(), 4294967296);
  oaByte bytes[3];
  ASSERT_EQ(params[3].getNumBytes(), 3U);
  params[3].getAppVal(bytes);
  EXPECT_EQ(std::memcmp(bytes, kBytes, 3), 0);
}

TEST(Params, SettersChangeTheType) {
  oaParam param("p", oaString("type"), 3, kBytes);
  param.setStringVal("text");
  EXPECT_EQ(param.getType(), oacStringParamType);
  param.setAppType("other");
  EXPECT_EQ(param.getNumBytes(), 0U);
  param.setAppVal(2, kBytes);
  oaString type;
  param.getAppType(type);
  EXPECT_EQ(type, "other");
  EXPECT_EQ(param.getNumBytes(), 2U);
}

TEST(Params, EqualityNeedsNameTypeAndValue) {
  EXPECT_EQ(oaParam("p", 1), oaParam("p", 1));
  EXPECT_NE(oaParam("p", 1), oaParam("q", 1));
  EXPECT_NE(oaParam("p", 1), oaParam("p", 2));
  EXPECT_NE(oaParam("p", 1), oaParam("p", 1.0));
  EXPECT_NE(oaParam("p", 1.0), oaParam("p", 1.0F));
  EXPECT_NE(oaParam("p", oaString("t"), 3, kBytes), oaParam("p", oaString("t"), 2, kBytes));
}

TEST(Params, ArraysAreFoundByNameAndEqualInOrder) {
  const oaParamArray params = oneOfEach();
  oaParam found;
  EXPECT_TRUE(params.find(oaString("d"), found));
  EXPECT_EQ(found.getDoubleVal(), 0.25);
  EXPECT_FALSE(params.find(oaString("none"), found));
  EXPECT_EQ(params.find(oaParam("s", oaString("text"))), 2U);
  EXPECT_EQ(params.find(oaParam("s", oaString("other"))), oacNullIndex);

  oaParamArray backwards;
  for (oaUInt4 i = params.getNumElements(); i > 0; --i)
    backwards.append(params[i - 1]);
  EXPECT_FALSE(params == backwards);
  oaParamArray same = params;
  EXPECT_TRUE(params == same);
  same[0].setIntVal(8);
  EXPECT_FALSE(params == same);
}

} // namespace
