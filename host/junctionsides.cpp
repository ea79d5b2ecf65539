#include "junctionsides.h"

#include <algorithm>
#include <cmath>

void JunctionSides::addPlace(const QPoint &place) {
  Neighbours *neighbours = &places_[{place.x(), place.y()}];
  rows_[{place.y(), place.x()}] = neighbours;
  columns_[{place.x(), place.y()}] = neighbours;
}

void JunctionSides::addSegment(Lines *lines, int line, int from, int to, Side towardsFirst, Side towardsLast) {
  const int first = std::min(from, to), last = std::max(from, to);
  for (auto place = lines->lower_bound({line, first}); place != lines->end() && place->first <= Key(line, last);) {
    const int along = place->first.second;
    if (along > first)
      place->second->wires.add(towardsFirst);
    if (along < last)
      place->second->wires.add(towardsLast);
    // Nothing more to be learnt along this line, however many wires lie on it.
    const Sides &known = place->second->wires;
    place = known.has(towardsFirst) && known.has(towardsLast) ? lines->erase(place) : std::next(place);
  }
}

void JunctionSides::addEnd(const QPoint &end, const QPoint &next) {
  const auto place = places_.find({end.x(), end.y()});
  if (place == places_.end())
    return;
  const double dx = static_cast<double>(next.x()) - end.x(), dy = static_cast<double>(next.y()) - end.y();
  if (std::fabs(dx) >= std::fabs(dy))
    place->second.wires.add(dx > 0 ? Side::Right : Side::Left);
  else
    place->second.wires.add(dy > 0 ? Side::Up : Side::Down);
}

void JunctionSides::addWire(const QPolygon &points) {
  if (places_.empty())
    return;
  for (int i = 0; i + 1 < points.size(); ++i) {
    const QPoint &from = points[i], &to = points[i + 1];
    if (from == to)
      continue;
    if (from.y() == to.y()) {
      addSegment(&rows_, from.y(), from.x(), to.x(), Side::Left, Side::Right);
    } else if (from.x() == to.x()) {
      addSegment(&columns_, from.x(), from.y(), to.y(), Side::Down, Side::Up);
    } else {
      addEnd(from, to);
      addEnd(to, from);
    }
  }
}

void JunctionSides::addTerminal(const QPointF &position, Side side) {
  const auto isPlace = [](double coordinate) {
    return coordinate >= std::numeric_limits<int>::min() && coordinate <= std::numeric_limits<int>::max();
  };
  if (places_.empty() || !isPlace(position.x()) || !isPlace(position.y()))
    return;
  const auto place = places_.find({static_cast<int>(position.x()), static_cast<int>(position.y())});
  if (place != places_.end())
    place->second.bodies.add(side);
}

const JunctionSides::Neighbours &JunctionSides::at(const QPoint &place) const {
  return places_.at({place.x(), place.y()});
}
