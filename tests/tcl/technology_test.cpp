// Technologies: units, layers, purposes, via definitions.

#include "tcltest.h"

namespace {

using namespace tcltest;

struct Case {
  const char *name, *script, *expected;
};

class Technology : public TclTest {
protected:
  Technology() { eval("library"); }
  template <std::size_t N> void check(const Case (&cases)[N]) {
    for (const Case &c : cases) {
      SCOPED_TRACE(c.name);
      EXPECT_EQ(eval(c.script), c.expected);
    }
  }
};

TEST_F(Technology, Units) {
  const Case cases[] = {
      {"units", "set type [oa::ViewTypeGet maskLayout]; oa::getDBUPerUU $tech $type", "2000"},
      {"unit's name", "oa::setUserUnits $tech $type nanometer; oa::getUserUnits $tech $type", "nanometer"},
      {"to database units", "oa::uuToDBU $tech $type 1.5", "3000"},
      {"from database units", "oa::dbuToUU $tech $type 3001", "1.5005"},
      {"of a block", "design cell; oa::getDBUPerUU $b", "2000"},
      {"of a schematic",
       "design cell schematic schematic; expr {[oa::getDBUPerUU $b] == [oa::TechGetDefaultDBUPerUU [oa::ViewTypeGet "
       "schematic]]}",
       "1"},
      {"found by library", "expr {[oa::TechFind $lib] eq $tech && [oa::TechFind [oa::LibFind $lib]] eq $tech}", "1"},
      {"exists", "list [oa::TechExists $lib] [oa::TechExists [oa::LibFind $lib] 0]", "1 1"},
      {"grid", "oa::setDefaultManufacturingGrid $tech 0.005; oa::getDefaultManufacturingGrid $tech", "0.005"},
  };
  check(cases);
}

TEST_F(Technology, LayersAndPurposes) {
  const Case cases[] = {
      {"by name", "oa::getNumber [oa::LayerFind $tech m2]", "2"},
      {"by number", "oa::getName [oa::LayerFind $tech 2]", "m2"},
      {"not there", "list [oa::LayerFind $tech no] [oa::LayerFind $tech 99]", "{} {}"},
      {"physical", "set layer [oa::PhysicalLayerFind $tech m1]; list [oa::getType $layer] [oa::getMaterial $layer]",
       "PhysicalLayer metal"},
      {"material given", "oa::getMaskNumber [oa::PhysicalLayerCreate $tech extra 9 poly 7]", "7"},
      {"all", "names [oa::getLayers $tech]", "m1 m2 cut extra"},
      {"derived", "oa::getOperation [oa::DerivedLayerCreate $layer [oa::LayerFind $tech 2] and both 50]", "and"},
      {"purpose", "oa::getNumber [oa::PurposeFind $tech label]", "1"},
      {"reserved purpose", "oa::getName [oa::PurposeFind $tech $oa::oavPurposeNumberDrawing]", "drawing"},
      {"by type", "oa::getNumber [oa::PurposeGet $tech drawing]", "4294967295"},
      {"destroyed", "oa::destroy [oa::LayerFind $tech extra]; oa::LayerFind $tech 9", ""},
  };
  check(cases);
}

TEST_F(Technology, ViaDefinitions) {
  const Case cases[] = {
      {"parameters",
       "set p [oa::ViaParam]; oa::setCutLayer $p 3; oa::setCutWidth $p 200; oa::setLayer1Enc $p [oa::Vector 10 20]\n"
       "list [oa::getCutWidth $p] [oa::getLayer1Enc $p] [oa::hasDefault $p cutRows]",
       "200 {10 20} 1"},
      {"standard",
       "set v [oa::StdViaDefCreate $tech std [oa::LayerFind $tech 1] [oa::LayerFind $tech 2] $p]; oa::getType $v",
       "StdViaDef"},
      {"its parameters", "oa::getCutWidth [oa::getParams $v]", "200"},
      {"into an object", "set q [oa::ViaParam]; oa::getParams $v $q; oa::getCutLayer $q", "3"},
      {"both layers", "lmap l [oa::getLayers $v] {oa::getName $l}", "m1 m2"},
      {"custom",
       "oa::getCellName [oa::CustomViaDefCreate $tech cust $lib via layout [oa::LayerFind $tech 1] [oa::LayerFind "
       "$tech 2]]",
       "via"},
      {"find", "oa::getName [oa::ViaDefFind $tech std]", "std"},
      {"all", "names [oa::getViaDefs $tech]", "std cust"},
      {"no implant", "list [oa::hasImplant1 $v] [oa::getName [oa::getLayer1 $v]]", "0 m1"},
  };
  check(cases);
}

} // namespace
