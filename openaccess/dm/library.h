#ifndef OAKIT_LIBRARY_H
#define OAKIT_LIBRARY_H

// The open libraries of the session. What stands for the structure of one (cells, views, files) lives in
// LibraryStructure, and only while access is held.

#include "libraryaccess.h"
#include "libraryfile.h"
#include "oa/oaDMTypes.h"
#include "table.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace OpenAccess_4 {

class oaLib;
class oaScalarName;

namespace kit {

class LibraryStructure;

class Library {
public:
  Library(Row row, std::string diskName, std::string path, std::string writePath, oaLibModeEnum mode);
  ~Library();

  // As in directory names and lib.defs; see diskname.h.
  const std::string &diskName() const { return diskName_; }
  // In the native name space, for messages.
  const std::string &label() const { return label_; }
  const std::string &path() const { return path_; }         // as given
  const std::string &fullPath() const { return fullPath_; } // absolute
  const std::string &writePath() const { return writePath_; }
  oaLibModeEnum mode() const { return mode_; }
  LibraryFile &file() { return file_; }
  const LibraryFile &file() const { return file_; }
  oaLib *handle() const;

  // False for a read-only mode or attribute and for a directory without write permission.
  bool isWritable() const;
  bool isReadable() const;

  LibraryAccess &access() { return access_; }
  const LibraryAccess &access() const { return access_; }
  // Gives one access back. With the last, cells, views, cell views and files die.
  void releaseAccess();
  // All of it at once.
  void endAccess();
  // Cells, views, files. Raises oacLibAccessDenied without read access, or without write access when `forWriting`.
  LibraryStructure &structure(bool forWriting = false);

private:
  Row row_;
  std::string diskName_, label_, path_, fullPath_, writePath_;
  oaLibModeEnum mode_;
  LibraryFile file_;
  LibraryAccess access_;
  std::unique_ptr<LibraryStructure> structure_;
};

// The table of open libraries.
class Libraries : public Table {
public:
  static Libraries &instance();

  // NULL when no library of that name is open.
  Library *find(const std::string &diskName) const;
  // NULL for a name that cannot be a library's, too.
  Library *find(const oaScalarName &name) const;
  // The directory must hold `.oalib`. Raises oacCannotOpenOpenedLib, oacLibCouldNotOpen, oacFailedToGetDMInterface, and
  // what reading
  // `.oalib` raises. Relative paths start at the working directory.
  Library &open(const std::string &diskName, const std::string &path, const std::string &writePath, oaLibModeEnum mode);
  // Drops all access.
  void close(Library &library);
  // Raises oacDeletedDatabase for NULL and for closed libraries.
  static Library &of(const oaLib *lib);

private:
  explicit Libraries(Database &session);

  Column<std::uint8_t> kind_{*this, 1, "kind"};
  std::vector<std::unique_ptr<Library>> byRow_;
  std::unordered_map<std::string, Library *> byName_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
