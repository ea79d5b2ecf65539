// The operation that reads a schematic or symbol.

#include <cstdio>

#include "currentlayout.h"
#include "designname.h"
#include "oapluginmain.h"
#include "placementsender.h"
#include "saveguard.h"
#include "schematicdrawing.h"
#include "walkfaults.h"

using namespace oa;

namespace {

// Makes sure that the library is known when the host says where it is; otherwise opening the design tells.
void findLibrary(const oaScalarName &lib, const QString &path) {
  if (!path.isEmpty()) {
    oaConvert::getLib(lib, oaConvert::toOaPath(path));
  }
}

} // namespace

// Some failures leave as a text for the user; the host shows those itself.
void oaPlugInMain::openSchematic(QString lib, QString cell, QString view, QString libPath) {
  const QString path = lib + '/' + cell + '/' + view;
  saving(
      *this, "openSchematic",
      [&] {
        oaConvert::init();
        currentlayout::abandon(*this);
        const DesignName name(lib, cell, view);
        findLibrary(name.lib, libPath);
        DesignHolder design(name.open());
        currentlayout::BeingRead reading(*this);
        reading.show(design.get(), nullptr);
        if (design.get()->isSuperMaster()) {
          if (debug) {
            std::printf("parametric symbol, use defaults");
          }
          emit reportError(tr("Parametric symbol, open with default parameter"), 2, QLatin1String(""));
          name.evaluateDefaults(design);
          reading.show(design.get(), nullptr);
        }
        sendCellData(design.get());
        oaBlock *block = design.get()->getTopBlock();
        reading.show(design.get(), block);
        if (!block) {
          throw tr("no data");
        }
        WalkFaults faults(*this, "openSchematic", path);
        faults.guardKind([&] { PlacementSender(*this, faults).send(block); });
        faults.guardKind([&] { SchematicDrawing(*this, faults).send(block); });
        design.close();
        if (debug) {
          std::printf("end load schematic");
        }
      },
      [&] { return path; });
}
