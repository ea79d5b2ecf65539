#ifndef OAKIT_OPENDATABASE_H
#define OAKIT_OPENDATABASE_H

// A database that is open on a file: a design, a technology, management data. What the three layers share: modes,
// reference count, edit lock, upgrading, saving. States, by mode:
//
//   'r'       contents of the file; may be changed in memory; save() refuses; no lock is held.
//   'a' 'A'   contents of the file, or empty when there was none; the edit lock is held. save() turns 'A' into 'a'.
//   'w'       empty at first, whatever the file holds; the edit lock is held; the file changes only at save(), which
//   makes it 'a'. 's'       scratch: lives in memory only, has no file; save() refuses; no lock.
//
// The edit lock is a file beside the primary file, `<primary>.cdslck`, locked by the kernel for this process: it
// excludes a second editor, not readers, and is free as soon as its owner dies. Reading needs no lock at all, since a
// save replaces the file as a whole.
//
// A file that does not start with the signature of this kit is never written over, in no mode; empty files count as
// absent.

#include "collection.h"
#include "database.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

class EditLock;
class Library;

// The message ids that differ from layer to layer.
struct OpenErrorIds {
  void (*raise)(oaUInt4 id, const std::string &message); // raiseDM, raiseTech or raiseDesign
  oaUInt4 undefinedMode;                                 // 1004, 2142, 3074: mode letter unknown
  oaUInt4 doesNotExist;                                  // 1006, 2057, 3078: mode 'r', but no file or an empty one
  oaUInt4 saveReadOnly;                                  // 1002, 2003, 3083
  oaUInt4 saveScratch;                                   // 1003; 0 where there are no scratch databases
  oaUInt4 cannotLock;                                    // 1453, 2011, 3079: another process edits it
  oaUInt4 cannotGetWriteAccess; // 1459, 2052, 3087: the library is locked by another process, or read-only
  oaUInt4 hasReadNeedsWrite;    // 1460, 2053, 3088: this process holds read access to the library
  oaUInt4 libraryNotOpen;       // 1025, 2002, 3003: save() after the library was closed
  oaUInt4 noLongerExists;       // 1576, 2057, 3078: save() after the directory was removed
};

// Where a database lives. Names are in their form on disk (Unix name space).
struct DatabasePlace {
  std::string libraryName;
  std::string libraryPath; // absolute
  std::string directory;   // absolute directory of the primary file
  std::string fileName;    // primary file: "layout.oa", "tech.db", "data.dm"; empty for scratch databases
  std::string label;       // for messages, native names: "mylib/inv/layout"

  std::string path() const { return directory + "/" + fileName; }
  // What tells open databases of one layer apart: the library's name and the directory.
  std::string key() const { return libraryName + '\0' + directory; }
};

// Identity of a file's contents: changes when the file is replaced or rewritten.
struct FileStamp {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::uint64_t sizeBytes = 0;
  std::int64_t modifiedNs = 0;

  // All zero when there is no such file.
  static FileStamp of(const std::string &path);
  bool exists() const { return inode != 0; }
  bool operator==(const FileStamp &other) const {
    return device == other.device && inode == other.inode && sizeBytes == other.sizeBytes &&
           modifiedNs == other.modifiedNs;
  }
  bool operator!=(const FileStamp &other) const { return !(*this == other); }
};

// Write access to a library for the length of one operation. Takes part in the counts of Library (nests inside the
// client's own write access). Raises ids.hasReadNeedsWrite when this process holds only read access, and
// ids.cannotGetWriteAccess when the library is read-only or when another process holds access for longer than
// kAccessWaitSeconds.
constexpr unsigned kAccessWaitSeconds = 5;
class BriefWriteAccess {
public:
  // Raises what can be known without waiting: that this process holds only read access, or that the library is
  // read-only.
  static void check(Library &library, const OpenErrorIds &ids, const std::string &label);
  BriefWriteAccess(Library &library, const OpenErrorIds &ids, const std::string &label);
  ~BriefWriteAccess();
  BriefWriteAccess(const BriefWriteAccess &) = delete;
  BriefWriteAccess &operator=(const BriefWriteAccess &) = delete;

private:
  Library &library_;
};

// Raises oacInvalidDatabaseFile when `path` holds something, but not a file of this kit: it must not be written over.
void checkReplaceable(const std::string &path, const std::string &label);

class OpenDatabase : public Database {
public:
  // `ids` must live as long as the process. Opens nothing yet.
  OpenDatabase(DatabaseKind kind, oaTypeEnum type, const OpenErrorIds &ids, DatabasePlace place);
  // Kills all handles, gives the edit lock back, and removes what opening created (see noteCreated) when it was never
  // saved.
  ~OpenDatabase() override;

  std::string label() const override { return place_.label; }
  const DatabasePlace &place() const { return place_; }
  char mode() const { return mode_; }
  bool isWritable() const { return mode_ == 'a' || mode_ == 'w' || mode_ == 'A'; }
  bool isScratch() const { return mode_ == 's'; }
  // The open library of that name and path, NULL after it was closed.
  Library *library() const;

  // The count of open() calls, plus whatever a layer adds (a design: one for each design that has bound it).
  oaUInt4 refCount() const { return refCount_; }
  void addReference() { ++refCount_; }
  // True when that was the last reference: the caller deletes the database (OpenRegistry::remove).
  bool releaseReference() { return refCount_ == 0 || --refCount_ == 0; }

  // Raises ids.undefinedMode unless `mode` is one of r, w, a, A.
  static void checkMode(char mode, const OpenErrorIds &ids, const std::string &label);

  // First opening, right after construction; the count becomes 1. Raises ids.doesNotExist ('r' without contents),
  // ids.cannotLock, ids.cannotGetWriteAccess (no lock file can be made), and whatever loading raises. After an
  // exception the object can only be deleted.
  void open(char mode);
  // Makes this a scratch database (mode 's', count 1).
  void openScratch();
  // A further opening: the count goes up, the mode never gets weaker. 'a' on an 'r' database takes the edit lock and
  // raises oacCannotUpgradeOverwrittenDatabase when the file was replaced since it was read. 'w' empties the database;
  // all handles but the database's own die. When it raises, nothing has changed.
  void openAgain(char mode);
  // The same without counting; in addition an unmodified database may go back to 'r', a modified one raises 142.
  void reopen(char mode);
  // Drops all changes and reads the file again (a 'w' database becomes empty again). All handles but the database's own
  // die.
  void revert();
  // Replaces the file. The library is locked only while the new file takes the old one's place, not while it is
  // written. Raises ids.saveReadOnly, saveScratch, libraryNotOpen, noLongerExists, the access ids, or what writing
  // raises; the old file is intact then.
  void save();
  // Writes the contents elsewhere. The database keeps its own file and its modified state. The caller holds write
  // access to the library that `path` lies in.
  void saveCopy(const std::string &path);

  // Remembers a file or directory that was made because this database was opened. Those are removed again, last made
  // first, when the database goes away before its first save: directories only when empty.
  void noteCreated(const std::string &path);
  // The primary file got another name (its view type was changed).
  void setFileName(const std::string &fileName);

  const OpenErrorIds &errorIds() const { return *ids_; }

protected:
  // Called when the database starts out empty, in mode 'w' or because there is no file: adds what every new database of
  // the kind has.
  virtual void initialiseNew() {}
  // Called after the file was loaded and its columns were checked.
  virtual void afterLoad() {}
  // Called before the contents go, by 'w' or revert().
  virtual void beforeDrop() {}
  // Called when save() is about to write: a last chance to bring stored attributes up to date.
  virtual void beforeSave() {}

private:
  template <typename Db> friend class OpenRegistry;
  [[noreturn]] void fail(oaUInt4 id, const std::string &what) const;
  std::unique_ptr<EditLock> newLock() const;
  void loadStable();
  void startEmpty();
  void strengthen(char mode);
  void removeCreated();
  void refreshStructure(Library &library) const;

  const OpenErrorIds *ids_;
  DatabasePlace place_;
  char mode_ = 'r';
  oaUInt4 refCount_ = 0;
  FileStamp stamp_; // of the file that was read or written last
  std::unique_ptr<EditLock> lock_;
  std::vector<std::string> created_;
  Row serial_ = 0; // in the order of opening, given by the registry
};

// The open databases of one layer, in the order of opening. Owns them.
template <typename Db> class OpenRegistry {
public:
  // NULL when none is open there. `key` is DatabasePlace::key().
  Db *find(const std::string &key) const {
    const auto found = byKey_.find(key);
    return found == byKey_.end() ? nullptr : found->second;
  }
  // Scratch databases are kept, but not found by key.
  Db &add(std::unique_ptr<Db> database) {
    static_cast<OpenDatabase &>(*database).serial_ = nextSerial_++;
    if (!database->isScratch()) {
      byKey_[database->place().key()] = database.get();
    }
    databases_.push_back(std::move(database));
    return *databases_.back();
  }
  // Deletes the database; its handles read as dead from now on.
  void remove(Db &database) { take(database); }
  // Takes it off the list; the caller owns it now. NULL when it is not there.
  std::unique_ptr<Db> take(Db &database) {
    for (auto at = databases_.begin(); at != databases_.end(); ++at) {
      if (at->get() == &database) {
        const auto found = byKey_.find(database.place().key());
        if (found != byKey_.end() && found->second == &database) {
          byKey_.erase(found);
        }
        // Off the list first: the destructor may come back here for databases that this one kept alive.
        std::unique_ptr<Db> going = std::move(*at);
        databases_.erase(at);
        return going;
      }
    }
    return nullptr;
  }
  const std::vector<std::unique_ptr<Db>> &all() const { return databases_; }
  // The one opened next after that with this serial number (kNoRow: the first), or NULL. Sets `serial` to its number.
  Db *next(Row &serial) const {
    const auto found = std::upper_bound(
        databases_.begin(), databases_.end(), serial, [](Row wanted, const std::unique_ptr<Db> &database) {
          return wanted == kNoRow || wanted < static_cast<const OpenDatabase &>(*database).serial_;
        });
    if (found == databases_.end()) {
      return nullptr;
    }
    serial = static_cast<const OpenDatabase &>(**found).serial_;
    return found->get();
  }

private:
  std::vector<std::unique_ptr<Db>> databases_;
  std::unordered_map<std::string, Db *> byKey_;
  Row nextSerial_ = 0;
};

// The collection of a layer's open databases. `Db::registry()` gives the registry.
template <typename Db> class OpenDatabasesKind : public CollectionKind {
public:
  oaObject *next(const CollectionQuestion &, Row &position, Row &) const override {
    Db *database = Db::registry().next(position);
    return database == nullptr ? nullptr : database->self();
  }
};
template <typename Collection, typename Db> Collection openDatabases() {
  static const OpenDatabasesKind<Db> kind;
  return CollectionAccess::make<Collection>(kind, nullptr, 0);
}

} // namespace kit
} // namespace OpenAccess_4

#endif
