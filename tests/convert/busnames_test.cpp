#include "oaconvert.h"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

using namespace oa;

namespace {

template <typename Name> std::string baseOf(const Name &name) {
  oaString base;
  name.getBaseName(oaConvert::ns, base);
  return static_cast<const oaChar *>(base);
}

// "repeat x kind(name numbers)" for each member, with "|" between.
std::string membersOf(const oaBundleName &bundle) {
  std::ostringstream text;
  for (oaUInt4 i = 0; i < bundle.getNumMembers(); ++i) {
    const oaSimpleName &member = bundle[i];
    text << (i == 0 ? "" : " | ");
    if (member.getRepeat() != 1) {
      text << member.getRepeat() << " x ";
    }
    if (const oaVectorName *vector = member.getVector()) {
      text << "vector(" << baseOf(*vector) << ' ' << vector->getStart() << ".." << vector->getStop() << " step "
           << vector->getStep() << ')';
    } else if (const oaVectorBitName *bit = member.getVectorBit()) {
      text << "bit(" << baseOf(*bit) << ' ' << bit->getIndex() << ')';
    } else if (const oaScalarName *scalar = member.getScalar()) {
      text << "scalar(" << oaConvert::toString(*scalar).toStdString() << ')';
    }
  }
  return text.str();
}

struct BusName {
  const char *text;
  const char *members;
};

template <size_t count> void expectMembers(const BusName (&names)[count]) {
  for (const BusName &name : names) {
    SCOPED_TRACE(name.text);
    EXPECT_EQ(membersOf(oaConvert::toBundleName(QString::fromUtf8(name.text))), name.members);
  }
}

TEST(BundleName, ListsItsMembersInOrder) {
  expectMembers({
      {"", ""},
      {",,,", ""},
      {"EN", "scalar(EN)"},
      {" EN\t", "scalar(EN)"},
      {"A,,B", "scalar(A) | scalar(B)"},
      {"A , B", "scalar(A) | scalar(B)"},
      {"A, ,B", "scalar(A) | scalar() | scalar(B)"},
      {"CLK,D<0:3>,RST", "scalar(CLK) | vector(D 0..3 step 1) | scalar(RST)"},
      {"2*A<0:1>, B", "2 x vector(A 0..1 step 1) | scalar(B)"},
      {"A,A", "scalar(A) | scalar(A)"},
  });
}

TEST(BundleName, TakesARepeatCountThatIsPositive) {
  expectMembers({
      {"4*EN", "4 x scalar(EN)"},
      {"3*A<2>", "3 x bit(A 2)"},
      {"3*", "3 x scalar()"},
      {" 2 *A", "2 x scalar(A)"},
      {"2* A", "2 x scalar( A)"},
  });
}

// Compared structurally: the texts of these names in the native name space are the kit's own business.
TEST(BundleName, KeepsAStarThatFollowsNoCount) {
  for (const char *text : {"*EN", "0*EN", "x*EN", "-2*EN", "2147483648*EN"}) {
    SCOPED_TRACE(text);
    const oaBundleName bundle = oaConvert::toBundleName(text);
    ASSERT_EQ(bundle.getNumMembers(), 1u);
    EXPECT_EQ(bundle[0].getRepeat(), 1u);
    EXPECT_TRUE(bundle[0] == oaScalarName(oaConvert::ns, text));
  }
  const oaBundleName twoStars = oaConvert::toBundleName("2*3*A");
  EXPECT_EQ(twoStars[0].getRepeat(), 2u);
  EXPECT_TRUE(twoStars[0] == oaScalarName(oaConvert::ns, "3*A"));
}

TEST(BundleName, ReadsRanges) {
  expectMembers({
      {"D<0:7>", "vector(D 0..7 step 1)"},
      {"D<7:0>", "vector(D 7..0 step 1)"},
      {"D<7:0:2>", "vector(D 7..0 step 2)"},
      {"A<7:0:-2>", "vector(A 7..0 step 2)"},
      {"A<0:3:0>", "vector(A 0..3 step 1)"},
      {"A<0:3:>", "vector(A 0..3 step 1)"},
      {"A<0:3:x>", "vector(A 0..3 step 1)"},
      {"A<0:9:-2147483648>", "vector(A 0..9 step 2147483648)"},
      {"A<a:b>", "vector(A 0..0 step 1)"},
      {"A<:>", "vector(A 0..0 step 1)"},
      {"A<3:3>", "vector(A 3..3 step 1)"},
      {"A< 1 : 2 >", "vector(A 1..2 step 1)"},
      {"D<0:3>_b", "vector(D_b 0..3 step 1)"},
      {"A<0:3>x", "vector(Ax 0..3 step 1)"},
      // The second colon is looked for behind the range as well, so the stop is read from "3>".
      {"A<0:3>:x", "vector(A:x 0..0 step 1)"},
      {"A<-1:2>", "vector(A 4294967295..2 step 1)"},
  });
}

TEST(BundleName, ReadsBitsThatEndTheMember) {
  expectMembers({
      {"A<3>", "bit(A 3)"},
      {"A<x>", "bit(A 0)"},
      {"A<>", "bit(A 0)"},
      {"A<<3>", "bit(A 0)"},
      {"A<3>>", "bit(A 0)"},
  });
}

TEST(BundleName, LeavesEverythingElseAScalar) {
  for (const char *text : {"A<3>x", "A<5", "A5>", "<0:3>", "<5>", "<0:3>x", "A:B", "A<3>:", "A<0:3", ":<3", "A>3<"}) {
    SCOPED_TRACE(text);
    const oaBundleName bundle = oaConvert::toBundleName(text);
    ASSERT_EQ(bundle.getNumMembers(), 1u);
    EXPECT_TRUE(bundle[0] == oaScalarName(oaConvert::ns, text));
  }
}

TEST(BundleName, SendsNamesAsUtf8) {
  const oaBundleName bundle = oaConvert::toBundleName(QString(QChar(0xe4)) + "<0:1>");
  EXPECT_EQ(baseOf(*bundle[0].getVector()), "\xc3\xa4");
}

TEST(DeviceName, LeavesTheUsualViewOutAndSplitsAtTheFirstSeparator) {
  const struct {
    const char *cell, *view, *device;
  } cases[] = {
      {"inv", "symbol", "inv"},    {"nand2", "symbol2", "symbol2@nand2"},
      {"inv", "sym2", "sym2@inv"}, {"inv", "Symbol", "Symbol@inv"},
      {"inv", "", "@inv"},         {"a@b", "sym2", "sym2@a@b"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.device);
    EXPECT_EQ(oaConvert::toDeviceName(c.cell, c.view), QString(c.device));
    EXPECT_EQ(oaConvert::toCellName(QString(c.device)), QString(c.cell));
    EXPECT_EQ(oaConvert::toViewName(c.device), QString(c.view));
  }
  // A cell with a separator in its name is taken apart there.
  EXPECT_EQ(oaConvert::toCellName(oaConvert::toDeviceName("a@b", "symbol")), QString("b"));
}

} // namespace
