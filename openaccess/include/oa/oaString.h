// Text. A string owns its characters, always ends in a NUL and holds none inside. Up to kInlineBytes - 1 characters
// live in the object itself, and assignment reuses the room that is there, so one string may be filled in a loop
// without allocations.
#ifndef OASTRING_H
#define OASTRING_H

#include <cstdarg>

#include "oa/oaTypes.h"

namespace OpenAccess_4 {

class oaString {
public:
  oaString() noexcept : text_(inline_), length_(0), capacity_(kInlineBytes) { inline_[0] = '\0'; }
  /// An empty string with room for `length` characters.
  explicit oaString(oaUInt4 length);
  /// NULL counts as the empty text.
  oaString(const oaChar *initialValue);
  /// At most `length` characters of the text, which may end earlier.
  oaString(const oaChar *initialValue, oaUInt4 length);
  oaString(const oaString &s);
  oaString(oaString &&s) noexcept;
  ~oaString() {
    if (text_ != inline_)
      delete[] text_;
  }

  oaString &operator=(oaChar c);
  oaString &operator=(const oaChar *str);
  oaString &operator=(const oaString &str);
  oaString &operator=(oaString &&str) noexcept;
  oaString &operator+=(oaChar c);
  oaString &operator+=(const oaChar *str);
  oaString &operator+=(const oaString &str);

  operator const oaChar *() const { return text_; }
  /// A character to read or write; the index must be below getSize(). Writing a NUL shortens the string.
  oaChar &operator[](oaUInt4 i) {
    length_ = kUnknownLength;
    return text_[i];
  }
  const oaChar &operator[](oaUInt4 i) const { return text_[i]; }

  oaUInt4 getLength() const { return length_ != kUnknownLength ? length_ : countLength(); }
  oaBoolean isEmpty() const { return text_[0] == '\0'; }
  /// The bytes of the buffer, the NUL included.
  oaUInt4 getSize() const { return capacity_; }
  /// Gives the buffer room for `size` bytes, the NUL included; a longer text is cut.
  void resize(oaUInt4 size);

  /// The leading number of the text, 0 when there is none; out of range: the nearest int.
  int toInt() const;
  oaDouble toDouble() const;
  void toUpper();
  void toLower();

  /// Where the character stands at or after `offset`; the length when it does not.
  oaUInt4 index(oaChar c, oaUInt4 offset = 0) const;
  /// Where the text stands at or after `offset`; the length when it does not.
  oaUInt4 substr(const oaString &sub, oaUInt4 offset = 0) const;
  oaBoolean isEqual(const oaString &str, oaBoolean ignoreCase = false) const;

  /// printf. `size` is a hint how many bytes to reserve. Arguments may point into this string.
  void format(oaUInt4 size, const oaChar *formatStr, ...) __attribute__((format(printf, 3, 4)));
  void format(const oaChar *formatStr, ...) __attribute__((format(printf, 2, 3)));
  void format(const oaChar *formatStr, va_list args) __attribute__((format(printf, 2, 0)));

  /// Negative, 0 or positive in the order of the bytes.
  static int compare(const oaString &a, const oaString &b);
  static int compare(const oaString &a, const oaChar *b);

  // Three forms of each: with a text literal on one side, neither conversion may be needed, or it would be ambiguous.
  friend oaBoolean operator==(const oaString &a, const oaString &b) { return compare(a, b) == 0; }
  friend oaBoolean operator==(const oaString &a, const oaChar *b) { return compare(a, b) == 0; }
  friend oaBoolean operator==(const oaChar *a, const oaString &b) { return compare(b, a) == 0; }
  friend oaBoolean operator!=(const oaString &a, const oaString &b) { return compare(a, b) != 0; }
  friend oaBoolean operator!=(const oaString &a, const oaChar *b) { return compare(a, b) != 0; }
  friend oaBoolean operator!=(const oaChar *a, const oaString &b) { return compare(b, a) != 0; }
  friend oaBoolean operator<(const oaString &a, const oaString &b) { return compare(a, b) < 0; }
  friend oaBoolean operator<(const oaString &a, const oaChar *b) { return compare(a, b) < 0; }
  friend oaBoolean operator<(const oaChar *a, const oaString &b) { return compare(b, a) > 0; }
  friend oaBoolean operator>(const oaString &a, const oaString &b) { return compare(a, b) > 0; }
  friend oaBoolean operator>(const oaString &a, const oaChar *b) { return compare(a, b) > 0; }
  friend oaBoolean operator>(const oaChar *a, const oaString &b) { return compare(b, a) < 0; }
  friend oaBoolean operator<=(const oaString &a, const oaString &b) { return compare(a, b) <= 0; }
  friend oaBoolean operator<=(const oaString &a, const oaChar *b) { return compare(a, b) <= 0; }
  friend oaBoolean operator<=(const oaChar *a, const oaString &b) { return compare(b, a) >= 0; }
  friend oaBoolean operator>=(const oaString &a, const oaString &b) { return compare(a, b) >= 0; }
  friend oaBoolean operator>=(const oaString &a, const oaChar *b) { return compare(a, b) >= 0; }
  friend oaBoolean operator>=(const oaChar *a, const oaString &b) { return compare(b, a) <= 0; }

  // Takes over `length` characters, keeping the room there is. Not part of the API that clients know: the kit's own
  // text getters use it.
  void assign(const oaChar *text, oaUInt4 length);

private:
  static constexpr oaUInt4 kInlineBytes = 16;
  // Handed out a writable character: from then on the text itself says how long it is.
  static constexpr oaUInt4 kUnknownLength = 0xffffffffU;

  oaUInt4 countLength() const;
  void assignLonger(const oaChar *text, oaUInt4 length);
  void append(const oaChar *text, oaUInt4 length);
  void reserve(oaUInt8 bytes, oaBoolean keep);

  oaChar *text_;
  oaUInt4 length_;
  oaUInt4 capacity_;
  oaChar inline_[kInlineBytes];
};

oaString operator+(const oaString &a, const oaString &b);
oaString operator+(const oaString &a, const oaChar *b);
oaString operator+(const oaChar *a, const oaString &b);

} // namespace OpenAccess_4

#endif
