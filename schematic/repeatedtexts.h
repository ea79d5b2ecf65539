#ifndef REPEATEDTEXTS_H
#define REPEATEDTEXTS_H

#include <cstring>

#include <QString>

#include "buffers.h"

// The names of the properties of one object after the other: nearly always the same ones in the same order. Each is
// turned into the host's text type when it first comes at its place.
class RepeatedTexts {
public:
  // `place` is the text's number among those of its object. The reference holds until the next text at that place.
  const QString &at(int place, const oa::oaString &text) {
    if (place >= kPlaces) {
      return other_.set(text);
    }
    Known &known = known_[place];
    const oa::oaUInt4 length = text.getLength();
    if (length != known.text.getLength() ||
        std::memcmp(static_cast<const oa::oaChar *>(text), static_cast<const oa::oaChar *>(known.text), length) != 0) {
      known.text = text;
      known.shown = other_.set(text);
    }
    return known.shown;
  }

private:
  static const int kPlaces = 32;
  struct Known {
    oa::oaString text;
    QString shown;
  };

  Known known_[kPlaces];
  TextBuffer other_;
};

#endif
