#ifndef RECORDINGWRITER_H
#define RECORDINGWRITER_H

#include "layoutwriter.h"

#include <string>
#include <vector>

// Writes down what a layout writer is asked to write, one line a call, in the form of the orientation "m90" (mirrored,
// then turned by 90 degrees counter-clockwise).
class RecordingWriter : public LayoutWriter {
public:
  std::vector<std::string> lines;
  // A cell of this name cannot be begun.
  QString refusedCell;

  bool beginCell(const QString &cell) override {
    if (cell == refusedCell) {
      return false;
    }
    add("cell " + cell);
    return true;
  }
  void writeBox(const QRect &box, LayerPurpose layer) override {
    add(QString("box %1 %2,%3 %4,%5")
            .arg(layerText(layer))
            .arg(box.left())
            .arg(box.bottom())
            .arg(box.right())
            .arg(box.top()));
  }
  void writePolygon(const QPolygon &points, LayerPurpose layer) override {
    add("polygon " + layerText(layer) + pointText(points));
  }
  void writePath(const QPolygon &points, int width, int caps, LayerPurpose layer) override {
    add(QString("path %1 width %2 caps %3").arg(layerText(layer)).arg(width).arg(caps) + pointText(points));
  }
  void writeText(const ModelText &text, LayerPurpose layer) override {
    add(QString("text %1 \"%2\" %3,%4 height %5 at %6 %7")
            .arg(layerText(layer), text.text)
            .arg(text.origin.x())
            .arg(text.origin.y())
            .arg(text.height)
            .arg(text.presentation)
            .arg(orientationText(text.orientation)));
  }
  void writeReference(const QString &cell, const ModelReference &reference) override {
    QString line = QString("%1 %2 %3,%4 %5")
                       .arg(reference.isArray ? "array" : "ref", cell)
                       .arg(reference.origin.x())
                       .arg(reference.origin.y())
                       .arg(orientationText(reference.orientation));
    if (reference.isArray) {
      line += QString(" %1x%2 pitch %3,%4")
                  .arg(reference.columns)
                  .arg(reference.rows)
                  .arg(reference.columnPitch)
                  .arg(reference.rowPitch);
    }
    add(line);
  }
  void endCell() override { add("end"); }

  static QString orientationText(Orientation orientation) {
    return (orientation.isMirrored() ? "m" : "r") + QString::number(90 * orientation.quarterTurns());
  }

private:
  static QString layerText(LayerPurpose layer) { return QString("%1/%2").arg(layer.layer).arg(layer.datatype); }
  static QString pointText(const QPolygon &points) {
    QString text;
    for (const QPoint &point : points) {
      text += QString(" %1,%2").arg(point.x()).arg(point.y());
    }
    return text;
  }
  void add(const QString &line) { lines.push_back(line.toStdString()); }
};

#endif
