#include "diskname.h"

#include "oa/oaNameSpaces.h"
#include "oa/oaScalarName.h"
#include "raise.h"

#include <algorithm>

namespace OpenAccess_4 {
namespace kit {

namespace {

bool isPlain(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '@';
}

// Value of a lower-case hexadecimal digit, or -1.
int digitValue(char c) {
  if (c >= '0' && c <= '9') {
    return c - '0';
  }
  return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

} // namespace

std::string diskName(const oaScalarName &name) {
  oaString text;
  name.get(oaUnixNS(), text);
  std::string disk(text);
  if (disk.empty() || disk.size() > kMaxDiskNameBytes) {
    raiseBase(oacInvalidNameLength, "name \"" + disk.substr(0, 40) + (disk.size() > 40 ? "...\"" : "\"") + ": has " +
                                        std::to_string(disk.size()) + " bytes on disk, expected 1 to " +
                                        std::to_string(kMaxDiskNameBytes));
  }
  // The last line of defence: whatever a name space does, nothing else reaches a path.
  if (!isDiskName(disk)) {
    raiseBase(oacInvalidNameChar, "name \"" + disk + "\": cannot be written on disk");
  }
  return disk;
}

bool isDiskName(const std::string &text) {
  if (text.empty() || text.size() > kMaxDiskNameBytes) {
    return false;
  }
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (isPlain(text[i])) {
      continue;
    }
    if (text[i] != '#' || i + 2 >= text.size()) {
      return false;
    }
    const int high = digitValue(text[i + 1]);
    const int low = digitValue(text[i + 2]);
    // A plain character is never escaped, so that one name has one directory.
    if (high < 0 || low < 0 || (high | low) == 0 || isPlain(static_cast<char>(high * 16 + low))) {
      return false;
    }
    i += 2;
  }
  return true;
}

void nameFromDisk(const std::string &text, oaScalarName &name) { name.init(oaUnixNS(), text.c_str()); }

void nameFromDisk(const std::string &text, const oaNameSpace &ns, oaString &out) {
  oaScalarName name;
  nameFromDisk(text, name);
  name.get(ns, out);
}

std::string nativeText(const std::string &text) {
  oaString native;
  nameFromDisk(text, oaNativeNS(), native);
  return std::string(native);
}

} // namespace kit
} // namespace OpenAccess_4
