// Nets, terminals, pins and instances, of one bit and of several.

#include "tcltest.h"

namespace {

using namespace tcltest;

struct Case {
  const char *name, *script, *expected;
};

class Connectivity : public TclTest {
protected:
  Connectivity() {
    eval("library; design leaf");
    eval("foreach n {A Z 1} {oa::TermCreate [oa::NetCreate $b $n] $n}; oa::RectCreate $b 1 1 {{0 0} {1 1}}; oa::save "
         "$d");
    eval("design top");
  }
  template <std::size_t N> void check(const Case (&cases)[N]) {
    for (const Case &c : cases) {
      SCOPED_TRACE(c.name);
      EXPECT_EQ(eval(c.script), c.expected);
    }
  }
};

TEST_F(Connectivity, Nets) {
  const Case cases[] = {
      {"scalar",
       "set n [oa::ScalarNetCreate $b a power 1]; list [oa::getType $n] [oa::getSigType $n] [oa::isGlobal $n]",
       "ScalarNet power 1"},
      {"named by the kit", "oa::getType [oa::ScalarNetCreate $b]", "ScalarNet"},
      {"bus", "set n [oa::BusNetCreate $b D 0 3 1]; list [oa::getName $n] [oa::getNumBits $n]", "{D[0:3]} 4"},
      {"bus by name", "oa::getName [oa::BusNetCreate $b {E[7:0]} clock]", "E[7:0]"},
      {"bit", "set bit [oa::getBit $n 2]; list [oa::getName $bit] [oa::getType $bit] [oa::isImplicit $bit]",
       "{D[2]} BusNetBit 1"},
      {"find a bit", "expr {[oa::BusNetBitFind $b D 2] eq $bit && [oa::NetFind $b {D[2]}] eq $bit}", "1"},
      {"find a bus", "expr {[oa::BusNetFind $b D 0 3 1] eq $n}", "1"},
      {"bundle",
       "set bundle [oa::NetCreate $b {a,D[0:1]}]; list [oa::getType $bundle] [names [oa::getMembers $bundle]]",
       "BundleNet {a {D[0:1]}}"},
      {"not there", "oa::NetFind $b nothing", ""},
      {"filter", "llength [members [oa::getNets $b [expr {$oa::oacNetIterSingleBit | $oa::oacNetIterNotImplicit}]]]",
       "2"},
      {"equivalent",
       "oa::makeEquivalent [oa::NetFind $b a] [oa::ScalarNetCreate $b b]; lsort -unique [names [oa::getEquivalentNets "
       "[oa::NetFind $b a]]]",
       "a b"},
  };
  check(cases);
}

TEST_F(Connectivity, TerminalsAndPins) {
  const Case cases[] = {
      {"terminal", "set t [oa::TermCreate [oa::NetCreate $b a] a input]; list [oa::getType $t] [oa::getTermType $t]",
       "ScalarTerm input"},
      {"default type", "oa::getTermType [oa::TermCreate [oa::NetCreate $b c] c]", "inputOutput"},
      {"bus",
       "set bt [oa::BusTermCreate [oa::BusNetCreate $b D 0 3 1] D 0 3 1 output]; list [oa::getName $bt] "
       "[oa::getTermType $bt]",
       "{D[0:3]} output"},
      {"find", "expr {[oa::TermFind $b a] eq $t}", "1"},
      {"by position", "oa::setPosition $t 3; expr {[oa::TermFind $b [oa::UInt4 3]] eq $t}", "1"},
      {"net", "oa::getName [oa::getNet $t]", "a"},
      {"pins", "set p1 [oa::PinCreate $t]; set p2 [oa::PinCreate $t east $oa::oacRight]; names [oa::getPins $t]",
       "P__0 east"},
      {"access", "oa::getAccessDir $p2", "8"},
      {"figures", "set r [oa::RectCreate $b 1 1 {{0 0} {1 1}}]; oa::addToPin $r $p2; types [oa::getFigs $p2]", "Rect"},
      {"pin of a figure", "expr {[oa::hasPin $r] && [oa::getPin $r] eq $p2}", "1"},
      {"removed", "oa::removeFromPin $r; oa::hasPin $r", "0"},
      {"net of a figure", "oa::addToNet $r [oa::NetFind $b a]; types [oa::getShapes [oa::NetFind $b a]]", "Rect"},
  };
  check(cases);
}

TEST_F(Connectivity, Instances) {
  const Case cases[] = {
      {"by names",
       "set i [oa::ScalarInstCreate $b $lib leaf layout i1 {{1 2} R90}]; list [oa::getOrigin $i] [oa::getOrient $i]",
       "{1.0 2.0} R90"},
      {"transform", "oa::getTransform $i", "{1.0 2.0} R90"},
      {"moved", "oa::setTransform $i [oa::getTransform $i]; oa::setOrigin $i {3 0.5}; oa::getTransform $i",
       "{3.0 0.5} R90"},
      {"by master", "oa::getName [oa::ScalarInstCreate $b [oa::getMaster $i] i2 [oa::Transform 0 0 MX]]", "i2"},
      {"without a name", "oa::getType [oa::ScalarInstCreate $b $lib leaf layout {{0 0} R0}]", "ScalarInst"},
      {"array",
       "set a [oa::ArrayInstCreate $b $lib leaf layout a1 {{0 0} R0} 2 3.5 4 5]; list [oa::getDX $a] [oa::getDY $a] "
       "[oa::getNumCols $a]",
       "2.0 3.5 5"},
      {"element of an array", "oa::getTransform $a 1 2", "{4.0 3.5} R0"},
      {"vector",
       "set v [oa::VectorInstCreate $b $lib leaf layout v 0 3 {{0 0} R0}]; list [oa::getName $v] [oa::getNumBits $v]",
       "{v[0:3]} 4"},
      {"bit of a vector", "oa::getName [oa::getBit $v 1]", "v[1]"},
      {"definition", "expr {[oa::VectorInstDefFind $b v] eq [oa::getDef $v]}", "1"},
      {"find", "expr {[oa::InstFind $b i1] eq $i}", "1"},
      {"names of the master", "list [oa::getCellName $i] [oa::getViewName $i] [oa::isBound $i]", "leaf layout 1"},
      {"header", "expr {[oa::InstHeaderFind $b $lib leaf layout] eq [oa::getHeader $i]}", "1"},
      {"parameters", "set p [oa::ScalarInstCreate $b $lib leaf layout i9 {{0 0} R0} {}]; oa::getParams $p", ""},
      {"another master", "oa::setMaster $p $lib nowhere layout; list [oa::isBound $p] [oa::getMaster $p]", "0 {}"},
      {"status", "oa::setPlacementStatus $i fixed; oa::getPlacementStatus $i", "fixed"},
  };
  check(cases);
}

TEST_F(Connectivity, InstanceTerminals) {
  const Case cases[] = {
      {"by name",
       "set i [oa::ScalarInstCreate $b $lib leaf layout i1 {{0 0} R0}]\n"
       "set it [oa::InstTermCreate [oa::NetCreate $b n] $i A]; oa::getTermName $it",
       "A"},
      {"by terminal",
       "set z [oa::InstTermCreate [oa::NetFind $b n] $i [oa::TermFind [oa::getTopBlock [oa::getMaster $i]] Z]]\n"
       "oa::getName [oa::getTerm $z]",
       "Z"},
      {"a number is a name", "oa::getTermName [oa::InstTermCreate [oa::NetFind $b n] $i 1]", "1"},
      {"net and instance", "list [oa::getName [oa::getNet $it]] [oa::getName [oa::getInst $it]]", "n i1"},
      {"of a net", "oa::getCount [oa::getInstTerms [oa::NetFind $b n]]", "3"},
      {"of an instance", "oa::getCount [oa::getInstTerms $i]", "3"},
      {"find", "expr {[oa::InstTermFind $i A] eq $it}", "1"},
      {"removed", "oa::removeFromNet $it; oa::getNet $it", ""},
  };
  check(cases);
}

TEST_F(Connectivity, Vias) {
  const Case cases[] = {
      {"definition",
       "set p [oa::ViaParam]; oa::setCutLayer $p 3; oa::setCutWidth $p 200; oa::setCutHeight $p 200\n"
       "set def [oa::StdViaDefCreate $tech std [oa::LayerFind $tech 1] [oa::LayerFind $tech 2] $p]\n"
       "oa::getType $def",
       "StdViaDef"},
      {"standard", "set v [oa::StdViaCreate $b $def {{1.5 2} R90}]; list [oa::getType $v] [oa::getTransform $v]",
       "StdVia {{1.5 2.0} R90}"},
      {"its definition", "list [oa::getViaDefName $v] [expr {[oa::getViaDef $v] eq $def}]", "std 1"},
      {"parameters", "oa::setCutRows $p 3; oa::setViaParams $v $p; oa::getCutRows [oa::getViaParams $v]", "3"},
      {"all of a block", "types [oa::getVias $b]", "StdVia"},
      {"on a net", "oa::addToNet $v [oa::NetCreate $b n]; oa::getName [oa::getNet $v]", "n"},
      {"custom",
       "set def [oa::CustomViaDefCreate $tech cust $lib leaf layout [oa::LayerFind $tech 1] [oa::LayerFind $tech 2]]\n"
       "set v [oa::CustomViaCreate $b $def [oa::Transform 2000 0]]; list [oa::getCellName $v] [oa::getBBox $v]",
       "leaf {{1.0 0.0} {2.0 1.0}}"},
  };
  check(cases);
}

} // namespace
