#include "gdsflattener.h"

#include "shapegeometry.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr qint64 kMaxWork = 4000000;
constexpr std::size_t kMaxDepth = 1000;

// Sines of whole quarter turns come out exact, so that an orthogonal part of a magnified hierarchy stays orthogonal.
void sineAndCosine(double degrees, double &sine, double &cosine) {
  const double reduced = std::remainder(degrees, 360.0);
  const double quarters = std::round(reduced / 90.0);
  if (std::fabs(reduced - quarters * 90.0) < 1e-9) {
    constexpr double kSines[] = {0, 1, 0, -1};
    const int turn = (static_cast<int>(quarters) + 4) % 4;
    sine = kSines[turn];
    cosine = kSines[(turn + 1) % 4];
    return;
  }
  sine = std::sin(reduced * kPi / 180);
  cosine = std::cos(reduced * kPi / 180);
}

} // namespace

PlaneTransform PlaneTransform::ofReference(const GdsElement &reference, double stepX, double stepY) {
  double sine = 0;
  double cosine = 1;
  sineAndCosine(reference.angleDegrees, sine, cosine);
  const double mag = reference.magnification;
  const double flip = reference.mirrored ? -1 : 1;
  const QPoint &origin = reference.points.front();
  return {mag * cosine,       -mag * sine * flip, mag * sine, mag * cosine * flip,
          origin.x() + stepX, origin.y() + stepY, mag};
}

PlaneTransform PlaneTransform::after(const PlaneTransform &inner) const {
  return {xx * inner.xx + xy * inner.yx,      xx * inner.xy + xy * inner.yy,      yx * inner.xx + yy * inner.yx,
          yx * inner.xy + yy * inner.yy,      xx * inner.dx + xy * inner.dy + dx, yx * inner.dx + yy * inner.dy + dy,
          magnification * inner.magnification};
}

double PlaneTransform::mapAngle(double angleDegrees) const {
  const double turnDegrees = std::atan2(yx, xx) * 180 / kPi;
  return isMirrored() ? turnDegrees - angleDegrees : turnDegrees + angleDegrees;
}

// Passes the elements of one placed structure on, under the transform of its reference.
class GdsFlattener::StructureHandler : public GdsHandler {
public:
  StructureHandler(GdsFlattener &flattener, const PlaneTransform &transform, const GdsPlace &where)
      : flattener_(flattener), transform_(transform), where_(where) {}

  void beginStructure(const QByteArray &, qint64) override {}
  void element(const GdsElement &element) override {
    if (element.kind == GdsRecordType::Sref || element.kind == GdsRecordType::Aref)
      flattener_.flattenElements(element, transform_, where_);
    else
      flattener_.flattenShape(element, transform_, where_);
  }
  void endStructure() override {}

private:
  GdsFlattener &flattener_;
  const PlaneTransform &transform_;
  const GdsPlace &where_;
};

GdsFlattener::GdsFlattener(const GdsParser &parser, const GdsIndex &index, const CoordinateScale &scale,
                           GdsShapeWriter &shapes, ImportReport &report)
    : parser_(parser), index_(index), scale_(scale), shapes_(shapes), report_(report) {}

void GdsFlattener::flatten(const GdsElement &reference, const GdsPlace &where) {
  flattenElements(reference, PlaneTransform(), where);
}

void GdsFlattener::flattenElements(const GdsElement &reference, const PlaneTransform &outer, const GdsPlace &where) {
  const int number = index_.find(reference.text);
  if (number < 0 || !index_.structures()[static_cast<std::size_t>(number)].isDefined()) {
    report_.problem(
        QStringLiteral("a reference to %1 has to be flattened, but the structure is not in the file; it is left out")
            .arg(QString::fromLatin1(reference.text)),
        where.toString());
    return;
  }
  if (std::find(openStructures_.begin(), openStructures_.end(), number) != openStructures_.end()) {
    report_.problem(
        QStringLiteral("structure %1 places itself and cannot be flattened; the inner reference is left out")
            .arg(QString::fromLatin1(reference.text)),
        where.toString());
    return;
  }
  if (openStructures_.size() >= kMaxDepth)
    throw HostError(QStringLiteral("%1: %2: more than %3 levels to flatten")
                        .arg(parser_.fileName(), where.toString())
                        .arg(kMaxDepth));
  openStructures_.push_back(number);
  const bool isArray = reference.kind == GdsRecordType::Aref;
  const QPoint origin = reference.points.front();
  const QPoint columnEnd = isArray ? reference.points[1] : origin;
  const QPoint rowEnd = isArray ? reference.points[2] : origin;
  const auto step = [](int from, int to, int count, int index) {
    return (static_cast<double>(to) - from) * index / count;
  };
  for (int row = 0; row < reference.rows; ++row) {
    for (int column = 0; column < reference.columns; ++column) {
      countWork(where);
      const PlaneTransform own =
          PlaneTransform::ofReference(reference,
                                      step(origin.x(), columnEnd.x(), reference.columns, column) +
                                          step(origin.x(), rowEnd.x(), reference.rows, row),
                                      step(origin.y(), columnEnd.y(), reference.columns, column) +
                                          step(origin.y(), rowEnd.y(), reference.rows, row));
      const PlaneTransform transform = outer.after(own);
      StructureHandler handler(*this, transform, where);
      parser_.parseStructure(index_.structures()[static_cast<std::size_t>(number)].offset, handler);
    }
  }
  openStructures_.pop_back();
}

void GdsFlattener::flattenShape(const GdsElement &element, const PlaneTransform &transform, const GdsPlace &where) {
  countWork(where);
  GdsElement mapped = element;
  for (QPoint &point : mapped.points)
    point = mapPoint(point, transform);
  const double factor = scale_.factor() * transform.magnification;
  // An absolute width is scaled with the units, but not magnified.
  mapped.width = roundToDbu(element.width * (element.width < 0 ? scale_.factor() : factor));
  mapped.beginExtension = roundToDbu(element.beginExtension * factor);
  mapped.endExtension = roundToDbu(element.endExtension * factor);
  mapped.magnification = element.magnification * transform.magnification;
  mapped.angleDegrees = transform.mapAngle(element.angleDegrees);
  mapped.mirrored = element.mirrored != transform.isMirrored();
  shapes_.write(mapped, where);
}

QPoint GdsFlattener::mapPoint(const QPoint &point, const PlaneTransform &transform) const {
  const double x = transform.xx * point.x() + transform.xy * point.y() + transform.dx;
  const double y = transform.yx * point.x() + transform.yy * point.y() + transform.dy;
  return QPoint(roundToDbu(x * scale_.factor()), roundToDbu(y * scale_.factor()));
}

void GdsFlattener::countWork(const GdsPlace &where) {
  if (++work_ > kMaxWork) {
    throw HostError(QStringLiteral("%1: %2: magnified or slanted references flatten to more than %3 objects")
                        .arg(parser_.fileName(), where.toString())
                        .arg(kMaxWork));
  }
}
