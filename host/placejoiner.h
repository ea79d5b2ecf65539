#ifndef PLACEJOINER_H
#define PLACEJOINER_H

#include <QPoint>

#include <vector>

// Finds what belongs together because of its place: points (wire ends, terminals, labels and the like) at the same
// place, points and the segments that they lie on, and horizontal or vertical segments that overlap. Crossing segments
// do not belong together. Takes n log n steps for n points and horizontal or vertical segments; a diagonal one is
// compared with every point between its ends in x.
class PlaceJoiner {
public:
  // Nodes are numbered 0 to nodeCount - 1; one node may have any number of points and segments.
  explicit PlaceJoiner(int nodeCount);

  void addPoint(const QPoint &place, int node) { points_.push_back({place.x(), place.y(), node}); }
  void addSegment(const QPoint &from, const QPoint &to, int node);
  // To be called once, after the last point and segment.
  void join();

  void unite(int node, int other);
  // The same number for all nodes that belong together: one of them.
  int groupOf(int node);

private:
  struct Point {
    int x;
    int y;
    int node;
  };
  // A segment on a horizontal line (at y, from x to x) or a vertical one (at x, from y to y).
  struct Span {
    int line;
    int from;
    int to;
    int node;
  };
  struct Diagonal {
    QPoint from; // the end with the smaller x
    QPoint to;
    int node;
  };

  void joinOverlaps(std::vector<Span> &spans);
  template <typename LineOf, typename PlaceOf>
  void joinPointsOnSpans(const std::vector<Span> &spans, LineOf lineOf, PlaceOf placeOf);
  void joinPointsOnDiagonals();

  std::vector<Point> points_;
  std::vector<Span> horizontals_;
  std::vector<Span> verticals_;
  std::vector<Diagonal> diagonals_;
  std::vector<int> parents_; // of the union-find forest
};

#endif
