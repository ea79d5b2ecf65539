#include "schematicdrawing.h"

using namespace oa;

namespace {

// An arc travels as its centre and its ends; the points between them do not matter.
const oaUInt4 kArcSegments = 3;

} // namespace

SchematicDrawing::SchematicDrawing(oaPlugInMain &host, WalkFaults &faults)
    : DrawingSender(host, faults), addWire_(host, "addWire(QPolygon)"), addBus_(host, "addBus(QPolygon)"),
      addWireDot_(host, "addWireDot(QPoint)"), addWireLabel_(host, "addWireLabel(QPoint,QString,QPoint)"),
      addPolygon_(host, "addPolygon(QPolygon,QString)"), addPolyline_(host, "addPolyline(QPolygon,QString)"),
      addRect_(host, "addRect(QPoint,QPoint,QString)"), addText_(host, "addText(QPoint,QString,QString,int)"),
      addPort_(host, "addPort(QPoint,QString)") {}

void SchematicDrawing::sendPolygon(const QPolygon &points, const QString &colour) { emit addPolygon_(points, colour); }

void SchematicDrawing::sendPolyline(const QPolygon &points, const QString &colour) {
  emit addPolyline_(points, colour);
}

void SchematicDrawing::sendArc(oaArc *arc, const QString &colour) {
  oaBox ellipse;
  arc->getEllipseBBox(ellipse);
  arc->getPoints(points_, kArcSegments);
  QPolygon points;
  points << centreOf(ellipse) << oaConvert::toPoint(points_[0])
         << oaConvert::toPoint(points_[points_.getNumElements() - 1]);
  emit host_.addArc(points, colour);
}

void SchematicDrawing::sendWire(const QPolygon &points, bool isBus, const QString &) {
  if (isBus) {
    emit addBus_(points);
  } else {
    emit addWire_(points);
  }
}

void SchematicDrawing::sendWireDot(oaShape *, const QPoint &centre, const QString &) { emit addWireDot_(centre); }

void SchematicDrawing::sendGround(oaShape *, const QPoint &position, const QString &) {
  emit host_.addGround(position);
}

void SchematicDrawing::sendCircle(const QPoint &lowerLeft, const QPoint &upperRight, const QString &colour) {
  emit host_.addCircle(lowerLeft, upperRight, colour);
}

void SchematicDrawing::sendRect(const QPoint &first, const QPoint &second, const QString &colour) {
  emit addRect_(first, second, colour);
}

void SchematicDrawing::sendWireLabel(const QPoint &origin, const QString &text, const QPoint &offset, const QString &) {
  emit addWireLabel_(origin, text, offset);
}

void SchematicDrawing::sendText(const QPoint &origin, const QString &text, int degrees, const QString &colour) {
  emit addText_(origin, colour, text, degrees);
}

void SchematicDrawing::sendPort(const QPoint &position, const QString &name) { emit addPort_(position, name); }

void SchematicDrawing::sendPortData(const QString &key, const QString &value) { emit host_.setDataString(key, value); }

void SchematicDrawing::sendPortIsGlobal() { emit host_.setGlobal(true); }
