#ifndef COORDINATESCALE_H
#define COORDINATESCALE_H

#include <QString>

#include <optional>

// The exact ratio between a file's database unit and a library's: a fraction of small whole numbers.
class CoordinateScale {
public:
  CoordinateScale() = default;
  // Finds the fraction that equals the ratio within one part in 10^9, with numerator times denominator up to 10^8.
  // Throws HostError when there is none, or a unit is not above 0.
  CoordinateScale(double fileMetresPerDbu, double libraryMetresPerDbu);

  bool isIdentity() const { return numerator_ == 1 && denominator_ == 1; }
  double factor() const { return static_cast<double>(numerator_) / static_cast<double>(denominator_); }
  // "5" or "1/2".
  QString toString() const;

  // The scaled value; nothing when it is no whole number or does not fit in 32 bits.
  std::optional<int> apply(int value) const;
  // Why apply() gave nothing.
  QString refusal(int value) const;

private:
  qint64 numerator_ = 1;
  qint64 denominator_ = 1;
};

#endif
