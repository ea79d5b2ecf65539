#ifndef OAKIT_STDVIAMASTER_H
#define OAKIT_STDVIAMASTER_H

// Masters of standard vias: designs that live in memory only and hold the rectangles that a definition's layers and a
// set of parameters make. Equal parameters give the same design, as long as it is open.

#include "oa/oaTypes.h"
#include "oa/oaViaParam.h"

#include <string>

namespace OpenAccess_4 {

class oaDesign;
class oaStdViaDef;

namespace kit {

class DesignDatabase;

// Everything that a master is made from.
struct StdViaMaster {
  std::string key; // of the look-up of open masters
  oaViaParam params;
  oaLayerNum layer1 = 0, layer2 = 0;
  bool hasImplant1 = false, hasImplant2 = false;
  oaLayerNum implant1 = 0, implant2 = 0;
  oaDist gridDbu = 0; // that cut arrays are snapped to; 0: none

  StdViaMaster() = default;
  StdViaMaster(const StdViaMaster &) = delete;
  StdViaMaster &operator=(const StdViaMaster &) = delete;
  // The master is not found any more.
  ~StdViaMaster();
};

// The master for the definition and these effective values; its count goes up. Raises oacRectBBoxInvalid when it would
// leave the range of coordinates, and oacNotYetSupported for more than kMaxViaCuts cuts.
oaDesign *openStdViaMaster(const oaStdViaDef *definition, const oaViaParam &params);
// Fills an empty design.
void drawStdVia(DesignDatabase &design, const StdViaMaster &master);

} // namespace kit
} // namespace OpenAccess_4

#endif
