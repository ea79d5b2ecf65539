// Deleting views and cells of a library.

#include "oapluginmain.h"

#include "errorguard.h"
#include "writablelibrary.h"

using namespace oa;

namespace {

// The open library of that name with write access asked for; a library that had to be opened again is asked twice. When
// another process does not give up its access in time, the look-up that follows raises OpenAccess's own error.
oaLib *openForRemoval(const QString &libName) {
  oaConvert::init();
  const oaScalarName name = oaConvert::toOaScalarName(libName);
  oaLib *lib = makeWritable(oaLib::find(name), name);
  lib->getAccess(oaLibAccess(oacWriteLibAccess), kWriteAccessTimeoutSeconds);
  return lib;
}

// Nothing happens for null: the access is kept then, which the host may rely on for what it writes in its place.
template <typename Part> void destroyAndRelease(Part *part, oaLib *lib) {
  if (!part) {
    return;
  }
  part->destroy();
  releaseAccessIfHeld(lib);
}

} // namespace

void oaPlugInMain::removeView(QString lib, QString cell, QString view) {
  guard::printing("removeView", [&] {
    oaLib *library = openForRemoval(lib);
    destroyAndRelease(oaCellView::find(library, toOaScalarName(cell), toOaScalarName(view)), library);
  });
}

void oaPlugInMain::removeCell(QString lib, QString cell) {
  guard::printing("removeCell", [&] {
    oaLib *library = openForRemoval(lib);
    destroyAndRelease(oaCell::find(library, toOaScalarName(cell)), library);
  });
}
