#include "shapecontents.h"

#include "boundaries.h"
#include "shapeaccess.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace OpenAccess_4 {
namespace kit {

namespace {

bool fits(std::int64_t value) {
  return value >= std::numeric_limits<oaCoord>::min() && value <= std::numeric_limits<oaCoord>::max();
}

// A transform that knows when coordinates overflow.
class CheckedTransform {
public:
  CheckedTransform(const oaTransform &xform, const std::string &label, oaUInt4 errorId)
      : orient_(xform.orient()), dx_(xform.xOffset()), dy_(xform.yOffset()), label_(label), errorId_(errorId) {}

  void operator()(oaPoint &point) const {
    std::int64_t x = point.x(), y = point.y();
    if ((orient_ & 4U) != 0) {
      x = -x;
    }
    for (unsigned turns = orient_ & 3U; turns != 0; --turns) {
      const std::int64_t old = x;
      x = -y;
      y = old;
    }
    x += dx_;
    y += dy_;
    if (!fits(x) || !fits(y)) {
      raiseDesign(errorId_, label_ + ": a transform would move (" + std::to_string(point.x()) + " " +
                                std::to_string(point.y()) + ") out of the range of coordinates");
    }
    point.set(static_cast<oaCoord>(x), static_cast<oaCoord>(y));
  }
  void operator()(oaBox &box) const {
    (*this)(box.lowerLeft());
    (*this)(box.upperRight());
    box.fix();
  }

private:
  unsigned orient_;
  std::int64_t dx_, dy_;
  const std::string &label_;
  oaUInt4 errorId_;
};

bool swapsAxes(oaOrientEnum orient) { return (orient & 1U) != 0; }
bool mirrors(oaOrientEnum orient) { return (orient & 4U) != 0; }

void transformArc(ArcTable::Arc &arc, oaOrientEnum orient) {
  double start = arc.startRadians, stop = arc.stopRadians;
  if (mirrors(orient)) {
    // About the y axis, which also turns the sense round.
    start = M_PI - arc.stopRadians;
    stop = M_PI - arc.startRadians;
  }
  if (orient != oacR0) {
    const double turn = (orient & 3U) * M_PI / 2;
    arc.startRadians = reducedAngle(start + turn);
    arc.stopRadians = reducedAngle(stop + turn);
  }
}

// Mirroring swaps left and right of a custom end.
void mirrorEnd(PathSegTable::End &end, std::uint32_t widthDbu) {
  if (end.style == oacCustomEndStyle) {
    std::swap(end.leftDiagExtDbu, end.rightDiagExtDbu);
    end.rightHalfWidthDbu = widthDbu - std::min(end.rightHalfWidthDbu, widthDbu);
  }
}

std::uint32_t scaledLength(std::uint32_t lengthDbu, double scale) {
  const double scaled = std::floor(lengthDbu * std::abs(scale) + 0.5);
  constexpr double kMax = std::numeric_limits<std::uint32_t>::max();
  return scaled >= kMax ? std::numeric_limits<std::uint32_t>::max() : static_cast<std::uint32_t>(scaled);
}

oaUInt4 nearestQuarterTurn(double angle) {
  return static_cast<oaUInt4>(std::lround(reducedAngle(angle) / (M_PI / 2))) % 4;
}

[[noreturn]] void raiseDegenerate(oaUInt4 id, const std::string &label) {
  raiseDesign(id, label + ": the shape would degenerate by scaling or turning");
}

} // namespace

void ShapeContents::transform(const oaTransform &xform, const std::string &label) {
  const CheckedTransform place(xform, label, oacInvalidPointsAfterTransform);
  const CheckedTransform placeBox(xform, label, oacInvalidBBoxAfterTransform);
  const oaOrientEnum orient = xform.orient();
  switch (kind) {
  case oacRectType:
  case oacEllipseType:
    placeBox(box);
    break;
  case oacPathSegType:
    place(segment.begin);
    place(segment.end);
    if (mirrors(orient)) {
      mirrorEnd(segment.beginStyle, segment.widthDbu);
      mirrorEnd(segment.endStyle, segment.widthDbu);
    }
    break;
  case oacArcType:
    placeBox(arc.ellipse);
    transformArc(arc, orient);
    break;
  case oacDonutType:
    place(donut.centre);
    break;
  case oacDotType:
    place(dot.location);
    if (swapsAxes(orient)) {
      std::swap(dot.widthDbu, dot.heightDbu);
    }
    break;
  default:
    for (oaUInt4 i = 0; i < points.getNumElements(); ++i) {
      place(points[i]);
    }
    if (points.getNumElements() == 0) { // texts and text displays
      place(style.origin);
      style.orient = static_cast<std::uint8_t>(oaOrient(static_cast<oaOrientEnum>(style.orient)).concat(orient));
    }
    break;
  }
}

void ShapeContents::transform(double scale, double angle, const std::string &label) {
  if (!std::isfinite(scale) || !std::isfinite(angle)) {
    raiseDegenerate(oacInvalidPointsAfterTransform, label);
  }
  const oaUInt4 quarterTurns = nearestQuarterTurn(angle);
  switch (kind) {
  case oacRectType:
  case oacEllipseType:
    box.transform(scale, angle);
    if (box.left() >= box.right() || box.bottom() >= box.top()) {
      raiseDegenerate(oacInvalidBBoxAfterTransform, label);
    }
    break;
  case oacPathSegType:
    segment.begin.transform(scale, angle);
    segment.end.transform(scale, angle);
    segment.widthDbu = 2 * scaledLength(segment.widthDbu / 2, scale);
    for (PathSegTable::End *end : {&segment.beginStyle, &segment.endStyle}) {
      for (std::uint32_t *length :
           {&end->extDbu, &end->leftDiagExtDbu, &end->rightDiagExtDbu, &end->rightHalfWidthDbu}) {
        *length = scaledLength(*length, scale);
      }
    }
    if (!isSegDirection(segment.begin, segment.end)) {
      raiseDegenerate(oacInvalidPointsAfterTransform, label);
    }
    break;
  case oacArcType:
    arc.ellipse.transform(scale, quarterTurns * M_PI / 2);
    arc.startRadians = reducedAngle(arc.startRadians + quarterTurns * M_PI / 2);
    arc.stopRadians = reducedAngle(arc.stopRadians + quarterTurns * M_PI / 2);
    if (arc.ellipse.left() >= arc.ellipse.right() || arc.ellipse.bottom() >= arc.ellipse.top()) {
      raiseDegenerate(oacInvalidBBoxAfterTransform, label);
    }
    break;
  case oacDonutType:
    donut.centre.transform(scale, angle);
    donut.radiusDbu = scaledLength(donut.radiusDbu, scale);
    donut.holeRadiusDbu = scaledLength(donut.holeRadiusDbu, scale);
    if (donut.holeRadiusDbu >= donut.radiusDbu) {
      raiseDegenerate(oacInvalidBBoxAfterTransform, label);
    }
    break;
  case oacDotType:
    dot.location.transform(scale, angle);
    dot.widthDbu = scaledLength(dot.widthDbu, scale);
    dot.heightDbu = scaledLength(dot.heightDbu, scale);
    if (quarterTurns % 2 != 0) {
      std::swap(dot.widthDbu, dot.heightDbu);
    }
    break;
  case oacPathType:
    path.widthDbu = scaledLength(path.widthDbu, scale);
    path.beginExtDbu = scaledLength(path.beginExtDbu, scale);
    path.endExtDbu = scaledLength(path.endExtDbu, scale);
    points.transform(scale, angle);
    if (points.hasExtraPoints(false)) {
      raiseDegenerate(oacInvalidPointsAfterTransform, label);
    }
    break;
  case oacPolygonType:
  case oacLineType:
    points.transform(scale, angle);
    if (kind == oacPolygonType && points.hasExtraPoints()) {
      raiseDegenerate(oacInvalidPointsAfterTransform, label);
    }
    break;
  default: // texts and text displays
    style.origin.transform(scale, angle);
    style.heightDbu = scaledLength(style.heightDbu, scale);
    style.orient = static_cast<std::uint8_t>(
        oaOrient(static_cast<oaOrientEnum>(style.orient)).concat(oaOrient(static_cast<oaOrientEnum>(quarterTurns))));
    break;
  }
}

} // namespace kit
} // namespace OpenAccess_4
