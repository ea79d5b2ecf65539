#include "nametext.h"

#include <climits>

#include "namegrammar.h"
#include "oa/oaException.h"
#include "raise.h"

namespace OpenAccess_4 {
namespace kit {

namespace {

// Of one directory entry; lock and auxiliary files of a primary file do not take their names from a cell.
constexpr oaUInt4 kMaxDirectoryLength = NAME_MAX;

} // namespace

std::string directoryOf(const oaScalarName &name) {
  oaString directory;
  unixGrammar().write(name, directory);
  if (directory.isEmpty())
    raiseBase(oacInvalidNameLength, "the empty name cannot be a directory");
  if (directory.getLength() > kMaxDirectoryLength)
    raiseBase(oacInvalidNameLength, "name " + textOf(name) + ": as a directory it would have " +
                                        std::to_string(directory.getLength()) + " characters, at most " +
                                        std::to_string(kMaxDirectoryLength) + " are possible");
  return std::string(directory);
}

bool nameOfDirectory(const std::string &directory, oaScalarName &name) {
  oaScalarName read;
  oaString written;
  try {
    unixGrammar().parseScalar(directory, read);
    unixGrammar().write(read, written);
  } catch (const oaException &) {
    return false;
  }
  // Of several spellings (#2D for #2d) only the one that directoryOf() gives leads back to the directory.
  if (directory.empty() || written != directory.c_str())
    return false;
  name = read;
  return true;
}

void keyOf(const oaName &name, oaString &key) {
  key = "";
  keyGrammar().write(name, key);
}

void keyOf(const oaScalarName &name, oaString &key) {
  key = "";
  keyGrammar().write(name, key);
}

std::string textOf(const oaScalarName &name) {
  oaString text;
  name.get(text);
  return std::string(text);
}

std::string textOf(const oaName &name) {
  oaString text;
  name.get(text);
  return std::string(text);
}

} // namespace kit
} // namespace OpenAccess_4
