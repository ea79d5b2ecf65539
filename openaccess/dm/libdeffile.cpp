#include "libdeffile.h"

#include "diskname.h"
#include "oa/oaException.h"
#include "oa/oaNameSpaces.h"
#include "oa/oaScalarName.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <pwd.h>
#include <strings.h>

namespace OpenAccess_4 {
namespace kit {

namespace {

constexpr std::size_t kMaxLineBytes = 0x10000;

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

// Takes the next word off the front.
std::string takeWord(std::string &rest) {
  const auto begin = std::find_if_not(rest.begin(), rest.end(), isBlank);
  const auto end = std::find_if(begin, rest.end(), isBlank);
  std::string word(begin, end);
  rest.erase(rest.begin(), std::find_if_not(end, rest.end(), isBlank));
  return word;
}

// Without the comment and the blanks at the ends.
std::string statementOf(const std::string &line) {
  std::size_t end = line.size();
  const std::size_t first = line.find_first_not_of(" \t\r");
  if (first == std::string::npos || line[first] == '#') {
    return {};
  }
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    if (line[i] == '#' && isBlank(line[i + 1])) {
      end = i;
      break;
    }
  }
  while (end > first && isBlank(line[end - 1])) {
    --end;
  }
  return line.substr(first, end - first);
}

bool isControl(char c) { return (static_cast<unsigned char>(c) < 0x20 && c != '\t') || c == 0x7f; }

// In the form in which the kit knows names; empty when it is no name.
std::string canonicalName(const std::string &word) {
  try {
    oaScalarName name;
    nameFromDisk(word, name);
    return diskName(name);
  } catch (const oaError &) {
    return {};
  }
}

// What is wrong with the line, or an empty text.
std::string parseLine(const std::string &line, LibDefStatement &statement) {
  std::string rest = statementOf(line);
  if (rest.empty()) {
    return {};
  }
  if (std::any_of(line.begin(), line.end() - (line.back() == '\r' ? 1 : 0), isControl)) {
    return "holds control characters; this is no library definition file";
  }
  const std::string keyword = takeWord(rest);
  if (::strcasecmp(keyword.c_str(), "INCLUDE") == 0) {
    statement.kind = LibDefStatement::Kind::include;
    statement.value = rest;
    return rest.empty() ? "INCLUDE without a path" : "";
  }
  const bool isDefine = ::strcasecmp(keyword.c_str(), "DEFINE") == 0;
  if (!isDefine && ::strcasecmp(keyword.c_str(), "ASSIGN") != 0) {
    return "unknown keyword \"" + keyword.substr(0, 40) + "\", expected DEFINE, INCLUDE or ASSIGN";
  }
  statement.kind = isDefine ? LibDefStatement::Kind::define : LibDefStatement::Kind::assign;
  const std::string word = takeWord(rest);
  statement.name = canonicalName(word);
  if (statement.name.empty()) {
    return "\"" + word.substr(0, 40) + "\" is no library name";
  }
  if (!isDefine) {
    statement.attribute = takeWord(rest);
  }
  statement.value = rest;
  if (rest.empty()) {
    return isDefine ? "DEFINE without a path" : "ASSIGN needs a library, an attribute and a value";
  }
  static const char *const kModes[] = {"shared", "nonShared", "readOnly"};
  if (statement.attribute == "libMode" && std::none_of(std::begin(kModes), std::end(kModes), [&](const char *mode) {
        return ::strcasecmp(mode, rest.c_str()) == 0;
      })) {
    return "library mode \"" + rest.substr(0, 40) + "\" is unknown, expected shared, nonShared or readOnly";
  }
  return {};
}

bool isVariableCharacter(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; }

// The home directory of a user, or of this process for "".
bool homeOf(const std::string &user, std::string &home) {
  if (user.empty()) {
    const char *value = std::getenv("HOME");
    home = value != nullptr ? value : "";
    return value != nullptr && *value != '\0';
  }
  const struct passwd *entry = ::getpwnam(user.c_str());
  home = entry != nullptr ? entry->pw_dir : "";
  return entry != nullptr;
}

} // namespace

LibDefText parseLibDefs(const std::string &text) {
  LibDefText result;
  unsigned number = 0;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    ++number;
    std::string error;
    LibDefStatement statement;
    statement.line = number;
    if (end - begin > kMaxLineBytes) {
      error = "longer than " + std::to_string(kMaxLineBytes) + " bytes";
    } else {
      statement.raw = text.substr(begin, end - begin);
      error = parseLine(statement.raw, statement);
    }
    if (!error.empty()) {
      result.error = "line " + std::to_string(number) + ": " + error;
      return result;
    }
    result.statements.push_back(std::move(statement));
    begin = end + 1;
  }
  return result;
}

bool isWritableLibDefValue(const std::string &value) {
  return !value.empty() && value.size() < kMaxLineBytes / 2 && !isBlank(value.front()) && !isBlank(value.back()) &&
         value.front() != '#' && value.find("# ") == std::string::npos && value.find("#\t") == std::string::npos &&
         std::none_of(value.begin(), value.end(), isControl);
}

bool expandLibDefPath(const std::string &path, std::string &expanded, std::string &unknown) {
  expanded.clear();
  std::size_t at = 0;
  if (path.front() == '~') {
    at = std::min(path.find('/'), path.size());
    if (!homeOf(path.substr(1, at - 1), expanded)) {
      unknown = path.substr(0, at);
      return false;
    }
  }
  while (at < path.size()) {
    const bool isBraced = path.compare(at, 2, "${") == 0;
    const std::size_t nameBegin = at + (isBraced ? 2 : 1);
    std::size_t nameEnd = nameBegin;
    while (nameEnd < path.size() && isVariableCharacter(path[nameEnd])) {
      ++nameEnd;
    }
    const bool isVariable = path[at] == '$' && nameEnd > nameBegin && (!isBraced || path.compare(nameEnd, 1, "}") == 0);
    if (!isVariable) {
      expanded += path[at++];
      continue;
    }
    const std::string name = path.substr(nameBegin, nameEnd - nameBegin);
    const char *value = std::getenv(name.c_str());
    if (value == nullptr) {
      unknown = "$" + name;
      return false;
    }
    expanded += value;
    at = nameEnd + (isBraced ? 1 : 0);
  }
  return true;
}

} // namespace kit
} // namespace OpenAccess_4
