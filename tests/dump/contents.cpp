#include "contents.h"

#include <algorithm>
#include <functional>
#include <vector>

using namespace oa;

namespace {

typedef std::vector<std::function<void()>> Steps;

void run(Steps steps, Contents::Order order) {
  if (order == Contents::Order::backwards) {
    std::reverse(steps.begin(), steps.end());
  }
  for (const auto &step : steps) {
    step();
  }
}

const oaPurposeNum kDrawing = 0xffffffffU;

oaVectorName busName(const char *base, oaUInt4 start, oaUInt4 stop) { return {scalar(base), start, stop}; }

} // namespace

oaPointArray pointsOf(std::initializer_list<oaPoint> points) {
  return oaPointArray(points.begin(), static_cast<oaUInt4>(points.size()));
}

Contents::Contents(oaBlock *blockIn, Order order) : block(blockIn) {
  makeNets(order);
  makeTermsAndInsts(order);
  makeConnections(order);
  makeShapes(order);
  makeProps();
  makeDisplays(order);
}

void Contents::makeNets(Order order) {
  run({[&] { net = oaScalarNet::create(block, scalar("a")); }, [&] { spare = oaScalarNet::create(block, scalar("b")); },
       [&] { twin = oaScalarNet::create(block, scalar("c")); },
       [&] { netDef = oaBusNetDef::create(block, scalar("D"), oacAscendingBitOrder); },
       [&] { bus = oaBusNet::create(block, busName("D", 0, 3)); },
       [&] { bit = oaBusNetBit::create(block, scalar("E"), 7); }},
      order);
  oaBundleName name(scalar("a"), 2);
  name.append(busName("D", 0, 1));
  bundle = oaBundleNet::create(block, name);
  spare->makeEquivalent(twin);
}

void Contents::makeTermsAndInsts(Order order) {
  run({[&] { term = oaTerm::create(net, named("in"), oacInputTermType); },
       [&] { termDef = oaBusTermDef::create(block, scalar("T"), oacDescendingBitOrder); },
       [&] { busTerm = oaBusTerm::create(bus, busName("T", 0, 3)); },
       [&] { instDef = oaVectorInstDef::create(block, scalar("V"), oacAscendingBitOrder); },
       [&] {
         inst = oaScalarInst::create(block, scalar("lib"), scalar("inv"), scalar("layout"), scalar("I1"),
                                     oaTransform(10, 20, oacR90));
       },
       [&] {
         byPosition =
             oaScalarInst::create(block, scalar("other"), scalar("inv"), scalar("layout"), scalar("I2"), oaTransform());
       },
       [&] {
         array = oaArrayInst::create(block, scalar("lib"), scalar("inv"), scalar("layout"), scalar("I3"), oaTransform(),
                                     30, 40, 2, 3);
       },
       [&] {
         vector = oaVectorInst::create(block, scalar("lib"), scalar("inv"), scalar("layout"), scalar("V"), 0, 2,
                                       oaTransform());
       },
       [&] {
         instBit = oaVectorInstBit::create(block, scalar("lib"), scalar("inv"), scalar("layout"), scalar("W"), 5,
                                           oaTransform());
       }},
      order);
}

void Contents::makeConnections(Order order) {
  run({[&] { pin = oaPin::create(term, "p1", oacTop | oacLeft); }, [&] { oaPin::create(term, "p2"); },
       [&] { instTerm = oaInstTerm::create(net, inst, named("A")); },
       [&] { oaInstTerm::create(spare, inst, named("B")); },
       [&] { positionTerm = oaInstTerm::create(net, byPosition, 10); },
       [&] { oaInstTerm::create(spare, byPosition, 9); }},
      order);
}

void Contents::makeShapes(Order order) {
  const oaSegStyle style(6, oacVariableEndStyle, oacExtendEndStyle, 4);
  run({[&] { arc = oaArc::create(block, 1, kDrawing, oaBox(0, 0, 40, 20), 0.5, 1.5); },
       [&] { donut = oaDonut::create(block, 1, kDrawing, oaPoint(50, 50), 20, 10); },
       [&] { dot = oaDot::create(block, 1, kDrawing, oaPoint(7, 8), 2, 4); },
       [&] { ellipse = oaEllipse::create(block, 1, kDrawing, oaBox(0, 0, 30, 10)); },
       [&] {
         line = oaLine::create(block, 1, kDrawing, pointsOf({{0, 0}, {5, 0}, {5, 5}}));
       },
       [&] {
         path =
             oaPath::create(block, 1, kDrawing, 4, pointsOf({{0, 0}, {50, 0}, {50, 90}}), oacVariablePathStyle, 1, 2);
       },
       [&] { pathSeg = oaPathSeg::create(block, 1, kDrawing, oaPoint(0, 0), oaPoint(80, 0), style); },
       [&] {
         polygon = oaPolygon::create(block, 2, 3, pointsOf({{0, 0}, {9, 0}, {0, 9}}));
       },
       [&] { rect = oaRect::create(block, 2, 3, oaBox(0, 0, 10, 5)); },
       [&] { pinRect = oaRect::create(block, 2, 3, oaBox(-20, 0, 10, 5)); },
       [&] { text = oaText::create(block, 2, 3, "in", oaPoint(1, 2), oacLowerLeftTextAlign, oacR0, oacRomanFont, 12); },
       [&] {
         evalText = oaEvalText::create(block, 2, 3, "[@x]", oaPoint(3, 4), oacLowerLeftTextAlign, oacR0, oacRomanFont,
                                       12, "evaluator");
       },
       [&] { oaRect::create(block, 10, kDrawing, oaBox(0, 0, 1, 1)); },
       [&] { oaRect::create(block, 2, 3, oaBox(5, 0, 10, 5)); }},
      order);
  rect->addToNet(net);
  pinRect->addToPin(pin);
}

void Contents::makeProps() {
  const oaString values[] = {"fast", "slow"};
  const oaByte bytes[] = {0, 255, 16};
  intProp = oaIntProp::create(rect, "count", 3);
  intRange = oaIntRangeProp::create(rect, "ranged", 1, 2, 3);
  floatProp = oaFloatProp::create(rect, "single", 0.1F);
  floatRange = oaFloatRangeProp::create(rect, "singleRange", 0, 1, 2);
  doubleProp = oaDoubleProp::create(rect, "double", 0.1);
  doubleRange = oaDoubleRangeProp::create(rect, "doubleRange", 0, 1, 2);
  booleanProp = oaBooleanProp::create(rect, "flag", true);
  timeProp = oaTimeProp::create(rect, "time", 1000000000);
  stringProp = oaStringProp::create(rect, "string", "say \"hi\"\n");
  enumProp = oaEnumProp::create(rect, "speed", "fast", 2, values);
  appProp = oaAppProp::create(rect, "blob", "mine", 3, bytes);
  hierProp = oaHierProp::create(rect, "group");
  oaIntProp::create(hierProp, "inner", 1);
}

void Contents::makeDisplays(Order order) {
  run({[&] {
         propDisplay = oaPropDisplay::create(intProp, 230, kDrawing, oaPoint(1, 1), oacLowerLeftTextAlign, oacR0,
                                             oacStickFont, 12, oacNameValueTextDisplayFormat);
       },
       [&] {
         attrDisplay = oaAttrDisplay::create(net, oaNetAttrType(oacNameNetAttrType), 230, kDrawing, oaPoint(2, 2),
                                             oacLowerLeftTextAlign, oacR0, oacStickFont, 12, oacValueTextDisplayFormat);
       },
       [&] {
         oaAttrDisplay::create(net, oaNetAttrType(oacSigTypeNetAttrType), 230, kDrawing, oaPoint(2, 1),
                               oacLowerLeftTextAlign, oacR0, oacStickFont, 12);
       }},
      order);
}
