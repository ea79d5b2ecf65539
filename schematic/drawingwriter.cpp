// Shapes and texts that are only drawn.

#include "blockwriting.h"
#include "schematiclayers.h"
#include "schematicwriter.h"

using namespace oa;
using namespace schematicwriter;

namespace {

const oaDist kTextHeightDbu = 12;

// A colour that begins so stands for a rectangle of the instance layer; the rest is its colour.
const char kInstanceLayerPrefix[] = "instanceLayer:";

void setColour(oaShape *shape, const QString &colour) { setText(shape, "color", colour); }

QString boxText(int x1, int y1, int x2, int y2) {
  return QLatin1String("box ") + oaConvert::toPointString(QPoint(x1, y1)) + QLatin1String(" to ") +
         oaConvert::toPointString(QPoint(x2, y2));
}

QString pointsText(const QPolygon &points) {
  const QString text = QString::fromLatin1("%1 points").arg(points.size());
  return points.isEmpty() ? text : text + QLatin1String(" from ") + oaConvert::toPointString(points.first());
}

} // namespace

void oaPlugInMain::saveRect(int x1, int y1, int x2, int y2, QString colour) {
  write(
      *this, "saveRect",
      [&] {
        const bool isInstance = colour.startsWith(QLatin1String(kInstanceLayerPrefix));
        oaRect *rect = oaRect::create(currentBlock, isInstance ? schematiclayers::kInstance : schematiclayers::kDevice,
                                      schematiclayers::kDrawn, oaBox(x1, y1, x2, y2));
        setColour(rect, isInstance ? colour.mid(int(sizeof kInstanceLayerPrefix) - 1) : colour);
      },
      [&] { return boxText(x1, y1, x2, y2); });
}

void oaPlugInMain::saveCircle(int x1, int y1, int x2, int y2, QString colour) {
  write(
      *this, "saveCircle",
      [&] {
        setColour(
            oaEllipse::create(currentBlock, schematiclayers::kDevice, schematiclayers::kDrawn, oaBox(x1, y1, x2, y2)),
            colour);
      },
      [&] { return boxText(x1, y1, x2, y2); });
}

void oaPlugInMain::savePolygon(QPolygon points, QString colour) {
  write(
      *this, "savePolygon",
      [&] {
        oaPolygon *polygon =
            blockwriting::createCompressed(toOaPointArray(points), true, [&](const oaPointArray &accepted) {
              return oaPolygon::create(currentBlock, schematiclayers::kDevice, schematiclayers::kDrawn, accepted);
            });
        setColour(polygon, colour);
      },
      [&] { return pointsText(points); });
}

void oaPlugInMain::savePolyline(QPolygon points, QString colour) {
  write(
      *this, "savePolyline",
      [&] {
        setColour(
            oaLine::create(currentBlock, schematiclayers::kDevice, schematiclayers::kDrawn, toOaPointArray(points)),
            colour);
      },
      [&] { return pointsText(points); });
}

void oaPlugInMain::saveText(QString text, QPoint origin, QString colour, int rotation) {
  write(
      *this, "saveText",
      [&] {
        setColour(oaText::create(currentBlock, schematiclayers::kDevice, schematiclayers::kDrawn, toOaString(text),
                                 toOaPoint(origin), oacLowerLeftTextAlign, toOaOrient(rotation), oacStickFont,
                                 kTextHeightDbu, false, true, true),
                  colour);
      },
      [&] { return QLatin1String("text ") + text; });
}

void oaPlugInMain::saveEvalText(QString text, QPoint origin) {
  write(
      *this, "saveEvalText",
      [&] {
        oaEvalText::create(currentBlock, schematiclayers::kEvaluatedText, schematiclayers::kDrawn, toOaString(text),
                           toOaPoint(origin), oacLowerLeftTextAlign, oacR0, oacStickFont, kTextHeightDbu,
                           static_cast<oaEvalTextLink *>(nullptr), false, true, true);
      },
      [&] { return QLatin1String("text ") + text; });
}
