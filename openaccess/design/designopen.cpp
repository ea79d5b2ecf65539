#include "oa/oaDesign.h"

#include "cellviewfiles.h"
#include "collection.h"
#include "designaccess.h"
#include "designlife.h"
#include "diskname.h"
#include "filelayer.h"
#include "filelock.h"
#include "library.h"
#include "oa/oaException.h"
#include "oa/oaViaDef.h"
#include "supermaster.h"
#include "viewtypes.h"

#include <memory>

namespace OpenAccess_4 {

using namespace kit;

namespace {

// A cell view by its names.
struct CellViewPlace {
  Library *library = nullptr; // NULL when it is not open
  std::string cell, view;     // as on disk
  DatabasePlace place;        // without a file name when there is no primary file

  DesignDatabase *openDesign() const {
    DesignDatabase *design = library == nullptr ? nullptr : DesignDatabase::registry().find(place.key());
    return design != nullptr && design->isGone() ? nullptr : design;
  }
  // Row of the view types; kNoRow when there is no primary file.
  Row viewType() const {
    return place.fileName.empty() ? kNoRow : ViewTypes::instance().typeOfPrimaryFile(place.fileName);
  }
};

CellViewPlace placeOf(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName) {
  CellViewPlace at;
  at.cell = diskName(cellName);
  at.view = diskName(viewName);
  at.library = Libraries::instance().find(libName);
  at.place.libraryName = diskName(libName);
  at.place.label = "design " + nativeText(at.place.libraryName) + "/" + nativeText(at.cell) + "/" + nativeText(at.view);
  if (at.library != nullptr) {
    at.place.libraryPath = at.library->fullPath();
    at.place.directory = at.place.libraryPath + "/" + at.cell + "/" + at.view;
    if (const DesignDatabase *open = at.openDesign()) { // nothing to be looked for on disk
      at.place.fileName = open->place().fileName;
    } else if (isDirectory(at.place.directory)) {
      at.place.fileName = findPrimaryFile(at.place.directory);
    }
  }
  return at;
}

CellViewPlace placeInOpenLibrary(const oaScalarName &libName, const oaScalarName &cellName,
                                 const oaScalarName &viewName) {
  CellViewPlace at = placeOf(libName, cellName, viewName);
  if (at.library == nullptr) {
    raiseDesign(oacCannotFindLibrary,
                at.place.label + ": library " + nativeText(at.place.libraryName) + " is not open");
  }
  return at;
}

bool isDesignType(Row viewType) {
  return viewType == oacMaskLayout || viewType == oacSchematic || viewType == oacSchematicSymbol ||
         viewType == oacNetlist || viewType == oacHierDesign;
}

void checkDesignType(const CellViewPlace &at, Row viewType) {
  if (!isDesignType(viewType)) {
    raiseDesign(oacInvalidDesignViewType,
                at.place.label + ": view type " +
                    (viewType == kNoRow ? "unknown" : ViewTypes::instance().nameOf(viewType)) +
                    " is not one of maskLayout, schematic, schematicSymbol, netlist, oaHierDesign");
  }
}

void checkSameType(const CellViewPlace &at, Row found, Row wanted, oaUInt4 id) {
  if (found != wanted) {
    const ViewTypes &types = ViewTypes::instance();
    raiseDesign(id, at.place.label + ": is of view type " + (found == kNoRow ? "unknown" : types.nameOf(found)) +
                        ", not " + types.nameOf(wanted));
  }
}

// Makes the cell view's directories and an empty primary file; returns what was made.
std::vector<std::string> createFiles(CellViewPlace &at, Row viewType) {
  at.place.fileName = ViewTypes::instance().primaryFileOf(viewType);
  const BriefWriteAccess access(*at.library, DesignDatabase::errorIds(), at.place.label);
  return createCellViewFiles(at.library->fullPath(), at.cell, at.view, at.place.fileName);
}

// `wantedType` kNoRow: any, but the cell view must exist.
oaDesign *openDesign(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName,
                     Row wantedType, oaChar mode) {
  requireInitialised();
  DesignDatabase::forgetGone();
  CellViewPlace at = placeInOpenLibrary(libName, cellName, viewName);
  OpenDatabase::checkMode(mode, DesignDatabase::errorIds(), at.place.label);
  if (wantedType != kNoRow) {
    checkDesignType(at, wantedType);
  }
  if (DesignDatabase *open = at.openDesign()) {
    if (wantedType != kNoRow) {
      checkSameType(at, open->viewType(), wantedType, oacMismatchViewTypeForOpen);
    }
    open->openAgain(mode);
    return open->design();
  }
  std::vector<std::string> created;
  if (at.place.fileName.empty()) {
    if (wantedType == kNoRow || mode == 'r') {
      const bool hasDirectory = isDirectory(at.place.directory);
      raiseDesign(hasDirectory ? oacDesignPrimaryFileDoesNotExist : oacCannotFindDesign,
                  at.place.label + ": " +
                      (hasDirectory ? "directory " + at.place.directory + " has no primary file"
                                    : "there is no directory " + at.place.directory));
    }
    created = createFiles(at, wantedType);
  } else if (wantedType != kNoRow) {
    checkSameType(at, at.viewType(), wantedType, oacMismatchViewTypeForOpen);
  } else {
    checkDesignType(at, at.viewType());
  }
  auto design = std::make_unique<DesignDatabase>(at.place, at.cell, at.view);
  for (const std::string &path : created) {
    design->noteCreated(path);
  }
  design->open(mode);
  return DesignDatabase::registry().add(std::move(design)).design();
}

// Open designs by serial number, which stays meaningful when some are closed during the walk.
class OpenDesignsKind : public CollectionKind {
public:
  oaObject *next(const CollectionQuestion &, Row &position, Row &) const override {
    for (const auto &design : DesignDatabase::registry().all()) {
      if (position == kNoRow || design->serialNumber() > position) {
        position = design->serialNumber();
        return design->design();
      }
    }
    return nullptr;
  }
};

} // namespace

oaDesign *oaDesign::open(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName,
                         const oaViewType *viewType, oaChar mode) {
  return openDesign(libName, cellName, viewName, ViewTypes::rowOfType(viewType), mode);
}

oaDesign *oaDesign::open(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName,
                         oaChar mode) {
  return openDesign(libName, cellName, viewName, kNoRow, mode);
}

oaDesign *oaDesign::open(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName,
                         const oaParamArray &params) {
  oaDesign *design = openDesign(libName, cellName, viewName, kNoRow, 'r');
  DesignDatabase &stored = designOf(design);
  if (kit::isSuperMaster(stored)) {
    const KeptDesign super(stored, KeptDesign::Reference::takenOver);
    return openSubMaster(stored, params);
  }
  if (params.getNumElements() != 0) {
    const std::string label = designOf(design).label();
    design->close();
    raiseDesign(oacInvalidSuperMaster, label + ": is not parametric, but " + std::to_string(params.getNumElements()) +
                                           " parameters are given");
  }
  return design;
}

oaDesign *oaDesign::open(oaCustomViaDef *viaDef, oaParamArray *params) {
  oaScalarName lib, cell, view;
  viaDef->getLibName(lib);
  viaDef->getCellName(cell);
  viaDef->getViewName(view);
  return params == nullptr ? open(lib, cell, view, 'r') : open(lib, cell, view, *params);
}

oaDesign *oaDesign::find(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName) {
  try {
    DesignDatabase *open = placeOf(libName, cellName, viewName).openDesign();
    return open == nullptr ? nullptr : open->design();
  } catch (const oaException &) {
    return nullptr; // names that nothing can have
  }
}

oaBoolean oaDesign::exists(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName) {
  try {
    const CellViewPlace at = placeOf(libName, cellName, viewName);
    return at.openDesign() != nullptr || (!at.place.fileName.empty() && fileSizeBytes(at.place.path()) != 0);
  } catch (const oaException &) {
    return false; // names that nothing can have, directories that cannot be read
  }
}

void oaDesign::destroy(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName) {
  requireInitialised();
  const CellViewPlace at = placeInOpenLibrary(libName, cellName, viewName);
  if (at.openDesign() != nullptr) {
    raiseDesign(oacDestroyDesignOpen, at.place.label + ": is open; close it first");
  }
  if (at.place.fileName.empty()) {
    raiseDesign(oacDestroyCannotFindDesign, at.place.label + ": there is no such design");
  }
  const BriefWriteAccess access(*at.library, DesignDatabase::errorIds(), at.place.label);
  checkReplaceable(at.place.path(), at.place.label);
  std::unique_ptr<EditLock> lock;
  std::string holder;
  if (EditLock::acquire(at.place.path(), lock, holder) != EditLock::Outcome::taken) {
    raiseDesign(oacCannotLockDatabase, at.place.label + ": cannot be destroyed: " + holder);
  }
  // Readers keep the file that they opened.
  replaceFile(at.place.path(), "");
}

oaCollection<oaDesign, oaDesign> oaDesign::getOpenDesigns() {
  static const OpenDesignsKind kind;
  return CollectionAccess::make<oaCollection<oaDesign, oaDesign>>(kind, nullptr, 0);
}

oaUInt4 oaDesign::getRevNumber() { return oacAPIMinorRevNumber; }

void oaDesign::saveAs(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName) {
  DesignDatabase &design = designOf(this);
  const PinnedDesign pinned(design);
  if (design.isScratch()) {
    raiseDesign(oacSaveScratchModeDesign, design.label() + ": lives in memory only and cannot be saved");
  }
  CellViewPlace at = placeInOpenLibrary(libName, cellName, viewName);
  const DesignDatabase *target = at.openDesign();
  if (target == &design) {
    save();
    return;
  }
  if (target != nullptr && target->isWritable()) {
    raiseDesign(oacCannotLockDatabase, at.place.label + ": is open for writing in this process; close it first");
  }
  if (kit::isSuperMaster(design) && findPcellDef(design, this) == nullptr) {
    raiseDesign(oacCannotSaveUnboundSuperMaster,
                design.label() + ": is a parametric cell whose evaluator is missing, and cannot be written elsewhere");
  }
  if (at.place.fileName.empty()) {
    createFiles(at, design.viewType());
  } else {
    checkSameType(at, at.viewType(), design.viewType(), oacMismatchViewTypeForSaveAs);
  }
  std::unique_ptr<EditLock> lock;
  std::string holder;
  if (EditLock::acquire(at.place.path(), lock, holder) != EditLock::Outcome::taken) {
    raiseDesign(oacCannotLockDatabase, at.place.label + ": cannot be written: " + holder);
  }
  const BriefWriteAccess access(*at.library, DesignDatabase::errorIds(), at.place.label);
  design.saveCopy(at.place.path());
}

} // namespace OpenAccess_4
