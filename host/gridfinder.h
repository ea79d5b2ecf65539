#ifndef GRIDFINDER_H
#define GRIDFINDER_H

#include <QPointF>

#include <cstdint>
#include <vector>

// Finds the grid on which a schematic was drawn: the largest round pitch of which nearly all coordinates are multiples.
class GridFinder {
public:
  GridFinder();

  void add(const QPointF &point);
  // In database units; 1 when there is no larger grid.
  int pitch() const;

private:
  std::int64_t coordinates_ = 0; // other than 0, which lies on any grid
  std::vector<std::int64_t> multiples_;
};

#endif
