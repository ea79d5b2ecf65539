// Beginning a schematic or a symbol. saveClose() ends it.

#include "schematicwriter.h"

#include <climits>
#include <cstdio>

#include "blockwriting.h"
#include "designholder.h"

using namespace oa;

namespace schematicwriter {

oaBox squareAround(const QPoint &centre, int halfSideDbu) {
  const auto shifted = [](int coordinate, int distance) {
    return oaCoord(qBound(qint64(INT_MIN), qint64(coordinate) + distance, qint64(INT_MAX)));
  };
  return oaBox(shifted(centre.x(), -halfSideDbu), shifted(centre.y(), -halfSideDbu), shifted(centre.x(), halfSideDbu),
               shifted(centre.y(), halfSideDbu));
}

void setText(oaObject *object, const char *name, const QString &value) {
  oaStringProp::create(object, oaString(name), oaConvert::toOaString(value));
}

oaBundleNet *bundleNetNamed(oaBlock *block, const oaBundleName &name) {
  if (oaBundleNet *net = oaBundleNet::find(block, name)) {
    return net;
  }
  return oaBundleNet::create(block, name, oacSignalSigType, false, oacInheritFromTopBlock);
}

} // namespace schematicwriter

namespace {

// Mode 'w' starts from an empty design; the block is emptied for kits that keep the contents.
void empty(oaBlock *block) {
  blockwriting::destroyConnectivity(block);
  blockwriting::destroyAll<oaShape>(block->getShapes());
  blockwriting::destroyAll<oaInst>(block->getInsts());
}

// Opens the design for writing and makes it the current one, without contents. `newType` is the type of a design that
// does not exist yet. Raises OpenAccess's exceptions; no design is open for writing then.
void begin(oaPlugInMain &host, const QString &lib, const QString &cell, const QString &view,
           oaReservedViewTypeEnum newType) {
  oaConvert::init();
  currentlayout::abandon(host);
  host.currentScalarInst = nullptr;
  host.currentVectorInst = nullptr;
  host.propertyTarget = nullptr;
  const oaScalarName libName = oaConvert::toOaScalarName(lib);
  const oaScalarName cellName = oaConvert::toOaScalarName(cell);
  const oaScalarName viewName = oaConvert::toOaScalarName(view);
  DesignHolder design(oaDesign::exists(libName, cellName, viewName)
                          ? oaDesign::open(libName, cellName, viewName, 'w')
                          : oaDesign::open(libName, cellName, viewName, oaViewType::get(newType), 'w'));
  currentlayout::adopt(host, design.get());
  try {
    empty(host.currentBlock);
  } catch (const oaException &) {
    currentlayout::clear(host);
    throw;
  }
  design.release();
}

} // namespace

void oaPlugInMain::saveSchematic(QString lib, QString cell, QString view) {
  begin(*this, lib, cell, view, view.toLower() == QLatin1String("symbol") ? oacSchematicSymbol : oacSchematic);
  pinsByNumber.clear();
  termsByNumber.clear();
  netsByNumber.clear();
}

void oaPlugInMain::saveSymbol(QString lib, QString cell, QString view) {
  try {
    begin(*this, lib, cell, view, oacSchematicSymbol);
  } catch (const oaException &exception) {
    std::printf("OpenAccess Exception: %s\n", static_cast<const oaChar *>(exception.getMsg()));
    emit reportError(oaConvert::toString(exception.getMsg()), 1,
                     QLatin1String("saveSymbol: ") + lib + '/' + cell + '/' + view);
  }
}
