// What makepcells defines and places.
#ifndef SAMPLECELLS_H
#define SAMPLECELLS_H

#include <oa/oaDesignDB.h>

#include <string>
#include <vector>

namespace samples {

// Layer numbers of the library's technology.
constexpr int kNwell = 1, kActive = 2, kPoly = 3, kContact = 4, kMetal1 = 5, kVia1 = 6, kMetal2 = 7;

/// Parameters that differ from the defaults.
struct Variant {
  const char *description;
  oa::oaParamArray parameters;
};

struct Cell {
  const char *evaluator;
  oa::oaParamArray defaults;
  std::vector<Variant> variants;
};

const std::vector<Cell> &cells();

} // namespace samples

#endif
