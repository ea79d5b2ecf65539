#include "oa/oaDMFile.h"

#include "cellviewfiles.h"
#include "filelayer.h"
#include "library.h"
#include "librarystructure.h"
#include "oa/oaLib.h"
#include "raise.h"

#include <cerrno>
#include <filesystem>

namespace OpenAccess_4 {

namespace {

using kit::LibraryStructure;
using kit::Row;

constexpr std::size_t kMaxFileNameBytes = 200; // leaves room for the names of lock and temporary files

struct Place {
  kit::Library *library;
  std::uint16_t table; // 0: the library
  Row row;
};

Place placeOf(const oaDMContainer *container) {
  kit::liveTable(container);
  if (container->getType() == oacLibType) {
    return {&kit::Libraries::of(container->getLib()), 0, 0};
  }
  return {&LibraryStructure::of(container).library(), kit::tableOf(container)->id(), kit::rowOf(container)};
}

std::string pathOf(LibraryStructure &structure, Row row) {
  const LibraryStructure::File &file = structure.file(row);
  return structure.directoryOf(file.ownerTable, file.owner) + "/" + file.name;
}

oaDMFile *fileObject(LibraryStructure &structure, Row row) {
  return static_cast<oaDMFile *>(static_cast<oaObject *>(structure.files().handle(row)));
}

// Makes the file, or copies `source` to it.
oaDMFile *createFile(const oaDMContainer *parent, const oaString &name, const std::string *source) {
  const Place place = placeOf(parent);
  LibraryStructure &structure = place.library->structure(true);
  const std::string text(name);
  const std::string directory = structure.directoryOf(place.table, place.row);
  if (text.empty() || text[0] == '.' || text.find('/') != std::string::npos || text.size() > kMaxFileNameBytes ||
      directory.empty()) {
    raiseBase(oacFileOpenFailed, "file \"" + text.substr(0, kMaxFileNameBytes) + "\": cannot be made in " +
                                     (directory.empty() ? "a view, which has no directory" : directory));
  }
  const std::string path = directory + "/" + text;
  if (std::filesystem::exists(path)) {
    raiseDM(oacDMFileExists, "file " + path + ": exists already");
  }
  if (source == nullptr) {
    kit::replaceFile(path, "");
  } else {
    std::error_code error;
    std::filesystem::copy_file(*source, path, error);
    if (error) {
      raiseBase(oacFileCopyFailed, "file " + *source + ": cannot be copied to " + path + ": " + error.message());
    }
  }
  return fileObject(structure, structure.addFile(place.table, place.row, text));
}

} // namespace

void oaDMFile::destroy() { LibraryStructure::of(this).library().structure(true).destroyFile(kit::rowOf(this)); }

oaDMContainer *oaDMFile::getParent() const {
  LibraryStructure &structure = LibraryStructure::of(this);
  const LibraryStructure::File &file = structure.file(kit::rowOf(this));
  oaObject *parent =
      file.ownerTable == 0 ? structure.library().handle() : structure.table(file.ownerTable)->handle(file.owner);
  return static_cast<oaDMContainer *>(parent);
}

void oaDMFile::getName(oaString &name) const { name = LibraryStructure::of(this).file(kit::rowOf(this)).name.c_str(); }

void oaDMFile::getPath(oaString &path) const { path = pathOf(LibraryStructure::of(this), kit::rowOf(this)).c_str(); }

oaBoolean oaDMFile::isPrimary() const {
  LibraryStructure &structure = LibraryStructure::of(this);
  const LibraryStructure::File &file = structure.file(kit::rowOf(this));
  return file.ownerTable == structure.cellViews().id() && structure.cellView(file.owner).primaryFile == file.name;
}

oaBoolean oaDMFile::existsOnDisk() const {
  return kit::isRegularFile(pathOf(LibraryStructure::of(this), kit::rowOf(this)));
}

oaUInt8 oaDMFile::getOnDiskSize() const {
  return kit::fileSizeBytes(pathOf(LibraryStructure::of(this), kit::rowOf(this)));
}

oaBoolean oaDMFile::getLock() {
  LibraryStructure &structure = LibraryStructure::of(this);
  LibraryStructure::File &file = structure.file(kit::rowOf(this));
  std::string holder;
  return !file.lock && kit::EditLock::acquire(pathOf(structure, kit::rowOf(this)), file.lock, holder) ==
                           kit::EditLock::Outcome::taken;
}

void oaDMFile::releaseLock() { LibraryStructure::of(this).file(kit::rowOf(this)).lock.reset(); }

oaDMFile *oaDMFile::find(const oaDMContainer *parent, const oaString &name) {
  const Place place = placeOf(parent);
  LibraryStructure &structure = place.library->structure();
  return fileObject(structure, structure.findFile(place.table, place.row, std::string(name)));
}

oaDMFile *oaDMFile::create(const oaDMContainer *parent, const oaString &name) {
  return createFile(parent, name, nullptr);
}

oaDMFile *oaDMFile::create(const oaDMContainer *parent, const oaString &name, const oaString &srcPath) {
  const std::string source(srcPath);
  return createFile(parent, name, &source);
}

} // namespace OpenAccess_4
