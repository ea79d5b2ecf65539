#ifndef COMPONENTDRAWING_H
#define COMPONENTDRAWING_H

#include "drawingsender.h"

// Sends shapes of a symbol with the signals of a component. There are fewer of them than for a schematic: wires are
// plain lines, marks are circles, labels are texts, and a port has a name only.
class ComponentDrawing : public DrawingSender {
public:
  ComponentDrawing(oaPlugInMain &host, WalkFaults &faults);

protected:
  void sendPolygon(const QPolygon &points, const QString &colour) override;
  void sendPolyline(const QPolygon &points, const QString &colour) override;
  void sendArc(oa::oaArc *arc, const QString &colour) override;
  void sendWire(const QPolygon &points, bool isBus, const QString &colour) override;
  void sendWireDot(oa::oaShape *shape, const QPoint &centre, const QString &colour) override;
  void sendGround(oa::oaShape *shape, const QPoint &position, const QString &colour) override;
  void sendCircle(const QPoint &lowerLeft, const QPoint &upperRight, const QString &colour) override;
  void sendRect(const QPoint &first, const QPoint &second, const QString &colour) override;
  void sendWireLabel(const QPoint &origin, const QString &text, const QPoint &offset, const QString &colour) override;
  void sendText(const QPoint &origin, const QString &text, int degrees, const QString &colour) override;
  void sendPort(const QPoint &position, const QString &name) override;
  void sendPortData(const QString &key, const QString &value) override;
  void sendPortIsGlobal() override;

private:
  void sendMark(oa::oaShape *shape, const QString &colour);
};

#endif
