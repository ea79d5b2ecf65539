#include <gtest/gtest.h>

#include "oa/oaBaseMsgIds.h"
#include "oa/oaDomain.h"
#include "oa/oaOrient.h"
#include "oa/oaParam.h"
#include "oa/oaType.h"
#include "raised.h"

using namespace OpenAccess_4;

namespace {

TEST(Enums, NumbersThatClientsRelyOn) {
  EXPECT_EQ(oacLibDefType, 250);
  EXPECT_EQ(oacInstAttrDisplayType, oacEvalTextType + 5);
  EXPECT_EQ(oacArrayInstType, 49);
  EXPECT_EQ(oacScalarNetType, 57);
  EXPECT_EQ(oacIntPropType, 166);
  EXPECT_EQ(oacViewTypeType, 206);
  EXPECT_EQ(oacHierGroupDefType, 286);
}

TEST(Enums, NamesBelongToTheirNumbers) {
  EXPECT_EQ(oaType(oacUnknownType).getName(), "Unknown");
  EXPECT_EQ(oaType(oacRectType).getName(), "Rect");
  EXPECT_EQ(oaType(oacStringPropType).getName(), "StringProp");
  EXPECT_EQ(oaType(oacLibDefType).getName(), "LibDef");
  EXPECT_EQ(oaType(oacHierGroupDefType).getName(), "HierGroupDef");
  EXPECT_EQ(oaOrient(oacMXR90).getName(), "MXR90");
  EXPECT_EQ(oaDomain(oacFutureDomain).getName(), "future");
  EXPECT_EQ(oaParamType(oacTimeParamType).getName(), "timeParam");
}

TEST(Enums, EveryNameLeadsBackToItsNumber) {
  for (unsigned i = 0; i <= oacHierGroupDefType; ++i) {
    const oaType type(static_cast<oaTypeEnum>(i));
    EXPECT_EQ(oaType(type.getName()), type) << i;
  }
  for (unsigned i = 0; i < 8; ++i) {
    const oaOrient orient(static_cast<oaOrientEnum>(i));
    EXPECT_EQ(oaOrient(orient.getName()), orient) << i;
  }
  EXPECT_EQ(oaDomain("future"), oacFutureDomain);
}

TEST(Enums, UnknownNamesAndNumbersAreRaised) {
  EXPECT_EQ(raisedBy([] { oaOrient("r90"); }), oacInvalidOrientName);
  EXPECT_EQ(raisedBy([] { oaOrient(""); }), oacInvalidOrientName);
  EXPECT_EQ(raisedBy([] { oaParamType("text"); }), oacInvalidParamTypeName);
  EXPECT_EQ(raisedBy([] { oaType("Rectangle"); }), oacInvalidObjectTypeName);
  EXPECT_EQ(raisedBy([] { oaType(static_cast<oaTypeEnum>(400)).getName(); }), oacInvalidObjectTypeName);
  EXPECT_FALSE(oaEnumNamesOf(oacNoDomain).contains(4));
  EXPECT_TRUE(oaEnumNamesOf(oacNoDomain).contains(UINT_MAX));
}

} // namespace
