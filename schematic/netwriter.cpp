// Nets and what is drawn for them: wires, buses, wire dots and wire labels.

#include "schematiclayers.h"
#include "schematicwriter.h"

using namespace oa;
using namespace schematicwriter;

namespace {

enum NetKind { plainNet = 0, netWithTerm = 1, globalNetWithTerm = 2 };

// The name of a net as the host writes it. A bit is "base<bit>"; text behind the ">" belongs to the base.
struct NetName {
  explicit NetName(const QString &text) {
    const int open = text.indexOf(QLatin1Char('<'));
    const int close = open < 0 ? -1 : text.indexOf(QLatin1Char('>'), open);
    isBit = close > open;
    if (isBit) {
      base = oaConvert::toOaScalarName(text.left(open) + text.mid(close + 1));
      bit = oaUInt4(text.mid(open + 1, close - open - 1).toInt());
    } else {
      whole = oaConvert::toOaName(text);
    }
  }

  bool isBit;
  oaScalarName base;
  oaUInt4 bit = 0;
  // Of a net that is no bit.
  oaName whole;
};

oaNet *createNet(oaBlock *block, const NetName &name) {
  if (name.isBit) {
    return oaBusNetBit::create(block, name.base, name.bit, oacSignalSigType, false, oacInheritFromTopBlock);
  }
  return oaNet::create(block, name.whole, oacSignalSigType, false, oacInheritFromTopBlock);
}

oaTerm *createTerm(oaNet *net, const NetName &name) {
  if (name.isBit) {
    return oaBusTermBit::create(static_cast<oaBitNet *>(net), name.base, name.bit, oacInputOutputTermType,
                                oacInheritFromTopBlock);
  }
  return oaTerm::create(net, name.whole, oacInputOutputTermType, oacInheritFromTopBlock);
}

QString netText(int net) { return QString::fromLatin1("net %1").arg(net); }

QString atText(const QPoint &point) { return QLatin1String(" at ") + oaConvert::toPointString(point); }

QString fromText(const QPolygon &points) {
  const QString text = QString::fromLatin1(", %1 points").arg(points.size());
  return points.isEmpty() ? text : text + QLatin1String(" from ") + oaConvert::toPointString(points.first());
}

// Half the side of the box around a wire dot.
const int kDotRadiusDbu = 5;
const oaDist kLabelHeightDbu = 12;

} // namespace

void oaPlugInMain::saveNet(int net, QString name, int kind) {
  write(
      *this, "saveNet",
      [&] {
        const NetName netName(name);
        oaNet *created = createNet(currentBlock, netName);
        netsByNumber.insert(net, created);
        pinsByNumber.remove(net);
        termsByNumber.remove(net);
        if (kind == globalNetWithTerm) {
          created->setGlobal(true);
        }
        if (kind == netWithTerm || kind == globalNetWithTerm) {
          oaTerm *term = createTerm(created, netName);
          oaPin *pin = oaPin::create(term, oaUInt4(0));
          pinsByNumber.insert(net, pin);
          termsByNumber.insert(net, term);
        }
      },
      [&] { return netText(net) + QLatin1String(", ") + name; });
}

void oaPlugInMain::saveWire(QPolygon points, int net) {
  write(
      *this, "saveWire",
      [&] {
        oaLine *line = oaLine::create(currentBlock, schematiclayers::kWire, schematiclayers::kConnectivity,
                                      toOaPointArray(points));
        if (oaNet *known = liveEntry(*this, "saveWire", netsByNumber, net)) {
          line->addToNet(known);
        }
      },
      [&] { return netText(net) + fromText(points); });
}

void oaPlugInMain::saveBus(QPolygon points, QString name) {
  if (points.size() <= 1) {
    return;
  }
  write(
      *this, "saveBus",
      [&] {
        oaBundleNet *net = name.isEmpty() ? nullptr : bundleNetNamed(currentBlock, toBundleName(name));
        oaLine *line = oaLine::create(currentBlock, schematiclayers::kWire, schematiclayers::kConnectivity,
                                      toOaPointArray(points));
        if (net) {
          line->addToNet(net);
        } else {
          setText(line, "bus", QLatin1String("true"));
        }
      },
      [&] { return QLatin1String("bus ") + name + fromText(points); });
}

void oaPlugInMain::saveWireDot(QPoint centre, int net) {
  write(
      *this, "saveWireDot",
      [&] {
        oaEllipse *dot = oaEllipse::create(currentBlock, schematiclayers::kWire, schematiclayers::kConnectivity,
                                           squareAround(centre, kDotRadiusDbu));
        oaNet *known = net < 0 ? nullptr : liveEntry(*this, "saveWireDot", netsByNumber, net);
        if (known) {
          dot->addToNet(known);
        }
      },
      [&] { return netText(net) + atText(centre); });
}

void oaPlugInMain::saveWireLabel(QString text, QPoint origin, QPoint offset) {
  write(
      *this, "saveWireLabel",
      [&] {
        oaText *label = oaText::create(currentBlock, schematiclayers::kWire, schematiclayers::kDrawn, toOaString(text),
                                       toOaPoint(origin), oacLowerLeftTextAlign, oacR0, oacStickFont, kLabelHeightDbu,
                                       false, true, true);
        setText(label, "labelOffset", toPointString(offset));
      },
      [&] { return QLatin1String("label ") + text + atText(origin); });
}
