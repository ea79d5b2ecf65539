#include "libdeflists.h"

#include "cellviewfiles.h"
#include "filelayer.h"
#include "filelock.h"
#include "oa/oaException.h"
#include "oa/oaLibDefList.h"
#include "raise.h"
#include "session.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <strings.h>
#include <unistd.h>

namespace OpenAccess_4 {
namespace kit {

namespace {

constexpr unsigned kSaveWaitMs = 5000;

oaLibModeEnum modeOf(const std::string &text) {
  if (::strcasecmp(text.c_str(), "nonShared") == 0) {
    return oacNonSharedLibMode;
  }
  return ::strcasecmp(text.c_str(), "readOnly") == 0 ? oacReadOnlyLibMode : oacSharedLibMode;
}

// What tells two statements of a file apart.
std::string identityOf(const std::string &libName, const std::string &path) {
  return libName.empty() ? "INCLUDE " + path : "DEFINE " + libName;
}

std::string textOfMember(const LibDefMember &member) {
  std::string text;
  if (!member.lines.empty()) {
    for (const std::string &line : member.lines) {
      text += line + "\n";
    }
    return text;
  }
  if (member.libName.empty()) {
    return "INCLUDE " + member.path + "\n";
  }
  text = "DEFINE " + member.libName + " " + member.path + "\n";
  const std::string assign = "ASSIGN " + member.libName + " ";
  if (!member.writePath.empty()) {
    text += assign + "writePath " + member.writePath + "\n";
  }
  if (member.mode != oacSharedLibMode) {
    text += assign + "libMode " + (member.mode == oacReadOnlyLibMode ? "readOnly" : "nonShared") + "\n";
  }
  for (const auto &[name, value] : member.attributes) {
    text.append(assign).append(name).append(" ").append(value).append("\n");
  }
  return text;
}

LibDefMember memberOf(const LibDefStatement &statement) {
  LibDefMember member;
  member.line = statement.line;
  member.libName = statement.name;
  member.path = statement.value;
  member.lines.push_back(statement.raw);
  return member;
}

void assign(LibDefMember &member, const LibDefStatement &statement) {
  member.lines.push_back(statement.raw);
  if (statement.attribute == "libMode") {
    member.mode = modeOf(statement.value);
  } else if (statement.attribute == "writePath") {
    member.writePath = statement.value;
  } else {
    member.attributes.emplace_back(statement.attribute, statement.value);
  }
}

// The file that a path leads to: replacing a symbolic link by a file would part it from those who use its target.
std::string targetOf(const std::string &path) {
  constexpr int kMostLinks = 40; // as the kernel follows
  std::filesystem::path target(path);
  std::error_code error;
  for (int link = 0; link < kMostLinks && std::filesystem::is_symlink(target, error); ++link) {
    target = target.parent_path() / std::filesystem::read_symlink(target, error); // also one that leads nowhere yet
  }
  return target.string();
}

void checkWritable(const std::string &path) {
  if (::access(path.c_str(), F_OK) == 0 && (!isRegularFile(path) || ::access(path.c_str(), W_OK) != 0)) {
    raiseDM(oacLibDefListFileNotWritable, "file " + path + ": cannot be written");
  }
  const std::string directory = std::filesystem::path(path).parent_path().string();
  if (!isDirectory(directory) || ::access(directory.c_str(), W_OK | X_OK) != 0) {
    raiseDM(oacLibDefListDirNotWritable, "file " + path + ": no file can be made in directory " + directory);
  }
}

// Processes that all want to make a file at once need one that they can lock: makes an empty one, which goes again when
// nothing has taken its place.
class FileToLock {
public:
  explicit FileToLock(const std::string &path) : path_(path) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0 && errno != EEXIST) {
      raiseDM(oacLibDefListFileNotWritable, "file " + path + ": cannot be made: " + std::strerror(errno));
    }
    if (file >= 0) {
      isMade_ = true;
      ::close(file);
    }
  }
  ~FileToLock() {
    if (isMade_ && fileSizeBytes(path_) == 0) {
      ::unlink(path_.c_str());
    }
  }
  FileToLock(const FileToLock &) = delete;
  FileToLock &operator=(const FileToLock &) = delete;
  void keep() { isMade_ = false; }

private:
  const std::string path_;
  bool isMade_ = false;
};

} // namespace

std::vector<Row> LibDefList::memberRows() const {
  std::vector<Row> rows;
  for (const Entry &entry : entries) {
    if (entry.member != kNoRow) {
      rows.push_back(entry.member);
    }
  }
  return rows;
}

LibDefMembers::LibDefMembers(Database &session)
    : Table(session, kLibDefListMemberTable, "library definitions", TableLife::kinds) {
  setKindColumn(kind_);
}

LibDefMembers &LibDefMembers::instance() {
  static LibDefMembers &members = *new LibDefMembers(SessionDatabase::instance());
  return members;
}

Row LibDefMembers::add(oaTypeEnum type, LibDefMember member) {
  const Row row = addRow();
  kind_.set(row, static_cast<std::uint8_t>(type));
  members_.emplace_back(new LibDefMember(std::move(member)));
  return row;
}

void LibDefMembers::destroy(Row row) {
  database().destroyRow(*this, row);
  members_[row].reset();
}

LibDefMember &LibDefMembers::of(const oaLibDefListMem *member) {
  return instance().member((static_cast<void>(liveTable(member)), rowOf(member)));
}

LibDefLists::LibDefLists(Database &session)
    : Table(session, kLibDefListTable, "library definition lists", TableLife::kinds) {
  setKindColumn(kind_);
}

LibDefLists &LibDefLists::instance() {
  static LibDefLists &lists = *new LibDefLists(SessionDatabase::instance());
  return lists;
}

Row LibDefLists::find(const std::string &fullPath) const {
  for (Row row = nextAlive(kNoRow); row != kNoRow; row = nextAlive(row)) {
    if (lists_[row]->fullPath == fullPath) {
      return row;
    }
  }
  return kNoRow;
}

Row LibDefLists::add(const std::string &path, char mode) {
  const Row row = addRow();
  kind_.set(row, oacLibDefListType);
  lists_.emplace_back(new LibDefList);
  lists_.back()->path = path;
  lists_.back()->fullPath = absolutePath(path);
  lists_.back()->mode = mode;
  return row;
}

oaLibDefList *LibDefLists::object(Row row) { return static_cast<oaLibDefList *>(static_cast<oaObject *>(handle(row))); }

Row LibDefLists::rowOf(const oaLibDefList *list) {
  liveTable(list);
  return kit::rowOf(list);
}

void LibDefLists::read(Row row) {
  const std::string path = list(row).fullPath;
  const FileStamp stamp = FileStamp::of(path);
  if (stamp.exists() && list(row).isRead && !list(row).isModified && stamp == list(row).stamp) {
    return;
  }
  std::string bytes;
  try {
    if (isDirectory(path)) {
      throw LibDefFileError{false, "file " + path + ": is a directory"};
    }
    bytes = readSmallFile(path, kLibDefLimitBytes);
  } catch (const oaException &error) {
    throw LibDefFileError{false, std::string(error.getMsg())};
  }
  LibDefText text = parseLibDefs(bytes);
  if (!text.error.empty()) {
    throw LibDefFileError{true, "file " + path + " " + text.error};
  }
  takeOver(row, std::move(text));
  list(row).stamp = stamp;
}

void LibDefLists::takeOver(Row row, LibDefText text) {
  empty(row);
  LibDefMembers &members = LibDefMembers::instance();
  LibDefList &into = list(row);
  for (LibDefStatement &statement : text.statements) {
    switch (statement.kind) {
    case LibDefStatement::Kind::text:
      into.entries.push_back({kNoRow, std::move(statement.raw)});
      break;
    case LibDefStatement::Kind::define:
    case LibDefStatement::Kind::include: {
      LibDefMember member = memberOf(statement);
      member.list = row;
      into.knownInFile.insert(identityOf(member.libName, member.path));
      const bool isDefine = statement.kind == LibDefStatement::Kind::define;
      into.entries.push_back({members.add(isDefine ? oacLibDefType : oacLibDefListRefType, std::move(member)), {}});
      break;
    }
    case LibDefStatement::Kind::assign: {
      const auto defined =
          std::find_if(into.entries.rbegin(), into.entries.rend(), [&](const LibDefList::Entry &entry) {
            return entry.member != kNoRow && members.member(entry.member).libName == statement.name;
          });
      if (defined != into.entries.rend()) {
        assign(members.member(defined->member), statement);
      } else {
        into.orphans.push_back("file " + into.fullPath + " line " + std::to_string(statement.line) +
                               ": ASSIGN for library " + statement.name + ", which is not defined above it");
        into.entries.push_back({kNoRow, std::move(statement.raw)});
      }
      break;
    }
    }
  }
  into.isRead = true;
}

void LibDefLists::empty(Row row) {
  for (const Row member : list(row).memberRows()) {
    LibDefMembers::instance().destroy(member);
  }
  LibDefList &emptied = list(row);
  emptied.entries.clear();
  emptied.orphans.clear();
  emptied.knownInFile.clear();
  emptied.isModified = false;
  emptied.isRead = false;
}

void LibDefLists::insert(Row listRow, Row member, Row following) {
  std::vector<LibDefList::Entry> &entries = list(listRow).entries;
  const auto place = std::find_if(entries.begin(), entries.end(), [following](const LibDefList::Entry &entry) {
    return following != kNoRow && entry.member == following;
  });
  entries.insert(place, {member, {}});
  list(listRow).isModified = true;
}

void LibDefLists::removeMember(Row member) {
  LibDefList &from = list(LibDefMembers::instance().member(member).list);
  from.entries.erase(std::find_if(from.entries.begin(), from.entries.end(),
                                  [member](const LibDefList::Entry &entry) { return entry.member == member; }));
  from.isModified = true;
}

std::string LibDefLists::textOf(Row row) {
  std::string text;
  for (const LibDefList::Entry &entry : list(row).entries) {
    text += entry.member == kNoRow ? entry.text + "\n" : textOfMember(LibDefMembers::instance().member(entry.member));
  }
  return text;
}

// Another process may have added libraries to the file since it was read here; they must not get lost.
void LibDefLists::takeInAdditions(Row row) {
  LibDefList &into = list(row);
  LibDefMembers &members = LibDefMembers::instance();
  LibDefText text = parseLibDefs(readSmallFile(into.fullPath, kLibDefLimitBytes));
  if (!text.error.empty()) {
    raiseDM(oacLibDefListFileNotWritable,
            "file " + into.fullPath + " was changed since it was read, and is not written over: " + text.error);
  }
  std::set<std::string> present = into.knownInFile;
  for (const Row member : into.memberRows()) {
    present.insert(identityOf(members.member(member).libName, members.member(member).path));
  }
  Row added = kNoRow;
  for (const LibDefStatement &statement : text.statements) {
    if (statement.kind == LibDefStatement::Kind::assign && added != kNoRow &&
        members.member(added).libName == statement.name) {
      assign(members.member(added), statement);
    } else if (statement.kind == LibDefStatement::Kind::define || statement.kind == LibDefStatement::Kind::include) {
      LibDefMember member = memberOf(statement);
      member.list = row;
      const bool isNew = present.insert(identityOf(member.libName, member.path)).second;
      const oaTypeEnum type = member.libName.empty() ? oacLibDefListRefType : oacLibDefType;
      added = isNew ? members.add(type, std::move(member)) : kNoRow;
      if (isNew) {
        insert(row, added);
      }
    }
  }
}

void LibDefLists::write(Row row) {
  LibDefList &saved = list(row);
  const std::string target = targetOf(saved.fullPath);
  checkWritable(target);
  FileToLock unlessThere(target);
  const std::unique_ptr<FileLock> lock = FileLock::acquire(target, FileLock::Kind::exclusive, kSaveWaitMs);
  if (!lock) {
    raiseDM(oacLibDefListFileNotWritable, "file " + target + ": is being written by another process");
  }
  if ((saved.mode == 'a' || saved.isNewFile) && FileStamp::of(target) != saved.stamp) {
    takeInAdditions(row);
  }
  const std::string text = textOf(row);
  AtomicFile file(target);
  file.write(text.data(), text.size());
  // Taken now: as soon as the file is in place, the next process may add to it.
  file.commit([&] { saved.stamp = FileStamp::of(file.temporaryPath()); });
  unlessThere.keep(); // also when the list is empty
  saved.isModified = false;
  saved.isRead = true;
  saved.isNewFile = false;
  saved.knownInFile.clear();
  for (const Row member : saved.memberRows()) {
    const LibDefMember &written = LibDefMembers::instance().member(member);
    saved.knownInFile.insert(identityOf(written.libName, written.path));
  }
}

void LibDefLists::writeCopy(Row row, const std::string &otherPath) {
  const std::string target = targetOf(absolutePath(otherPath));
  checkWritable(target);
  replaceFile(target, textOf(row));
}

void LibDefLists::destroy(Row row) {
  empty(row);
  if (topList_ == row) {
    topList_ = kNoRow;
  }
  database().destroyRow(*this, row);
}

} // namespace kit
} // namespace OpenAccess_4
