#ifndef SHORTESTTEXT_H
#define SHORTESTTEXT_H

#include <limits>

#include <QString>

// The shortest decimal text that reads back as the same number; six digits are not cut to fewer.
template <typename Number> QString shortestText(Number value) {
  int digits = 6;
  QString text = QString::number(double(value), 'g', digits);
  while (Number(text.toDouble()) != value && digits < std::numeric_limits<Number>::max_digits10) {
    text = QString::number(double(value), 'g', ++digits);
  }
  return text;
}

#endif
