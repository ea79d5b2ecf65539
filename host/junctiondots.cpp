#include "junctiondots.h"

#include <QHash>
#include <QVector>

#include <algorithm>
#include <vector>

namespace {

// Intervals on one line, which may overlap.
class Intervals {
public:
  void add(int one, int other) { intervals_.push_back({std::min(one, other), std::max(one, other)}); }

  void sort() {
    std::sort(intervals_.begin(), intervals_.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    // Each reaches as far as any before it, so that one look tells whether there is an interval around a place.
    for (size_t i = 1; i < intervals_.size(); ++i)
      intervals_[i].last = std::max(intervals_[i].last, intervals_[i - 1].last);
  }
  // Whether the place lies between the ends of an interval.
  bool isWithin(int place) const {
    const auto next = std::lower_bound(intervals_.begin(), intervals_.end(), place,
                                       [](const Interval &interval, int value) { return interval.first < value; });
    return next != intervals_.begin() && std::prev(next)->last > place;
  }

private:
  struct Interval {
    int first, last;
  };
  std::vector<Interval> intervals_;
};

quint64 keyOf(const QPoint &point) {
  return (static_cast<quint64>(static_cast<quint32>(point.x())) << 32) | static_cast<quint32>(point.y());
}

} // namespace

void addJunctionDots(SchematicModel &model) {
  QHash<int, Intervals> level, upright; // by y and by x
  QHash<quint64, int> endCounts;
  QVector<QPoint> ends; // in order of appearance
  for (const SchematicWire &wire : model.wires) {
    if (wire.points.size() != 2)
      continue;
    const QPoint from = wire.points.at(0), to = wire.points.at(1);
    if (from.y() == to.y())
      level[from.y()].add(from.x(), to.x());
    else if (from.x() == to.x())
      upright[from.x()].add(from.y(), to.y());
    for (const QPoint &end : {from, to}) {
      if (++endCounts[keyOf(end)] == 1)
        ends.append(end);
    }
  }
  for (auto &intervals : level)
    intervals.sort();
  for (auto &intervals : upright)
    intervals.sort();
  const auto isWithin = [](const QHash<int, Intervals> &lines, int line, int place) {
    const auto found = lines.constFind(line);
    return found != lines.constEnd() && found->isWithin(place);
  };
  for (const QPoint &end : qAsConst(ends)) {
    const bool isOnWire = isWithin(level, end.y(), end.x()) || isWithin(upright, end.x(), end.y());
    if (isOnWire || endCounts.value(keyOf(end)) > 2)
      model.wireDots.push_back(end);
  }
}
