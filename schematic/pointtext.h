#ifndef POINTTEXT_H
#define POINTTEXT_H

#include "oaconvert.h"

// The same as oaConvert::stringToPoint(), without the detour through the host's text type for what the writer stores:
// there is one for each label.
inline QPoint pointOfText(const oa::oaString &text) {
  const int kMostDigits = 9; // these fit in any case
  const oa::oaChar *at = text;
  int coordinates[2];
  for (int i = 0; i < 2; ++i) {
    const bool isNegative = *at == '-';
    at += isNegative ? 1 : 0;
    const oa::oaChar *const first = at;
    int value = 0;
    while (*at >= '0' && *at <= '9' && at - first < kMostDigits) {
      value = 10 * value + (*at++ - '0');
    }
    if (at == first || *at != (i == 0 ? ' ' : '\0')) {
      return oaConvert::stringToPoint(oaConvert::toString(text));
    }
    ++at;
    coordinates[i] = isNegative ? -value : value;
  }
  return QPoint(coordinates[0], coordinates[1]);
}

#endif
