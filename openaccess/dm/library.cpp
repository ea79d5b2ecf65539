#include "library.h"

#include "cellviewfiles.h"
#include "diskname.h"
#include "librarystructure.h"
#include "oa/oaException.h"
#include "oa/oaLib.h"
#include "raise.h"
#include "session.h"

#include <unistd.h>

namespace OpenAccess_4 {
namespace kit {

Library::Library(Row row, std::string diskName, std::string path, std::string writePath, oaLibModeEnum mode)
    : row_(row), diskName_(std::move(diskName)), label_(nativeText(diskName_)), path_(std::move(path)),
      fullPath_(absolutePath(path_)), writePath_(std::move(writePath)), mode_(mode),
      file_(LibraryFile::read(fullPath_ + "/" + kLibraryFile)), access_(fullPath_ + "/" + kLibraryFile, label_),
      structure_(new LibraryStructure(*this)) {
  if (writePath_.empty()) {
    writePath_ = path_;
  }
  if (file_.dmSystem != "oaDMFileSys" && file_.dmSystem != "oaDMSystem") {
    raiseDM(oacFailedToGetDMInterface, "library " + label_ + " at " + fullPath_ + ": is kept by the system " +
                                           file_.dmSystem + ", which is not available");
  }
}

Library::~Library() = default;

oaLib *Library::handle() const {
  return static_cast<oaLib *>(static_cast<oaObject *>(Libraries::instance().handle(row_)));
}

bool Library::isWritable() const {
  return mode_ != oacReadOnlyLibMode && !file_.isReadOnly() && ::access(fullPath_.c_str(), R_OK | W_OK | X_OK) == 0;
}

bool Library::isReadable() const { return ::access(fullPath_.c_str(), R_OK | X_OK) == 0; }

void Library::releaseAccess() {
  if (access_.release()) {
    structure_->clear();
  }
}

void Library::endAccess() {
  access_.releaseAll();
  structure_->clear();
}

LibraryStructure &Library::structure(bool forWriting) {
  const oaLibAccessLevelEnum level = access_.level();
  if (level == oacNoLibAccessLevel || (forWriting && level != oacWriteLibAccessLevel)) {
    const char *found = access_.wasRefused()           ? "another process had it when it was asked for"
                        : level == oacNoLibAccessLevel ? "none is held"
                                                       : "only read access is held";
    raiseDM(oacLibAccessDenied,
            "library " + label_ + ": " + (forWriting ? "write" : "read") + " access is needed, and " + found);
  }
  return *structure_;
}

Libraries::Libraries(Database &session) : Table(session, kLibraryTable, "libraries", TableLife::kinds) {
  setKindColumn(kind_);
}

Libraries &Libraries::instance() {
  static Libraries &libraries = *new Libraries(SessionDatabase::instance());
  return libraries;
}

Library *Libraries::find(const std::string &diskName) const {
  const auto found = byName_.find(diskName);
  return found == byName_.end() ? nullptr : found->second;
}

Library *Libraries::find(const oaScalarName &name) const {
  std::string disk;
  try {
    disk = diskName(name);
  } catch (const oaError &) {
    return nullptr;
  }
  return find(disk);
}

Library &Libraries::open(const std::string &diskName, const std::string &path, const std::string &writePath,
                         oaLibModeEnum mode) {
  if (const Library *opened = find(diskName)) {
    raiseDM(oacCannotOpenOpenedLib, "library " + opened->label() + ": is open already, at " + opened->fullPath());
  }
  const std::string fullPath = absolutePath(path);
  if (path.empty() || !isDirectory(fullPath)) {
    raiseDM(oacLibCouldNotOpen, "library " + nativeText(diskName) + ": there is no directory " + fullPath);
  }
  if (::access((fullPath + "/" + kLibraryFile).c_str(), F_OK) != 0) {
    raiseDM(oacLibCouldNotOpen, "library " + nativeText(diskName) + ": directory " + fullPath +
                                    " is no library; it has no file " + kLibraryFile);
  }
  // The row exists only when reading `.oalib` went well; a row that was given out is never used again.
  const Row row = rowCount();
  std::unique_ptr<Library> library(new Library(row, diskName, path, writePath, mode));
  addRow();
  kind_.set(row, oacLibType);
  byRow_.push_back(std::move(library));
  byName_[diskName] = byRow_.back().get();
  return *byRow_.back();
}

void Libraries::close(Library &library) {
  // The Library stays, empty and without a handle: collections of its cells may still be about.
  byName_.erase(library.diskName());
  library.endAccess();
  database().destroyRow(*this, rowOf(library.handle()));
}

Library &Libraries::of(const oaLib *lib) {
  Table &table = liveTable(lib);
  return *static_cast<Libraries &>(table).byRow_[rowOf(lib)];
}

} // namespace kit
} // namespace OpenAccess_4
