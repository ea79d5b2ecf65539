#ifndef XSCHEMPARSER_H
#define XSCHEMPARSER_H

#include "importreport.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <memory>
#include <vector>

struct XschemFile;

// One object of a file. The numbers are those that the format gives it, in xschem's units and with y downwards:
//   L  line       layer x1 y1 x2 y2
//   B  box        layer x1 y1 x2 y2
//   P  polygon    layer, number of points, x1 y1 x2 y2 ...
//   A  arc        layer, centre x y, radius, start and sweep in degrees, anticlockwise as drawn
//   T  text       x y rotation flip, horizontal and vertical size
//   N  wire       x1 y1 x2 y2
//   C  placement  x y rotation flip
struct XschemObject {
  char tag = 0;
  int line = 0;
  std::vector<double> numbers;
  QByteArray text; // of T, and the symbol that C places
  QByteArray attributes;
  // The symbol that stands in brackets after a placement, with the file's own line numbers.
  std::shared_ptr<const XschemFile> embedded;
};

struct XschemFile {
  QString name;
  // The texts of the lines v (versions and remarks), G, K (attributes of the symbol), V, S, E and F (code), without
  // empty ones.
  QMap<char, QByteArray> blocks;
  QMap<char, int> blockLines; // where each of them begins
  std::vector<XschemObject> objects;

  // "name:line", for messages.
  QString place(int line) const { return QStringLiteral("%1:%2").arg(name).arg(line); }
};

// Reads the text of a schematic or symbol, file versions 1.0 to 1.2. What cannot be read is told with its line as a
// problem, and everything else is read. Null when the bytes are no such file at all, which is told too.
std::unique_ptr<XschemFile> parseXschem(const QByteArray &bytes, const QString &name, ImportReport &report);

// The same for a file on disk; also null when it cannot be read, or is larger than 512 MB.
std::unique_ptr<XschemFile> readXschemFile(const QString &name, ImportReport &report);

#endif
