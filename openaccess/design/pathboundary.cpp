#include "boundaries.h"

#include "shapeaccess.h"

#include <cmath>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

namespace {

struct Vector {
  double x, y;
};

Vector operator+(const Vector &a, const Vector &b) { return {a.x + b.x, a.y + b.y}; }
Vector operator*(const Vector &a, double factor) { return {a.x * factor, a.y * factor}; }
Vector leftOf(const Vector &direction) { return {-direction.y, direction.x}; }

oaPoint rounded(const Vector &place) { return oaPoint(toCoord(place.x), toCoord(place.y)); }

// The centre line without repeated points, and the directions between its points.
struct CentreLine {
  std::vector<Vector> points;
  std::vector<Vector> directions; // unit vectors, one less than points

  explicit CentreLine(const oaPointArray &given) {
    for (oaUInt4 i = 0; i < given.getNumElements(); ++i) {
      const Vector point = {double(given[i].x()), double(given[i].y())};
      if (!points.empty()) {
        const Vector step = point + points.back() * -1.0;
        const double length = std::hypot(step.x, step.y);
        if (length == 0) {
          continue;
        }
        directions.push_back(step * (1.0 / length));
      }
      points.push_back(point);
    }
  }
};

// One side of a path: the centre line shifted to the left by `offset` (negative: to the right).
class Side {
public:
  Side(const CentreLine &line, double offset) : line_(line), offset_(offset) {}

  // Where the sides of the neighbouring segments meet at an inner point. Where the line turns back on itself they never
  // do: each then ends where it is, and `second` differs from the result.
  Vector corner(std::size_t index, Vector &second) const {
    const Vector before = leftOf(line_.directions[index - 1]);
    const Vector after = leftOf(line_.directions[index]);
    const double cosine = before.x * after.x + before.y * after.y;
    constexpr double kTurnsBack = 1e-9;
    if (1.0 + cosine < kTurnsBack) {
      second = line_.points[index] + after * offset_;
      return line_.points[index] + before * offset_;
    }
    second = line_.points[index] + (before + after) * (offset_ / (1.0 + cosine));
    return second;
  }
  // The side at an end of the line, `along` further out.
  Vector begin(double along) const {
    return line_.points.front() + line_.directions.front() * -along + leftOf(line_.directions.front()) * offset_;
  }
  Vector end(double along) const {
    return line_.points.back() + line_.directions.back() * along + leftOf(line_.directions.back()) * offset_;
  }

private:
  const CentreLine &line_;
  double offset_;
};

void appendInner(const Side &side, std::size_t points, bool isForward, oaPointArray &boundary) {
  for (std::size_t step = 1; step + 1 < points; ++step) {
    const std::size_t index = isForward ? step : points - 1 - step;
    Vector second;
    const oaPoint first = rounded(side.corner(index, second));
    const oaPoint last = rounded(second);
    boundary.append(isForward ? first : last);
    if (first != last) {
      boundary.append(isForward ? last : first);
    }
  }
}

} // namespace

void pathBoundary(const oaPointArray &points, oaDist width, oaPathStyleEnum style, oaDist beginExt, oaDist endExt,
                  oaPointArray &boundary) {
  const CentreLine line(points);
  boundary.setNumElements(0);
  if (line.points.size() < 2) {
    return;
  }
  const double leftHalf = width / 2;
  const double rightHalf = width - leftHalf;
  const double begin = style == oacExtendPathStyle ? leftHalf : style == oacVariablePathStyle ? beginExt : 0;
  const double end = style == oacExtendPathStyle ? leftHalf : style == oacVariablePathStyle ? endExt : 0;
  const Side left(line, leftHalf), right(line, -rightHalf);
  // A round end is three sides of an octagon: its extension and its middle edge are a third of the width each.
  const double cap = width / 3.0;
  const Side leftCap(line, leftHalf - cap), rightCap(line, cap - rightHalf);
  const bool isRound = style == oacRoundPathStyle && width != 0;

  boundary.setSize(static_cast<oaUInt4>(2 * line.points.size() + (isRound ? 4 : 0)));
  if (isRound) {
    boundary.append(rounded(leftCap.begin(cap)));
  }
  boundary.append(rounded(left.begin(begin)));
  appendInner(left, line.points.size(), true, boundary);
  boundary.append(rounded(left.end(end)));
  if (isRound) {
    boundary.append(rounded(leftCap.end(cap)));
    boundary.append(rounded(rightCap.end(cap)));
  }
  boundary.append(rounded(right.end(end)));
  appendInner(right, line.points.size(), false, boundary);
  boundary.append(rounded(right.begin(begin)));
  if (isRound) {
    boundary.append(rounded(rightCap.begin(cap)));
  }
}

} // namespace kit
} // namespace OpenAccess_4
