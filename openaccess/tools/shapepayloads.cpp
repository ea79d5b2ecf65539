#include "shapecheck.h"

#include "attributetext.h"
#include "boundaries.h"
#include "oa/oaDesignEnums.h"
#include "oa/oaFont.h"
#include "textstyle.h"

#include <cmath>
#include <cstring>

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

constexpr oaCoord kRoundingDbu = 1;

oaBox boxAround(const oaPoint *points, Row count) {
  oaBox box(points[0], points[0]);
  for (Row i = 1; i < count; ++i) {
    box.merge(points[i]);
  }
  return box;
}

oaBox boxOf(const oaPointArray &points) {
  oaBox box;
  points.getBBox(box);
  return box;
}

} // namespace

std::optional<ExpectedBox> ShapePayloads::check(std::uint8_t kind, Row payload) {
  switch (kind) {
  case oacPolygonType:
  case oacLineType:
    return outline(kind, payload);
  case oacPathType:
    return path(payload);
  case oacPathSegType:
    return segment(payload);
  case oacArcType:
    return arc(payload);
  case oacDonutType:
    return donut(payload);
  case oacDotType:
    return ExpectedBox{dotBox(design_.dots.dots[payload])};
  case oacTextType:
  case oacEvalTextType:
    return text(kind, payload);
  default:
    display(kind, payload);
    return {};
  }
}

bool ShapePayloads::checkPointCount(const Table &table, Row payload, Row count, Row least) const {
  if (count >= least) {
    return true;
  }
  check_.report().damage(table, payload, "points", [&] {
    return Fault{"has " + std::to_string(count) + " points", std::to_string(least) + " or more"};
  });
  return false;
}

std::optional<ExpectedBox> ShapePayloads::outline(std::uint8_t kind, Row payload) const {
  const PoolSpan span = design_.outlines.points[payload];
  if (!check_.isSoundSpan(design_.outlines.points, payload) ||
      !checkPointCount(design_.outlines, payload, span.count, kind == oacPolygonType ? 3 : 2)) {
    return {};
  }
  return ExpectedBox{boxAround(design_.points.points.span(span.begin, span.count), span.count)};
}

std::optional<ExpectedBox> ShapePayloads::path(Row payload) {
  const PathTable::Path path = design_.paths.paths[payload];
  check_.checkValue(design_.paths, payload, "paths", path.style, oaEnumNamesOf(oaPathStyleEnum()));
  if (path.style > oacVariablePathStyle || !check_.isSoundSpan(design_.paths.paths, payload) ||
      !checkPointCount(design_.paths, payload, path.points.count, 2)) {
    return {};
  }
  if (path.style != oacVariablePathStyle && (path.beginExtDbu != 0 || path.endExtDbu != 0)) {
    check_.report().damage(design_.paths, payload, "paths", "has extensions, which its style does not have",
                           "extensions of 0, or the variable style");
  }
  points_.setNumElements(path.points.count);
  std::memcpy(static_cast<void *>(&points_[0]), design_.points.points.span(path.points.begin, path.points.count),
              std::size_t(path.points.count) * sizeof(oaPoint));
  pathBoundary(points_, path.widthDbu, static_cast<oaPathStyleEnum>(path.style), path.beginExtDbu, path.endExtDbu,
               boundary_);
  return ExpectedBox{boxOf(boundary_), kRoundingDbu};
}

std::optional<ExpectedBox> ShapePayloads::segment(Row payload) {
  const PathSegTable::Segment segment = design_.pathSegs.segments[payload];
  bool isSound = true;
  for (const PathSegTable::End *end : {&segment.beginStyle, &segment.endStyle}) {
    check_.checkValue(design_.pathSegs, payload, "segments", end->style, oaEnumNamesOf(oaEndStyleEnum()));
    isSound = isSound && end->style <= oacCustomEndStyle;
  }
  if (!isSegDirection(segment.begin, segment.end)) {
    check_.report().damage(design_.pathSegs, payload, "segments", "has no length or a direction of its own",
                           "a segment along an axis or at 45 degrees");
    isSound = false;
  }
  if (segment.widthDbu % 2 != 0) {
    check_.report().damage(design_.pathSegs, payload, "segments", "has an odd width", "an even one");
  }
  if (!isSound) {
    return {};
  }
  segBoundary(segment, boundary_);
  return ExpectedBox{boxOf(boundary_), kRoundingDbu};
}

std::optional<ExpectedBox> ShapePayloads::arc(Row payload) const {
  const ArcTable::Arc arc = design_.arcs.arcs[payload];
  if (!std::isfinite(arc.startRadians) || !std::isfinite(arc.stopRadians)) {
    check_.report().damage(design_.arcs, payload, "arcs", "has an angle that is no number");
    return {};
  }
  if (arc.ellipse.left() >= arc.ellipse.right() || arc.ellipse.bottom() >= arc.ellipse.top()) {
    check_.report().damage(design_.arcs, payload, "arcs", "has an ellipse that is inverted or flat");
    return {};
  }
  return ExpectedBox{arcBox(arc), kRoundingDbu};
}

std::optional<ExpectedBox> ShapePayloads::donut(Row payload) const {
  const DonutTable::Donut donut = design_.donuts.donuts[payload];
  if (donut.holeRadiusDbu >= donut.radiusDbu) {
    check_.report().damage(design_.donuts, payload, "donuts", [&] {
      return Fault{"has a hole of radius " + std::to_string(donut.holeRadiusDbu),
                   "less than its radius " + std::to_string(donut.radiusDbu)};
    });
    return {};
  }
  return ExpectedBox{donutBox(donut, donut.radiusDbu)};
}

bool ShapePayloads::checkStyle(const Table &table, Row payload, const TextStyle &style) const {
  check_.checkValue(table, payload, "style", style.alignment, oaEnumNamesOf(oaTextAlignEnum()));
  check_.checkValue(table, payload, "style", style.orient, oaEnumNamesOf(oaOrientEnum()));
  check_.checkValue(table, payload, "style", style.font, oaEnumNamesOf(oaFontEnum()));
  constexpr unsigned kAllFlags = kTextOverbar | kTextVisible | kTextDrafting;
  if ((style.flags & ~kAllFlags) != 0) {
    check_.report().damage(table, payload, "style", [&] {
      return Fault{"has the flags " + std::to_string(style.flags), "less than 8"};
    });
  }
  return style.alignment <= oacLowerRightTextAlign && style.orient <= oacMXR90;
}

std::optional<ExpectedBox> ShapePayloads::text(std::uint8_t kind, Row payload) {
  // Texts that a million rows share are looked at a while, not for ever.
  constexpr std::uint64_t kMostBytes = std::uint64_t(1) << 30;
  const TextStyle style = design_.texts.style[payload];
  const Row text = design_.texts.text[payload];
  const bool isSound = checkStyle(design_.texts, payload, style) && check_.texts().isReadable(text);
  // What an evaluated text shows depends on the evaluator that was at hand when it was saved.
  if (!isSound || (kind == oacEvalTextType && design_.texts.evaluator[payload] != kNoRow) || textBytes_ > kMostBytes) {
    return {};
  }
  const std::string_view shown = check_.texts().view(text);
  textBytes_ += shown.size();
  return ExpectedBox{textBox(shown, style.origin, style.heightDbu, static_cast<oaTextAlignEnum>(style.alignment),
                             static_cast<oaOrientEnum>(style.orient), (style.flags & kTextOverbar) != 0)};
}

// The box of a display follows what it shows and is not kept up to date in the file.
void ShapePayloads::display(std::uint8_t kind, Row payload) const {
  const TextDisplayTable &displays = design_.textDisplays;
  checkStyle(displays, payload, displays.style[payload]);
  check_.checkEnum(displays, payload, displays.format, oaTextDisplayFormatEnum());
  checkShownObject(kind, payload);
}

void ShapePayloads::checkShownObject(std::uint8_t kind, Row payload) const {
  const TextDisplayTable &displays = design_.textDisplays;
  const std::uint16_t tableId = displays.objectTable[payload];
  const Table *table = design_.table(tableId);
  const Row object = displays.objectRow[payload];
  const bool isOfInst = kind == oacTextOverrideType || kind == oacInstPropDisplayType || kind == oacInstAttrDisplayType;
  const bool fits = kind == oacPropDisplayType ? tableId == kPropertyTable
                    : isOfInst                 ? tableId == kInstTable
                                               : table != nullptr && table->life() == TableLife::kinds;
  if (!fits) {
    check_.report().damage(displays, payload, "objectTable", [&] {
      return Fault{"is " + std::to_string(tableId), "the table of objects that such a display shows"};
    });
    return;
  }
  if (object == kNoRow) {
    check_.report().damage(displays, payload, "objectRow", "shows nothing", "an object");
    return;
  }
  if (!table->isAlive(object) || (kind != oacAttrDisplayType && kind != oacInstAttrDisplayType)) {
    return;
  }
  const oaTypeEnum type =
      kind == oacInstAttrDisplayType ? oacDesignType : static_cast<oaTypeEnum>(table->kindOf(object));
  const oaEnumNames *attributes = attributesOf(type);
  if (attributes == nullptr || !attributes->contains(displays.attribute[payload])) {
    check_.report().damage(displays, payload, "attribute", [&] {
      return Fault{"is " + std::to_string(displays.attribute[payload]), "an attribute of the object shown"};
    });
  }
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
