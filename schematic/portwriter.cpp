// Ports and ground symbols.

#include <QCryptographicHash>

#include "blockwriting.h"
#include "schematiclayers.h"
#include "schematicwriter.h"

using namespace oa;
using namespace schematicwriter;

namespace {

// Half the side of the square that stands for a port at a point.
const int kPinRadiusDbu = 8;

oaRect *createPinBox(oaBlock *block, const QPoint &position, const QString &type, const QString &symbol = QString()) {
  oaRect *box =
      oaRect::create(block, schematiclayers::kPin, schematiclayers::kDrawn, squareAround(position, kPinRadiusDbu));
  if (!type.isEmpty()) {
    setText(box, "type", type);
  }
  if (!symbol.isEmpty()) {
    setText(box, "symbol", symbol);
  }
  return box;
}

// The direction that the host's type text names; a text that names none leaves the terminal as it is.
void setDirection(oaTerm *term, const QString &type) {
  const bool isInput = type.contains(QLatin1String("input"));
  const bool isOutput = type.contains(QLatin1String("output"));
  if (isInput && isOutput) {
    term->setTermType(oacInputOutputTermType);
  } else if (isOutput) {
    term->setTermType(oacOutputTermType);
  } else if (isInput) {
    term->setTermType(oacInputTermType);
  }
}

oaNet *createNet(oaBlock *block, const QString &name) {
  return oaNet::create(block, oaConvert::toOaName(name), oacSignalSigType, false, oacInheritFromTopBlock);
}

// A terminal on a net of its own, with the figure as its pin.
void createPort(oaNet *net, const QString &name, const QString &type, oaPinFig *figure) {
  oaTerm *term = oaTerm::create(net, oaConvert::toOaName(name), oacInputOutputTermType, oacInheritFromTopBlock);
  setDirection(term, type);
  if (oaPin *pin = oaPin::create(term, oaUInt4(0))) {
    figure->addToPin(pin);
  }
}

// Bus ports of one name share a pin. Its name is a digest of theirs, whatever their length and characters.
oaPin *busPinNamed(oaTerm *term, const QString &portName) {
  const QByteArray digest = QCryptographicHash::hash(toolkit::toEightBit(portName), QCryptographicHash::Md5);
  const oaString name((QByteArray("bus") + digest.toHex()).constData());
  if (oaPin *pin = oaPin::find(term, name)) {
    return pin;
  }
  return oaPin::create(term, name, 0);
}

oaTerm *bundleTermNamed(oaBundleNet *net, const oaBundleName &name) {
  if (oaBundleTerm *term = oaBundleTerm::find(net->getBlock(), name)) {
    return term;
  }
  return oaBundleTerm::create(net, name, oacInputOutputTermType, oacInheritFromTopBlock);
}

QString portText(const QString &name) { return QLatin1String("port ") + name; }

QString portText(int net, const QPoint &position) {
  return QString::fromLatin1("net %1 at ").arg(net) + oaConvert::toPointString(position);
}

} // namespace

void oaPlugInMain::savePort(QString name, QPoint position, bool global, QString type) {
  write(
      *this, "savePort",
      [&] {
        oaRect *box = createPinBox(currentBlock, position, type);
        oaNet *net = createNet(currentBlock, name);
        if (global) {
          net->setGlobal(true);
        }
        createPort(net, name, type, box);
      },
      [&] { return portText(name); });
}

void oaPlugInMain::savePort(int net, QPoint position, bool global, QString type, QString symbol) {
  write(
      *this, "savePort",
      [&] {
        oaRect *box = createPinBox(currentBlock, position, type, symbol);
        if (global) {
          if (oaNet *known = liveEntry(*this, "savePort", netsByNumber, net)) {
            box->addToNet(known);
            known->setGlobal(true);
          }
          return;
        }
        if (oaPin *pin = liveEntry(*this, "savePort", pinsByNumber, net)) {
          box->addToPin(pin);
        }
        if (oaTerm *term = liveEntry(*this, "savePort", termsByNumber, net)) {
          setDirection(term, type);
        }
      },
      [&] { return portText(net, position); });
}

void oaPlugInMain::saveGlobalPort(QString name) {
  write(
      *this, "saveGlobalPort", [&] { createNet(currentBlock, name)->setGlobal(true); }, [&] { return portText(name); });
}

// The corners come as left, top, right and bottom.
void oaPlugInMain::savePortRect(int x1, int y1, int x2, int y2, QString name) {
  write(
      *this, "savePortRect",
      [&] {
        oaRect *rect =
            oaRect::create(currentBlock, schematiclayers::kPin, schematiclayers::kDrawn, oaBox(x1, y2, x2, y1));
        createPort(createNet(currentBlock, name), name, QString(), rect);
      },
      [&] { return portText(name); });
}

void oaPlugInMain::savePortPolygon(QPolygon points, QString name) {
  write(
      *this, "savePortPolygon",
      [&] {
        oaPolygon *polygon =
            blockwriting::createCompressed(toOaPointArray(points), true, [&](const oaPointArray &accepted) {
              return oaPolygon::create(currentBlock, schematiclayers::kPin, schematiclayers::kDrawn, accepted);
            });
        createPort(createNet(currentBlock, name), name, QString(), polygon);
      },
      [&] { return portText(name); });
}

void oaPlugInMain::saveBusport(QString name, QPoint position, bool global, QString type, QString symbol) {
  write(
      *this, "busport",
      [&] {
        const oaBundleName bundle = toBundleName(name);
        oaBundleNet *net = bundleNetNamed(currentBlock, bundle);
        if (!net) {
          return;
        }
        oaRect *box = createPinBox(currentBlock, position, type, symbol);
        if (global) {
          box->addToNet(net);
          net->setGlobal(true);
        } else if (oaTerm *term = bundleTermNamed(net, bundle)) {
          box->addToPin(busPinNamed(term, name));
        }
      },
      [&] { return portText(name); });
}

void oaPlugInMain::saveGround(int net, QPoint position) {
  write(
      *this, "saveGround",
      [&] {
        oaDot *dot = oaDot::create(currentBlock, schematiclayers::kPin, schematiclayers::kDrawn, toOaPoint(position),
                                   oaDist(0), oaDist(0));
        if (oaNet *known = liveEntry(*this, "saveGround", netsByNumber, net)) {
          dot->addToNet(known);
          known->setGlobal(true);
        }
      },
      [&] { return portText(net, position); });
}
