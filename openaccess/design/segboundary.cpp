#include "boundaries.h"

#include "shapeaccess.h"

#include <cstdlib>

namespace OpenAccess_4 {
namespace kit {

namespace {

// A segment in its own units: database units when it is orthogonal, diagonal units when it is not. Along it, and to its
// left.
class Frame {
public:
  Frame(const oaPoint &begin, const oaPoint &end) {
    const std::int64_t dx = std::int64_t(end.x()) - begin.x();
    const std::int64_t dy = std::int64_t(end.y()) - begin.y();
    alongX_ = dx > 0 ? 1 : dx < 0 ? -1 : 0;
    alongY_ = dy > 0 ? 1 : dy < 0 ? -1 : 0;
    isDiagonal_ = dx != 0 && dy != 0;
  }
  bool isDiagonal() const { return isDiagonal_; }

  oaPoint at(const oaPoint &origin, double along, double left) const {
    // A diagonal unit leads half a database unit along each axis.
    const double unit = isDiagonal_ ? 0.5 : 1.0;
    return oaPoint(toCoord(origin.x() + unit * (alongX_ * along - alongY_ * left)),
                   toCoord(origin.y() + unit * (alongY_ * along + alongX_ * left)));
  }

private:
  int alongX_, alongY_;
  bool isDiagonal_;
};

// An end as lengths from its point: outwards, and to the left and right as seen along the segment. `leftCut` and
// `rightCut` say where the edges at 45 degrees cut the corners: the sum of both distances on the edge. Without cut
// corners they are not used.
struct EndShape {
  double ext;
  double leftHalf, rightHalf;
  bool isCut;
  double leftCut, rightCut;
};

EndShape endShape(const PathSegTable::End &end, std::uint32_t width, bool isDiagonal) {
  const double half = width / 2.0;
  EndShape shape = {0, half, half, false, 0, 0};
  switch (end.style) {
  case oacExtendEndStyle:
    shape.ext = half;
    break;
  case oacVariableEndStyle:
    shape.ext = end.extDbu;
    break;
  case oacChamferEndStyle:
    // 3/2 of the extension in diagonal units, or for diagonal segments 2/3 of it in database units, each of which is
    // two diagonal ones.
    shape.ext = half;
    shape.isCut = true;
    shape.leftCut = shape.rightCut = isDiagonal ? 2 * (2 * half / 3) : 3 * half / 2;
    break;
  case oacCustomEndStyle:
    shape.ext = end.extDbu;
    shape.rightHalf = end.rightHalfWidthDbu;
    shape.leftHalf = double(width) - end.rightHalfWidthDbu;
    shape.isCut = true;
    shape.leftCut = isDiagonal ? 2.0 * end.leftDiagExtDbu : end.leftDiagExtDbu;
    shape.rightCut = isDiagonal ? 2.0 * end.rightDiagExtDbu : end.rightDiagExtDbu;
    break;
  default:
    break;
  }
  return shape;
}

} // namespace

bool isSegDirection(const oaPoint &begin, const oaPoint &end) {
  const std::int64_t dx = std::abs(std::int64_t(end.x()) - begin.x());
  const std::int64_t dy = std::abs(std::int64_t(end.y()) - begin.y());
  return (dx != 0 || dy != 0) && (dx == 0 || dy == 0 || dx == dy);
}

void segBoundary(const PathSegTable::Segment &segment, oaPointArray &boundary) {
  const Frame frame(segment.begin, segment.end);
  const EndShape begin = endShape(segment.beginStyle, segment.widthDbu, frame.isDiagonal());
  const EndShape end = endShape(segment.endStyle, segment.widthDbu, frame.isDiagonal());
  boundary.setNumElements(0);
  const auto addBegin = [&](double out, double left) { boundary.append(frame.at(segment.begin, -out, left)); };
  const auto addEnd = [&](double out, double left) { boundary.append(frame.at(segment.end, out, left)); };
  if (begin.isCut) {
    addBegin(begin.ext, begin.leftCut - begin.ext);
    addBegin(begin.leftCut - begin.leftHalf, begin.leftHalf);
  } else {
    addBegin(begin.ext, begin.leftHalf);
  }
  if (end.isCut) {
    addEnd(end.leftCut - end.leftHalf, end.leftHalf);
    addEnd(end.ext, end.leftCut - end.ext);
    addEnd(end.ext, end.ext - end.rightCut);
    addEnd(end.rightCut - end.rightHalf, -end.rightHalf);
  } else {
    addEnd(end.ext, end.leftHalf);
    addEnd(end.ext, -end.rightHalf);
  }
  if (begin.isCut) {
    addBegin(begin.rightCut - begin.rightHalf, -begin.rightHalf);
    addBegin(begin.ext, begin.ext - begin.rightCut);
  } else {
    addBegin(begin.ext, -begin.rightHalf);
  }
}

PathSegTable::Segment toSegment(const oaPoint &begin, const oaPoint &end, const oaSegStyle &style) {
  PathSegTable::Segment segment{};
  segment.begin = begin;
  segment.end = end;
  segment.widthDbu = style.getWidth();
  const auto fill = [&](PathSegTable::End &to, oaEndStyleEnum kind, bool isBegin) {
    oaDist ext, left, right, half;
    if (isBegin) {
      style.getBeginExt(ext, left, right, half);
    } else {
      style.getEndExt(ext, left, right, half);
    }
    const bool hasExt = kind == oacVariableEndStyle || kind == oacCustomEndStyle;
    const bool isCustom = kind == oacCustomEndStyle;
    to = {std::uint32_t(kind), hasExt ? ext : 0, isCustom ? left : 0, isCustom ? right : 0, isCustom ? half : 0};
  };
  fill(segment.beginStyle, style.getBeginStyle(), true);
  fill(segment.endStyle, style.getEndStyle(), false);
  return segment;
}

} // namespace kit
} // namespace OpenAccess_4
