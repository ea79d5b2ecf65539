#ifndef SCHEMATICLAYERS_H
#define SCHEMATICLAYERS_H

#include <oa/oaDesignDB.h>

// Layer and purpose numbers of schematics and symbols. They are written as numbers; no technology has to name them.
namespace schematiclayers {

// Wires, buses, wire dots and wire labels.
constexpr oa::oaLayerNum kWire = 228;
// Ports and ground symbols.
constexpr oa::oaLayerNum kPin = 229;
constexpr oa::oaLayerNum kEvaluatedText = 230;
// What is only drawn.
constexpr oa::oaLayerNum kDevice = 231;
// Rectangles that outline an instance.
constexpr oa::oaLayerNum kInstance = 236;

// -1 and -6 as the host's signed numbers: what conducts, and everything else.
constexpr oa::oaPurposeNum kConnectivity = 0xFFFFFFFFu;
constexpr oa::oaPurposeNum kDrawn = 0xFFFFFFFAu;

} // namespace schematiclayers

#endif
