#include "oa/oaLibDefList.h"

#include "cellviewfiles.h"
#include "collection.h"
#include "libdefloader.h"
#include "libdefobservers.h"
#include "raise.h"

#include <algorithm>
#include <filesystem>
#include <unistd.h>

namespace OpenAccess_4 {

namespace {

using kit::kNoRow;
using kit::LibDefList;
using kit::LibDefLists;
using kit::LibDefObservers;
using kit::Row;

LibDefList &listOf(const oaLibDefList *list) { return LibDefLists::instance().list(LibDefLists::rowOf(list)); }

// Members in their order, which moves can make another one than that of their creation.
class MembersOfList : public kit::CollectionKind {
public:
  oaObject *next(const kit::CollectionQuestion &question, Row &position, Row &hint) const override {
    if (!question.table->isAlive(question.owner)) {
      return nullptr;
    }
    const std::vector<LibDefList::Entry> &entries =
        static_cast<LibDefLists *>(question.table)->list(question.owner).entries;
    // `hint` is the place behind the member returned last. When that one was destroyed, the next has moved up to its
    // place.
    std::size_t place = hint;
    if (position != kNoRow && (place == 0 || place > entries.size() || entries[place - 1].member != position)) {
      const auto found = std::find_if(entries.begin(), entries.end(),
                                      [&](const LibDefList::Entry &entry) { return entry.member == position; });
      place = found != entries.end() ? static_cast<std::size_t>(found - entries.begin()) + 1
              : place == 0           ? 0
                                     : place - 1;
    }
    while (place < entries.size() && entries[place].member == kNoRow) {
      ++place;
    }
    if (place >= entries.size()) {
      return nullptr;
    }
    position = entries[place].member;
    hint = static_cast<Row>(place + 1);
    return kit::LibDefMembers::instance().handle(position);
  }
};

// What the file of a list that is wanted in a mode must be.
void checkFileFor(const std::string &path, char mode) {
  const bool exists = ::access(path.c_str(), F_OK) == 0;
  if (mode == 'r' && (!exists || kit::isDirectory(path) || ::access(path.c_str(), R_OK) != 0)) {
    raiseDM(oacLibDefListFileNotReadable, "file " + path + ": cannot be read");
  }
  if (mode != 'a') {
    return;
  }
  std::error_code error;
  if (std::filesystem::is_symlink(path, error)) {
    raiseDM(oacLibDefFileCannotAppendSymbolicLink, "file " + path + ": is a symbolic link and cannot be appended to");
  }
  if (exists && (!kit::isRegularFile(path) || ::access(path.c_str(), R_OK | W_OK) != 0)) {
    raiseDM(oacLibDefListFileNotWritable, "file " + path + ": cannot be written");
  }
}

void readForGet(Row row) {
  try {
    LibDefLists::instance().read(row);
  } catch (const kit::LibDefFileError &error) {
    LibDefObservers::instance().warn(nullptr, error.message, oacSyntaxErrorLibDefListWarning);
    LibDefLists::instance().destroy(row);
    raiseDM(oacLibDefListFileNotReadable, error.message);
  }
}

void openHierarchy(Row top) {
  LibDefLists &lists = LibDefLists::instance();
  kit::LibDefLoader loader;
  if (loader.readHierarchy(top)) {
    lists.setTopList(top);
    loader.openLibraries();
  }
}

Row getOrAdd(const std::string &path) {
  LibDefLists &lists = LibDefLists::instance();
  const Row known = lists.find(kit::absolutePath(path));
  return known != kNoRow ? known : lists.add(path, 'r');
}

void tellCreated(oaLibDefList *list) {
  LibDefObservers::instance().tell([list](LibDefObservers::Observer &observer) { observer.onPostCreate(list); });
}

} // namespace

void oaLibDefList::open() {
  kit::LibDefLoader loader(true);
  if (loader.readIncludesOf(LibDefLists::rowOf(this))) {
    loader.openLibraries();
  }
}

void oaLibDefList::save() {
  if (listOf(this).mode == 'r') {
    raiseDM(oacSaveReadOnlyLibDefList,
            "file " + listOf(this).fullPath + ": its list is open for reading and cannot be saved");
  }
  LibDefObservers &observers = LibDefObservers::instance();
  observers.tell([this](LibDefObservers::Observer &observer) { observer.onPreSave(this); });
  LibDefLists::instance().write(LibDefLists::rowOf(this));
  observers.tell([this](LibDefObservers::Observer &observer) { observer.onPostSave(this); });
}

void oaLibDefList::saveAs(const oaString &path) {
  LibDefObservers &observers = LibDefObservers::instance();
  const Row row = LibDefLists::rowOf(this);
  observers.tell([&](LibDefObservers::Observer &observer) { observer.onPreSaveAs(this, path); });
  LibDefLists::instance().writeCopy(row, std::string(path));
  observers.tell([&](LibDefObservers::Observer &observer) { observer.onPostSaveAs(this, path); });
}

void oaLibDefList::getPath(oaString &path) const { path = listOf(this).path.c_str(); }
void oaLibDefList::getFullPath(oaString &path) const { path = listOf(this).fullPath.c_str(); }
oaChar oaLibDefList::getMode() const { return listOf(this).mode; }

void oaLibDefList::destroy() {
  const Row row = LibDefLists::rowOf(this);
  LibDefObservers::instance().tell([this](LibDefObservers::Observer &observer) { observer.onPreDestroy(this); });
  LibDefLists::instance().destroy(row);
}

oaCollection<oaLibDefListMem, oaLibDefList> oaLibDefList::getMembers() const {
  static const MembersOfList kind;
  return kit::CollectionAccess::make<oaCollection<oaLibDefListMem, oaLibDefList>>(kind, &LibDefLists::instance(),
                                                                                  LibDefLists::rowOf(this));
}

void oaLibDefList::openLibs() {
  LibDefLists &lists = LibDefLists::instance();
  const std::string path = kit::defaultLibDefPath();
  if (path.empty()) {
    LibDefObservers::instance().warn(nullptr, "there is no lib.defs in the working, home or installation directory",
                                     oacNoDefaultLibDefListWarning);
    return;
  }
  const bool isKnown = lists.find(path) != kNoRow;
  const Row top = getOrAdd(path);
  try {
    openHierarchy(top);
  } catch (const kit::LibDefFileError &error) {
    if (!isKnown) {
      lists.destroy(top);
    }
    LibDefObservers::instance().warn(nullptr, error.message, oacCannotOpenDefaultLibDefListWarning);
  }
}

void oaLibDefList::openLibs(const oaString &path) {
  LibDefLists &lists = LibDefLists::instance();
  const bool isKnown = lists.find(kit::absolutePath(std::string(path))) != kNoRow;
  const Row top = getOrAdd(std::string(path));
  try {
    openHierarchy(top);
  } catch (const kit::LibDefFileError &error) {
    if (!isKnown) {
      lists.destroy(top);
    }
    raiseDM(oacLibDefListFileNotReadable, error.message);
  }
}

oaLibDefList *oaLibDefList::getTopList() {
  LibDefLists &lists = LibDefLists::instance();
  return lists.topList() == kNoRow ? nullptr : lists.object(lists.topList());
}

void oaLibDefList::getDefaultPath(oaString &path) { path = kit::defaultLibDefPath().c_str(); }
void oaLibDefList::getDefaultFileName(oaString &libDefName) { libDefName = "lib.defs"; }

oaLibDefList *oaLibDefList::create(const oaString &filePath) { return get(filePath, 'w'); }

oaLibDefList *oaLibDefList::get(const oaString &filePath, oaChar mode) {
  LibDefLists &lists = LibDefLists::instance();
  const std::string path(filePath);
  if (mode != 'r' && mode != 'a' && mode != 'w') {
    raiseDM(oacUndefinedLibDefListMode,
            "file " + path + ": mode '" + std::string(1, mode) + "' is unknown, expected r, a or w");
  }
  const std::string fullPath = kit::absolutePath(path);
  checkFileFor(fullPath, mode);
  Row row = lists.find(fullPath);
  const bool isNew = row == kNoRow;
  if (isNew) {
    row = lists.add(path, mode);
    if (mode != 'w' && ::access(fullPath.c_str(), F_OK) == 0) {
      readForGet(row);
    }
  } else if (mode == 'w') {
    lists.empty(row);
    lists.list(row).isModified = true;
  }
  lists.list(row).mode = mode;
  lists.list(row).isNewFile = mode == 'w' && ::access(fullPath.c_str(), F_OK) != 0;
  if (isNew) {
    tellCreated(lists.object(row));
  }
  return lists.object(row);
}

oaLibDefList *oaLibDefList::find(const oaString &filePath) {
  LibDefLists &lists = LibDefLists::instance();
  const Row row = lists.find(kit::absolutePath(std::string(filePath)));
  return row == kNoRow ? nullptr : lists.object(row);
}

oaCollection<oaLibDefList, oaLibDefList> oaLibDefList::getLibDefLists() {
  return kit::wholeTable<oaCollection<oaLibDefList, oaLibDefList>>(LibDefLists::instance());
}

} // namespace OpenAccess_4
