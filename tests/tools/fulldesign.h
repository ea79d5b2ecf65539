#ifndef FULLDESIGN_H
#define FULLDESIGN_H

#include <oa/oaDesignDB.h>

#include <string>

// Designs with something in every table.
namespace fulldesign {

using namespace oa;

inline oaScalarName scalar(const std::string &text) { return oaScalarName(oaNativeNS(), text.c_str()); }
inline oaName native(const char *text) { return oaName(oaNativeNS(), text); }

inline oaPointArray bend() {
  oaPointArray points;
  points.append(oaPoint(0, 0));
  points.append(oaPoint(10, 0));
  points.append(oaPoint(10, 10));
  return points;
}

// Shapes of every class, on several layers.
inline void addShapes(oaBlock *block, oaPin *pin, oaNet *net) {
  for (oaCoord i = 0; i < 5; ++i) {
    oaRect::create(block, i % 3, 1, oaBox(i, 0, i + 10, 10))->addToNet(net);
    oaPolygon::create(block, 1, 1, bend());
    oaLine::create(block, 1, 1, bend());
    oaPath::create(block, 1, 1, 3, bend(), oacVariablePathStyle, 1, 2)->addToPin(pin);
    oaPath::create(block, 1, 1, 6, bend(), oacRoundPathStyle);
    oaPathSeg::create(block, 1, 1, oaPoint(0, 0), oaPoint(9, 9), oaSegStyle(4, oacExtendEndStyle, oacChamferEndStyle));
    oaEllipse::create(block, 1, 2, oaBox(0, 0, 20, 10));
    oaArc::create(block, 1, 1, oaBox(0, 0, 20, 20), 0.5, 2.5);
    oaDonut::create(block, 1, 1, oaPoint(0, 0), 10, 5);
    oaDot::create(block, 1, 1, oaPoint(1, 1), 2, 2);
    oaText::create(block, 1, 1, "text", oaPoint(0, 0), oacCenterLeftTextAlign, oacR90, oacRomanFont, 10)->addToPin(pin);
    oaEvalText::create(block, 1, 1, "[@cellName]", oaPoint(1, 2), oacLowerLeftTextAlign, oacR0, oacStickFont, 10,
                       oaString("evaluator"));
  }
}

inline void addProperties(oaObject *object) {
  const oaByte bytes[] = {1, 0, 2};
  const oaString colours[] = {"red", "green"};
  oaIntProp::create(oaHierProp::create(object, "tree"), "leaf", 1);
  oaIntProp::create(object, "int", 5);
  oaDoubleProp::create(object, "double", 0.5);
  oaFloatProp::create(object, "float", 0.25F);
  oaBooleanProp::create(object, "boolean", true);
  oaTimeProp::create(object, "time", 12345);
  oaStringProp::create(object, "string", "value");
  oaStringProp::create(object, "empty", "");
  oaAppProp::create(object, "app", "Tarnwickdale", sizeof bytes, bytes);
  oaEnumProp::create(object, "enum", "green", 2, colours);
  oaIntRangeProp::create(object, "intRange", -1, 0, 1);
  oaDoubleRangeProp::create(object, "doubleRange", -1, 0, 1);
}

// Nets and terminals of every kind of name.
inline void addNets(oaBlock *block) {
  oaNet *a = oaNet::create(block, native("A"));
  oaNet *d = oaNet::create(block, native("D[0:3]"));
  oaNet::create(block, native("D[7]"));
  oaNet *bundle = oaNet::create(block, native("A,2*D[1:0],E"));
  oaBusNetDef::create(block, scalar("unused"), oacDescendingBitOrder);
  oaTerm::create(a, native("A"))->setPosition(0);
  oaTerm::create(d, native("D[0:3]"), oacOutputTermType);
  oaTerm::create(bundle, native("P,2*Q[1:0],R"));
  oaBusTermDef::create(block, scalar("unused"), oacNoneBitOrder);
  oaScalarNet *b = oaScalarNet::create(block, scalar("B"), oacPowerSigType, true);
  static_cast<oaBitNet *>(a)->makeEquivalent(b);
  static_cast<oaBitNet *>(b)->makeEquivalent(oaScalarNet::create(block, scalar("C")));
}

// Instances of the master `cell` in the same library, and connections of every kind.
inline void addInsts(oaBlock *block, const std::string &lib, const std::string &cell) {
  const auto lay = scalar("layout");
  oaNet *a = oaNet::find(block, native("A")), *d = oaNet::find(block, native("D[0:3]"));
  oaInst *one = oaScalarInst::create(block, scalar(lib), scalar(cell), lay, scalar("I1"), oaTransform(5, 5));
  oaInst *byPosition = oaScalarInst::create(block, scalar(lib), scalar(cell), lay, scalar("I2"), oaTransform(9, 9));
  oaArrayInst::create(block, scalar(lib), scalar(cell), lay, scalar("ARR"), oaTransform(0, 0, oacR90), 10, 20, 3, 2);
  oaInst *row = oaVectorInst::create(block, scalar(lib), scalar(cell), lay, scalar("V"), 0, 1, oaTransform(50, 0));
  oaVectorInstBit::create(block, scalar(lib), scalar(cell), lay, scalar("V"), 7, oaTransform(60, 0));
  oaVectorInstDef::create(block, scalar("unused"), oacNoneBitOrder);
  oaScalarInst::create(block, scalar("elsewhere"), scalar("pad"), lay, scalar("PAD"), oaTransform(0, 0));
  oaInstTerm::create(a, one, native("A"));
  oaInstTerm::create(d, one, native("D[0:3]"));
  oaInstTerm::create(nullptr, one, native("X,2*Y"));
  oaInstTerm::create(d, row, native("E[1:0]"));
  oaInstTerm::create(oaNet::create(block, native("D[2:3]")), row, native("A"));
  oaInstTerm::create(a, byPosition, 0u);
  oaInstTerm::create(d, byPosition, 4u);
}

// `text` is one of the master of the instance I1.
inline void addDisplays(oaBlock *block, oaText *masterText) {
  const oaPoint at(0, 0);
  oaNet *a = oaNet::find(block, native("A"));
  oaInst *inst = oaInst::find(block, scalar("I1"));
  oaPropDisplay::create(oaProp::find(a, "int"), 1, 2, at, oacLowerLeftTextAlign, oacR0, oacStickFont, 10);
  oaAttrDisplay::create(a, oaNetAttrType(oacNameNetAttrType), 1, 2, at, oacLowerLeftTextAlign, oacR0, oacStickFont, 10);
  oaInstAttrDisplay::create(inst, oaDesignAttrType(oacCellNameDesignAttrType), 1, 2, at, oacLowerLeftTextAlign, oacR0,
                            oacStickFont, 10);
  oaTextOverride::create(masterText, inst, 1, 2, at, oacLowerLeftTextAlign, oacR0, oacStickFont, 10);
}

// A saved and closed design of two cells, `leaf` and `full`, in an open library.
inline void make(const std::string &lib) {
  const auto open = [&](const char *cell, char mode) {
    return oaDesign::open(scalar(lib), scalar(cell), scalar("layout"), oaViewType::get(oacMaskLayout), mode);
  };
  oaDesign *leaf = open("leaf", 'w');
  oaBlock *leafBlock = oaBlock::create(leaf);
  oaRect::create(leafBlock, 1, 2, oaBox(0, 0, 10, 10));
  oaText *text = oaText::create(leafBlock, 1, 2, "label", oaPoint(0, 0), oacLowerLeftTextAlign, oacR0, oacStickFont, 1);
  oaTerm::create(oaNet::create(leafBlock, native("A")), native("A"))->setPosition(0);
  leaf->save();

  oaDesign *full = open("full", 'w');
  oaBlock *block = oaBlock::create(full);
  full->setCellType(oacBlockCellType);
  addNets(block);
  oaNet *a = oaNet::find(block, native("A"));
  oaPin *pin = oaPin::create(oaTerm::find(block, native("A")), "p", oacTop);
  addShapes(block, pin, a);
  addInsts(block, lib, "leaf");
  for (oaObject *owner : {static_cast<oaObject *>(full), static_cast<oaObject *>(block), static_cast<oaObject *>(a)}) {
    addProperties(owner);
  }
  addDisplays(block, text);
  full->save();
  full->close();
  leaf->close();
}

} // namespace fulldesign

#endif
