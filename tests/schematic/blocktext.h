#ifndef BLOCKTEXT_H
#define BLOCKTEXT_H

#include <sstream>
#include <string>

#include "schematictest.h"

// What a written block holds, one line for each object in creation order. Implicit objects are left out.
//
//     Line 228/-1 (0 0) (10 0) net A
//     Rect 229/-6 (-8 -8) (8 8) pin of A {type=input}
//     ScalarNet A, term A 2, pins 1
//     VectorInst I1[0:3] of lib/inv/symbol at (0 0) orient 1 {w=3}, A -> A,B
namespace blocktext {

template <typename Named> std::string nameOf(const Named *object) {
  oa::oaString name;
  object->getName(oaConvert::ns, name);
  return static_cast<const oa::oaChar *>(name);
}

inline std::string pinNameOf(const oa::oaPin *pin) {
  oa::oaString name;
  pin->getName(name);
  return static_cast<const oa::oaChar *>(name);
}

inline std::string typeOf(const oa::oaObject *object) {
  return static_cast<const oa::oaChar *>(object->getType().getName());
}

inline std::string pointText(const oa::oaPoint &point) {
  return "(" + std::to_string(point.x()) + " " + std::to_string(point.y()) + ")";
}

inline std::string propsText(const oa::oaObject *object) {
  std::string text;
  oa::oaIter<oa::oaProp> props(object->getProps());
  while (oa::oaProp *prop = props.getNext()) {
    oa::oaString name, value;
    prop->getName(name);
    prop->getValue(value);
    text += (text.empty() ? " {" : ", ") + std::string(name) + "=" + std::string(value);
  }
  return text.empty() ? text : text + "}";
}

inline std::string geometryOf(oa::oaShape *shape) {
  oa::oaPointArray points;
  if (shape->getType() == oa::oacLineType) {
    static_cast<oa::oaLine *>(shape)->getPoints(points);
  } else if (shape->getType() == oa::oacPolygonType) {
    static_cast<oa::oaPolygon *>(shape)->getPoints(points);
  } else {
    oa::oaBox box;
    shape->getBBox(box);
    points.append(box.lowerLeft());
    points.append(box.upperRight());
  }
  std::string text;
  for (oa::oaUInt4 i = 0; i < points.getNumElements(); ++i) {
    text += (i == 0 ? "" : " ") + pointText(points[i]);
  }
  return text;
}

inline std::string lettersOf(const oa::oaText *label) {
  oa::oaString string;
  label->getText(string);
  oa::oaPoint origin;
  label->getOrigin(origin);
  std::ostringstream text;
  text << '"' << static_cast<const oa::oaChar *>(string) << "\" " << pointText(origin) << " align "
       << int(oa::oaTextAlignEnum(label->getAlignment())) << " orient " << int(oa::oaOrientEnum(label->getOrient()))
       << " font " << int(oa::oaFontEnum(label->getFont())) << " height " << label->getHeight()
       << (label->isVisible() ? " visible" : "") << (label->isDrafting() ? " drafting" : "");
  return text.str();
}

inline std::string shapeText(oa::oaShape *shape) {
  const oa::oaTypeEnum type = shape->getType();
  const bool isText = type == oa::oacTextType || type == oa::oacEvalTextType;
  std::ostringstream text;
  text << typeOf(shape) << ' ' << shape->getLayerNum() << '/' << int(shape->getPurposeNum()) << ' '
       << (isText ? lettersOf(static_cast<oa::oaText *>(shape)) : geometryOf(shape));
  if (shape->hasNet()) {
    text << " net " << nameOf(shape->getNet());
  }
  if (oa::oaPin *pin = shape->getPin()) {
    text << " pin of " << nameOf(pin->getTerm());
  }
  return text.str() + propsText(shape);
}

inline Lines shapesOf(oa::oaBlock *block) {
  Lines lines;
  oa::oaIter<oa::oaShape> shapes(block->getShapes());
  while (oa::oaShape *shape = shapes.getNext()) {
    lines.push_back(shapeText(shape));
  }
  return lines;
}

inline Lines netsOf(oa::oaBlock *block) {
  Lines lines;
  oa::oaIter<oa::oaNet> nets(block->getNets());
  while (oa::oaNet *net = nets.getNext()) {
    std::ostringstream line;
    line << typeOf(net) << ' ' << nameOf(net) << (net->isGlobal() ? " global" : "");
    oa::oaIter<oa::oaTerm> terms(net->getTerms());
    while (oa::oaTerm *term = terms.getNext()) {
      line << ", term " << nameOf(term) << ' ' << int(oa::oaTermTypeEnum(term->getTermType())) << ", pins "
           << term->getPins().getCount();
    }
    lines.push_back(line.str());
  }
  return lines;
}

inline std::string instText(oa::oaInst *inst) {
  oa::oaString lib, cell, view;
  inst->getLibName(oaConvert::ns, lib);
  inst->getCellName(oaConvert::ns, cell);
  inst->getViewName(oaConvert::ns, view);
  oa::oaPoint origin;
  inst->getOrigin(origin);
  std::ostringstream text;
  text << typeOf(inst) << ' ' << nameOf(inst) << " of " << lib << '/' << cell << '/' << view << " at "
       << pointText(origin) << " orient " << int(oa::oaOrientEnum(inst->getOrient())) << propsText(inst);
  oa::oaIter<oa::oaInstTerm> instTerms(inst->getInstTerms());
  while (oa::oaInstTerm *instTerm = instTerms.getNext()) {
    oa::oaString term;
    instTerm->getTermName(oaConvert::ns, term);
    text << ", " << term << " -> " << (instTerm->getNet() ? nameOf(instTerm->getNet()) : std::string("nothing"));
  }
  return text.str();
}

inline Lines instsOf(oa::oaBlock *block) {
  Lines lines;
  oa::oaIter<oa::oaInst> insts(block->getInsts());
  while (oa::oaInst *inst = insts.getNext()) {
    lines.push_back(instText(inst));
  }
  return lines;
}

} // namespace blocktext

#endif
