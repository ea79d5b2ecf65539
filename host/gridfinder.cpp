#include "gridfinder.h"

namespace {

constexpr int kPitches[] = {1,  2,  4,  5,  8,  10, 12,  15,  16,  20,  24,  25,  30,  32,
                            40, 48, 50, 60, 64, 80, 100, 120, 125, 128, 150, 160, 200, 250};
constexpr std::size_t kPitchCount = sizeof kPitches / sizeof *kPitches;
// The others may be off the grid: a label here, a symbol from elsewhere there.
constexpr double kShareOnGrid = 0.9;

} // namespace

GridFinder::GridFinder() : multiples_(kPitchCount) {}

void GridFinder::add(const QPointF &point) {
  for (const double value : {point.x(), point.y()}) {
    const auto coordinate = static_cast<std::int64_t>(value);
    if (coordinate == 0)
      continue;
    ++coordinates_;
    for (std::size_t i = 0; i < kPitchCount; ++i)
      multiples_[i] += coordinate % kPitches[i] == 0;
  }
}

int GridFinder::pitch() const {
  for (std::size_t i = kPitchCount; i-- > 0;)
    if (static_cast<double>(multiples_[i]) > kShareOnGrid * static_cast<double>(coordinates_))
      return kPitches[i];
  return 1;
}
