// The operations that write a layout's shapes between saveLayout() and saveClose().

#include "blockwriting.h"
#include "currentlayout.h"
#include "oapluginmain.h"
#include "saveguard.h"

using namespace oa;
using blockwriting::createCompressed;
using blockwriting::destroyAll;
using blockwriting::destroyConnectivity;

namespace {

oaPathStyle pathStyleOf(int caps) {
  switch (caps) {
  case 1:
    return oacRoundPathStyle;
  case 2:
    return oacExtendPathStyle;
  default:
    return oacTruncatePathStyle;
  }
}

QString layerText(int layer, int datatype) { return QString::fromLatin1("layer %1/%2").arg(layer).arg(datatype); }

QString pointsText(const QPolygon &points) {
  QString text = QString::fromLatin1(", %1 points").arg(points.size());
  return points.isEmpty() ? text : text + QLatin1String(" from ") + oaConvert::toPointString(points.first());
}

void createNet(oaPlugInMain &host, const QString &name, bool hasTerm) {
  const oaName netName = oaConvert::toOaName(name);
  oaNet *net = oaNet::create(host.currentBlock, netName);
  host.netsByName.insert(name, net);
  if (hasTerm) {
    oaTerm *term = oaTerm::create(net, netName);
    host.pinsByName.insert(name, oaPin::create(term, oaUInt4(0)));
  }
}

} // namespace

void oaPlugInMain::saveLayout(QString lib, QString cell, QString view, bool replaceConnectivity, QStringList netNames,
                              QStringList termNames) {
  saving(
      *this, "saveLayout",
      [&] {
        oaConvert::init();
        currentlayout::abandon(*this);
        const oaScalarName libName = toOaScalarName(lib);
        const oaScalarName cellName = toOaScalarName(cell);
        const oaScalarName viewName = toOaScalarName(view);
        // Mode 'w' starts from an empty design, which would lose the connectivity that is to be kept.
        oaDesign *design = oaDesign::exists(libName, cellName, viewName)
                               ? oaDesign::open(libName, cellName, viewName, replaceConnectivity ? 'w' : 'a')
                               : oaDesign::open(libName, cellName, viewName, oaViewType::get(oacMaskLayout), 'w');
        currentlayout::adopt(*this, design);
        if (replaceConnectivity) {
          destroyConnectivity(currentBlock);
          for (const QString &name : static_cast<const QStringList &>(netNames)) {
            saving(
                *this, "saveLayout", [&] { createNet(*this, name, termNames.contains(name)); },
                [&] { return QLatin1String("net ") + name; });
          }
        } else {
          currentlayout::rememberConnectivity(*this);
        }
        destroyAll<oaShape>(currentBlock->getShapes());
        destroyAll<oaInst>(currentBlock->getInsts());
        destroyAll<oaVia>(currentBlock->getVias());
      },
      [&] { return lib + '/' + cell + '/' + view; });
}

void oaPlugInMain::saveBox(QRect rect, int layer, int datatype) {
  if (!currentlayout::isOpen(*this, "saveBox")) {
    return;
  }
  saving(
      *this, "saveBox",
      [&] {
        oaRect::create(currentBlock, oaLayerNum(layer), oaPurposeNum(datatype),
                       oaBox(rect.left(), rect.bottom(), rect.right(), rect.top()));
      },
      [&] {
        return layerText(layer, datatype) + QLatin1String(", box ") + toPointString(rect.bottomLeft()) +
               QLatin1String(" to ") + toPointString(rect.topRight());
      });
}

void oaPlugInMain::savePolygon(int layer, int datatype, QPolygon points) {
  if (!currentlayout::isOpen(*this, "savePolygon")) {
    return;
  }
  saving(
      *this, "savePolygon",
      [&] {
        createCompressed(toOaPointArray(points), true, [&](const oaPointArray &accepted) {
          oaPolygon::create(currentBlock, oaLayerNum(layer), oaPurposeNum(datatype), accepted);
        });
      },
      [&] { return layerText(layer, datatype) + pointsText(points); });
}

void oaPlugInMain::savePath(QPolygon points, int width, int layer, int datatype, int caps) {
  if (!currentlayout::isOpen(*this, "savePath")) {
    return;
  }
  saving(
      *this, "savePath",
      [&] {
        if (width <= 0) {
          oaLine::create(currentBlock, oaLayerNum(layer), oaPurposeNum(datatype), toOaPointArray(points));
          return;
        }
        createCompressed(toOaPointArray(points), false, [&](const oaPointArray &accepted) {
          oaPath::create(currentBlock, oaLayerNum(layer), oaPurposeNum(datatype), oaDist(width), accepted,
                         pathStyleOf(caps), 0, 0);
        });
      },
      [&] { return layerText(layer, datatype) + pointsText(points); });
}

void oaPlugInMain::saveText(int layer, int datatype, QString text, QPoint origin, int presentation, QString trans,
                            int height) {
  if (!currentlayout::isOpen(*this, "saveText")) {
    return;
  }
  bool isOrthogonal = true;
  const oaOrient orient = toOaOrient(trans, &isOrthogonal);
  if (!isOrthogonal) {
    emit reportError(tr("non orthogonal text is not supported in OpenAccess"), 2, trans);
  }
  saving(
      *this, "saveText",
      [&] {
        oaText *label = oaText::create(currentBlock, oaLayerNum(layer), oaPurposeNum(datatype), toOaString(text),
                                       toOaPoint(origin), toOaTextAlign(presentation), orient, oacStickFont,
                                       oaDist(height > 0 ? height : 0), false, true, true);
        if (oaPin *pin = pinsByName.value(text)) {
          label->addToPin(pin);
        }
      },
      [&] { return layerText(layer, datatype) + QLatin1String(", text ") + text; });
}

void oaPlugInMain::saveClose() {
  if (currentlayout::isOpen(*this, "saveClose")) {
    oaDesign *design = currentDesign;
    const auto describe = [path = currentlayout::path(*this)] { return path; };
    saving(
        *this, "saveClose", [&] { design->save(); }, describe);
    // A design that could not be saved is closed all the same: the disk keeps what it had, and nothing stays locked.
    saving(
        *this, "saveClose", [&] { design->close(); }, describe);
  }
  currentlayout::clear(*this);
  if (!currentTech || !currentTech->isValid()) {
    return;
  }
  saving(
      *this, "saveClose",
      [this] {
        const oaChar mode = currentTech->getMode();
        if (mode == 'a' || mode == 'w') {
          currentTech->save();
          currentTech->close();
        }
      },
      [] { return tr("technology"); });
}
