#ifndef JUNCTIONSIDES_H
#define JUNCTIONSIDES_H

#include "schematicgeometry.h"

#include <map>
#include <utility>

// A set of sides.
class Sides {
public:
  void add(Side side) { bits_ |= bit(side); }
  bool has(Side side) const { return (bits_ & bit(side)) != 0; }
  bool isEmpty() const { return bits_ == 0; }
  // True when `side` is the only one.
  bool isOnly(Side side) const { return bits_ == bit(side); }

private:
  static unsigned bit(Side side) { return 1u << static_cast<unsigned>(side); }
  unsigned bits_ = 0;
};

// Finds out where wires and placed symbols lie about the places of ports and labels, so that these are drawn on the
// free side. Name all places first, then the wires and symbols. The work grows with n log n for any arrangement.
class JunctionSides {
public:
  struct Neighbours {
    Sides wires;
    Sides bodies; // of placed symbols
  };

  void addPlace(const QPoint &place);
  void addWire(const QPolygon &points);
  // A terminal at a point; the body of its symbol lies to `side` of it.
  void addTerminal(const QPointF &position, Side side);

  // Of a place that was named.
  const Neighbours &at(const QPoint &place) const;

private:
  using Key = std::pair<int, int>;
  // The places of each line, by the line and the place along it.
  using Lines = std::map<Key, Neighbours *>;

  static void addSegment(Lines *lines, int line, int from, int to, Side towardsFirst, Side towardsLast);
  void addEnd(const QPoint &end, const QPoint &next);

  std::map<Key, Neighbours> places_; // by x, y
  // Places that may still learn something from a horizontal or vertical wire.
  Lines rows_, columns_;
};

#endif
