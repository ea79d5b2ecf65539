#include "componentdrawing.h"

using namespace oa;

namespace {

// An arc travels as a line through points on it, as many as the kit's own conversion takes.
const oaUInt4 kArcSegments = 16;

} // namespace

ComponentDrawing::ComponentDrawing(oaPlugInMain &host, WalkFaults &faults) : DrawingSender(host, faults) {}

void ComponentDrawing::sendPolygon(const QPolygon &points, const QString &colour) {
  emit host_.compPolygon(points, colour);
}

void ComponentDrawing::sendPolyline(const QPolygon &points, const QString &colour) {
  emit host_.compPolyline(points, colour);
}

void ComponentDrawing::sendArc(oaArc *arc, const QString &colour) {
  arc->getPoints(points_, kArcSegments);
  emit host_.compPolyline(polygon_.set(points_), colour);
}

void ComponentDrawing::sendWire(const QPolygon &points, bool, const QString &colour) {
  emit host_.compPolyline(points, colour);
}

void ComponentDrawing::sendWireDot(oaShape *shape, const QPoint &, const QString &colour) { sendMark(shape, colour); }

void ComponentDrawing::sendGround(oaShape *shape, const QPoint &, const QString &colour) { sendMark(shape, colour); }

// Unlike a schematic, a component keeps the size that a mark was drawn with.
void ComponentDrawing::sendMark(oaShape *shape, const QString &colour) {
  oaBox box;
  shape->getBBox(box);
  sendCircle(QPoint(box.left(), box.bottom()), QPoint(box.right(), box.top()), colour);
}

void ComponentDrawing::sendCircle(const QPoint &lowerLeft, const QPoint &upperRight, const QString &colour) {
  emit host_.compCircle(lowerLeft, upperRight, colour);
}

void ComponentDrawing::sendRect(const QPoint &first, const QPoint &second, const QString &colour) {
  emit host_.compRect(first, second, colour);
}

void ComponentDrawing::sendWireLabel(const QPoint &origin, const QString &text, const QPoint &, const QString &colour) {
  emit host_.compText(origin, colour, text);
}

void ComponentDrawing::sendText(const QPoint &origin, const QString &text, int, const QString &colour) {
  emit host_.compText(origin, colour, text);
}

void ComponentDrawing::sendPort(const QPoint &position, const QString &name) { emit host_.compPort(position, name); }

void ComponentDrawing::sendPortData(const QString &, const QString &) {}

void ComponentDrawing::sendPortIsGlobal() { emit host_.compSetGlobal(true); }
