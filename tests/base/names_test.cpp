// Names in the native and the Unix name space.
#include <gtest/gtest.h>

#include <string>

#include "nametext.h"
#include "oa/oaBaseMsgIds.h"
#include "oa/oaNameSpaces.h"
#include "raised.h"

using namespace OpenAccess_4;

namespace {

const oaNativeNS kNative;
const oaUnixNS kUnix;

template <class Name> std::string native(const Name &name) {
  oaString text;
  name.get(kNative, text);
  return std::string(text);
}

// The structure of a name: kind, then for each member characters, numbers and repeat count.
std::string structureOf(const oaSimpleName &name) {
  std::string text = std::string(name.getType().getName());
  for (oaUInt4 i = 0; i < name.getNumMembers(); ++i) {
    text += (i ? "/" : " ") + std::string(name[i].getValue());
    if (name[i].hasIndex())
      text += "(" + std::to_string(name[i].getIndex()) + ")";
  }
  if (const oaVectorBitName *const bit = name.getVectorBit())
    text += " " + std::to_string(bit->getIndex());
  if (const oaVectorName *const vector = name.getVector())
    text += " " + std::to_string(vector->getStart()) + ".." + std::to_string(vector->getStop()) + " by " +
            std::to_string(vector->getStep());
  return name.getRepeat() == 1 ? text : text + " x" + std::to_string(name.getRepeat());
}

std::string structureOf(const oaName &name) {
  if (name.getScalar())
    return structureOf(oaSimpleName(*name.getScalar()));
  if (name.getVector())
    return structureOf(oaSimpleName(*name.getVector()));
  if (name.getVectorBit())
    return structureOf(oaSimpleName(*name.getVectorBit()));
  std::string text(name.getType().getName());
  for (oaUInt4 i = 0; name.getBundle() && i < name.getBundle()->getNumMembers(); ++i)
    text += (i ? " | " : " ") + structureOf((*name.getBundle())[i]);
  return text;
}

TEST(NativeNames, TextDecidesTheKind) {
  const struct {
    const char *text, *structure;
    oaUInt4 bits;
  } cases[] = {
      {"", "empty", 0},
      {"A", "scalarName A", 1},
      {"a-b.c $(x) <3>\\", "scalarName a-b.c $(x) <3>\\", 1},
      {"\xc3\xa4", "scalarName \xc3\xa4", 1},
      {"A[3]", "vectorBitName A 3", 1},
      {"A[4294967295]", "vectorBitName A 4294967295", 1},
      {"A[0:7]", "vectorName A 0..7 by 1", 8},
      {"A[7:0:3]", "vectorName A 7..0 by 3", 3},
      {"A[3:3]", "vectorName A 3..3 by 1", 1},
      {"U,V[2]", "bundleName scalarName U | vectorBitName V 2", 2},
      {"2*U,V[2],V[4:5]", "bundleName scalarName U x2 | vectorBitName V 2 | vectorName V 4..5 by 1", 5},
      {"3*A", "bundleName scalarName A x3", 3},
      {"a/b/c", "scalarName a/b/c", 1},
      {"I1[3]/n[0:1]", "vectorName I1(3)/n 0..1 by 1", 2},
      {"2*A1/B1/U,A1/B1/V[2]", "bundleName scalarName A1/B1/U x2 | vectorBitName A1/B1/V 2", 3},
      {"a#5b3#5D", "scalarName a[3]", 1},
      {"a#2fb#23", "scalarName a/b#", 1},
      {"*EN", "scalarName *EN", 1},
      {"0*EN", "scalarName 0*EN", 1},
      {"A:x", "scalarName A:x", 1},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.text);
    const oaName name(kNative, c.text);
    EXPECT_EQ(structureOf(name), c.structure);
    EXPECT_EQ(name.getNumBits(), c.bits);
    EXPECT_EQ(kNative.getType(c.text), name.getType());
    oaString key;
    kit::keyOf(name, key);
    EXPECT_EQ(oaName(kNative, key), name) << key;
  }
}

TEST(NativeNames, IllegalTextsAreRaised) {
  const struct {
    const char *text;
    oaUInt4 id;
  } cases[] = {{"A[3]x", oacInvalidNameSyntax},
               {"A[", oacInvalidNameSyntax},
               {"]", oacInvalidNameSyntax},
               {"A[3][2]", oacInvalidNameSyntax},
               {"[3]", oacInvalidNameLength},
               {"A[]", oacInvalidNumberSyntax},
               {"A[-1]", oacInvalidNumberSyntax},
               {"A[x]", oacInvalidNumberSyntax},
               {"A[1:2:3:4]", oacInvalidNumberSyntax},
               {"A[4294967296]", oacInvalidBitValue},
               {"A[0:3:0]", oacInvalidVectorValue},
               {"A,,B", oacInvalidNameSyntax},
               {"A,", oacInvalidNameSyntax},
               {"2*3*A", oacInvalidNameSyntax},
               {"99999999999*A", oacInvalidRepeat},
               {"/a", oacInvalidNameLength},
               {"a/", oacInvalidNameLength},
               {"a//b", oacInvalidNameLength},
               {"a#", oacInvalidCharFollowingHexChar},
               {"a#4x", oacInvalidCharFollowingHexChar},
               {"a#41", oacInvalidCharFollowingHexChar}};
  for (const auto &c : cases)
    EXPECT_EQ(raisedBy([&] { oaName(kNative, c.text); }), c.id) << c.text;
  EXPECT_EQ(raisedBy([] { oaName(kNative, std::string(256, 'a').c_str()); }), kNothingRaised);
  EXPECT_EQ(raisedBy([] { oaName(kNative, std::string(257, 'a').c_str()); }), oacInvalidNameLength);
  EXPECT_EQ(raisedBy([] { oaScalarName(kNative, std::string(1000, 'a').c_str()); }), oacInvalidNameLength);
  std::string longest = "a";
  while (longest.size() < 8024)
    longest += longest.size() % 200 ? "a" : "/";
  EXPECT_EQ(raisedBy([&] { oaScalarName(kNative, longest.c_str()); }), kNothingRaised);
  EXPECT_EQ(raisedBy([&] { oaScalarName(kNative, (longest + "a").c_str()); }), oacInvalidNameLength);

  EXPECT_EQ(raisedBy([] { oaVectorBitName(kNative, "A"); }), oacNameNotIndexed);
  EXPECT_EQ(raisedBy([] { oaVectorName(kNative, "A[3]"); }), oacInvalidNameSyntax);
  EXPECT_EQ(raisedBy([] { oaVectorName(kNative, "A", 0, 3, 0); }), oacInvalidVectorValue);
  EXPECT_EQ(raisedBy([] { oaSimpleName(kNative, "A,B"); }), oacInvalidNameSyntax);
  EXPECT_EQ(raisedBy([] { oaSimpleName(kNative, ""); }), oacInvalidNameLength);
  EXPECT_EQ(raisedBy([] { oaBundleName(kNative, ""); }), oacInvalidNameLength);
}

// A name that was made as a scalar stays one, whatever it looks like, and never equals what it looks like.
TEST(NativeNames, ScalarsKeepAnyText) {
  const struct {
    const char *text, *key, *lookAlike;
  } cases[] = {{"A[3]", "A#5b3#5d", "A[3]"}, {"A[0:3]", "A#5b0#3a3#5d", "A[0:3]"},
               {"A,B", "A#2cB", "A,B"},      {"3*A", "3#2aA", "3*A"},
               {"*EN", "#2aEN", nullptr},    {"A:x", "A#3ax", nullptr},
               {"A[", "A#5b", nullptr},      {"net#1", "net#231", nullptr},
               {"a#4", "a#234", nullptr},    {"A<3>", "A<3>", nullptr},
               {" a b ", " a b ", nullptr}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.text);
    const oaScalarName name(kNative, c.text);
    EXPECT_EQ(name.getNumMembers(), 1U);
    EXPECT_EQ(name[0].getValue(), c.text);
    EXPECT_EQ(native(name), c.text);
    EXPECT_EQ(oaScalarName(kNative, native(name).c_str()), name);
    oaString key;
    kit::keyOf(name, key);
    EXPECT_EQ(key, c.key);
    EXPECT_EQ(oaName(kNative, key), name);
    if (c.lookAlike) {
      EXPECT_NE(oaName(kNative, c.lookAlike), name);
    }
  }
  // An escape that would otherwise be read as one.
  EXPECT_EQ(native(oaScalarName(kUnix, "a#235b")), "a#235b");
  EXPECT_EQ(oaScalarName(kNative, "a#235b")[0].getValue(), "a#5b");
}

TEST(NativeNames, LenientScalarsInsideOtherNames) {
  oaBundleName bundle(oaScalarName(kNative, "*EN"));
  bundle.append(oaVectorName(kNative, "D", 0, 3), 2);
  bundle.append(oaScalarName(kNative, "A[3]"));
  bundle.append(oaScalarName(kNative, ""), 3);
  EXPECT_EQ(native(bundle), "*EN,2*D[0:3],A[3],3*");
  EXPECT_EQ(bundle.getNumBits(), 10U);
  oaString key;
  kit::keyOf(bundle, key);
  EXPECT_EQ(oaName(kNative, key), oaName(bundle)) << key;
  EXPECT_NE(oaName(kNative, native(bundle).c_str()), oaName(bundle));
  EXPECT_EQ(native(oaVectorBitName(oaScalarName(kNative, "A[3]"), 2)), "A#5b3#5d[2]");
}

TEST(NativeNames, EqualityIsStructural) {
  const auto name = [](const char *text) { return oaName(kNative, text); };
  EXPECT_EQ(name("A[3]"), oaVectorBitName(kNative, "A", 3));
  EXPECT_EQ(name("A[0:6:2]"), oaSimpleName(oaVectorName(oaScalarName(kNative, "A"), 0, 6, 2)));
  EXPECT_NE(name("A[3:3]"), name("A[3]"));
  EXPECT_NE(name("A[0:6:2]"), name("A[0:7:2]"));
  EXPECT_NE(name("A,A"), name("2*A"));
  EXPECT_NE(name("A"), name("a"));
  EXPECT_NE(name("a/b"), oaName(oaScalarName(kNative, "a#2fb")));
  EXPECT_EQ(name(""), oaName());
  EXPECT_NE(oaName(oaScalarName(kNative, "A")), oaName(oaBundleName(oaScalarName(kNative, "A"))));
}

TEST(NativeNames, BitsAreCountedAsWritten) {
  const struct {
    const char *text, *bits;
  } cases[] = {{"A", "A"},
               {"A[3]", "A[3]"},
               {"a[7:4]", "a[7] a[6] a[5] a[4]"},
               {"a[0:7:3]", "a[0] a[3] a[6]"},
               {"a[7:0:5]", "a[7] a[2]"},
               {"2*U,V[2],2*V[5:4]", "U U V[2] V[5] V[4] V[5] V[4]"}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.text);
    const oaName name(kNative, c.text);
    std::string bits;
    oaString bit;
    for (oaUInt4 i = 0; i < name.getNumBits(); ++i) {
      name.getBitName(kNative, i, bit);
      bits += (i ? " " : "") + std::string(bit);
    }
    EXPECT_EQ(bits, c.bits);
    EXPECT_EQ(raisedBy([&] { name.getBitName(kNative, name.getNumBits(), bit); }), oacBitNotInRangeForName);
  }
  // Negative numbers of a caller arrive as huge ones.
  const oaVectorName whole(kNative, "w", 0, static_cast<oaUInt4>(-1));
  oaString bit;
  whole.getBitName(kNative, UINT_MAX, bit);
  EXPECT_EQ(bit, "w[4294967295]");
  EXPECT_EQ(oaBundleName(whole, UINT_MAX).getNumBits(), UINT_MAX);
}

TEST(NativeNames, HierarchyGoesBeforeTheLastMember) {
  oaName name(kNative, "2*U,V[2],a/W[0:3]");
  name.addHierMem(kNative, "m/ignored", 1);
  EXPECT_EQ(native(name), "2*m/U,m/V[2],a/m/W[0:3]");
  name.addHierPath(oaVectorBitName(kNative, "top/I[1]"));
  EXPECT_EQ(native(name), "2*top/I[1]/m/U,top/I[1]/m/V[2],top/I[1]/a/m/W[0:3]");
  EXPECT_EQ(oaName(kNative, native(name).c_str()), name);
  for (oaName empty : {oaName(), oaName(oaBundleName()), oaName(oaScalarName())}) {
    EXPECT_EQ(raisedBy([&] { empty.addHierMem(oaNameMem("m", true)); }), oacInvalidName);
    EXPECT_EQ(raisedBy([&] { empty.addHierPath(oaScalarName(kNative, "m")); }), oacInvalidName);
  }
}

TEST(NativeNames, NamesAreValues) {
  oaBundleName bundle(kNative, "A,B");
  bundle.append(bundle[0], 2);
  EXPECT_EQ(native(bundle), "A,B,2*A");
  EXPECT_EQ(raisedBy([&] { bundle.append(bundle[0], 0); }), oacInvalidRepeat);
  bundle.resize(1);
  EXPECT_EQ(native(bundle), "A");
  const oaBundleName copy(bundle);
  bundle[0].getScalar()->init(kNative, "changed");
  EXPECT_EQ(native(copy), "A");

  oaVectorName vector(kNative, "old[1:2]");
  vector.init(kNative, "new[3]", true);
  EXPECT_EQ(vector, oaVectorName(oaScalarName(kNative, "new[3]"), 1, 2));
  oaScalarName base;
  oaVectorBitName(kNative, "a/b[5]").getBaseName(base);
  EXPECT_EQ(native(base), "a/b");
  oaScalarName kept(kNative, "kept");
  EXPECT_EQ(raisedBy([&] { kept.init(kUnix, "not legal"); }), oacInvalidNameChar);
  EXPECT_EQ(native(kept), "kept");
}

TEST(UnixNames, EscapeAllButPlainCharacters) {
  const struct {
    const char *native, *unixText;
  } cases[] = {{"foo bar", "foo#20bar"}, {"a-b", "a#2db"},       {"nand2.x1", "nand2#2ex1"},
               {"A_b@9", "A_b@9"},       {"..", "#2e#2e"},       {".", "#2e"},
               {"A[3]", "A#5b3#5d"},     {"x#1", "x#231"},       {"\\", "#5c"},
               {"$1", "#241"},           {"\xc3\xa4", "#c3#a4"}, {"a#2fb", "a#2fb"},
               {"a\nb", "a#0ab"}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.unixText);
    const oaScalarName name(kNative, c.native);
    oaString text;
    name.get(kUnix, text);
    EXPECT_EQ(text, c.unixText);
    EXPECT_EQ(oaScalarName(kUnix, c.unixText), name);
    EXPECT_EQ(native(oaScalarName(kUnix, c.unixText)), c.native);
    EXPECT_EQ(kit::directoryOf(name), c.unixText);
    oaScalarName read;
    EXPECT_TRUE(kit::nameOfDirectory(c.unixText, read));
    EXPECT_EQ(read, name);
  }
}

TEST(UnixNames, WhatTheSpaceDoesNotHaveIsRaised) {
  oaString text;
  const auto written = [&](const auto &name) { return raisedBy([&] { name.get(kUnix, text); }); };
  EXPECT_EQ(written(oaScalarName(kNative, "../a")), oacHierNameInvalid);
  EXPECT_EQ(written(oaVectorBitName(kNative, "A[3]")), oacIndexedNameInvalid);
  EXPECT_EQ(written(oaVectorName(kNative, "A[3:0]")), oacVectorNameInvalid);
  EXPECT_EQ(written(oaName(kNative, "A,B")), oacBundleNameInvalid);
  for (const char *illegal : {"a-b", "a.b", "a/b", "a[3]", " ", "\xc3\xa4"})
    EXPECT_EQ(raisedBy([&] { oaScalarName(kUnix, illegal); }), oacInvalidNameChar) << illegal;
  for (const char *illegal : {"a#", "a#2", "a#2x", "#00"})
    EXPECT_EQ(raisedBy([&] { oaScalarName(kUnix, illegal); }), oacInvalidCharFollowingHexChar) << illegal;
  EXPECT_EQ(raisedBy([] { oaVectorBitName(kUnix, "a"); }), oacIndexedNameInvalid);
  EXPECT_EQ(raisedBy([] { oaVectorName(kUnix, "a"); }), oacVectorNameInvalid);
  EXPECT_EQ(raisedBy([] { oaBundleName(kUnix, "a"); }), oacBundleNameInvalid);
}

TEST(Directories, NoNameLeavesItsLibrary) {
  EXPECT_EQ(raisedBy([] { kit::directoryOf(oaScalarName()); }), oacInvalidNameLength);
  EXPECT_EQ(raisedBy([] { kit::directoryOf(oaScalarName(kNative, "../x")); }), oacHierNameInvalid);
  EXPECT_EQ(kit::directoryOf(oaScalarName(kNative, std::string(255, 'x').c_str())), std::string(255, 'x'));
  EXPECT_EQ(raisedBy([] { kit::directoryOf(oaScalarName(kNative, std::string(100, '-').c_str())); }),
            oacInvalidNameLength);
  oaScalarName name(kNative, "kept");
  for (const char *other : {"", ".", "..", ".git", "x.bak", "a-b", "a#2Db", "#61", "a#", "CVS~"})
    EXPECT_FALSE(kit::nameOfDirectory(other, name)) << other;
  EXPECT_EQ(native(name), "kept");
}

} // namespace
