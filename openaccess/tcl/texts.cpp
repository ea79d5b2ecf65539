#include "texts.h"

#include "scripterror.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace OpenAccess_4 {
namespace tcl {

namespace {

bool isAscii(char c) { return static_cast<signed char>(c) >= 0; }
bool isAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return isAscii(c); });
}
bool isTrail(char c) { return (static_cast<unsigned char>(c) & 0xc0) == 0x80; }

// How many bytes the character at the start of the text has. 1 for a byte that begins none: it stands for itself, as
// Tcl takes it, which meets such bytes where a program hands it a text of Latin-1.
std::size_t characterLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const bool isNul = text.substr(0, 2) == "\xc0\x80"; // as Tcl writes it
  const std::size_t length = lead >= 0xf8 ? 1 : lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : lead >= 0xc2 || isNul ? 2 : 1;
  const std::string_view trail = text.substr(1, length - 1);
  return trail.size() == length - 1 && std::all_of(trail.begin(), trail.end(), isTrail) ? length : 1;
}

constexpr int kNoByte = -1;

// The byte for a character of Tcl.
int byteOf(std::string_view character) {
  if (character.size() == 1) {
    return static_cast<unsigned char>(character[0]);
  }
  const auto lead = static_cast<unsigned char>(character[0]);
  const bool isLatin1 = character.size() == 2 && (lead == 0xc2 || lead == 0xc3);
  return isLatin1 ? (lead & 3) << 6 | (character[1] & 0x3f) : kNoByte;
}

void appendCharacter(std::string &utf8, char byte) {
  const auto number = static_cast<unsigned char>(byte);
  if (number < 0x80) {
    utf8 += byte;
  } else {
    utf8 += static_cast<char>(0xc0 | number >> 6);
    utf8 += static_cast<char>(0x80 | (number & 0x3f));
  }
}

} // namespace

bool readText(Tcl_Obj *value, oaString *text) {
  int length = 0;
  const char *bytes = Tcl_GetStringFromObj(value, &length);
  const std::string_view all(bytes, static_cast<std::size_t>(length));
  if (isAscii(all)) {
    if (text != nullptr) {
      *text = oaString(bytes, static_cast<oaUInt4>(length));
    }
    return true;
  }
  std::string found;
  for (std::string_view rest = all; !rest.empty();) {
    const std::size_t characterBytes = characterLength(rest);
    const int byte = byteOf(rest.substr(0, characterBytes));
    if (byte == kNoByte) {
      return false;
    }
    found += static_cast<char>(byte);
    rest.remove_prefix(characterBytes);
  }
  if (text != nullptr) {
    *text = oaString(found.data(), static_cast<oaUInt4>(found.size()));
  }
  return true;
}

oaString textOf(Tcl_Obj *value) {
  oaString text;
  if (!readText(value, &text)) {
    throw valueError(std::string("\"") + Tcl_GetString(value) +
                     "\" has characters that a library cannot hold; only Latin-1 is possible");
  }
  return text;
}

Tcl_Obj *newText(const oaChar *bytes, std::size_t length) {
  const std::string_view text(bytes, length);
  if (isAscii(text)) {
    return Tcl_NewStringObj(bytes, static_cast<int>(length));
  }
  std::string utf8;
  for (const char byte : text) {
    appendCharacter(utf8, byte);
  }
  return Tcl_NewStringObj(utf8.data(), static_cast<int>(utf8.size()));
}

oaString pathOf(Tcl_Obj *value) {
  Tcl_DString bytes;
  int length = 0;
  const char *utf8 = Tcl_GetStringFromObj(value, &length);
  Tcl_UtfToExternalDString(nullptr, utf8, length, &bytes);
  oaString path(Tcl_DStringValue(&bytes));
  const bool isWhole = path.getLength() == static_cast<oaUInt4>(Tcl_DStringLength(&bytes));
  Tcl_DStringFree(&bytes);
  if (!isWhole) {
    throw valueError(std::string("\"") + utf8 + "\" is no path: there is a NUL in it");
  }
  return path;
}

Tcl_Obj *newPath(const oaString &path) {
  Tcl_DString utf8;
  Tcl_ExternalToUtfDString(nullptr, path, static_cast<int>(path.getLength()), &utf8);
  Tcl_Obj *value = Tcl_NewStringObj(Tcl_DStringValue(&utf8), Tcl_DStringLength(&utf8));
  Tcl_DStringFree(&utf8);
  return value;
}

std::string readableMessage(const std::string &bytes) {
  std::string utf8;
  for (std::string_view rest = bytes; !rest.empty();) {
    const std::size_t length = characterLength(rest);
    if (length == 1) {
      appendCharacter(utf8, rest[0]);
    } else {
      utf8 += rest.substr(0, length);
    }
    rest.remove_prefix(length);
  }
  return utf8;
}

std::string bytesOfMessage(const std::string &utf8) {
  std::string bytes;
  for (std::string_view rest = utf8; !rest.empty();) {
    const std::size_t length = characterLength(rest);
    const int byte = byteOf(rest.substr(0, length));
    bytes += byte == kNoByte ? '?' : static_cast<char>(byte);
    rest.remove_prefix(length);
  }
  return bytes;
}

} // namespace tcl
} // namespace OpenAccess_4
