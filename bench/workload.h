#ifndef WORKLOAD_H
#define WORKLOAD_H

#include <string>

#include <QPoint>
#include <QPolygon>
#include <QRect>
#include <QString>

class oaPlugInCore;

// Contents of the measured layouts, computed from an object's number alone, so that the plug-in, the floor and the peer
// work on the same data. klayoutpeer.py holds the rectangles' formula too.
namespace workload {

enum Kind { kRectangles, kPolygons, kPaths, kInstances };

struct Named {
  Kind kind;
  const char *name;
  const char *description;
};
const Named kAll[] = {
    {kRectangles, "rectangles", "one flat cell of rectangles on 16 layers"},
    {kPolygons, "polygons", "one flat cell of polygons with 5 points on 16 layers"},
    {kPaths, "paths", "one flat cell of paths with 3 points on 16 layers"},
    {kInstances, "instances", "one cell that places 400 masters of one rectangle each, in turn"},
};
// Raises std::invalid_argument for an unknown name.
Kind kindOf(const std::string &name);
const char *nameOf(Kind kind);

const int kMasterCount = 400;
const int kPathWidthDbu = 4;

// Left, bottom, width, height; database units.
struct Rectangle {
  int left, bottom, width, height;
};
Rectangle rectangle(int index);
int layer(int index);
// Fills in 5 points that no kit needs to compress.
void polygon(int index, QPoint *points);
// Fills in 3 points.
void path(int index, QPoint *points);
QString masterName(int master);
int master(int index);
QPoint origin(int index);
// Only orientations whose text reads the same in both directions.
QString trans(int index);
QString instanceName(int index);

// Writes `count` objects into the cell lib/`cell`/layout, and the masters if there are any. What was there is replaced.
void write(oaPlugInCore &plugIn, const QString &lib, const QString &cell, Kind kind, int count);

} // namespace workload

#endif
