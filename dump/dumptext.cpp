#include "dumptext.h"

#include <charconv>

using namespace oa;

namespace {

const char kHexDigits[] = "0123456789abcdef";

void appendHex(std::string &out, unsigned char byte) {
  out += kHexDigits[byte >> 4];
  out += kHexDigits[byte & 15];
}

// NULL for a purpose that is not reserved.
const char *reservedPurposeName(oaPurposeNum purpose) {
  // From 0xffffffff downwards.
  static const char *const kNames[] = {"drawing", "fill",      "slot",  "OPCSerif", "OPCAntiSerif", "annotation",
                                       "gapFill", "redundant", "oaAny", "oaNo",     "oaFillOPC"};
  const oaPurposeNum place = 0xffffffffU - purpose;
  return place < sizeof kNames / sizeof *kNames ? kNames[place] : nullptr;
}

} // namespace

void appendQuoted(std::string &out, const char *text) {
  out += '"';
  for (; *text; ++text) {
    const unsigned char character = static_cast<unsigned char>(*text);
    if (character == '\\' || character == '"') {
      out += '\\';
      out += *text;
    } else if (character == '\n') {
      out += "\\n";
    } else if (character == '\t') {
      out += "\\t";
    } else if (character < 0x20 || (character >= 0x7f && character < 0xa0)) {
      out += "\\x";
      appendHex(out, character);
    } else {
      out += *text;
    }
  }
  out += '"';
}

DumpText &DumpText::begin(int level, const char *what) {
  text_.append(2 * static_cast<std::size_t>(level), ' ');
  text_ += what;
  return *this;
}

void DumpText::name(const char *name) {
  text_ += ' ';
  if (name) {
    text_ += name;
    text_ += '=';
  }
}

template <typename Number> void DumpText::digits(Number value) {
  char buffer[64]; // the shortest form of a double has 24 characters at most
  const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof buffer, value);
  text_.append(buffer, result.ptr);
}

void DumpText::pair(long long first, long long second) {
  text_ += '(';
  digits(first);
  text_ += ' ';
  digits(second);
  text_ += ')';
}

DumpText &DumpText::number(const char *name, long long value) {
  this->name(name);
  digits(value);
  return *this;
}

DumpText &DumpText::real(const char *name, oaDouble value) {
  this->name(name);
  digits(value);
  return *this;
}

DumpText &DumpText::real(const char *name, oaFloat value) {
  this->name(name);
  digits(value);
  return *this;
}

DumpText &DumpText::flag(const char *name, bool value) { return word(name, value ? "yes" : "no"); }

DumpText &DumpText::word(const char *name, const char *value) {
  this->name(name);
  text_ += value;
  return *this;
}

DumpText &DumpText::word(const char *name, const std::string &value) {
  this->name(name);
  text_ += value;
  return *this;
}

DumpText &DumpText::quoted(const char *name, const char *value) {
  this->name(name);
  appendQuoted(text_, value);
  return *this;
}

DumpText &DumpText::bytes(const char *name, const oaByteArray &value) {
  this->name(name);
  for (oaUInt4 i = 0; i < value.getNumElements(); ++i) {
    appendHex(text_, value[i]);
  }
  return *this;
}

DumpText &DumpText::point(const char *name, const oaPoint &value) {
  this->name(name);
  pair(value.x(), value.y());
  return *this;
}

DumpText &DumpText::vector(const char *name, const oaVector &value) {
  this->name(name);
  pair(value.x(), value.y());
  return *this;
}

DumpText &DumpText::points(const char *name, const oaPointArray &value) {
  this->name(name);
  for (oaUInt4 i = 0; i < value.getNumElements(); ++i) {
    pair(value[i].x(), value[i].y());
  }
  return *this;
}

DumpText &DumpText::box(const char *name, const oaBox &value) {
  this->name(name);
  pair(value.left(), value.bottom());
  pair(value.right(), value.top());
  return *this;
}

void DumpText::purposeNumber(oaPurposeNum purpose) {
  if (const char *reserved = reservedPurposeName(purpose)) {
    text_ += reserved;
  } else {
    digits(purpose);
  }
}

DumpText &DumpText::purpose(const char *name, oaPurposeNum purpose) {
  this->name(name);
  purposeNumber(purpose);
  return *this;
}

DumpText &DumpText::layer(oaLayerNum layer, oaPurposeNum purpose) {
  text_ += ' ';
  digits(layer);
  text_ += '/';
  purposeNumber(purpose);
  return *this;
}
