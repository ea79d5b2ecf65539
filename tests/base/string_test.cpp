#include "oa/oaString.h"

#include "numbertext.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <string>
#include <utility>

using namespace OpenAccess_4;

namespace {

const char *const kLong = "a text that does not fit into the string object itself";

TEST(String, AssigningReusesTheRoom) {
  oaString text(kLong);
  const oaChar *const room = text;
  text = "short";
  EXPECT_EQ(room, static_cast<const oaChar *>(text));
  text = oaString(kLong); // a move may take the other's room, but must not lose this text
  EXPECT_EQ(text, kLong);
  text.resize(200);
  const oaChar *const larger = text;
  for (int i = 0; i < 10; ++i)
    text = i % 2 ? kLong : "x";
  EXPECT_EQ(larger, static_cast<const oaChar *>(text));
}

TEST(String, MayBeAssignedAndAppendedPartsOfItself) {
  for (const char *start : {"abc", "fifteen chars..", "sixteen chars...", kLong}) {
    SCOPED_TRACE(start);
    const std::string expected(start);
    oaString text(start);
    text += text;
    EXPECT_EQ(std::string(text), expected + expected);
    text = static_cast<const oaChar *>(text) + expected.size();
    EXPECT_EQ(std::string(text), expected);
    text += static_cast<const oaChar *>(text) + 1;
    EXPECT_EQ(std::string(text), expected + expected.substr(1));
    text.format("<%s>", static_cast<const oaChar *>(text));
    EXPECT_EQ(std::string(text), "<" + expected + expected.substr(1) + ">");
    oaString &same = text;
    text = same;
    text = std::move(same);
    EXPECT_EQ(text.getLength(), 2 * expected.size() + 1);
  }
}

TEST(String, CopiesAreIndependentAndMovedFromStringsEmpty) {
  for (const char *start : {"short", kLong}) {
    oaString original(start);
    oaString copy(original);
    copy[0] = '_';
    EXPECT_EQ(original, start);
    oaString taken(std::move(original));
    EXPECT_EQ(taken, start);
    EXPECT_TRUE(original.isEmpty()); // NOLINT(bugprone-use-after-move): that is what is tested
    original = "again";
    EXPECT_EQ(original + taken, ("again" + std::string(start)).c_str());
  }
}

TEST(String, WrittenCharactersDecideTheLength) {
  oaString text(32);
  EXPECT_EQ(text.getLength(), 0U);
  EXPECT_GT(text.getSize(), 32U);
  for (oaUInt4 i = 0; i < 32; ++i)
    text[i] = 'x';
  text[32] = '\0';
  EXPECT_EQ(text.getLength(), 32U);
  text[3] = '\0';
  EXPECT_EQ(text.getLength(), 3U);
  text += "y";
  EXPECT_EQ(text, "xxxy");
}

TEST(String, LengthLimitStopsAtTheEndOfTheText) {
  EXPECT_EQ(oaString("abc", 10), "abc");
  EXPECT_EQ(oaString("abc", 2), "ab");
  EXPECT_EQ(oaString(static_cast<const oaChar *>(nullptr), 2), "");
  EXPECT_EQ(oaString(static_cast<const oaChar *>(nullptr)), "");
}

TEST(String, SearchesAnswerTheLengthForNothing) {
  const oaString text("abcabc");
  EXPECT_EQ(text.index('b'), 1U);
  EXPECT_EQ(text.index('b', 2), 4U);
  EXPECT_EQ(text.index('b', 5), 6U);
  EXPECT_EQ(text.index('a', 600), 6U);
  EXPECT_EQ(text.substr("ca"), 2U);
  EXPECT_EQ(text.substr("bc", 2), 4U);
  EXPECT_EQ(text.substr("x"), 6U);
  EXPECT_EQ(text.substr("a", 4), 6U);
}

TEST(String, OrderIsThatOfUnsignedBytes) {
  EXPECT_LT(oaString("a"), oaString("ab"));
  EXPECT_LT(oaString("z"), "\xc3\xa4");
  EXPECT_GE("b", oaString("a"));
  EXPECT_TRUE(oaString("Net").isEqual("nET", true));
  EXPECT_FALSE(oaString("Net").isEqual("nET", false));
}

TEST(String, NumbersAndFormats) {
  EXPECT_EQ(oaString("42x").toInt(), 42);
  EXPECT_EQ(oaString("-99999999999").toInt(), INT_MIN);
  EXPECT_EQ(oaString("none").toInt(), 0);
  EXPECT_EQ(oaString("2.5e1").toDouble(), 25);
  oaString text;
  text.format("%d %s", 7, "seven");
  EXPECT_EQ(text, "7 seven");
  text.format(1000, "%0300d", 1);
  EXPECT_EQ(text.getLength(), 300U);
  EXPECT_GE(text.getSize(), 1000U);
  text = "aB\xc4z";
  text.toUpper();
  EXPECT_EQ(text, "AB\xc4Z");
}

// Editors set their user's locale, in which printf() writes a decimal comma.
TEST(String, NumbersHaveADecimalPointInEveryLocale) {
  const std::string before = std::setlocale(LC_NUMERIC, nullptr);
  const char *locale = nullptr;
  for (const char *name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8", "fr_FR.utf8"}) {
    locale = locale == nullptr ? std::setlocale(LC_NUMERIC, name) : locale;
  }
  if (locale == nullptr) {
    GTEST_SKIP() << "no locale with a decimal comma is installed";
  }
  EXPECT_EQ(oaString("2.5e1x").toDouble(), 25);
  EXPECT_EQ(kit::numberText(0.25), "0.25");
  EXPECT_EQ(kit::numberText(-1234567.25e-20), "-1.23457e-14");
  EXPECT_EQ(kit::numberText(INFINITY), "inf");
  EXPECT_EQ(kit::doubleOfDigits(0.1F), 0.1);
  std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(String, ResizeCutsTheText) {
  oaString text("abcdef");
  text.resize(4);
  EXPECT_EQ(text, "abc");
  text.resize(0);
  EXPECT_EQ(text, "");
}

} // namespace
