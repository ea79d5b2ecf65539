#include "samplecells.h"

#include <initializer_list>

using namespace oa;

namespace samples {

namespace {

oaParam boolean(const char *name, bool value) {
  oaParam param;
  param.setName(name);
  param.setBooleanVal(value);
  return param;
}

oaParamArray array(std::initializer_list<oaParam> params) {
  return oaParamArray(params.begin(), oaUInt4(params.size()));
}

std::vector<Cell> makeCells() {
  return {
      {"resistor",
       array({{"w", 1.0},
              {"l", 10.0},
              {"segments", 5},
              {"spacing", 0.8},
              {"contactSize", 0.4},
              {"contactSpacing", 0.4},
              {"contactEnclosure", 0.2},
              {"bodyLayer", kPoly},
              {"contactLayer", kContact},
              {"metalLayer", kMetal1}}),
       {{"defaults", array({})},
        {"wide, straight", array({{"w", 4.0}, {"segments", 1}})},
        {"narrow, 12 segments", array({{"w", 0.4}, {"segments", 12}, {"l", 15.0}})}}},
      {"mosTransistor",
       array({{"w", 2.0},
              {"l", 0.2},
              {"fingers", 2},
              boolean("contacts", true),
              boolean("gateContact", true),
              {"type", "nmos"},
              {"gateSpacing", 0.15},
              {"gateExtension", 0.3},
              {"wellEnclosure", 0.8},
              {"contactSize", 0.2},
              {"contactSpacing", 0.25},
              {"contactEnclosure", 0.1},
              {"activeLayer", kActive},
              {"polyLayer", kPoly},
              {"contactLayer", kContact},
              {"metalLayer", kMetal1},
              {"wellLayer", kNwell}}),
       {{"defaults", array({})},
        {"pmos, 8 fingers", array({{"type", "pmos"}, {"fingers", 8}, {"w", 5.0}})},
        {"bare, 1 finger", array({boolean("contacts", false), boolean("gateContact", false), {"fingers", 1}})}}},
      {"guardRing",
       array({{"innerWidth", 10.0},
              {"innerHeight", 6.0},
              {"ringWidth", 1.0},
              boolean("contacts", true),
              {"contactSize", 0.2},
              {"contactSpacing", 0.25},
              {"contactEnclosure", 0.1},
              {"activeLayer", kActive},
              {"contactLayer", kContact},
              {"metalLayer", kMetal1}}),
       {{"defaults", array({})},
        {"wide", array({{"innerWidth", 4.0}, {"innerHeight", 12.0}, {"ringWidth", 2.5}})},
        {"without contacts", array({boolean("contacts", false), {"ringWidth", 0.5}})}}},
      {"spiralInductor",
       array({{"turns", 3},
              {"width", 2.0},
              {"spacing", 1.0},
              {"innerDiameter", 30.0},
              boolean("octagonal", true),
              {"viaSize", 0.4},
              {"viaSpacing", 0.4},
              {"viaEnclosure", 0.2},
              {"metalLayer", kMetal2},
              {"viaLayer", kVia1},
              {"underpassLayer", kMetal1}}),
       {{"defaults", array({})},
        {"square", array({boolean("octagonal", false), {"turns", 4}})},
        {"6 tight turns", array({{"turns", 6}, {"width", 1.5}, {"spacing", 0.4}, {"innerDiameter", 16.0}})}}},
  };
} // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): it loses sight of the members of lists

} // namespace

const std::vector<Cell> &cells() {
  static const std::vector<Cell> all = makeCells();
  return all;
}

} // namespace samples
