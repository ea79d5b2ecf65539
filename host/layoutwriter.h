#ifndef LAYOUTWRITER_H
#define LAYOUTWRITER_H

#include "layoutmodel.h"

#include <QPolygon>
#include <QRect>
#include <QString>

// Takes cells one after the other, each between beginCell() and endCell(), in the units of the target.
class LayoutWriter {
public:
  virtual ~LayoutWriter() = default;
  // False when the cell cannot be written; the caller then leaves out its contents and endCell().
  virtual bool beginCell(const QString &cell) = 0;
  // The rectangle's stored corners are left, top, right, bottom: bottom() is the smaller y.
  virtual void writeBox(const QRect &box, LayerPurpose layer) = 0;
  virtual void writePolygon(const QPolygon &points, LayerPurpose layer) = 0;
  // `caps`: 0 flush, 1 round, 2 extended by half the width.
  virtual void writePath(const QPolygon &points, int width, int caps, LayerPurpose layer) = 0;
  // The layer field of `text` is not used.
  virtual void writeText(const ModelText &text, LayerPurpose layer) = 0;
  // The cell field of `reference` is not used; its name may be empty.
  virtual void writeReference(const QString &cell, const ModelReference &reference) = 0;
  virtual void endCell() = 0;
};

#endif
