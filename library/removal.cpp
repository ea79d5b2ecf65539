// Deleting views and cells of a library.

#include "oapluginmain.h"

#include <cstdio>

#include "errorguard.h"
#include "qttoolkit.h"
#include "writablelibrary.h"

using namespace oa;

namespace {

// Destroys what `find` finds in the library of that name, with write access asked for; a library that had to be opened
// again is asked twice. The access is kept when nothing is found, which the host may rely on for what it writes in its
// place.
template <typename Find> void removePart(const char *label, const QString &libName, Find find) {
  guard::printing(label, [&] {
    oaConvert::init();
    const oaScalarName name = oaConvert::toOaScalarName(libName);
    oaLib *lib = makeWritable(oaLib::find(name), name);
    if (!lib->getAccess(oaLibAccess(oacWriteLibAccess), kWriteAccessTimeoutSeconds)) {
      // The look-up would only say that no access is held.
      std::printf("ERROR (%s): library %s: another process holds access to it, nothing is removed \n", label,
                  toolkit::toEightBit(libName).constData());
      return;
    }
    if (auto *part = find(lib)) {
      part->destroy();
      releaseAccessIfHeld(lib);
    }
  });
}

} // namespace

void oaPlugInMain::removeView(QString lib, QString cell, QString view) {
  removePart("removeView", lib,
             [&](oaLib *library) { return oaCellView::find(library, toOaScalarName(cell), toOaScalarName(view)); });
}

void oaPlugInMain::removeCell(QString lib, QString cell) {
  removePart("removeCell", lib, [&](oaLib *library) { return oaCell::find(library, toOaScalarName(cell)); });
}
