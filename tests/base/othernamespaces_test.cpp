// Name spaces of other tools, each against the native one.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "nametext.h"
#include "oa/oaBaseMsgIds.h"
#include "oa/oaName.h"
#include "oa/oaNameSpaces.h"
#include "raised.h"

using namespace OpenAccess_4;

namespace {

const oaNativeNS kNative;

struct Form {
  const char *text, *key; // as the space writes the name, and the native form with all escapes
};

std::string textIn(const oaNameSpace &space, const oaName &name) {
  oaString text;
  name.get(space, text);
  return std::string(text);
}

// Both texts mean the same name, and the space writes it as `text`.
void expectForms(const oaNameSpace &space, std::initializer_list<Form> forms) {
  for (const Form &form : forms) {
    SCOPED_TRACE(form.text);
    const oaName name(space, form.text);
    oaString key;
    kit::keyOf(name, key);
    EXPECT_EQ(key, form.key);
    EXPECT_EQ(textIn(space, oaName(kNative, form.key)), form.text);
    EXPECT_TRUE(space.isEqual(name, oaName(kNative, form.key)));
  }
}

void expectRaised(const oaNameSpace &space, oaUInt4 id, std::initializer_list<const char *> texts) {
  for (const char *text : texts)
    EXPECT_EQ(raisedBy([&] { oaName(space, text); }), id) << text;
}

oaUInt4 raisedWriting(const oaNameSpace &space, const char *native) {
  return raisedBy([&] { textIn(space, oaName(kNative, native)); });
}

TEST(CdbaNames, FormsAndNativeForms) {
  expectForms(oaCdbaNS(), {{"A", "A"},
                           {"a[3]", "a#5b3#5d"},
                           {"D<3>", "D[3]"},
                           {"D<7:0>", "D[7:0]"},
                           {"D<0:6:2>", "D[0:6:2]"},
                           {"I1<3>`sub`n<0:1>", "I1[3]/sub/n[0:1]"},
                           {"A,B<3>", "A,B[3]"},
                           {"<*2>A,B<0:1>", "2*A,B[0:1]"},
                           {"gnd!", "gnd!"},
                           {"a#20b", "a b"},
                           {"a#2eb", "a#232eb"},
                           {"#28a)", "(a)"},
                           {"x#3ay", "x#3ay"}});
}

TEST(CdbaNames, ListsCountsAndGroupsExpand) {
  const struct {
    const char *text, *native;
  } cases[] = {{"A<2,1,0>", "A[2],A[1],A[0]"},
               {"A<0:1,5>", "A[0:1],A[5]"},
               {"A<0:2*2>", "2*A[0],2*A[1],2*A[2]"},
               {"A<(0:2)*2>", "2*A[0:2]"},
               {"A<(0,2)*2>", "A[0],A[2],A[0],A[2]"},
               {"A<5*3>", "3*A[5]"},
               {"<*2>(A,B)", "A,B,A,B"},
               {"<*2>(A,<*2>(B,C<0:1>)),D", "A,B,C[0:1],B,C[0:1],A,B,C[0:1],B,C[0:1],D"},
               {"<*3>(A)", "3*A"},
               {"<*2>A<1,0>", "A[1],A[0],A[1],A[0]"},
               {" A , B<3> ", "A,B[3]"}};
  for (const auto &c : cases)
    EXPECT_EQ(textIn(kNative, oaName(oaCdbaNS(), c.text)), c.native) << c.text;
}

TEST(CdbaNames, IllegalTexts) {
  const oaCdbaNS cdba;
  expectRaised(cdba, oacInvalidNameChar, {"a b", "a\\b", "a/b", "a:b", "a>b", "A<3>x"});
  expectRaised(cdba, oacInvalidBusSyntax, {"A<3", "<*2"});
  expectRaised(cdba, oacInvalidNumberSyntax, {"A<>", "A<-1>", "A<1:>", "A<x>"});
  expectRaised(cdba, oacInvalidParenSyntax, {"<*2>(A,B", "A<(0:2*2>", "A<(0:2)x>", "A<)*2(>"});
  expectRaised(cdba, oacInvalidVectorValue, {"A<0:4:0>"});
  expectRaised(cdba, oacInvalidRepeat,
               {"<*0>A", "<*x>A", "<*99999999999>A", "A<0:1*0>", "A<0:4294967295*2>", "<*1000>(<*1000>(A,B))",
                "<*65536>(<*65536>(<*2>A))"});
  expectRaised(cdba, oacInvalidNameLength, {"A,", ",", "<3>", "`a", "a`"});
  std::string nested;
  for (int i = 0; i < 1300; ++i)
    nested += "<*9>(";
  expectRaised(cdba, oacInvalidNameLength, {nested.c_str()});
}

TEST(VerilogNames, FormsAndNativeForms) {
  expectForms(oaVerilogNS(), {{"net_1$", "net_1$"},
                              {"a[3]", "a[3]"},
                              {"a[7:0]", "a[7:0]"},
                              {"top.sub.n[3]", "top/sub/n[3]"},
                              {"\\a+b ", "a+b"},
                              {"\\a+b [3]", "a+b[3]"},
                              {"\\a.b .c", "a.b/c"},
                              {"\\module ", "module"},
                              {"\\xor ", "xor"},
                              {"\\always ", "always"},
                              {"\\1a ", "1a"},
                              {"\\x#20y ", "x y"},
                              {"\\U#1 ", "U#231"},
                              {"\\v[2] [1]", "v#5b2#5d[1]"}});
  expectRaised(oaVerilogNS(), oacInvalidNameChar, {"a+b", "module", "a b"});
  expectRaised(oaVerilogNS(), oacFirstCharInvalid, {"1a", "$x"});
  expectRaised(oaVerilogNS(), oacInvalidNameSyntax, {"\\a+b", "\\a b"});
  expectRaised(oaVerilogNS(), oacStepNameInvalid, {"a[0:6:2]"});
  EXPECT_EQ(raisedWriting(oaVerilogNS(), "a[0:6:2]"), oacStepNameInvalid);
  EXPECT_EQ(raisedWriting(oaVerilogNS(), "a,b"), oacBundleNameInvalid);
  EXPECT_EQ(raisedBy([] { oaScalarName(oaVerilogNS(), "a[3]"); }), oacInvalidNameChar);
}

TEST(SpiceNames, CaseIsKeptByPercentSigns) {
  expectForms(oaSpiceNS(), {{"net1", "net1"},
                            {"n%Et", "nEt"},
                            {"a[3]", "a[3]"},
                            {"x1.n", "x1/n"},
                            {"#30net", "0net"},
                            {"a#20b", "a b"},
                            {"a[4:3]", "a#5b4#3a3#5d"},
                            {"a#5b3]", "a#5b3#5d"}});
  const oaSpiceNS spice;
  const oaName upper(spice, "NET"), lower(spice, "net");
  EXPECT_EQ(upper, lower);
  EXPECT_EQ(textIn(spice, upper), "NET") << "the case is preserved";
  EXPECT_EQ(textIn(kNative, upper), "net");
  EXPECT_NE(oaName(spice, "%N%E%T"), lower);
  EXPECT_TRUE(spice.isEqual(oaScalarName(kNative, "Net"), oaScalarName(kNative, "nET")));
  EXPECT_FALSE(kNative.isEqual(oaScalarName(kNative, "Net"), oaScalarName(kNative, "nET")));
  expectRaised(spice, oacFirstCharInvalid, {"0net", "$a"});
  expectRaised(spice, oacInvalidNameChar, {"a b", "a(b"});
  expectRaised(spice, oacInvalidCharFollowingEscChar, {"a%", "a%1"});
  expectRaised(spice, oacInvalidCharFollowingHexChar, {"a#", "a#2x"});
  EXPECT_EQ(raisedWriting(spice, "a[0:3]"), oacVectorNameInvalid);
}

TEST(LefNames, ScalarsWithEscapes) {
  oaLefNS lef;
  expectForms(lef, {{"A", "A"},
                    {"A\\[3\\]", "A#5b3#5d"},
                    {"a\\/b", "a#2fb"},
                    {"a\\\\b", "a\\b"},
                    {"a\\#1", "a#231"},
                    {"a#20b", "a b"}});
  expectRaised(lef, oacIndexedNameInvalid, {"A[3]"});
  expectRaised(lef, oacHierNameInvalid, {"a/b"});
  expectRaised(lef, oacInvalidNameChar, {"a b", "a;b"});
  expectRaised(lef, oacInvalidCharFollowingEscChar, {"a\\", "a\\ b"});
  EXPECT_EQ(raisedWriting(lef, "A[3]"), oacIndexedNameInvalid);
  EXPECT_EQ(raisedWriting(lef, "A[3:0]"), oacVectorNameInvalid);
  EXPECT_EQ(raisedWriting(lef, "a/b"), oacHierNameInvalid);

  const oaLefNS before(lef);
  lef.setOpenBusChar('<');
  lef.setCloseBusChar('>');
  EXPECT_EQ(textIn(lef, oaName(oaScalarName(kNative, "A<3>[1]"))), "A\\<3\\>[1]");
  EXPECT_EQ(before.getOpenBusChar(), '[') << "copies are independent";
  EXPECT_EQ(raisedBy([&] { lef.setHierDelimiter('<'); }), oacProgrammableCharTaken);
  EXPECT_EQ(raisedBy([&] { lef.setHierDelimiter('a'); }), oacProgrammableCharInvalid);
  EXPECT_EQ(raisedBy([&] { lef.setHierDelimiter('\\'); }), oacProgrammableCharInvalid);
  EXPECT_EQ(lef.getHierDelimiter(), '/');
}

TEST(DefNames, BitsAndHierarchy) {
  oaDefNS def;
  expectForms(def, {{"A[3]", "A[3]"},
                    {"a/b/c[3]", "a/b/c[3]"},
                    {"name\\[1\\][2]", "name#5b1#5d[2]"},
                    {"name\\[1\\]", "name#5b1#5d"}});
  EXPECT_EQ(oaName(def, "name[1][2]"), oaName(def, "name\\[1\\][2]"));
  def.setHierDelimiter('|');
  EXPECT_EQ(textIn(def, oaName(kNative, "a/b#2fc[3]")), "a|b/c[3]");
  expectRaised(def, oacVectorNameInvalid, {"A[3:0]"});
  EXPECT_EQ(raisedBy([&] { oaScalarName(def, "A[3]"); }), oacInvalidNameSyntax);
}

} // namespace
