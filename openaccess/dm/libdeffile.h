#ifndef OAKIT_LIBDEFFILE_H
#define OAKIT_LIBDEFFILE_H

// The text of a library definition file. One statement a line, keywords in any case:
//
//     DEFINE name path                 a library; names as on disk (see diskname.h)
//     INCLUDE path                     another definition file
//     ASSIGN name attribute value      libMode (shared, nonShared, readOnly), writePath, or anything else
//     # comment                        at the start of a line, or after a statement when a blank follows the '#'
//
// A path is the rest of its line, so it may hold blanks. Relative paths start at the directory of the file that holds
// them.

#include <string>
#include <utility>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

struct LibDefStatement {
  enum class Kind { text, define, include, assign }; // text: comments and empty lines

  Kind kind = Kind::text;
  unsigned line = 0;     // from 1
  std::string raw;       // the line as it stands, without its end
  std::string name;      // define, assign: the library
  std::string attribute; // assign
  std::string value;     // define, include: the path; assign: the value
};

struct LibDefText {
  std::vector<LibDefStatement> statements;
  // Empty when the text is fine; else what is wrong, with the line. The statements before it are there.
  std::string error;
};

constexpr std::size_t kLibDefLimitBytes = 0x1000000;

LibDefText parseLibDefs(const std::string &text);

// Whether a path or value survives being written and read again: not empty, no line ends or other control characters,
// no blanks at either end, no "# ".
bool isWritableLibDefValue(const std::string &value);

// Replaces $NAME and ${NAME}, "~" and "~user" by what the environment and the user table say. Returns false and the
// name in `unknown` when there is no such variable or user.
bool expandLibDefPath(const std::string &path, std::string &expanded, std::string &unknown);

} // namespace kit
} // namespace OpenAccess_4

#endif
