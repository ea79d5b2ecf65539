#ifndef BUFFERS_H
#define BUFFERS_H

#include <cstring>

#include <QPolygon>
#include <QString>

#include "oaconvert.h"

// Arguments of signals that are filled anew for each emission. While no receiver kept the last one, its memory is used
// again, so a walk over millions of objects allocates only what the receivers really hold.

// Spreads 8-bit characters to the 16 bits of a QChar. True when all are ASCII.
inline bool spreadAscii(const oa::oaChar *in, int length, QChar *out) {
  const int kStep = 4;
  quint32 seen = 0;
  int done = 0;
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
  // Four at a time; the last four may have been among those before.
  while (length >= kStep && done < length) {
    done = done + kStep <= length ? done : length - kStep;
    quint32 four;
    std::memcpy(&four, in + done, sizeof four);
    seen |= four;
    quint64 spread = four;
    spread = (spread | spread << 16) & Q_UINT64_C(0x0000ffff0000ffff);
    spread = (spread | spread << 8) & Q_UINT64_C(0x00ff00ff00ff00ff);
    std::memcpy(static_cast<void *>(out + done), &spread, sizeof spread);
    done += kStep;
  }
#endif
  for (; done < length; ++done) {
    const unsigned char character = static_cast<unsigned char>(in[done]);
    seen |= character;
    out[done] = QChar(ushort(character));
  }
  return (seen & 0x80808080U) == 0;
}

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
    if (!spreadAscii(characters, length, text_.data())) { // what other characters mean is the toolkit's to say
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
    if (polygon_.size() != count) {
      polygon_.resize(count);
    }
    return polygon_.data();
  }

  QPolygon polygon_;
};

#endif
