#ifndef GDSWRITER_H
#define GDSWRITER_H

#include "gdsrecord.h"
#include "orientation.h"

#include <QByteArray>
#include <QIODevice>
#include <QPoint>

// Writes the records of a GDSII file, in the order that the format demands of the caller: a library holds structures, a
// structure holds elements. Dates are written as zeros, so that equal layouts give equal files.
class GdsWriter {
public:
  // Throws HostError when the device refuses bytes, as do all functions below.
  GdsWriter(QIODevice &device, QString fileName);

  void beginLibrary(const QByteArray &name, double userUnitsPerDbu, double metresPerDbu);
  void endLibrary();
  void beginStructure(const QByteArray &name);
  void endStructure();

  // The closing point is added. More than kGdsMaxPoints points are spread over several XY records.
  void writeBoundary(const QPoint *points, std::size_t count, int layer, int datatype);
  struct PathEnds {
    int pathType = 0;
    int beginExtension = 0; // of type 4
    int endExtension = 0;
  };
  void writePath(const QPoint *points, std::size_t count, int width, const PathEnds &ends, int layer, int datatype);
  void writeText(const QByteArray &text, const QPoint &origin, int presentation, Orientation orientation,
                 double magnification, int layer, int texttype);
  void writeSref(const QByteArray &structure, const QPoint &origin, Orientation orientation);
  // `columnEnd` lies as many column steps from the origin as there are columns, `rowEnd` likewise.
  void writeAref(const QByteArray &structure, const QPoint &origin, const QPoint &columnEnd, const QPoint &rowEnd,
                 int columns, int rows, Orientation orientation);

private:
  void beginRecord(GdsRecordType type, int dataBytes);
  void appendInt16(int value);
  void appendInt32(int value);
  void appendReal(double value);
  void writeEmpty(GdsRecordType type) { beginRecord(type, 0); }
  void writeInt16(GdsRecordType type, int value);
  void writeInt32(GdsRecordType type, int value);
  void writeString(GdsRecordType type, const QByteArray &text);
  void writeDates(GdsRecordType type);
  void writePoints(const QPoint *points, std::size_t count);
  void writeOrientation(Orientation orientation, double magnification);
  void flushIfLarge();
  void flush();

  QIODevice &device_;
  QString fileName_;
  QByteArray buffer_;
};

#endif
