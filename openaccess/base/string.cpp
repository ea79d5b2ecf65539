#include "oa/oaString.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <strings.h>

#include "numbertext.h"
#include "raise.h"

namespace OpenAccess_4 {

namespace {

oaUInt4 lengthOf(const oaChar *text) {
  const size_t length = text ? std::strlen(text) : 0;
  if (length >= UINT_MAX)
    kit::raiseMemory("a text of " + std::to_string(length) + " characters is too long for a string");
  return static_cast<oaUInt4>(length);
}

template <typename Part> void moveEnds(oaChar *to, const oaChar *from, oaUInt4 length) {
  Part first, last;
  std::memcpy(&first, from, sizeof first);
  std::memcpy(&last, from + length - sizeof last, sizeof last);
  std::memcpy(to, &first, sizeof first);
  std::memcpy(to + length - sizeof last, &last, sizeof last);
}

// memmove() without the call for the short texts that names and values mostly are: their two ends, which may overlap,
// are read before either is written.
inline void moveText(oaChar *to, const oaChar *from, oaUInt4 length) {
  if (length > 16) {
    std::memmove(to, from, length);
  } else if (length >= 8) {
    moveEnds<oaUInt8>(to, from, length);
  } else if (length >= 4) {
    moveEnds<oaUInt4>(to, from, length);
  } else if (length >= 2) {
    moveEnds<oaUInt2>(to, from, length);
  } else if (length == 1) {
    *to = *from;
  }
}

oaString concatenation(const oaChar *a, const oaChar *b, oaUInt8 length) {
  oaString sum(static_cast<oaUInt4>(std::min<oaUInt8>(length, UINT_MAX - 1)));
  sum = a;
  sum += b;
  return sum;
}

} // namespace

oaString::oaString(oaUInt4 length) : oaString() { reserve(oaUInt8(length) + 1, false); }

oaString::oaString(const oaChar *initialValue) : oaString() { assign(initialValue, lengthOf(initialValue)); }

oaString::oaString(const oaChar *initialValue, oaUInt4 length) : oaString() {
  assign(initialValue, initialValue ? static_cast<oaUInt4>(strnlen(initialValue, length)) : 0);
}

oaString::oaString(const oaString &s) : oaString() { assign(s.text_, s.getLength()); }

oaString::oaString(oaString &&s) noexcept : oaString() { *this = std::move(s); }

oaString &oaString::operator=(oaChar c) {
  assign(&c, c ? 1 : 0);
  return *this;
}

oaString &oaString::operator=(const oaChar *str) {
  assign(str, lengthOf(str));
  return *this;
}

oaString &oaString::operator=(const oaString &str) {
  if (this != &str)
    assign(str.text_, str.getLength());
  return *this;
}

oaString &oaString::operator=(oaString &&str) noexcept {
  if (this == &str)
    return *this;
  if (str.text_ == str.inline_) {
    assign(str.text_, str.getLength()); // always fits
  } else {
    if (text_ != inline_)
      delete[] text_;
    text_ = str.text_;
    length_ = str.length_;
    capacity_ = str.capacity_;
    str.text_ = str.inline_;
    str.capacity_ = kInlineBytes;
  }
  str.inline_[0] = '\0';
  str.length_ = 0;
  return *this;
}

oaString &oaString::operator+=(oaChar c) {
  append(&c, c ? 1 : 0);
  return *this;
}

oaString &oaString::operator+=(const oaChar *str) {
  append(str, lengthOf(str));
  return *this;
}

oaString &oaString::operator+=(const oaString &str) {
  append(str.text_, str.getLength());
  return *this;
}

oaUInt4 oaString::countLength() const { return static_cast<oaUInt4>(std::strlen(text_)); }

// Out of line, so that the usual way needs no stack.
[[gnu::noinline]] void oaString::assignLonger(const oaChar *text, oaUInt4 length) {
  oaString longer;
  longer.reserve(oaUInt8(length) + 1, false);
  longer.assign(text, length);
  *this = std::move(longer);
}

// The text may be part of this string.
void oaString::assign(const oaChar *text, oaUInt4 length) {
  if (length >= capacity_) {
    assignLonger(text, length);
    return;
  }
  moveText(text_, text, length);
  text_[length] = '\0';
  length_ = length;
}

void oaString::append(const oaChar *text, oaUInt4 length) {
  const oaUInt4 oldLength = getLength();
  const oaUInt8 bytes = oaUInt8(oldLength) + length + 1;
  if (bytes > capacity_) {
    oaString longer;
    longer.reserve(std::max<oaUInt8>(bytes, std::min<oaUInt8>(oaUInt8(capacity_) * 2, UINT_MAX)), false);
    longer.assign(text_, oldLength);
    longer.append(text, length);
    *this = std::move(longer);
    return;
  }
  if (length)
    std::memmove(text_ + oldLength, text, length);
  text_[oldLength + length] = '\0';
  length_ = oldLength + length;
}

// Makes room for so many bytes, the NUL included.
void oaString::reserve(oaUInt8 bytes, oaBoolean keep) {
  if (bytes <= capacity_)
    return;
  if (bytes > UINT_MAX)
    kit::raiseMemory("a text of " + std::to_string(bytes - 1) + " characters is too long for a string");
  oaChar *const text = new oaChar[bytes];
  const oaUInt4 length = keep ? getLength() : 0;
  std::memcpy(text, text_, length);
  text[length] = '\0';
  if (text_ != inline_)
    delete[] text_;
  text_ = text;
  length_ = length;
  capacity_ = static_cast<oaUInt4>(bytes);
}

void oaString::resize(oaUInt4 size) {
  if (size > capacity_)
    reserve(size, true);
  else if (getLength() >= size)
    assign(text_, size ? size - 1 : 0);
}

int oaString::toInt() const {
  const long value = std::strtol(text_, nullptr, 10);
  return static_cast<int>(std::clamp<long>(value, INT_MIN, INT_MAX));
}

oaDouble oaString::toDouble() const { return kit::numberIn(text_); }

void oaString::toUpper() {
  for (oaChar *c = text_; *c; ++c)
    *c = *c >= 'a' && *c <= 'z' ? static_cast<oaChar>(*c - 'a' + 'A') : *c;
}

void oaString::toLower() {
  for (oaChar *c = text_; *c; ++c)
    *c = *c >= 'A' && *c <= 'Z' ? static_cast<oaChar>(*c - 'A' + 'a') : *c;
}

oaUInt4 oaString::index(oaChar c, oaUInt4 offset) const {
  const oaUInt4 length = getLength();
  const void *const found = offset < length ? std::memchr(text_ + offset, c, length - offset) : nullptr;
  return found ? static_cast<oaUInt4>(static_cast<const oaChar *>(found) - text_) : length;
}

oaUInt4 oaString::substr(const oaString &sub, oaUInt4 offset) const {
  const oaUInt4 length = getLength();
  const oaChar *const found = offset < length ? std::strstr(text_ + offset, sub.text_) : nullptr;
  return found ? static_cast<oaUInt4>(found - text_) : length;
}

oaBoolean oaString::isEqual(const oaString &str, oaBoolean ignoreCase) const {
  return ignoreCase ? strcasecmp(text_, str.text_) == 0 : *this == str;
}

void oaString::format(oaUInt4 size, const oaChar *formatStr, ...) {
  va_list args;
  va_start(args, formatStr);
  format(formatStr, args);
  va_end(args);
  reserve(size, true);
}

void oaString::format(const oaChar *formatStr, ...) {
  va_list args;
  va_start(args, formatStr);
  format(formatStr, args);
  va_end(args);
}

void oaString::format(const oaChar *formatStr, va_list args) {
  va_list again;
  va_copy(again, args);
  oaChar shortText[256];
  const int length = std::vsnprintf(shortText, sizeof shortText, formatStr, args);
  if (length < 0) {
    va_end(again);
    kit::raiseOS(errno, std::string("text format \"") + formatStr + "\" cannot be carried out");
  }
  if (static_cast<size_t>(length) < sizeof shortText) {
    assign(shortText, static_cast<oaUInt4>(std::strlen(shortText)));
  } else {
    oaString longText(static_cast<oaUInt4>(length));
    std::vsnprintf(longText.text_, static_cast<size_t>(length) + 1, formatStr, again);
    longText.length_ = longText.countLength();
    *this = std::move(longText);
  }
  va_end(again);
}

int oaString::compare(const oaString &a, const oaString &b) { return std::strcmp(a.text_, b.text_); }

int oaString::compare(const oaString &a, const oaChar *b) { return std::strcmp(a.text_, b ? b : ""); }

oaString operator+(const oaString &a, const oaString &b) {
  return concatenation(a, b, oaUInt8(a.getLength()) + b.getLength());
}

oaString operator+(const oaString &a, const oaChar *b) {
  return concatenation(a, b, oaUInt8(a.getLength()) + lengthOf(b));
}

oaString operator+(const oaChar *a, const oaString &b) {
  return concatenation(a, b, oaUInt8(lengthOf(a)) + b.getLength());
}

} // namespace OpenAccess_4
