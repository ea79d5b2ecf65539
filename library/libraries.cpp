// Finding, opening, creating and registering libraries.

#include "oapluginmain.h"

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

#include <QDir>
#include <QFile>

#include "errorguard.h"
#include "qttoolkit.h"

using namespace oa;

namespace {

QString absolutePathOf(const QString &path) { return QDir::cleanPath(QDir(path).absolutePath()); }

// Library definitions count relative paths from their own file, oaLib from the working directory, so only an absolute
// path means the same to both.
oaString definedPathOf(const oaLib *lib, const oaString &path) {
  if (!path.isEmpty() && path[0] == '/') {
    return path;
  }
  oaString fullPath;
  lib->getFullPath(fullPath);
  return fullPath;
}

// Enters a library into the top list of library definitions. An entry of that name stays as it is, even when it points
// elsewhere: the user wrote it.
void defineLibrary(const oaLib *lib, const oaScalarName &name, const oaString &path) {
  oaConvert::createLibDefs();
  oaLibDefList *topList = oaLibDefList::getTopList();
  if (!topList) {
    if (oaConvert::debug) {
      std::printf("lib.defs list problem\n");
    }
    return;
  }
  if (oaLibDef::find(topList, name)) {
    return;
  }
  oaString listPath;
  topList->getFullPath(listPath);
  // The call turns the list object itself into one that may be saved.
  oaLibDefList::get(listPath, 'a');
  const oaString definedPath = definedPathOf(lib, path);
  oaLibDef::create(topList, name, definedPath, "", oacSharedLibMode, nullptr, nullptr);
  topList->save();
  if (oaConvert::debug) {
    std::printf("lib.defs add %s (%s) at %s\n", toolkit::toEightBit(oaConvert::toString(name)).constData(),
                static_cast<const oaChar *>(definedPath), static_cast<const oaChar *>(listPath));
  }
}

oaLib *createLibrary(const oaScalarName &name, const oaString &path) {
  const char *designManagement = std::getenv("DMSystem");
  return oaLib::create(name, path, oacSharedLibMode, designManagement ? designManagement : "oaDMSystem", nullptr);
}

} // namespace

bool oaConvert::existLib(const oaString &path) {
  if (!oaLib::exists(path)) {
    return false;
  }
  // Asked with the path's own bytes: OpenAccess takes them as they are, Qt would encode them anew.
  const QString directory = QFile::decodeName(QByteArray(static_cast<const oaChar *>(path)));
  if (QFile::encodeName(absolutePathOf(directory)) == QFile::encodeName(absolutePathOf(QDir::homePath()))) {
    return false;
  }
  oaString marker(path);
  marker += "/.oalib";
  return access(marker, F_OK) == 0;
}

bool oaConvert::checkLib(const oaScalarName &name, const oaString &path, bool create) {
  init();
  if (oaLib::find(name)) {
    return true;
  }
  oaLib *lib = nullptr;
  if (!path.isEmpty() && existLib(path)) {
    lib = oaLib::open(name, path, "", oacSharedLibMode);
  } else if (create) {
    lib = createLibrary(name, path);
  }
  if (!lib) {
    return false;
  }
  defineLibrary(lib, name, path);
  return true;
}

bool oaConvert::checkLib(const QString &lib, const QString &path, bool create) {
  return checkLib(toOaScalarName(lib), toOaPath(path), create);
}

oaLib *oaConvert::getLib(const oaScalarName &name, const oaString &path) {
  if (oaLib *lib = oaLib::find(name)) {
    return lib;
  }
  // lib.defs may have changed since it was read.
  oaLibDefList::openLibs();
  if (oaLib *lib = oaLib::find(name)) {
    return lib;
  }
  if (path.isEmpty()) {
    return nullptr;
  }
  if (oaLib *lib = oaLib::open(name, path, "", oacSharedLibMode)) {
    return lib;
  }
  checkLib(name, path, false);
  return oaLib::find(name);
}

QString oaConvert::getLibPath(const QString &name) {
  const oaLib *lib = getLib(toOaScalarName(name), "");
  if (!lib) {
    return QString();
  }
  oaString path;
  lib->getFullPath(path);
  return toString(path);
}

QString oaPlugInMain::getLibPath(QString lib) {
  QString path;
  guard::printing("getLibPath", [&] {
    oaConvert::init();
    path = oaConvert::getLibPath(lib);
  });
  return path;
}

bool oaPlugInMain::existLib(QString path) {
  bool isLibrary = false;
  guard::printing("existLib", [&] {
    oaConvert::init();
    isLibrary = oaConvert::existLib(toOaPath(path));
  });
  return isLibrary;
}

bool oaPlugInMain::checkLib(QString lib, QString path, bool create) {
  bool isKnown = false;
  guard::silently([&] { isKnown = oaConvert::checkLib(lib, path, create); });
  return isKnown;
}

QString oaPlugInMain::registerLibrary(QString path) {
  QString error;
  guard::run(
      [&] {
        oaConvert::init();
        const int slash = path.lastIndexOf(QLatin1Char('/'));
        if (slash <= 0) {
          std::printf("error %s\n", toolkit::toEightBit(path).constData());
          return;
        }
        oaConvert::checkLib(path.mid(slash + 1), path, true);
      },
      [&](const oaException &exception) { error = toString(exception.getMsg()); },
      [&](char character) { error = QString(QChar::fromLatin1(character)); });
  return error;
}
