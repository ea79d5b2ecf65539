// The operation that reads a netlist; the walk itself is NetlistWalk.

#include <cstdio>

#include "designname.h"
#include "netlistwalk.h"
#include "oapluginmain.h"
#include "saveguard.h"
#include "walkfaults.h"

using namespace oa;

void oaPlugInMain::loadNetlist(QString lib, QString cell, QString view) {
  const char *const kLabel = "loadNetlist";
  const QString path = lib + QLatin1Char('/') + cell + QLatin1Char('/') + view;
  const auto read = [&] {
    oaConvert::init();
    const DesignName name(lib, cell, view);
    DesignHolder design(name.open());
    if (design.get()->isSuperMaster()) {
      emit reportError(tr("Parametric cell, open with default parameter"), 2, path);
      name.evaluateDefaults(design);
    }
    oaBlock *block = design.get()->getTopBlock();
    if (!block) {
      throw tr("no data");
    }
    WalkFaults faults(*this, kLabel, path);
    NetlistWalk(*this, faults, path).send(block);
    if (debug) {
      std::printf("end load netlist");
    }
  };
  guard::reporting(
      [&] { saving(*this, kLabel, read, [&] { return path; }); },
      [&](const QString &cause) { emit reportError(cause, 1, QLatin1String(kLabel) + QLatin1String(": ") + path); });
}
