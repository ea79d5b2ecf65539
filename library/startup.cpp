// Start-up of OpenAccess and of its library definitions.

#include "oapluginmain.h"

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

#include <QDir>
#include <QFile>

#include "errorguard.h"
#include "kitversion.h"
#include "qttoolkit.h"

using namespace oa;

namespace {

void printProgress(const char *text) {
  if (oaConvert::debug) {
    std::fputs(text, stdout);
  }
}

oaString fullPathOf(const oaLibDefList *list) {
  oaString path;
  list->getFullPath(path);
  return path;
}

} // namespace

void oaConvert::init() {
  if (initDone) {
    return;
  }
  if (debug) {
    std::printf("init oa! (%u %u)\n", kApiMajorRevision, kApiMinorRevision);
  }
  requireKitVersion("liboaBase.so");
  oaDesignInit(kApiMajorRevision, kApiMinorRevision);
  printProgress("open libs");
  oaLibDefList::openLibs();
  printProgress(", get top list");
  // From here on a failure concerns lib.defs only, which later operations ask for again themselves.
  initDone = true;
  if (!oaLibDefList::getTopList()) {
    printProgress(", create 'lib.defs'");
    createLibDefs();
  }
  printProgress(".\n");
}

void oaConvert::createLibDefs() {
  if (const oaLibDefList *list = oaLibDefList::getTopList()) {
    if (debug) {
      std::printf("use lib.defs: %s\n", static_cast<const oaChar *>(fullPathOf(list)));
    }
    return;
  }
  const char *home = std::getenv("HOME");
  QByteArray path(home ? home : "");
  if (debug) {
    std::printf("create lib.defs at %s\n", path.constData());
  }
  if (path.isEmpty()) {
    path = QFile::encodeName(QDir::homePath());
  }
  path += "/lib.defs";
  const oaString file(path.constData());
  if (access(path.constData(), F_OK) != 0) {
    if (oaLibDefList *list = oaLibDefList::get(file, 'w')) {
      list->save();
    }
  }
  oaLibDefList::openLibs();
  if (!oaLibDefList::getTopList()) {
    oaLibDefList::openLibs(file);
  }
}

void oaPlugInMain::init(bool debug) {
  oaConvert::debug = debug;
  guard::printing("init", [this] {
    oaConvert::init();
    currentTech = nullptr;
    printProgress("oa init plugin done\n");
  });
}

QString oaPlugInMain::getLibDefsFilename() {
  QString path = QLatin1String("");
  if (!guard::printing("getLibDefsFilename", [] { oaConvert::init(); })) {
    return path;
  }
  guard::swallowing([&] {
    printProgress("read lib.defs filename");
    if (const oaLibDefList *list = oaLibDefList::getTopList()) {
      path = toString(fullPathOf(list));
    }
  });
  return path;
}
