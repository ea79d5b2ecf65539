// Opening technologies: that of the design being written, and that of a library.

#include "oapluginmain.h"

#include <cstdio>

#include "errorguard.h"
#include "libraryaccess.h"
#include "qttoolkit.h"

using namespace oa;

namespace {

const oaUInt4 kAccessTimeoutSeconds = 20;

// Null when the library has no technology, which OpenAccess may tell by an exception. What else keeps it from being
// opened is raised.
oaTech *openIfAny(oaLib *lib, char mode) {
  try {
    return oaTech::open(lib, mode);
  } catch (const oaException &) {
    if (oaTech::exists(lib)) {
      throw;
    }
    return nullptr;
  }
}

} // namespace

void oaPlugInMain::openTech(char mode) {
  // The database may have died with its last close.
  if (currentTech && currentTech->isValid()) {
    if (currentTech->getMode() != mode) {
      currentTech->reopen(mode);
    }
    return;
  }
  if (!currentDesign || !currentDesign->isValid()) {
    return;
  }
  oaLib *lib = currentDesign->getLib();
  currentTech = openIfAny(lib, mode);
  if (!currentTech) {
    oaTech::create(lib);
    currentTech = oaTech::open(lib, mode);
  }
}

oaTech *oaConvert::openTechLib(const QString &libName) {
  oaTech *tech = nullptr;
  const auto tell = [&] { std::printf("can not open tech lib %s", toolkit::toEightBit(libName).constData()); };
  guard::run(
      [&] {
        oaLib *lib = getLib(toOaScalarName(libName), "");
        if (!lib) {
          return;
        }
        // Given back at the end: the open technology needs none, and read access would keep every writer out.
        const LibraryReadAccess access(lib, kAccessTimeoutSeconds);
        tech = oaTech::open(lib, 'r');
      },
      [&](const oaException &) { tell(); }, [&](char) { tell(); });
  return tech;
}
