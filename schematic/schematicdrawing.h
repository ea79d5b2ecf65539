#ifndef SCHEMATICDRAWING_H
#define SCHEMATICDRAWING_H

#include "directsignal.h"
#include "drawingsender.h"

// Sends shapes with the signals of the schematic reader.
class SchematicDrawing : public DrawingSender {
public:
  SchematicDrawing(oaPlugInMain &host, WalkFaults &faults);

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
  const DirectSignal<QPolygon> addWire_;
  const DirectSignal<QPolygon> addBus_;
  const DirectSignal<QPoint> addWireDot_;
  const DirectSignal<QPoint, QString, QPoint> addWireLabel_;
  const DirectSignal<QPolygon, QString> addPolygon_;
  const DirectSignal<QPolygon, QString> addPolyline_;
  const DirectSignal<QPoint, QPoint, QString> addRect_;
  const DirectSignal<QPoint, QString, QString, int> addText_;
  const DirectSignal<QPoint, QString> addPort_;
};

#endif
