#ifndef DUMPTEXT_H
#define DUMPTEXT_H

#include <string>

#include <oa/oaDesignDB.h>

// The lines of a dump while they are written. A line is its indentation, what it is about, and its attributes, each
// " name=value" or, without a name, " value". Attributes are written in the order of the calls; they chain.
//
//   text.begin(2, "rect").layer(4, 0).box("box", box).end();      gives "    rect 4/0 box=(0 0)(10 5)\n"
//
// The text holds printable ASCII and the Latin-1 characters from 0xa0 on, and line feeds between lines.
class DumpText {
public:
  DumpText &begin(int level, const char *what);
  void end() { text_ += '\n'; }

  // `name` is NULL for a value alone.

  DumpText &number(const char *name, long long value);
  // The shortest text that reads back as the same number.
  DumpText &real(const char *name, oa::oaDouble value);
  DumpText &real(const char *name, oa::oaFloat value);
  // "yes" or "no".
  DumpText &flag(const char *name, bool value);
  // As it is: an enumerator's name, or a text that has been made readable already.
  DumpText &word(const char *name, const char *value);
  DumpText &word(const char *name, const std::string &value);
  // In double quotes, with escapes.
  DumpText &quoted(const char *name, const char *value);
  // Hexadecimal digits, two a byte.
  DumpText &bytes(const char *name, const oa::oaByteArray &value);
  DumpText &point(const char *name, const oa::oaPoint &value);
  DumpText &vector(const char *name, const oa::oaVector &value);
  DumpText &points(const char *name, const oa::oaPointArray &value);
  DumpText &box(const char *name, const oa::oaBox &value);
  // A reserved purpose by its name, since its number means nothing to a reader.
  DumpText &purpose(const char *name, oa::oaPurposeNum purpose);
  // "layer/purpose".
  DumpText &layer(oa::oaLayerNum layer, oa::oaPurposeNum purpose);

  const std::string &string() const { return text_; }
  std::size_t size() const { return text_.size(); }
  void clear() { text_.clear(); }
  void append(const std::string &lines) { text_ += lines; }
  void append(const char *characters, std::size_t count) { text_.append(characters, count); }

private:
  void name(const char *name);
  template <typename Number> void digits(Number value);
  void pair(long long first, long long second);
  void purposeNumber(oa::oaPurposeNum purpose);

  std::string text_;
};

// Appends the text in double quotes. \ and " get a \ in front, line feed and tabulator become \n and \t, other
// characters that do not print \x and two digits. Different texts stay different.
void appendQuoted(std::string &out, const char *text);

#endif
