#ifndef OAKIT_LIBDEFLISTS_H
#define OAKIT_LIBDEFLISTS_H

// The library definition lists of the session and their members. A list keeps the lines of its file: what is not
// changed is written back as it was, comments included.

#include "libdeffile.h"
#include "oa/oaDMTypes.h"
#include "opendatabase.h"
#include "table.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace OpenAccess_4 {

class oaLibDefList;
class oaLibDefListMem;

namespace kit {

struct LibDefMember {
  Row list = kNoRow;
  unsigned line = 0;     // of the file it was read from; 0 when it was not
  std::string libName;   // on disk; empty for an INCLUDE
  std::string path;      // as written
  std::string writePath; // as written; empty: none
  oaLibModeEnum mode = oacSharedLibMode;
  std::vector<std::pair<std::string, std::string>> attributes;
  // The lines it was read from; empty when it is new or was changed.
  std::vector<std::string> lines;
};

class LibDefMembers : public Table {
public:
  static LibDefMembers &instance();

  Row add(oaTypeEnum type, LibDefMember member);
  LibDefMember &member(Row row) { return *members_[row]; }
  void destroy(Row row);
  // Raises oacDeletedDatabase.
  static LibDefMember &of(const oaLibDefListMem *member);

private:
  explicit LibDefMembers(Database &session);
  Column<std::uint8_t> kind_{*this, 1, "kind"};
  std::vector<std::unique_ptr<LibDefMember>> members_;
};

struct LibDefList {
  struct Entry {
    Row member = kNoRow; // or a line of text
    std::string text;
  };
  std::string path;     // as given
  std::string fullPath; // absolute
  char mode = 'r';
  std::vector<Entry> entries;
  // What was wrong without being a syntax error: ASSIGNs of libraries that the list does not define.
  std::vector<std::string> orphans;
  bool isModified = false;
  bool isRead = false;
  FileStamp stamp; // of the file when it was read or written
  // There was no file when the list was asked for in order to write one: what others write meanwhile is not to be lost.
  bool isNewFile = false;
  // Names and included paths that were in the file then.
  std::set<std::string> knownInFile;

  std::vector<Row> memberRows() const;
};

// A list file that cannot be used.
struct LibDefFileError {
  bool isSyntax;
  std::string message;
};

class LibDefLists : public Table {
public:
  static LibDefLists &instance();

  // kNoRow when no list of that file is in memory. `fullPath` is absolute.
  Row find(const std::string &fullPath) const;
  Row add(const std::string &path, char mode);
  LibDefList &list(Row row) { return *lists_[row]; }
  oaLibDefList *object(Row row);
  static Row rowOf(const oaLibDefList *list);

  // Reads the file unless the list holds its contents already. Throws LibDefFileError, and leaves the list as it was.
  void read(Row row);
  // Takes all members off.
  void empty(Row row);
  // Inserts a member before `following`, or appends (kNoRow).
  void insert(Row list, Row member, Row following = kNoRow);
  void removeMember(Row member);
  // Writes to the list's own file, or to `otherPath`. Raises oacLibDefListFileNotWritable, oacLibDefListDirNotWritable.
  void write(Row row);
  void writeCopy(Row row, const std::string &otherPath);
  void destroy(Row row);

  // The list of the last successful openLibs(), or kNoRow.
  Row topList() const { return topList_; }
  void setTopList(Row row) { topList_ = row; }

private:
  explicit LibDefLists(Database &session);
  void takeOver(Row row, LibDefText text);
  void takeInAdditions(Row row);
  std::string textOf(Row row);

  Column<std::uint8_t> kind_{*this, 1, "kind"};
  std::vector<std::unique_ptr<LibDefList>> lists_;
  Row topList_ = kNoRow;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
