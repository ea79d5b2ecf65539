#include "oaconvert.h"

#include <string>

#include <gtest/gtest.h>

using namespace oa;

namespace {

TEST(Text, TravelsInItsEightBitForm) {
  const QString umlaut = QString(QChar(0xe4));
  EXPECT_STREQ(oaConvert::toOaString("net 1"), "net 1");
  EXPECT_STREQ(oaConvert::toOaString(umlaut), "\xe4");
  EXPECT_STREQ(oaConvert::toOaPath("/proj/a b"), "/proj/a b");
  EXPECT_EQ(oaConvert::toString(oaString("\xe4")), umlaut);
  // A character without an 8-bit form is replaced, not dropped.
  EXPECT_EQ(oaConvert::toOaString(QString(QChar(0x4e2d))).getLength(), 1u);
}

TEST(Text, EmptyAndNullAreEmpty) {
  EXPECT_TRUE(oaConvert::toOaString(QString()).isEmpty());
  EXPECT_TRUE(oaConvert::toOaString("").isEmpty());
  EXPECT_TRUE(oaConvert::toString(oaString()).isEmpty());
}

TEST(Text, NumberIsUnsigned) { EXPECT_EQ(oaConvert::toString(4294967295u), QString("4294967295")); }

TEST(Names, ScalarNamesKeepTheirText) {
  for (const char *text : {"inv", "Inv_2", "my-lib", "A<3>", "a.b", "with blank", "net#1", "vdd!"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(oaConvert::toString(oaConvert::toOaScalarName(text)), QString(text));
    const oaName name = oaConvert::toOaName(text);
    EXPECT_EQ(oaConvert::toString(name), QString(text));
    EXPECT_EQ(name.getType(), oacScalarNameType);
  }
}

} // namespace
