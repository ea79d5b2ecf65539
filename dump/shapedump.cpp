// Shapes, text displays among them.

#include "oadump.h"
#include "objectnames.h"

using namespace oa;

namespace {

typedef DumpEntries::Key Key;

void place(Key &key, const oaPoint &point) { key.place = {{point.x(), point.y(), 0, 0}}; }

void place(Key &key, const oaBox &box) { key.place = {{box.left(), box.bottom(), box.right(), box.top()}}; }

void place(Key &key, const oaPointArray &points) {
  if (points.getNumElements() > 0) {
    place(key, points[0]);
  }
}

void writeArc(DumpText &text, const oaArc *arc, Key &key) {
  oaBox box;
  arc->getEllipseBBox(box);
  text.box("ellipse", box).real("start", arc->getStartAngle()).real("stop", arc->getStopAngle());
  place(key, box);
}

void writeDonut(DumpText &text, const oaDonut *donut, Key &key) {
  oaPoint centre;
  donut->getCenter(centre);
  text.point("centre", centre).number("radius", donut->getRadius()).number("holeRadius", donut->getHoleRadius());
  place(key, centre);
}

void writeDot(DumpText &text, const oaDot *dot, Key &key) {
  oaPoint location;
  dot->getLocation(location);
  text.point("location", location).number("width", dot->getWidth()).number("height", dot->getHeight());
  place(key, location);
}

// Rectangles and ellipses.
void writeBoxed(DumpText &text, const oaShape *shape, Key &key) {
  oaBox box;
  shape->getBBox(box);
  text.box("box", box);
  place(key, box);
}

// Lines and polygons.
template <typename Chain> void writeChain(DumpText &text, const Chain *chain, Key &key) {
  oaPointArray points;
  chain->getPoints(points);
  text.points("points", points);
  place(key, points);
}

void writePath(DumpText &text, const oaPath *path, Key &key) {
  oaPointArray points;
  path->getPoints(points);
  text.number("width", path->getWidth()).word("style", path->getStyle().getName());
  text.number("beginExt", path->getBeginExt()).number("endExt", path->getEndExt()).points("points", points);
  place(key, points);
}

void writeSegEnd(DumpText &text, const char *which, oaEndStyle style, const oaDist (&lengths)[4]) {
  text.word(which, style.getName());
  if (style == oacTruncateEndStyle || style == oacExtendEndStyle || style == oacChamferEndStyle) {
    return; // the style and the width say everything
  }
  text.number("ext", lengths[0]);
  if (style == oacCustomEndStyle) {
    text.number("leftDiagExt", lengths[1]).number("rightDiagExt", lengths[2]).number("rightHalfWidth", lengths[3]);
  }
}

void writePathSeg(DumpText &text, const oaPathSeg *segment, Key &key) {
  oaPoint begin, end;
  segment->getPoints(begin, end);
  oaSegStyle style;
  segment->getStyle(style);
  oaDist lengths[4];
  text.number("width", style.getWidth()).point("begin", begin).point("end", end);
  style.getBeginExt(lengths[0], lengths[1], lengths[2], lengths[3]);
  writeSegEnd(text, "beginStyle", style.getBeginStyle(), lengths);
  style.getEndExt(lengths[0], lengths[1], lengths[2], lengths[3]);
  writeSegEnd(text, "endStyle", style.getEndStyle(), lengths);
  key.place = {{begin.x(), begin.y(), end.x(), end.y()}};
}

// Texts and text displays.
template <typename Text> void writeTextStyle(DumpText &text, const Text *shape, Key &key) {
  oaPoint origin;
  shape->getOrigin(origin);
  text.point("origin", origin).word("align", shape->getAlignment().getName());
  text.word("orient", shape->getOrient().getName()).word("font", shape->getFont().getName());
  text.number("height", shape->getHeight()).flag("overbar", shape->hasOverbar());
  text.flag("visible", shape->isVisible()).flag("drafting", shape->isDrafting());
  place(key, origin);
}

void writeText(DumpText &text, const oaText *shape, Key &key) {
  oaString string;
  shape->getText(string);
  text.quoted("text", string);
  writeTextStyle(text, shape, key);
}

// What the evaluator makes of the expression belongs to the session, not to the design.
void writeEvalText(DumpText &text, const oaEvalText *shape, Key &key) {
  oaString string;
  shape->getExpression(string);
  text.quoted("expression", string);
  shape->getEvaluatorName(string);
  text.quoted("evaluator", string);
  writeTextStyle(text, shape, key);
}

std::string attributeText(const oaAttrType &attribute, const oaObject *shown) {
  switch (oaTypeEnum(shown ? shown->getType() : oaType(oacUnknownType))) {
  case oacDesignType:
    return static_cast<const oaChar *>(oaDesignAttrType(attribute).getName());
  case oacScalarNetType:
  case oacBusNetType:
  case oacBusNetBitType:
  case oacBundleNetType:
    return static_cast<const oaChar *>(oaNetAttrType(attribute).getName());
  case oacScalarTermType:
  case oacBusTermType:
  case oacBusTermBitType:
  case oacBundleTermType:
    return static_cast<const oaChar *>(oaTermAttrType(attribute).getName());
  case oacScalarInstType:
  case oacArrayInstType:
  case oacVectorInstType:
  case oacVectorInstBitType:
    return static_cast<const oaChar *>(oaInstAttrType(attribute).getName());
  case oacInstTermType:
    return static_cast<const oaChar *>(oaInstTermAttrType(attribute).getName());
  default:
    return std::to_string(attribute.getRawValue());
  }
}

// What of the object is shown. The text that this makes follows from the object or from its master, hence is no content
// of its own, as long as the master can be read.
void writeShown(DumpText &text, const oaTextDisplay *display, const oaObject *shown) {
  oaString string;
  switch (oaTypeEnum(display->getType())) {
  case oacAttrDisplayType:
    text.word("attribute", attributeText(static_cast<const oaAttrDisplay *>(display)->getAttribute(), shown));
    break;
  case oacInstAttrDisplayType:
    text.word("masterAttribute", static_cast<const oaInstAttrDisplay *>(display)->getMasterAttribute().getName());
    break;
  case oacInstPropDisplayType:
    if (const oaProp *prop = static_cast<const oaInstPropDisplay *>(display)->getMasterProp()) {
      prop->getName(string);
      text.quoted("masterProp", string);
    } else {
      display->getText(string);
      text.quoted("lastText", string);
    }
    break;
  case oacTextOverrideType:
    static_cast<const oaTextOverride *>(display)->getMasterTextText(string);
    text.quoted("masterText", string);
    break;
  default:
    break;
  }
}

void writeDisplay(DumpText &text, const oaTextDisplay *display, const oaObject *shown, Key &key) {
  writeShown(text, display, shown);
  text.word("format", display->getFormat().getName());
  writeTextStyle(text, display, key);
}

const char *whatIs(oaTypeEnum type) {
  switch (type) {
  case oacArcType:
    return "arc";
  case oacDonutType:
    return "donut";
  case oacDotType:
    return "dot";
  case oacEllipseType:
    return "ellipse";
  case oacLineType:
    return "line";
  case oacPathType:
    return "path";
  case oacPathSegType:
    return "pathSeg";
  case oacPolygonType:
    return "polygon";
  case oacRectType:
    return "rect";
  case oacTextType:
    return "text";
  case oacEvalTextType:
    return "evalText";
  case oacPropDisplayType:
    return "propDisplay";
  case oacAttrDisplayType:
    return "attrDisplay";
  case oacTextOverrideType:
    return "textOverride";
  case oacInstPropDisplayType:
    return "instPropDisplay";
  case oacInstAttrDisplayType:
    return "instAttrDisplay";
  default:
    return "shape";
  }
}

// The attributes that this kind of shape has.
void writeKind(DumpText &text, const oaShape *shape, const oaObject *shown, Key &key) {
  const oaTypeEnum type = shape->getType();
  key.kind = type;
  switch (type) {
  case oacArcType:
    return writeArc(text, static_cast<const oaArc *>(shape), key);
  case oacDonutType:
    return writeDonut(text, static_cast<const oaDonut *>(shape), key);
  case oacDotType:
    return writeDot(text, static_cast<const oaDot *>(shape), key);
  case oacRectType:
  case oacEllipseType:
    return writeBoxed(text, shape, key);
  case oacLineType:
    return writeChain(text, static_cast<const oaLine *>(shape), key);
  case oacPolygonType:
    return writeChain(text, static_cast<const oaPolygon *>(shape), key);
  case oacPathType:
    return writePath(text, static_cast<const oaPath *>(shape), key);
  case oacPathSegType:
    return writePathSeg(text, static_cast<const oaPathSeg *>(shape), key);
  case oacTextType:
    return writeText(text, static_cast<const oaText *>(shape), key);
  case oacEvalTextType:
    return writeEvalText(text, static_cast<const oaEvalText *>(shape), key);
  case oacPropDisplayType:
  case oacAttrDisplayType:
  case oacTextOverrideType:
  case oacInstPropDisplayType:
  case oacInstAttrDisplayType:
    return writeDisplay(text, static_cast<const oaTextDisplay *>(shape), shown, key);
  default:
    text.word("type", oaType(type).getName());
    return writeBoxed(text, shape, key);
  }
}

// NULL for a display whose object is gone.
const oaObject *shownBy(const oaTextDisplay *display) {
  switch (oaTypeEnum(display->getType())) {
  case oacPropDisplayType:
    return static_cast<const oaPropDisplay *>(display)->getProp();
  case oacAttrDisplayType:
    return static_cast<const oaAttrDisplay *>(display)->getObject();
  case oacTextOverrideType:
    return static_cast<const oaTextOverride *>(display)->getInst();
  case oacInstPropDisplayType:
    return static_cast<const oaInstPropDisplay *>(display)->getInst();
  default:
    return static_cast<const oaInstAttrDisplay *>(display)->getInst();
  }
}

bool isDisplay(const oaShape *shape) {
  const oaTypeEnum type = shape->getType();
  return type >= oacPropDisplayType && type <= oacInstAttrDisplayType;
}

} // namespace

void oaDump::findDisplays() {
  oaIter<oaShape> shapes(block_->getShapes());
  while (oaShape *shape = shapes.getNext()) {
    if (isDisplay(shape)) {
      oaTextDisplay *display = static_cast<oaTextDisplay *>(shape);
      displays_[shownBy(display)].push_back(display);
    }
  }
}

const std::string &oaDump::netText(const oaNet *net) {
  std::string &text = netTexts_[net];
  if (text.empty()) {
    text = nameTextOf(net);
  }
  return text;
}

const std::string &oaDump::pinText(const oaPin *pin) {
  std::string &text = pinTexts_[pin];
  if (text.empty()) {
    oaString name;
    pin->getName(name);
    text = nameTextOf(pin->getTerm()) + '/';
    appendQuoted(text, name);
  }
  return text;
}

void oaDump::writeMembership(DumpText &text, const oaPinFig *figure) {
  if (const oaNet *net = figure->getNet()) {
    text.word("net", netText(net));
  } else if (const oaPin *pin = figure->getPin()) {
    text.word("pin", pinText(pin));
  }
}

void oaDump::writeShape(DumpEntries &entries, oaShape *shape, const oaObject *shown, int level) {
  DumpText &text = entries.text();
  Key key;
  key.layer = shape->getLayerNum();
  key.purpose = shape->getPurposeNum();
  text.begin(level, whatIs(shape->getType())).layer(key.layer, key.purpose);
  writeKind(text, shape, shown, key);
  writeMembership(text, shape);
  text.end();
  writeExtras(text, shape, level + 1);
  entries.add(key);
}

void oaDump::writeShapes() {
  DumpEntries entries;
  oaIter<oaShape> shapes(block_->getShapes());
  while (oaShape *shape = shapes.getNext()) {
    if (!isDisplay(shape)) {
      writeShape(entries, shape, nullptr, 1);
    }
  }
  writeSection("shapes", entries);
}

// A display may show a property that hangs on the display itself, and then no other object leads to it.
void oaDump::writeRemainingDisplays() {
  DumpEntries entries;
  const auto remaining = std::move(displays_);
  displays_.clear();
  for (const auto &shown : remaining) {
    for (oaTextDisplay *display : shown.second) {
      writeShape(entries, display, shown.first, 1);
    }
  }
  writeSection("displays", entries);
}
