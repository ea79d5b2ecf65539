#include "drawingsender.h"

#include <cstdio>

#include "hostsyntax.h"
#include "pointtext.h"
#include "schematiclayers.h"

using namespace oa;

namespace {

// The number of sides with which the kit converts donuts to polygons.
const oaUInt4 kDonutSides = 20;

const char kDefaultColour[] = "deviceColor";

unsigned int limitOf(int count) { return count > 0 ? unsigned(count) : 0; }

// Wraps for a place beyond the coordinates, instead of being undefined.
int moved(oaCoord from, oaInt8 distance) { return int(unsigned(from) + unsigned(distance)); }

int degreesOf(const oaOrient &orient) {
  switch (oaOrientEnum(orient)) {
  case oacR90:
    return 90;
  case oacR180:
    return 180;
  case oacR270:
    return 270;
  default:
    return 0;
  }
}

// Whether a block may have nets of several bits. Without any, wires do not have to be asked for theirs, which saves a
// good part of the time to read them.
bool mayHaveWideNets(const oaBlock *block) {
  return !block->getBusNetDefs().isEmpty() || !block->getNets(oacNetIterBundle).isEmpty();
}

// Single bits are told by their type, without a look at the net itself.
bool isWide(const oaNet *net) {
  const oaTypeEnum type = net->getType();
  return type != oacScalarNetType && type != oacBusNetBitType && net->getNumBits() > 1;
}

} // namespace

DrawingSender::DrawingSender(oaPlugInMain &host, WalkFaults &faults)
    : host_(host), faults_(faults), debug_(oaConvert::debug), layerLimit_(limitOf(host.layerMax)),
      typeKey_(QLatin1String("type")), symbolKey_(QLatin1String("symbol")),
      defaultColour_(QLatin1String(kDefaultColour)), hasWideNets_(true), layer_(0), hasProperties_(false),
      hasBusFlag_(false), shownColour_(&defaultColour_) {}

DrawingSender::~DrawingSender() {}

void DrawingSender::send(oaBlock *block) {
  hasWideNets_ = mayHaveWideNets(block);
  oaIter<oaShape> shapes(block->getShapes());
  while (oaShape *shape = shapes.getNext()) {
    faults_.guardObject([&] { sendShape(shape); });
  }
}

void DrawingSender::sendShape(oaShape *shape) {
  const oaTypeEnum type = shape->getType();
  const unsigned int layer = shape->getLayerNum(); // a negative number is large when read as unsigned
  layer_ = layer < layerLimit_ ? layer : 0;
  if (hasProperties_) {
    forgetProperties();
  }
  if (shape->hasProp()) {
    readProperties(shape);
  }
  switch (type) {
  case oacArcType:
    if (debug_) {
      std::printf("arc");
    }
    return sendArc(static_cast<oaArc *>(shape), *shownColour_);
  case oacDonutType:
    return sendDonut(static_cast<oaDonut *>(shape));
  case oacDotType:
    return sendDot(static_cast<oaDot *>(shape));
  case oacEllipseType:
    return sendEllipse(static_cast<oaEllipse *>(shape));
  case oacLineType:
    return sendLine(static_cast<oaLine *>(shape));
  case oacPathType:
    return sendPath(static_cast<oaPath *>(shape));
  case oacPathSegType:
    return sendPathSeg(static_cast<oaPathSeg *>(shape));
  case oacPolygonType:
    return sendPolygonShape(static_cast<oaPolygon *>(shape));
  case oacRectType:
    return sendRectShape(static_cast<oaRect *>(shape));
  case oacTextType:
    return sendTextShape(static_cast<oaText *>(shape));
  case oacEvalTextType:
    return sendEvalText(static_cast<oaEvalText *>(shape));
  case oacPropDisplayType:
  case oacAttrDisplayType:
  case oacTextOverrideType:
  case oacInstPropDisplayType:
  case oacInstAttrDisplayType:
    if (debug_) {
      std::printf("text other");
    }
    return;
  default:
    return sendUnsupported();
  }
}

void DrawingSender::forgetProperties() {
  hasProperties_ = false;
  hasBusFlag_ = false;
  shownColour_ = &defaultColour_;
  for (oaString *text : {&labelOffset_, &portType_, &portSymbol_}) {
    if (!text->isEmpty()) {
      *text = "";
    }
  }
}

void DrawingSender::readProperties(oaShape *shape) {
  hasProperties_ = true;
  oaIter<oaProp> properties(shape->getProps());
  while (const oaProp *property = properties.getNext()) {
    property->getName(propertyName_);
    oaString &value = valueOf(propertyName_);
    property->getValue(value);
    if (debug_) {
      std::printf("shape prop (%s): %s\n", static_cast<const oaChar *>(propertyName_),
                  static_cast<const oaChar *>(value));
    }
    if (&value == &colourValue_) {
      setColour();
    }
  }
}

// Where the value of a property belongs. The first character tells for nearly all names that mean nothing.
oaString &DrawingSender::valueOf(const oaString &name) {
  const oaChar *characters = name;
  switch (*characters) {
  case 'b':
    hasBusFlag_ = hasBusFlag_ || name == "bus";
    return otherValue_;
  case 'c':
    return name == "color" ? colourValue_ : otherValue_;
  case 'l':
    return name == "labelOffset" ? labelOffset_ : otherValue_;
  case 's':
    return name == "symbol" ? portSymbol_ : otherValue_;
  case 't':
    return name == "type" ? portType_ : otherValue_;
  default:
    return otherValue_;
  }
}

void DrawingSender::setColour() {
  if (colour_.isNull() || colourText_ != colourValue_) {
    colourText_ = colourValue_;
    colour_ = oaConvert::toString(colourValue_);
  }
  shownColour_ = &colour_;
}

void DrawingSender::sendDonut(oaDonut *donut) {
  if (debug_) {
    std::printf("donut");
  }
  donut->getBoundary(points_, kDonutSides);
  points_.compress(); // as the conversion does
  sendPolygon(polygon_.set(points_), *shownColour_);
}

void DrawingSender::sendDot(oaDot *dot) {
  if (debug_) {
    std::printf("dot");
  }
  oaPoint at;
  dot->getLocation(at);
  if (layer_ == schematiclayers::kPin) {
    return sendGround(dot, oaConvert::toPoint(at), *shownColour_);
  }
  if (layer_ == schematiclayers::kWire || dot->hasNet()) {
    return sendWireDot(dot, oaConvert::toPoint(at), *shownColour_);
  }
  const oaInt8 halfWidth = oaInt8(dot->getWidth()) / 2;
  const oaInt8 halfHeight = oaInt8(dot->getHeight()) / 2;
  sendRect(QPoint(moved(at.x(), -halfWidth), moved(at.y(), halfHeight)),
           QPoint(moved(at.x(), halfWidth), moved(at.y(), -halfHeight)), *shownColour_);
}

void DrawingSender::sendEllipse(oaEllipse *ellipse) {
  if (debug_) {
    std::printf("ellipse");
  }
  oaBox box;
  ellipse->getBBox(box);
  if (layer_ == schematiclayers::kWire || ellipse->hasNet()) {
    return sendWireDot(ellipse, centreOf(box), *shownColour_);
  }
  sendCircle(QPoint(box.left(), box.bottom()), QPoint(box.right(), box.top()), *shownColour_);
}

void DrawingSender::sendLine(oaLine *line) {
  if (debug_) {
    std::printf("line");
  }
  line->getPoints(points_);
  const QPolygon &points = polygon_.set(points_);
  const bool isOnWireLayer = layer_ == schematiclayers::kWire;
  if (isOnWireLayer && (hasBusFlag_ || !hasWideNets_)) { // whatever its net
    return sendWire(points, hasBusFlag_, *shownColour_);
  }
  if (const oaNet *net = line->getNet()) {
    return sendWire(points, hasBusFlag_ || isWide(net), *shownColour_);
  }
  if (isOnWireLayer) {
    return sendWire(points, hasBusFlag_, *shownColour_);
  }
  sendPolyline(points, *shownColour_);
}

// As the outline that the conversion would have. One without an area cannot be converted and is sent as it is.
void DrawingSender::sendPath(oaPath *path) {
  if (debug_) {
    std::printf("path");
  }
  oaPointArray outline;
  path->getBoundary(outline);
  outline.compress(points_);
  const QPolygon &points = polygon_.set(points_.getNumElements() < 3 ? outline : points_);
  if (const oaNet *net = path->getNet()) {
    return sendWire(points, isWide(net), *shownColour_);
  }
  sendPolygon(points, *shownColour_);
}

void DrawingSender::sendPathSeg(oaPathSeg *segment) {
  if (debug_) {
    std::printf("pathseg");
  }
  oaPoint begin;
  oaPoint end;
  segment->getPoints(begin, end);
  const QPolygon &points = polygon_.set(begin, end);
  if (const oaNet *net = segment->getNet()) {
    return sendWire(points, isWide(net), *shownColour_);
  }
  sendPolyline(points, *shownColour_);
}

void DrawingSender::sendPolygonShape(oaPolygon *polygon) {
  if (debug_) {
    std::printf("polygon");
  }
  polygon->getPoints(points_);
  if (points_.getNumElements() > 0) {
    const oaPoint first = points_[0];
    points_.append(first);
  }
  sendPolygon(polygon_.set(points_), *shownColour_);
}

void DrawingSender::sendRectShape(oaRect *rect) {
  if (debug_) {
    std::printf("box");
  }
  if (layer_ == schematiclayers::kPin) {
    return sendPortRect(rect);
  }
  oaBox box;
  rect->getBBox(box);
  sendRect(QPoint(box.left(), box.bottom()), QPoint(box.right(), box.top()), *shownColour_);
}

// A port takes its name from the terminal of its pin. The port of a global net has no pin: it is on the net itself.
void DrawingSender::sendPortRect(oaRect *rect) {
  oaBox box;
  rect->getBBox(box);
  const oaPin *pin = rect->getPin();
  if (const oaTerm *term = pin ? pin->getTerm() : nullptr) {
    term->getName(oaConvert::ns, text_);
    toHostName(text_);
    return sendPortAt(box, qtText_.set(text_));
  }
  const oaNet *net = rect->getNet();
  if (net && net->isGlobal()) {
    net->getName(oaConvert::ns, text_);
    sendPortAt(box, qtText_.set(text_));
    sendPortIsGlobal();
  }
}

void DrawingSender::sendPortAt(const oaBox &box, const QString &name) {
  sendPort(centreOf(box), name);
  if (!portType_.isEmpty()) {
    sendPortData(typeKey_, oaConvert::toString(portType_));
  }
  if (!portSymbol_.isEmpty()) {
    sendPortData(symbolKey_, oaConvert::toString(portSymbol_));
  }
}

void DrawingSender::sendTextShape(oaText *text) {
  text->getText(text_);
  if (debug_) {
    std::printf("text %s\n", static_cast<const oaChar *>(text_));
    std::printf("text-");
  }
  oaPoint origin;
  text->getOrigin(origin);
  if (layer_ == schematiclayers::kWire) {
    return sendWireLabel(oaConvert::toPoint(origin), qtText_.set(text_), pointOfText(labelOffset_), *shownColour_);
  }
  sendText(oaConvert::toPoint(origin), qtText_.set(text_), degreesOf(text->getOrient()), *shownColour_);
}

void DrawingSender::sendEvalText(oaEvalText *text) {
  text->getText(text_);
  if (debug_) {
    std::printf("text %s\n", static_cast<const oaChar *>(text_));
    std::printf("text");
  }
  oaPoint origin;
  text->getOrigin(origin);
  sendText(oaConvert::toPoint(origin), qtText_.set(text_), 0, *shownColour_);
}

void DrawingSender::sendUnsupported() {
  if (debug_) {
    std::printf("unsupported shape");
  }
  emit host_.reportError(oaPlugInMain::tr("unsupported shape(s)"), 1, QLatin1String(""));
}

QPoint DrawingSender::centreOf(const oaBox &box) {
  return QPoint(int((oaInt8(box.left()) + box.right()) / 2), int((oaInt8(box.bottom()) + box.top()) / 2));
}
