#ifndef CONTENTS_H
#define CONTENTS_H

#include "dumptest.h"

// One object of each kind and of each form, built into an empty block. Objects that do not need each other are made in
// one order or the other.
class Contents {
public:
  enum class Order { forwards, backwards };
  explicit Contents(oa::oaBlock *blockIn, Order order = Order::forwards);

  oa::oaBlock *block;

  oa::oaScalarNet *net, *spare, *twin;
  oa::oaBusNet *bus;
  oa::oaBundleNet *bundle;
  oa::oaBusNetBit *bit;
  oa::oaBusNetDef *netDef;
  oa::oaBusTermDef *termDef;
  oa::oaVectorInstDef *instDef;
  oa::oaTerm *term, *busTerm;
  oa::oaPin *pin;
  oa::oaScalarInst *inst, *byPosition;
  oa::oaArrayInst *array;
  oa::oaVectorInst *vector;
  oa::oaVectorInstBit *instBit;
  oa::oaInstTerm *instTerm, *positionTerm;

  oa::oaArc *arc;
  oa::oaDonut *donut;
  oa::oaDot *dot;
  oa::oaEllipse *ellipse;
  oa::oaLine *line;
  oa::oaPath *path;
  oa::oaPathSeg *pathSeg;
  oa::oaPolygon *polygon;
  oa::oaRect *rect, *pinRect;
  oa::oaText *text;
  oa::oaEvalText *evalText;
  oa::oaPropDisplay *propDisplay;
  oa::oaAttrDisplay *attrDisplay;

  oa::oaIntProp *intProp;
  oa::oaIntRangeProp *intRange;
  oa::oaFloatProp *floatProp;
  oa::oaFloatRangeProp *floatRange;
  oa::oaDoubleProp *doubleProp;
  oa::oaDoubleRangeProp *doubleRange;
  oa::oaBooleanProp *booleanProp;
  oa::oaTimeProp *timeProp;
  oa::oaStringProp *stringProp;
  oa::oaEnumProp *enumProp;
  oa::oaAppProp *appProp;
  oa::oaHierProp *hierProp;

private:
  void makeNets(Order order);
  void makeTermsAndInsts(Order order);
  void makeConnections(Order order);
  void makeShapes(Order order);
  void makeDisplays(Order order);
  // Properties keep the order of their creation.
  void makeProps();
};

oa::oaPointArray pointsOf(std::initializer_list<oa::oaPoint> points);

#endif
