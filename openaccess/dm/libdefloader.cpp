#include "libdefloader.h"

#include "cellviewfiles.h"
#include "diskname.h"
#include "libdefobservers.h"
#include "library.h"
#include "oa/oaException.h"
#include "oa/oaInstallation.h"
#include "oa/oaLibDefList.h"
#include "raise.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace OpenAccess_4 {
namespace kit {

namespace {

// With symbolic links resolved; the path itself when it does not exist.
std::string realPath(const std::string &path) {
  std::error_code error;
  const std::filesystem::path real = std::filesystem::canonical(path, error);
  return error ? path : real.string();
}

std::string placeOf(const LibDefList &list, const LibDefMember &member) {
  return "file " + list.fullPath + (member.line != 0 ? " line " + std::to_string(member.line) : std::string()) + ": ";
}

void warn(Row list, const std::string &message, oaLibDefListWarningTypeEnum type) {
  LibDefObservers::instance().warn(LibDefLists::instance().object(list), message, type);
}

} // namespace

std::string defaultLibDefPath() {
  std::vector<std::string> candidates = {absolutePath("lib.defs")};
  const char *home = std::getenv("HOME");
  if (home != nullptr && *home != '\0') {
    candidates.push_back(absolutePath(std::string(home) + "/lib.defs"));
  }
  if (const char *data = oaInstallation::getDataDir()) {
    candidates.push_back(std::string(data) + "/lib.defs");
    candidates.push_back(std::string(data) + "/libraries/lib.defs");
  }
  const auto found = std::find_if(candidates.begin(), candidates.end(),
                                  [](const std::string &path) { return ::access(path.c_str(), F_OK) == 0; });
  return found == candidates.end() ? std::string() : *found;
}

bool LibDefLoader::readHierarchy(Row top) {
  LibDefLists &lists = LibDefLists::instance();
  try {
    lists.read(top);
  } catch (const LibDefFileError &error) {
    if (!error.isSyntax) {
      throw;
    }
    warn(top, error.message, oacSyntaxErrorLibDefListWarning);
    return false;
  }
  return readIncludesOf(top);
}

bool LibDefLoader::readIncludesOf(Row top) {
  chain_.push_back(realPath(LibDefLists::instance().list(top).fullPath));
  seen_.push_back(chain_.back());
  const bool isFine = collect(top);
  chain_.pop_back();
  return isFine;
}

bool LibDefLoader::isInChain(const std::string &place) const {
  return std::find(chain_.begin(), chain_.end(), place) != chain_.end();
}

bool LibDefLoader::collect(Row list) {
  LibDefLists &lists = LibDefLists::instance();
  LibDefMembers &members = LibDefMembers::instance();
  lists_.push_back(list);
  for (const std::string &orphan : std::vector<std::string>(lists.list(list).orphans)) {
    warn(list, orphan, oacLibNameUndefinedLibDefListWarning);
  }
  for (const Row member : lists.list(list).memberRows()) {
    // An observer may have destroyed it.
    if (!members.isAlive(member)) {
      continue;
    }
    if (!members.member(member).libName.empty()) {
      define(list, member);
    } else if (!include(list, member)) {
      return false;
    }
  }
  return true;
}

// False after a syntax error in the included file or below it.
bool LibDefLoader::include(Row listRow, Row memberRow) {
  LibDefLists &lists = LibDefLists::instance();
  const LibDefMember member = LibDefMembers::instance().member(memberRow);
  const std::string where = placeOf(lists.list(listRow), member);
  std::string path;
  if (!resolve(listRow, member, member.path, oacLibDefFileUndefinedVarIncludePath, path)) {
    return true;
  }
  const std::string place = realPath(path);
  if (isInChain(place) || chain_.size() >= kMaxDepth) {
    const std::string message =
        where + (isInChain(place) ? "includes " + path + ", which includes this file"
                                  : "includes are nested deeper than " + std::to_string(kMaxDepth));
    if (isStrict_) {
      raiseDM(oacLibDefFileRecursiveInclude, message);
    }
    warn(listRow, message, oacRecursiveIncludeLibDefListWarning);
    return true;
  }
  if (std::find(seen_.begin(), seen_.end(), place) != seen_.end()) {
    return true;
  }
  const Row known = lists.find(path);
  const Row included = known != kNoRow ? known : lists.add(path, 'r');
  try {
    lists.read(included);
  } catch (const LibDefFileError &error) {
    warn(error.isSyntax ? included : listRow,
         error.isSyntax ? error.message : where + "cannot include: " + error.message,
         error.isSyntax ? oacSyntaxErrorLibDefListWarning : oacCannotOpenIncludeLibDefListWarning);
    if (known == kNoRow) {
      lists.destroy(included);
    }
    return !error.isSyntax;
  }
  chain_.push_back(place);
  seen_.push_back(place);
  const bool isFine = collect(included);
  chain_.pop_back();
  return isFine;
}

void LibDefLoader::define(Row listRow, Row memberRow) {
  const LibDefMember member = LibDefMembers::instance().member(memberRow);
  Definition definition{memberRow, {}, {}};
  if (!resolve(listRow, member, member.path, oacLibDefFileUndefinedVarLibPath, definition.fullPath)) {
    return;
  }
  if (!member.writePath.empty() &&
      !resolve(listRow, member, member.writePath, oacLibDefFileUndefinedVarWritePath, definition.writePath)) {
    return;
  }
  const auto earlier = definitions_.find(member.libName);
  if (earlier != definitions_.end()) {
    warn(listRow,
         placeOf(LibDefLists::instance().list(listRow), member) + "library " + nativeText(member.libName) +
             " is defined more than once; " + definition.fullPath + " is used, not " + earlier->second.fullPath,
         oacMultiDefinitionsLibDefListWarning);
  }
  definitions_[member.libName] = definition;
}

bool LibDefLoader::resolve(Row listRow, const LibDefMember &member, const std::string &path, oaUInt4 strictId,
                           std::string &fullPath) {
  const LibDefList &list = LibDefLists::instance().list(listRow);
  std::string expanded;
  std::string unknown;
  if (!expandLibDefPath(path, expanded, unknown)) {
    const std::string message = placeOf(list, member) + unknown + " in path " + path + " is not defined";
    if (isStrict_) {
      raiseDM(strictId, message);
    }
    warn(listRow, message, oacUndefinedVarLibDefListWarning);
    return false;
  }
  if (expanded.empty() || expanded[0] != '/') {
    expanded = std::filesystem::path(realPath(list.fullPath)).parent_path().string() + "/" + expanded;
  }
  fullPath = absolutePath(expanded);
  return true;
}

void LibDefLoader::openLibraries() {
  LibDefLists &lists = LibDefLists::instance();
  LibDefMembers &members = LibDefMembers::instance();
  LibDefObservers &observers = LibDefObservers::instance();
  for (const Row list : lists_) {
    if (!lists.isAlive(list) || !observers.preOpen(lists.object(list))) {
      continue;
    }
    for (const Row member : lists.list(list).memberRows()) {
      const auto definition = definitions_.find(members.member(member).libName);
      if (definition != definitions_.end() && definition->second.member == member) {
        openOne(definition->second);
      }
    }
    observers.tell([&](LibDefObservers::Observer &observer) { observer.onPostOpenLibs(lists.object(list)); });
  }
}

void LibDefLoader::openOne(const Definition &definition) {
  const LibDefMember member = LibDefMembers::instance().member(definition.member);
  Libraries &libraries = Libraries::instance();
  try {
    if (Library *open = libraries.find(member.libName)) {
      if (open->fullPath() == definition.fullPath || isSamePlace(open->fullPath(), definition.fullPath)) {
        return;
      }
      libraries.close(*open);
    }
    libraries.open(member.libName, definition.fullPath, definition.writePath, member.mode);
  } catch (const oaException &error) {
    warn(member.list, placeOf(LibDefLists::instance().list(member.list), member) + std::string(error.getMsg()),
         oacCannotOpenLibLibDefListWarning);
  }
}

} // namespace kit
} // namespace OpenAccess_4
