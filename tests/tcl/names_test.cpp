// Names are texts in the current name space, or objects.

#include "tcltest.h"

namespace {

using namespace tcltest;

struct Case {
  const char *name, *script, *expected;
};

class Names : public TclTest {
protected:
  template <std::size_t N> void check(const Case (&cases)[N]) {
    for (const Case &c : cases) {
      SCOPED_TRACE(c.name);
      EXPECT_EQ(eval(c.script), c.expected);
    }
  }
};

TEST_F(Names, FollowTheNameSpaceStack) {
  eval("library; design cell");
  const Case cases[] = {
      {"native first", "set n [oa::NetCreate $b {D[0:3]}]; oa::getName $n", "D[0:3]"},
      {"in another", "oa::getName $n [oa::CdbaNS]", "D<0:3>"},
      {"pushed, written", "oa::pushNameSpace [oa::CdbaNS]; oa::getName $n", "D<0:3>"},
      {"pushed, read", "expr {[oa::NetFind $b D<0:3>] eq $n}", "1"},
      {"another form is a scalar there", "oa::getType [oa::NetCreate $b Q]", "ScalarNet"},
      {"current", "oa::getName $n [oa::getNameSpace]", "D<0:3>"},
      {"popped", "oa::popNameSpace; oa::getName $n", "D[0:3]"},
      {"name space with characters of its own",
       "set ns [oa::LefNS]; oa::setOpenBusChar $ns <; oa::setCloseBusChar $ns >\n"
       "oa::getName [oa::NetFind $b Q] $ns; oa::getOpenBusChar $ns",
       "<"},
  };
  check(cases);
}

TEST_F(Names, Objects) {
  const Case cases[] = {
      {"scalar", "set n [oa::ScalarName [oa::NativeNS] a]; oa::get $n [oa::NativeNS]", "a"},
      {"vector", "set v [oa::VectorName [oa::NativeNS] D 0 3]; list [oa::get $v [oa::CdbaNS]] [oa::getNumBits $v]",
       "D<0:3> 4"},
      {"bit", "set k [oa::VectorBitName [oa::NativeNS] D 2]; list [oa::get $k [oa::NativeNS]] [oa::getIndex $k]",
       "{D[2]} 2"},
      {"bundle",
       "set u [oa::BundleName [oa::NativeNS] {a,D[0:1]}]; list [oa::getNumMembers $u] [oa::getBitName $u "
       "[oa::NativeNS] 2]",
       "2 {D[1]}"},
      {"any", "oa::getNumBits [oa::Name [oa::NativeNS] {a,b}]", "2"},
      {"bit of a vector", "oa::getBitName $v [oa::NativeNS] 3", "D[3]"},
      {"converted", "library; design cell; oa::getType [oa::NetCreate $b $v]", "BusNet"},
      {"scalar with an index in its text", "oa::getType [oa::NetCreate $b [oa::ScalarName [oa::NativeNS] {X[3]}]]",
       "ScalarNet"},
      {"the same as a text", "oa::getType [oa::NetCreate $b {Y[3]}]", "BusNetBit"},
      {"as an output", "set out [oa::Name]; oa::getName [oa::NetFind $b $v] $out; oa::get $out [oa::CdbaNS]", "D<0:3>"},
      {"type in a name space", "expr {[oa::getType [oa::CdbaNS] A<0:3>] eq [oa::getType [oa::CdbaNS] B<7:0>]}", "1"},
  };
  check(cases);
}

TEST_F(Names, WrongOnesSayWhy) {
  eval("library; design cell");
  EXPECT_THAT(failure("oa::NetCreate $b {D[0:}"), testing::Not(""));
  EXPECT_THAT(errorCode(), testing::MatchesRegex("OA [0-9]+"));
  EXPECT_THAT(failure("oa::BusNetCreate $b plain"), testing::HasSubstr("VectorName"));
}

} // namespace
