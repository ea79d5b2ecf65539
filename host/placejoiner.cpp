#include "placejoiner.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <tuple>

namespace {

__extension__ using WideInteger = __int128;

// Of three points that may be the whole number range apart.
bool isOnLine(const QPoint &from, const QPoint &to, int x, int y) {
  const WideInteger dx = std::int64_t(to.x()) - from.x();
  const WideInteger dy = std::int64_t(to.y()) - from.y();
  return dx * (std::int64_t(y) - from.y()) == dy * (std::int64_t(x) - from.x());
}

} // namespace

PlaceJoiner::PlaceJoiner(int nodeCount) : parents_(static_cast<std::size_t>(nodeCount)) {
  std::iota(parents_.begin(), parents_.end(), 0);
}

void PlaceJoiner::addSegment(const QPoint &from, const QPoint &to, int node) {
  const auto [left, right] = std::minmax({from.x(), to.x()});
  const auto [bottom, top] = std::minmax({from.y(), to.y()});
  if (bottom == top)
    horizontals_.push_back({bottom, left, right, node});
  else if (left == right)
    verticals_.push_back({left, bottom, top, node});
  else
    diagonals_.push_back(from.x() < to.x() ? Diagonal{from, to, node} : Diagonal{to, from, node});
}

void PlaceJoiner::join() {
  joinOverlaps(horizontals_);
  joinOverlaps(verticals_);
  std::sort(points_.begin(), points_.end(),
            [](const Point &a, const Point &b) { return std::tie(a.y, a.x) < std::tie(b.y, b.x); });
  for (std::size_t i = 1; i < points_.size(); ++i) {
    if (points_[i].x == points_[i - 1].x && points_[i].y == points_[i - 1].y)
      unite(points_[i - 1].node, points_[i].node);
  }
  joinPointsOnSpans(
      horizontals_, [](const Point &point) { return point.y; }, [](const Point &point) { return point.x; });
  std::sort(points_.begin(), points_.end(),
            [](const Point &a, const Point &b) { return std::tie(a.x, a.y) < std::tie(b.x, b.y); });
  joinPointsOnSpans(
      verticals_, [](const Point &point) { return point.x; }, [](const Point &point) { return point.y; });
  joinPointsOnDiagonals();
}

void PlaceJoiner::unite(int node, int other) {
  const int first = groupOf(node);
  const int second = groupOf(other);
  // Towards the smaller number; together with the halving of paths that keeps the trees flat.
  parents_[static_cast<std::size_t>(std::max(first, second))] = std::min(first, second);
}

int PlaceJoiner::groupOf(int node) {
  auto index = static_cast<std::size_t>(node);
  while (parents_[index] != static_cast<int>(index)) {
    parents_[index] = parents_[static_cast<std::size_t>(parents_[index])];
    index = static_cast<std::size_t>(parents_[index]);
  }
  return static_cast<int>(index);
}

// Replaces spans that overlap by one. What merely touches stays apart: points at the touching ends decide.
void PlaceJoiner::joinOverlaps(std::vector<Span> &spans) {
  std::sort(spans.begin(), spans.end(), [](const Span &a, const Span &b) {
    return std::tie(a.line, a.from, a.to, a.node) < std::tie(b.line, b.from, b.to, b.node);
  });
  std::vector<Span> joined;
  for (const Span &span : spans) {
    if (joined.empty() || joined.back().line != span.line || joined.back().to <= span.from) {
      joined.push_back(span);
      continue;
    }
    unite(joined.back().node, span.node);
    joined.back().to = std::max(joined.back().to, span.to);
  }
  spans = std::move(joined);
}

// The points are sorted by line, then by place on it.
template <typename LineOf, typename PlaceOf>
void PlaceJoiner::joinPointsOnSpans(const std::vector<Span> &spans, LineOf lineOf, PlaceOf placeOf) {
  auto point = points_.begin();
  for (const Span &span : spans) {
    point = std::lower_bound(point, points_.end(), span, [&](const Point &candidate, const Span &wanted) {
      return std::make_pair(lineOf(candidate), placeOf(candidate)) < std::make_pair(wanted.line, wanted.from);
    });
    // The next span may begin at the last point of this one, so `point` stays where it is.
    for (auto on = point; on != points_.end() && lineOf(*on) == span.line && placeOf(*on) <= span.to; ++on)
      unite(span.node, on->node);
  }
}

// The points are sorted by x.
void PlaceJoiner::joinPointsOnDiagonals() {
  for (const Diagonal &diagonal : diagonals_) {
    auto point = std::lower_bound(points_.begin(), points_.end(), diagonal.from.x(),
                                  [](const Point &candidate, int x) { return candidate.x < x; });
    for (; point != points_.end() && point->x <= diagonal.to.x(); ++point) {
      if (isOnLine(diagonal.from, diagonal.to, point->x, point->y))
        unite(diagonal.node, point->node);
    }
  }
}
