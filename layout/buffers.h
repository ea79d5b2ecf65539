#ifndef BUFFERS_H
#define BUFFERS_H

#include <QPolygon>
#include <QString>

#include "oaconvert.h"

// Arguments of signals that are filled anew for each emission. While no receiver kept the last one, its memory is used
// again, so a walk over millions of objects allocates only what the receivers really hold.

class TextBuffer {
public:
  // The text of 8-bit characters. The reference holds until the next call.
  const QString &set(const oa::oaString &text) {
    const oa::oaChar *characters = text;
    const int length = int(text.getLength());
    if (!text_.isDetached()) {
      text_ = QString();
    }
    if (text_.size() != length) {
      text_.resize(length);
    }
    QChar *out = text_.data();
    unsigned char seen = 0;
    for (int i = 0; i < length; ++i) {
      const unsigned char character = static_cast<unsigned char>(characters[i]);
      seen |= character;
      out[i] = QChar(ushort(character));
    }
    if (seen >= 0x80) { // what those mean is the toolkit's to say
      text_ = oaConvert::toString(text);
    }
    return text_;
  }

private:
  QString text_;
};

class PolygonBuffer {
public:
  // The same points in the same order. The reference holds until the next call.
  const QPolygon &set(const oa::oaPointArray &points) {
    const int count = int(points.getNumElements());
    QPoint *out = prepare(count);
    const oa::oaPoint *in = points.getElements();
    for (int i = 0; i < count; ++i) {
      out[i] = QPoint(in[i].x(), in[i].y());
    }
    return polygon_;
  }

  const QPolygon &set(const oa::oaPoint &first, const oa::oaPoint &second) {
    QPoint *out = prepare(2);
    out[0] = QPoint(first.x(), first.y());
    out[1] = QPoint(second.x(), second.y());
    return polygon_;
  }

private:
  QPoint *prepare(int count) {
    if (!polygon_.isDetached()) {
      polygon_ = QPolygon();
    }
    polygon_.resize(count);
    return polygon_.data();
  }

  QPolygon polygon_;
};

#endif
