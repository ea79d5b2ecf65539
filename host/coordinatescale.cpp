#include "coordinatescale.h"

#include "hosterror.h"

#include <cmath>
#include <limits>

namespace {
constexpr double kTolerance = 1e-9;
constexpr double kMaxProduct = 1e8;
} // namespace

CoordinateScale::CoordinateScale(double fileMetresPerDbu, double libraryMetresPerDbu) {
  const double ratio = fileMetresPerDbu / libraryMetresPerDbu;
  if (!(fileMetresPerDbu > 0) || !(libraryMetresPerDbu > 0) || !std::isfinite(ratio)) {
    throw HostError(QStringLiteral("database units of %1 m in the file and %2 m in the library cannot be converted")
                        .arg(fileMetresPerDbu)
                        .arg(libraryMetresPerDbu));
  }
  // Convergents of the continued fraction; the first that is close enough is the simplest.
  double numerators[2] = {1, 0};
  double denominators[2] = {0, 1};
  double rest = ratio;
  for (;;) {
    const double whole = std::floor(rest);
    const double numerator = whole * numerators[0] + numerators[1];
    const double denominator = whole * denominators[0] + denominators[1];
    if (numerator * denominator > kMaxProduct)
      break;
    if (numerator > 0 && std::fabs(numerator / denominator - ratio) <= kTolerance * ratio) {
      numerator_ = static_cast<qint64>(numerator);
      denominator_ = static_cast<qint64>(denominator);
      return;
    }
    numerators[1] = numerators[0];
    numerators[0] = numerator;
    denominators[1] = denominators[0];
    denominators[0] = denominator;
    if (rest == whole)
      break;
    rest = 1 / (rest - whole);
  }
  throw HostError(QStringLiteral("database units of %1 m in the file and %2 m in the library have no simple ratio")
                      .arg(fileMetresPerDbu)
                      .arg(libraryMetresPerDbu));
}

QString CoordinateScale::toString() const {
  if (denominator_ == 1)
    return QString::number(numerator_);
  return QStringLiteral("%1/%2").arg(numerator_).arg(denominator_);
}

std::optional<int> CoordinateScale::apply(int value) const {
  // At most 2^31 times 10^8: fits in 64 bits.
  const qint64 product = value * numerator_;
  if (product % denominator_ != 0)
    return std::nullopt;
  const qint64 scaled = product / denominator_;
  if (scaled < std::numeric_limits<int>::min() || scaled > std::numeric_limits<int>::max())
    return std::nullopt;
  return static_cast<int>(scaled);
}

QString CoordinateScale::refusal(int value) const {
  const bool isWhole = value * numerator_ % denominator_ == 0;
  return QStringLiteral("%1 times %2 %3")
      .arg(value)
      .arg(toString(), isWhole ? QStringLiteral("does not fit in 32 bits")
                               : QStringLiteral("is not a whole number of the library's database units"));
}
