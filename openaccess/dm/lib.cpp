#include "oa/oaLib.h"

#include "cellviewfiles.h"
#include "collection.h"
#include "diskname.h"
#include "filelayer.h"
#include "library.h"
#include "librarystructure.h"
#include "oa/oaCell.h"
#include "oa/oaCellView.h"
#include "oa/oaException.h"
#include "oa/oaScalarName.h"
#include "oa/oaView.h"
#include "raise.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace OpenAccess_4 {

namespace {

using kit::Libraries;
using kit::Library;

// Raises oacInvalidLibName for a name that no library can have.
std::string libraryDiskName(const oaScalarName &name) {
  try {
    return kit::diskName(name);
  } catch (const oaError &error) {
    raiseDM(oacInvalidLibName, std::string(error.getMsg()) + "; no library can be called so");
  }
}

void setAttributes(kit::LibraryFile &file, const oaDMAttrArray &attributes, const std::string &label) {
  for (oaUInt4 i = 0; i < attributes.getNumElements(); ++i) {
    const std::string name(attributes[i].getName());
    const auto isNameCharacter = [](unsigned char c) {
      return std::isalnum(c) != 0 || c == '_' || c == '-' || c == '.';
    };
    if (name.empty() || !std::all_of(name.begin(), name.end(), isNameCharacter)) {
      std::string message = "library ";
      message.append(label).append(": \"").append(name);
      raiseDM(oacLibDataFileSyntaxError,
              message + "\" is no attribute name; letters, digits, '_', '-' and '.' are allowed");
    }
    file.setAttribute(name, std::string(attributes[i].getValue()));
  }
}

// Makes the directory, or takes an empty one that exists. True when it was made.
bool makeLibraryDirectory(const std::string &path, const std::string &label) {
  if (::mkdir(path.c_str(), 0777) == 0) {
    return true;
  }
  const int error = errno;
  if (error != EEXIST) {
    kit::raiseOS(error, "library " + label + ": directory " + path + " cannot be made");
  }
  // rmdir and mkdir again would change its owner and permissions; a look is enough.
  if (!kit::isDirectory(path) || !kit::isEmptyDirectory(path)) {
    raiseDM(oacLibCouldNotCreate, "library " + label + ": " + path + " exists and is not an empty directory");
  }
  return false;
}

class ViewsOfName : public kit::WholeTableKind {
protected:
  bool accepts(const kit::CollectionQuestion &question, kit::Row row) const override {
    auto &structure = static_cast<kit::LibraryStructure &>(question.table->database());
    return structure.view(row).name == structure.view(question.owner).name;
  }
  bool isFiltered(const kit::CollectionQuestion &) const override { return true; }
};

} // namespace

void oaLib::close() { Libraries::instance().close(Libraries::of(this)); }

void oaLib::getName(oaScalarName &name) const { kit::nameFromDisk(Libraries::of(this).diskName(), name); }
void oaLib::getName(const oaNameSpace &ns, oaString &out) const {
  kit::nameFromDisk(Libraries::of(this).diskName(), ns, out);
}
void oaLib::getPath(oaString &path) const { path = Libraries::of(this).path().c_str(); }
void oaLib::getFullPath(oaString &fullPath) const { fullPath = Libraries::of(this).fullPath().c_str(); }
void oaLib::getWritePath(oaString &writePath) const { writePath = Libraries::of(this).writePath().c_str(); }
oaLibMode oaLib::getMode() const { return oaLibMode(Libraries::of(this).mode()); }
void oaLib::getDMSystemName(oaString &dmSystem) const { dmSystem = Libraries::of(this).file().dmSystem.c_str(); }

void oaLib::getAttributes(oaDMAttrArray &attrs) const {
  attrs.setNumElements(0);
  for (const auto &[name, value] : Libraries::of(this).file().attributes) {
    attrs.append(oaDMAttr(name.c_str(), value.c_str()));
  }
}

void oaLib::setAttributes(const oaDMAttrArray &attrs) {
  Library &library = Libraries::of(this);
  library.structure(true);
  kit::LibraryFile changed = library.file();
  OpenAccess_4::setAttributes(changed, attrs, library.label());
  kit::replaceFile(library.fullPath() + "/" + kit::kLibraryFile, changed.toText());
  library.file() = changed;
  library.access().followReplacedFile();
}

oaBoolean oaLib::isReadable() const { return Libraries::of(this).isReadable(); }
oaBoolean oaLib::isWritable() const { return Libraries::of(this).isWritable(); }

oaBoolean oaLib::getAccess(oaLibAccess accessType, oaUInt4 timeout) {
  Library &library = Libraries::of(this);
  if (accessType == oacWriteLibAccess && library.access().level() == oacNoLibAccessLevel && !library.isWritable()) {
    raiseDM(oacNoWriteAccessOnReadOnlyLib,
            "library " + library.label() + " at " + library.fullPath() + ": is read-only");
  }
  return library.access().acquire(accessType, timeout * 1000ULL);
}

void oaLib::releaseAccess() { Libraries::of(this).releaseAccess(); }
oaLibAccessLevel oaLib::getAccessLevel() const { return oaLibAccessLevel(Libraries::of(this).access().level()); }

oaCollection<oaCell, oaLib> oaLib::getCells() const {
  kit::LibraryStructure &structure = Libraries::of(this).structure();
  structure.listCells();
  return kit::wholeTable<oaCollection<oaCell, oaLib>>(structure.cells());
}

oaCollection<oaView, oaLib> oaLib::getViews() const {
  kit::LibraryStructure &structure = Libraries::of(this).structure();
  structure.listAllCellViews();
  return kit::wholeTable<oaCollection<oaView, oaLib>>(structure.views());
}

oaCollection<oaView, oaLib> oaLib::getViewsByName(const oaScalarName &name) const {
  static const ViewsOfName kind;
  kit::LibraryStructure &structure = Libraries::of(this).structure();
  structure.listAllCellViews();
  const std::string wanted = kit::diskName(name);
  for (kit::Row row = structure.views().nextAlive(kit::kNoRow); row != kit::kNoRow;
       row = structure.views().nextAlive(row)) {
    if (structure.view(row).name == wanted) {
      return kit::CollectionAccess::make<oaCollection<oaView, oaLib>>(kind, &structure.views(), row);
    }
  }
  return kit::emptyCollection<oaCollection<oaView, oaLib>>();
}

oaCollection<oaCellView, oaLib> oaLib::getCellViews() const {
  kit::LibraryStructure &structure = Libraries::of(this).structure();
  structure.listAllCellViews();
  return kit::wholeTable<oaCollection<oaCellView, oaLib>>(structure.cellViews());
}

oaLib *oaLib::create(const oaScalarName &name, const oaString &libPath, oaLibMode mode, const oaString &dmSystem,
                     const oaDMAttrArray *dmAttrList) {
  Libraries &libraries = Libraries::instance();
  const std::string disk = libraryDiskName(name);
  const std::string label = kit::nativeText(disk);
  if (libraries.find(disk) != nullptr) {
    raiseDM(oacLibNameExists, "library " + label + ": a library of that name is open already");
  }
  if (dmSystem != "oaDMSystem" && dmSystem != "oaDMFileSys") {
    raiseDM(oacFailedToGetDMInterface,
            "library " + label + ": the system " + std::string(dmSystem) + " is not available; use oaDMFileSys");
  }
  if (libPath.isEmpty()) {
    raiseDM(oacLibCouldNotCreate, "library " + label + ": no directory is given");
  }
  kit::LibraryFile file;
  if (dmAttrList != nullptr) {
    OpenAccess_4::setAttributes(file, *dmAttrList, label);
  }
  const std::string path = kit::absolutePath(std::string(libPath));
  const bool wasMade = makeLibraryDirectory(path, label);
  try {
    kit::replaceFile(path + "/" + kit::kLibraryFile, file.toText());
    return libraries.open(disk, std::string(libPath), "", mode).handle();
  } catch (...) {
    ::unlink((path + "/" + kit::kLibraryFile).c_str());
    if (wasMade) {
      ::rmdir(path.c_str());
    }
    throw;
  }
}

oaLib *oaLib::open(const oaScalarName &name, const oaString &libPath, const oaString &writePath, oaLibMode mode) {
  return Libraries::instance().open(libraryDiskName(name), std::string(libPath), std::string(writePath), mode).handle();
}

oaLib *oaLib::find(const oaScalarName &name) {
  const Library *library = Libraries::instance().find(name);
  return library == nullptr ? nullptr : library->handle();
}

oaBoolean oaLib::exists(const oaString &libPath) {
  const std::string path(libPath);
  return !path.empty() && kit::isDirectory(path) && ::access((path + "/" + kit::kLibraryFile).c_str(), F_OK) == 0;
}

oaCollection<oaLib, oaLib> oaLib::getOpenLibs() {
  return kit::wholeTable<oaCollection<oaLib, oaLib>>(Libraries::instance());
}

} // namespace OpenAccess_4
