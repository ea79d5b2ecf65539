// What the example evaluators draw, in numbers worked out by hand from their defaults in samplecells.cpp, and what they
// refuse. Coordinates are database units, 1000 a micrometre.

#include "evaluatortest.h"

#include <cmath>
#include <gmock/gmock.h>

namespace {

using namespace evaluatortest;
using testing::ElementsAre;
using testing::HasSubstr;

using Evaluators = EvaluatorTest;

struct Expected {
  const char *layer;
  std::vector<const char *> boxes;
};

struct GeometryCase {
  const char *name, *evaluator;
  oaParamArray parameters;
  std::vector<Expected> layers;
  std::vector<const char *> pins; // terminal, layer, box
};

std::vector<GeometryCase> geometryCases() {
  return {
      {"three segments",
       "resistor",
       array({{"segments", 3}}),
       {{"poly",
         {"0 0 1000 10000", "1000 9000 1800 10000", "1800 0 2800 10000", "2800 0 3600 1000", "3600 0 4600 10000",
          "0 -800 1000 0", "3600 10000 4600 10800"}},
        {"contact", {"300 -600 700 -200", "3900 10200 4300 10600"}},
        {"metal1", {"0 -800 1000 0", "3600 10000 4600 10800"}}},
       {"A metal1 0 -800 1000 0", "B metal1 3600 10000 4600 10800"}},
      {"heads wider than segments point outwards",
       "resistor",
       array({{"segments", 2}, {"w", 0.4}}),
       {{"poly", {"0 0 400 10000", "400 9600 1200 10000", "1200 0 1600 10000", "-400 -800 400 0", "1200 -800 2000 0"}},
        {"contact", {"-200 -600 200 -200", "1400 -600 1800 -200"}},
        {"metal1", {"-400 -800 400 0", "1200 -800 2000 0"}}},
       {"A metal1 -400 -800 400 0", "B metal1 1200 -800 2000 0"}},
      {"two fingers",
       "mosTransistor",
       array({{"w", 1.0}}),
       {{"active", {"0 0 1800 1000"}},
        {"contact",
         {"100 175 300 375", "100 625 300 825", "800 175 1000 375", "800 625 1000 825", "1500 175 1700 375",
          "1500 625 1700 825", "575 1400 775 1600", "1025 1400 1225 1600"}},
        {"metal1", {"0 0 400 1000", "700 0 1100 1000", "1400 0 1800 1000", "450 1300 1350 1700"}},
        {"poly", {"450 -300 650 1300", "1150 -300 1350 1300", "450 1300 1350 1700"}}},
       {"S metal1 0 0 400 1000", "S metal1 1400 0 1800 1000", "D metal1 700 0 1100 1000",
        "G metal1 450 1300 1350 1700"}},
      {"without contacts, in a well",
       "mosTransistor",
       array({{"fingers", 1}, {"type", "pmos"}, boolean("contacts", false), boolean("gateContact", false)}),
       {{"nwell", {"-800 -800 1500 2800"}}, {"active", {"0 0 700 2000"}}, {"poly", {"250 -300 450 2300"}}},
       {"S active 0 0 250 2000", "D active 450 0 700 2000", "G poly 250 -300 450 2300"}},
      {"bar wider than its finger",
       "mosTransistor",
       array({{"fingers", 1}, boolean("contacts", false)}),
       {{"active", {"0 0 700 2000"}},
        {"poly", {"250 -300 450 2300", "150 2300 550 2700"}},
        {"contact", {"250 2400 450 2600"}},
        {"metal1", {"150 2300 550 2700"}}},
       {"S active 0 0 250 2000", "D active 450 0 700 2000", "G metal1 150 2300 550 2700"}},
      {"contacts all around, those of different sides apart",
       "guardRing",
       array({{"innerWidth", 1.0}, {"innerHeight", 1.3}, {"ringWidth", 0.5}}),
       {{"active", {"-500 -500 1500 0", "-500 1300 1500 1800", "-500 0 0 1300", "1000 0 1500 1300"}},
        {"metal1", {"-500 -500 1500 0", "-500 1300 1500 1800", "-500 0 0 1300", "1000 0 1500 1300"}},
        {"contact",
         {"-275 -350 -75 -150", "175 -350 375 -150", "625 -350 825 -150", "1075 -350 1275 -150", "-275 1450 -75 1650",
          "175 1450 375 1650", "625 1450 825 1650", "1075 1450 1275 1650", "-350 325 -150 525", "-350 775 -150 975",
          "1150 325 1350 525", "1150 775 1350 975"}}},
       {"RING metal1 -500 -500 1500 0"}},
      {"without contacts",
       "guardRing",
       array({{"innerWidth", 2.0}, {"innerHeight", 1.0}, {"ringWidth", 0.2}, boolean("contacts", false)}),
       {{"active", {"-200 -200 2200 0", "-200 1000 2200 1200", "-200 0 0 1000", "2000 0 2200 1000"}}},
       {"RING active -200 -200 2200 0"}},
      {"square",
       "spiralInductor",
       array({{"turns", 2}, boolean("octagonal", false)}),
       {{"metal2",
         {"2000 wide: 16000 -1000, 16000 16000, -16000 16000, -16000 -16000, 19000 -16000, 19000 19000, -19000 19000, "
          "-19000 -19000, 25000 -19000"}},
        {"metal1", {"15000 -1000 25000 1000"}},
        {"via1", {"15400 -600 15800 -200", "16200 -600 16600 -200", "15400 200 15800 600", "16200 200 16600 600"}}},
       {"A metal2 23000 -20000 25000 -18000", "B metal1 23000 -1000 25000 1000"}},
      // Diagonals of the first turn at 22628, the least whole number above 16000 times the square root of 2; those of
      // the second one 4243 farther out.
      {"octagonal",
       "spiralInductor",
       array({{"turns", 2}, {"viaSize", 1.0}}),
       {{"metal2",
         {"2000 wide: 16000 -1000, 16000 6628, 6628 16000, -6628 16000, -16000 6628, -16000 -6628, -6628 -16000, "
          "6628 -16000, 19000 -3628, 19000 7871, 7871 19000, -7871 19000, -19000 7871, -19000 -7871, -7871 -19000, "
          "25000 -19000"}},
        {"metal1", {"15000 -1000 25000 1000"}},
        {"via1", {"15500 -500 16500 500"}}},
       {"A metal2 23000 -20000 25000 -18000", "B metal1 23000 -1000 25000 1000"}},
  };
}

TEST_F(Evaluators, DrawWhatTheParametersSay) {
  makeTechnology();
  for (const GeometryCase &c : geometryCases()) {
    SCOPED_TRACE(std::string(c.evaluator) + ": " + c.name);
    oaDesign *const design = evaluate(c.evaluator, c.parameters);
    ASSERT_TRUE(design->getTopBlock()) << testing::PrintToString(errors());
    std::map<std::string, std::multiset<std::string>> expectedLayers;
    for (const Expected &layer : c.layers) {
      expectedLayers[layer.layer] = {layer.boxes.begin(), layer.boxes.end()};
    }
    EXPECT_EQ(shapesByLayer(design), expectedLayers);
    EXPECT_EQ(pinsOf(design), std::multiset<std::string>(c.pins.begin(), c.pins.end()));
    design->close();
  }
}

TEST_F(Evaluators, RefuseWhatCannotBeDrawn) {
  makeTechnology();
  const struct {
    const char *evaluator;
    oaParamArray parameters;
    const char *message;
  } cases[] = {
      {"resistor", array({{"w", 0.0}}), "w is 0, expected at least 0.01"},
      {"resistor", array({{"w", -1.0}}), "w is -1, expected at least 0.01"},
      {"resistor", array({{"w", std::nan("")}}), "w is nan, expected at least 0.01"},
      {"resistor", array({{"l", HUGE_VAL}}), "l is inf, expected at most 10000"},
      {"resistor", array({{"l", 1.5}}), "l is 1.5, expected at least 1.8"},
      {"resistor", array({{"segments", 0}}), "segments is 0, expected at least 1"},
      {"resistor", array({{"segments", 10001}}), "segments is 10001, expected at most 10000"},
      {"resistor", array({{"contactEnclosure", -0.1}}), "contactEnclosure is -0.1, expected at least 0"},
      {"resistor", array({{"bodyLayer", -1}}), "bodyLayer is -1, expected at least 0"},
      // The 215th segment.
      {"resistor", array({{"w", 5000.0}, {"spacing", 5000.0}, {"l", 10000.0}, {"segments", 300}}),
       "the figures reach 2150000000 database units from the origin, expected at most 2147483647"},
      {"mosTransistor", array({{"w", 0.3}}), "w is 0.3, expected at least 0.4"},
      {"mosTransistor", array({{"contactEnclosure", 0.2}}), "contactEnclosure is 0.2, expected at most 0.15"},
      {"mosTransistor", array({{"type", "cmos"}}), "type is \"cmos\", expected nmos or pmos"},
      // 1001 columns of 499990, and 25475 above the gates.
      {"mosTransistor", array({{"w", 10000.0}, {"fingers", 1000}, {"contactSize", 0.01}, {"contactSpacing", 0.01}}),
       "contactSize and contactSpacing give 500515465 contacts, expected at most 1000000"},
      {"guardRing", array({{"ringWidth", 0.3}}), "ringWidth is 0.3, expected at least 0.4"},
      {"spiralInductor", array({{"innerDiameter", 10.0}}), "innerDiameter is 10, expected at least 23"},
      {"spiralInductor", array({{"innerDiameter", 5.9}, boolean("octagonal", false)}),
       "innerDiameter is 5.9, expected at least 6"},
      {"spiralInductor", array({{"width", 0.6}}), "width is 0.6, expected at least 0.8"},
      {"spiralInductor", array({{"turns", 1001}}), "turns is 1001, expected at most 1000"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.message);
    oaDesign *const design = evaluate(c.evaluator, c.parameters);
    EXPECT_FALSE(design->getTopBlock());
    EXPECT_THAT(takeErrors(), ElementsAre(HasSubstr(c.message)));
    design->close();
  }
}

// Whoever defines the super master chooses names and types; the kit only checks that given ones agree.
TEST_F(Evaluators, RefuseAnotherListOfParameters) {
  makeTechnology();
  const struct {
    const char *name;
    oaParam parameter;
    const char *message;
  } cases[] = {
      {"segments", {"segments", 3.0}, "parameter segments is of type doubleParam, expected intParam"},
      {"w", {"w", "1"}, "parameter w is of type stringParam, expected doubleParam"},
      {"spacing", {"otherSpacing", 1.0}, "parameter spacing is missing"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.message);
    oaParamArray defaults = defaultsOf("resistor");
    for (oaUInt4 i = 0; i < defaults.getNumElements(); ++i) {
      oaString name;
      defaults[i].getName(name);
      defaults[i] = name == c.name ? c.parameter : defaults[i];
    }
    defineSuperMaster("resistor", defaults);
    oaDesign *const design = openSubMaster("resistor", oaParamArray());
    EXPECT_FALSE(design->getTopBlock());
    EXPECT_THAT(takeErrors(), ElementsAre(HasSubstr(c.message)));
    design->close();
  }
}

TEST_F(Evaluators, LengthsMayBeOfAnyNumericType) {
  makeTechnology();
  oaParamArray defaults = defaultsOf("guardRing");
  defaults[0] = oaParam("innerWidth", 3);
  defaults[1] = oaParam("innerHeight", 2.5F);
  defaults[3] = oaParam("contacts", 0);
  defineSuperMaster("guardRing", defaults);
  oaDesign *const design = openSubMaster("guardRing", oaParamArray());
  ASSERT_TRUE(design->getTopBlock()) << testing::PrintToString(errors());
  EXPECT_EQ(pinsOf(design), std::multiset<std::string>{"RING active -1000 -1000 4000 0"});
  EXPECT_EQ(shapesByLayer(design)["active"].count("3000 0 4000 2500"), 1U);
  design->close();
}

// Lengths that lie between grid points, and arrays with an odd amount of room around them.
TEST_F(Evaluators, KeepToTheManufacturingGrid) {
  constexpr int kGrid = 35;
  makeTechnology(1000, kGrid);
  const struct {
    const char *evaluator;
    oaParamArray parameters;
  } cases[] = {
      {"resistor", array({{"w", 1.013}, {"l", 10.007}, {"contactSize", 0.317}})},
      {"mosTransistor", array({{"w", 2.013}, {"l", 0.189}, {"fingers", 3}})},
      {"guardRing", array({{"innerWidth", 10.123}, {"ringWidth", 0.777}})},
      {"spiralInductor", array({{"width", 2.013}, {"spacing", 0.987}, {"innerDiameter", 40.425}, {"viaSize", 0.333}})},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.evaluator);
    oaDesign *const design = evaluate(c.evaluator, c.parameters);
    ASSERT_TRUE(design->getTopBlock()) << testing::PrintToString(errors());
    EXPECT_THAT(coordinatesOf(design), testing::Each(testing::ResultOf([](int c) { return c % kGrid; }, 0)));
    design->close();
  }
  // What the grid alone forbids, and a length that is rounded: 29 steps of 35.
  oaDesign *const tiny = evaluate("resistor", array({{"w", 0.02}}));
  EXPECT_THAT(takeErrors(), ElementsAre(HasSubstr("w is 0.02, expected at least 0.035")));
  tiny->close();
  oaDesign *const rounded = evaluate("resistor", array({{"w", 1.013}, {"segments", 1}}));
  EXPECT_EQ(shapesByLayer(rounded)["poly"].count("0 0 1015 10010"), 1U);
  rounded->close();
} // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): it loses sight of the members of lists

TEST_F(Evaluators, FollowTheUnitsOfTheTechnology) {
  makeTechnology(2000);
  oaDesign *const design = evaluate("resistor", array({{"segments", 1}}));
  EXPECT_EQ(shapesByLayer(design)["poly"].count("0 0 2000 20000"), 1U);
  design->close();
}

TEST_F(Evaluators, DrawWithoutATechnology) {
  oaDesign *const design = evaluate("resistor", array({{"segments", 1}}));
  ASSERT_TRUE(design->getTopBlock()) << testing::PrintToString(errors());
  EXPECT_EQ(pinsOf(design), (std::multiset<std::string>{"A 5 0 -800 1000 0", "B 5 0 10000 1000 10800"}));
  design->close();
}

// Gaps between the turns, and between them and the inner end, at bounds and with many turns.
TEST_F(Evaluators, TurnsKeepTheirDistance) {
  makeTechnology();
  const struct {
    double width, spacing, innerDiameter;
    int turns;
    bool isOctagonal;
  } cases[] = {
      {2, 1, 23, 3, true}, {1, 5, 43, 2, true},      {6, 0.5, 51.5, 4, true},    {0.82, 0.013, 6.7, 30, true},
      {2, 1, 6, 3, false}, {0.9, 7, 15.8, 4, false}, {5, 0.01, 10.02, 2, false},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(std::to_string(c.width) + ' ' + std::to_string(c.spacing));
    oaDesign *const design = evaluate("spiralInductor", array({{"width", c.width},
                                                               {"spacing", c.spacing},
                                                               {"innerDiameter", c.innerDiameter},
                                                               {"turns", c.turns},
                                                               boolean("octagonal", c.isOctagonal)}));
    ASSERT_TRUE(design->getTopBlock()) << testing::PrintToString(takeErrors());
    EXPECT_GE(leastGapOfPath(design), std::round(c.spacing * 1000));
    design->close();
  }
}

} // namespace
