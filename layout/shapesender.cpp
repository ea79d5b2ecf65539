#include "shapesender.h"

#include <cstdio>
#include <cstring>

using namespace oa;

namespace {

// The numbers of sides with which the kit converts these shapes to polygons.
const oaUInt4 kEllipseSides = 32;
const oaUInt4 kDonutSides = 20;

// The host's path caps; a variable path is a flush one with extensions.
const int kFlushCaps = 0;
const int kRoundCaps = 1;
const int kExtendedCaps = 2;

// Shows the name of the instance that places the cell, so it means nothing inside the cell.
const char kInstanceNameExpression[] = "[@instanceName]";

const unsigned int kShapesPerDebugLine = 1000;

unsigned int limitOf(int count) { return count > 0 ? unsigned(count) : 0; }

// Wraps for a distance that does not fit the signal's type, instead of being undefined.
int distance(oaCoord from, oaCoord to) { return int(unsigned(to) - unsigned(from)); }

// How far a path segment reaches beyond one of its points. False when a plain path cannot say it.
bool extensionOf(oaEndStyle style, oaDist width, oaDist variableExt, oaDist &extension) {
  switch (oaEndStyleEnum(style)) {
  case oacTruncateEndStyle:
    extension = 0;
    return true;
  case oacExtendEndStyle:
    extension = width / 2;
    return true;
  case oacVariableEndStyle:
    extension = variableExt;
    return true;
  default:
    return false;
  }
}

} // namespace

ShapeSender::ShapeSender(oaPlugInMain &host)
    : host_(host), addBox_(host, "addBox(int,int,int,int,int,int)"), addPolygon_(host, "addPolygon(QPolygon,int,int)"),
      addPath_(host, "addPath(QPolygon,int,int,int,int,int,int)"),
      addText_(host, "addText(QString,QPoint,int,int,int,int,QString)"), debug_(oaConvert::debug),
      layerLimit_(limitOf(host.layerMax)), datatypeLimit_(limitOf(host.datatypeMax)) {
  for (int orient = 0; orient < 8; ++orient) {
    trans_[orient] = oaConvert::toTrans(oaOrient(oaOrientEnum(orient)));
  }
}

// In the loop itself, because most layouts consist of little else.
inline void ShapeSender::sendRect(oaRect *rect) {
  const int layer = layerOf(rect);
  const int datatype = datatypeOf(rect);
  if (debug_) {
    std::printf("box %d %d,", layer, datatype);
  }
  oaBox box;
  rect->getBBox(box);
  emit addBox_(box.left(), box.bottom(), distance(box.left(), box.right()), distance(box.bottom(), box.top()), layer,
               datatype);
}

void ShapeSender::sendShapes(oaBlock *block) {
  unsigned int count = 0;
  oaIter<oaShape> shapes(block->getShapes());
  while (oaShape *shape = shapes.getNext()) {
    const oaTypeEnum type = shape->getType();
    if (type == oacRectType) {
      sendRect(static_cast<oaRect *>(shape));
    } else {
      sendShape(shape, type);
    }
    if (debug_ && ++count % kShapesPerDebugLine == 0) {
      std::printf("\n");
    }
  }
}

void ShapeSender::sendShape(oaShape *shape, oaTypeEnum type) {
  switch (type) {
  case oacDotType:
    return sendDot(static_cast<oaDot *>(shape));
  case oacPolygonType:
    return sendPolygon(static_cast<oaPolygon *>(shape));
  case oacEllipseType:
    return sendEllipse(static_cast<oaEllipse *>(shape));
  case oacDonutType:
    return sendDonut(static_cast<oaDonut *>(shape));
  case oacPathType:
    return sendPath(static_cast<oaPath *>(shape));
  case oacPathSegType:
    return sendPathSeg(static_cast<oaPathSeg *>(shape));
  case oacLineType:
    return sendLine(static_cast<oaLine *>(shape));
  case oacArcType:
    return sendArc(static_cast<oaArc *>(shape));
  case oacTextType:
    return sendText(static_cast<oaText *>(shape));
  case oacEvalTextType:
    return sendEvalText(static_cast<oaEvalText *>(shape));
  case oacPropDisplayType:
  case oacAttrDisplayType:
  case oacTextOverrideType:
  case oacInstPropDisplayType:
  case oacInstAttrDisplayType:
    return sendTextDisplay(static_cast<oaTextDisplay *>(shape));
  default:
    return sendUnsupported(shape);
  }
}

void ShapeSender::sendDot(oaDot *dot) {
  if (debug_) {
    std::printf("dot,");
  }
  oaPoint location;
  dot->getLocation(location);
  const int width = int(dot->getWidth());
  const int height = int(dot->getHeight());
  emit addBox_(distance(width / 2, location.x()), distance(height / 2, location.y()), width, height, layerOf(dot),
               datatypeOf(dot));
}

void ShapeSender::sendPolygon(oaPolygon *polygon) {
  if (debug_) {
    std::printf("polygon,");
  }
  polygon->getPoints(points_);
  emitPolygon(polygon);
}

void ShapeSender::sendEllipse(oaEllipse *ellipse) {
  if (debug_) {
    std::printf("ellipse,");
  }
  ellipse->getBoundary(points_, kEllipseSides);
  emitPolygon(ellipse);
}

void ShapeSender::sendDonut(oaDonut *donut) {
  if (debug_) {
    std::printf("donut,");
  }
  donut->getBoundary(points_, kDonutSides);
  emitPolygon(donut);
}

void ShapeSender::sendPath(oaPath *path) {
  if (debug_) {
    std::printf("path,");
  }
  path->getPoints(points_);
  const QPolygon &points = polygon_.set(points_);
  switch (oaPathStyleEnum(path->getStyle())) {
  case oacRoundPathStyle:
    return emitPath(path, points, path->getWidth(), kRoundCaps, 0, 0);
  case oacExtendPathStyle:
    return emitPath(path, points, path->getWidth(), kExtendedCaps, 0, 0);
  case oacVariablePathStyle:
    return emitPath(path, points, path->getWidth(), kFlushCaps, path->getBeginExt(), path->getEndExt());
  default:
    return emitPath(path, points, path->getWidth(), kFlushCaps, 0, 0);
  }
}

// Widths and extensions of diagonal segments are counted in diagonal units, so those are no plain paths unless they
// have no width.
void ShapeSender::sendPathSeg(oaPathSeg *segment) {
  if (debug_) {
    std::printf("path seg,");
  }
  oaSegStyle style;
  segment->getStyle(style);
  const oaDist width = style.getWidth();
  oaDist beginExt = 0;
  oaDist endExt = 0;
  bool isPath = extensionOf(style.getBeginStyle(), width, style.getBeginExt(), beginExt) &&
                extensionOf(style.getEndStyle(), width, style.getEndExt(), endExt);
  isPath = isPath && (segment->isOrthogonal() || (width == 0 && beginExt == 0 && endExt == 0));
  if (!isPath) {
    segment->getBoundary(points_);
    return emitPolygon(segment);
  }
  oaPoint begin;
  oaPoint end;
  segment->getPoints(begin, end);
  const bool isExtended = style.getBeginStyle() == oacExtendEndStyle && style.getEndStyle() == oacExtendEndStyle;
  emitPath(segment, polygon_.set(begin, end), width, isExtended ? kExtendedCaps : kFlushCaps, isExtended ? 0 : beginExt,
           isExtended ? 0 : endExt);
}

void ShapeSender::sendLine(oaLine *line) {
  if (debug_) {
    std::printf("line,");
  }
  line->getPoints(points_);
  emitPath(line, polygon_.set(points_), 0, kFlushCaps, 0, 0);
}

void ShapeSender::sendArc(oaArc *arc) {
  if (debug_) {
    std::printf("arc,");
  }
  arc->getPoints(points_);
  emitPath(arc, polygon_.set(points_), 0, kFlushCaps, 0, 0);
}

void ShapeSender::sendText(oaText *text) {
  text->getText(text_);
  if (debug_) {
    std::printf("text  \"%s\", ", static_cast<const oaChar *>(text_));
  }
  emitText(text, labelOf(text));
}

void ShapeSender::sendEvalText(oaEvalText *text) {
  text->getText(text_);
  if (debug_) {
    std::printf("eval text  \"%s\",", static_cast<const oaChar *>(text_));
  }
  if (std::strcmp(text_, kInstanceNameExpression) != 0) {
    emitText(text, labelOf(text));
  }
}

void ShapeSender::sendTextDisplay(oaTextDisplay *display) {
  display->getText(text_);
  if (debug_) {
    std::printf("text  \"%s\", ", static_cast<const oaChar *>(text_));
  }
  emitText(display, labelOf(display));
}

void ShapeSender::sendUnsupported(oaShape *shape) {
  if (debug_) {
    std::printf("unsupported shape");
  }
  emit host_.reportError(oaPlugInMain::tr("unsupported shape(s)"), 1, oaConvert::toString(shape->getType().getName()));
}

template <typename Text> ShapeSender::Label ShapeSender::labelOf(const Text *text) const {
  Label label;
  text->getOrigin(label.origin);
  label.height = text->getHeight();
  label.presentation = oaConvert::toTextPresentation(text->getAlignment());
  label.trans = &transOf(text->getOrient());
  return label;
}

// Sends `text_`.
void ShapeSender::emitText(oaShape *shape, const Label &label) {
  emit addText_(qtText_.set(text_), QPoint(label.origin.x(), label.origin.y()), int(label.height), layerOf(shape),
                datatypeOf(shape), label.presentation, *label.trans);
}

// Sends `points_`.
void ShapeSender::emitPolygon(oaShape *shape) {
  emit addPolygon_(polygon_.set(points_), layerOf(shape), datatypeOf(shape));
}

void ShapeSender::emitPath(oaShape *shape, const QPolygon &points, oaDist width, int caps, oaDist beginExt,
                           oaDist endExt) {
  emit addPath_(points, layerOf(shape), datatypeOf(shape), int(width), caps, int(beginExt), int(endExt));
}

void ShapeSender::sendPinLabels(oaBlock *block) {
  oaIter<oaTerm> terms(block->getTerms());
  while (oaTerm *term = terms.getNext()) {
    term->getName(oaConvert::ns, text_);
    oaIter<oaPin> pins(term->getPins());
    while (oaPin *pin = pins.getNext()) {
      oaIter<oaPinFig> figs(pin->getFigs());
      while (oaPinFig *fig = figs.getNext()) {
        sendPinLabel(fig);
      }
    }
  }
}

// Sends `text_` at a text's own origin and height, and in the middle of any other figure, with height 0: the figure has
// none.
void ShapeSender::sendPinLabel(oaPinFig *fig) {
  if (debug_) {
    std::printf("term:  \"%s\",", static_cast<const oaChar *>(text_));
  }
  oaPoint origin;
  oaDist height = 0;
  const oaTypeEnum type = fig->getType();
  if (type == oacTextType || type == oacEvalTextType) {
    const oaText *text = static_cast<oaText *>(fig);
    text->getOrigin(origin);
    height = text->getHeight();
  } else if (fig->isTextDisplay()) {
    const oaTextDisplay *display = static_cast<oaTextDisplay *>(fig);
    display->getOrigin(origin);
    height = display->getHeight();
  } else {
    oaBox box;
    fig->getBBox(box);
    origin.set(oaCoord((oaInt8(box.left()) + box.right()) / 2), oaCoord((oaInt8(box.bottom()) + box.top()) / 2));
  }
  const oaShape *shape = fig->isShape() ? static_cast<oaShape *>(fig) : nullptr; // a via or an instance has no layer
  emit addText_(qtText_.set(text_), QPoint(origin.x(), origin.y()), int(height), shape ? layerOf(shape) : 0,
                shape ? datatypeOf(shape) : 0, 0, QString());
}
