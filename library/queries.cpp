// What the host's library browser asks: libraries, cells, views and view types.

#include "oapluginmain.h"

#include <cstdio>

#include <sys/stat.h>

#include "errorguard.h"
#include "libraryaccess.h"
#include "qttoolkit.h"

using namespace oa;

namespace {

// A line with one name in it, on standard output. The format has one %s.
void printName(const char *format, const QString &name) {
  std::printf(format, toolkit::toEightBit(name).constData()); // NOLINT(clang-diagnostic-format-nonliteral)
}

void printProgress(const char *format, const QString &name) {
  if (oaConvert::debug) {
    printName(format, name);
  }
}

// The library of that name with its start-up done, or null after a line that says so.
oaLib *findLibrary(const QString &name) {
  oaConvert::init();
  printProgress("check %s\n", name);
  oaLib *lib = oaLib::find(oaConvert::toOaScalarName(name));
  if (!lib) {
    printName("lib not found %s\n", name);
  }
  return lib;
}

template <typename Named> QString nameOf(const Named *object) {
  oaScalarName name;
  object->getName(name);
  return oaConvert::toString(name);
}

void appendLibraries(const oaLibDefList *list, QStringList &names) {
  oaIter<oaLibDefListMem> members(list->getMembers());
  while (const oaLibDefListMem *member = members.getNext()) {
    if (member->getType() != oacLibDefType) {
      continue;
    }
    oaScalarName name;
    static_cast<const oaLibDef *>(member)->getLibName(name);
    names.append(oaConvert::toString(name));
  }
}

void appendViews(const oaCell *cell, QStringList &names) {
  oaIter<oaCellView> cellViews(cell->getCellViews());
  while (const oaCellView *cellView = cellViews.getNext()) {
    const QString name = nameOf(cellView->getView());
    printProgress("view: %s\n", name);
    names.append(name);
  }
}

// The places that a design file's path names, from the end: .../library/cell/view/file.
struct DesignFilePlace {
  QString lib;
  QString libDirectory;
  QString cell;
  QString view;
  QString file;
};

// False when the path is too short to hold a library directory.
bool takeApart(const QString &path, DesignFilePlace &place) {
  const int fileSlash = path.lastIndexOf(QLatin1Char('/'));
  const int viewSlash = fileSlash > 0 ? path.lastIndexOf(QLatin1Char('/'), fileSlash - 1) : -1;
  const int cellSlash = viewSlash > 0 ? path.lastIndexOf(QLatin1Char('/'), viewSlash - 1) : -1;
  if (cellSlash <= 0) {
    return false;
  }
  place.file = path.mid(fileSlash + 1);
  place.view = path.mid(viewSlash + 1, fileSlash - viewSlash - 1);
  place.cell = path.mid(cellSlash + 1, viewSlash - cellSlash - 1);
  place.libDirectory = path.left(cellSlash);
  place.lib = place.libDirectory.mid(place.libDirectory.lastIndexOf(QLatin1Char('/')) + 1);
  return !place.lib.isEmpty();
}

bool isExistingFile(const QString &path) {
  struct stat status;
  return stat(toolkit::toEightBit(path).constData(), &status) == 0;
}

} // namespace

QStringList oaConvert::getLibraries() {
  QStringList names;
  guard::printing(
      "getLibraries",
      [&] {
        init();
        createLibDefs();
        if (!oaLibDefList::getTopList()) {
          std::printf("create lib list failed\n");
          return;
        }
        oaIter<oaLibDefList> lists(oaLibDefList::getLibDefLists());
        while (const oaLibDefList *list = lists.getNext()) {
          appendLibraries(list, names);
        }
      },
      "  ");
  names.sort();
  return names;
}

QStringList oaConvert::getCells(const QString &libName) {
  QStringList names;
  guard::printing("getCells", [&] {
    oaLib *lib = findLibrary(libName);
    if (!lib) {
      return;
    }
    const LibraryReadAccess access(lib);
    oaIter<oaCell> cells(lib->getCells());
    while (const oaCell *cell = cells.getNext()) {
      const QString name = nameOf(cell);
      printProgress("cell: %s\n", name);
      names.append(name);
    }
  });
  names.sort();
  return names;
}

QStringList oaConvert::getViews(const QString &libName, const QString &cellName) {
  QStringList names;
  guard::printing("getViews", [&] {
    oaLib *lib = findLibrary(libName);
    if (!lib) {
      return;
    }
    const LibraryReadAccess access(lib);
    oaIter<oaCell> cells(lib->getCells());
    while (const oaCell *cell = cells.getNext()) {
      if (nameOf(cell) == cellName) {
        appendViews(cell, names);
      }
    }
  });
  names.sort();
  return names;
}

QString oaConvert::getViewType(const QString &libName, const QString &cellName, const QString &viewName) {
  QString type;
  guard::printing("getViewType", [&] {
    init();
    if (debug) {
      std::printf("check view type %s/%s/%s\n", toolkit::toEightBit(libName).constData(),
                  toolkit::toEightBit(cellName).constData(), toolkit::toEightBit(viewName).constData());
    }
    oaLib *lib = oaLib::find(toOaScalarName(libName));
    if (!lib) {
      return;
    }
    const LibraryReadAccess access(lib);
    const oaCellView *cellView = oaCellView::find(lib, toOaScalarName(cellName), toOaScalarName(viewName));
    if (!cellView) {
      return;
    }
    oaString name;
    cellView->getView()->getViewType()->getName(name);
    type = toString(name);
    printProgress("type is %s\n", type);
  });
  return type;
}

bool oaConvert::isOaLibrary(const QString &file, QString *libName, QString *libPath) {
  DesignFilePlace place;
  if (!file.endsWith(QLatin1String(".oa")) || !takeApart(file, place)) {
    return false;
  }
  bool isKnown = false;
  guard::swallowing([&] {
    init();
    if (debug) {
      std::printf("use lib %s %s %s %s\n", toolkit::toEightBit(place.libDirectory).constData(),
                  toolkit::toEightBit(place.cell).constData(), toolkit::toEightBit(place.view).constData(),
                  toolkit::toEightBit(place.file).constData());
    }
    if (isExistingFile(file)) {
      isKnown = checkLib(place.lib, place.libDirectory, false);
    } else if (const oaLib *lib = getLib(toOaScalarName(place.lib), "")) {
      // A design that is yet to be written, or a path that only names lib, cell and view: the library knows its own
      // place.
      oaString path;
      lib->getPath(path);
      place.libDirectory = toString(path);
      isKnown = true;
    }
    if (libName) {
      *libName = place.lib;
    }
    if (libPath) {
      *libPath = place.libDirectory;
    }
  });
  return isKnown;
}

QStringList oaPlugInMain::getLibs() { return getLibraries(); }

QStringList oaPlugInMain::getCellNames(QString lib) { return getCells(lib); }

QStringList oaPlugInMain::getViewNames(QString lib, QString cell) { return getViews(lib, cell); }

QString oaPlugInMain::getViewType(QString lib, QString cell, QString view) {
  return oaConvert::getViewType(lib, cell, view);
}

bool oaPlugInMain::isOaLibrary(QString file, QString *lib, QString *path) {
  return oaConvert::isOaLibrary(file, lib, path);
}
