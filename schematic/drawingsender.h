#ifndef DRAWINGSENDER_H
#define DRAWINGSENDER_H

#include <QPoint>
#include <QString>

#include "buffers.h"
#include "oapluginmain.h"
#include "walkfaults.h"

// Finds out what each shape of a schematic or symbol stands for: its layer, net, pin and properties tell wires, ports
// and marks from mere drawing. What becomes of that is said by the classes below this one, which have the signals.
// Nothing in a block is changed: what has no signal of its own is sent as the points that its conversion would have.
class DrawingSender {
public:
  DrawingSender(oaPlugInMain &host, WalkFaults &faults);
  virtual ~DrawingSender();

  void send(oa::oaBlock *block);

protected:
  // References that these functions get hold until they return. `shape` is the one being sent.

  virtual void sendPolygon(const QPolygon &points, const QString &colour) = 0;
  virtual void sendPolyline(const QPolygon &points, const QString &colour) = 0;
  virtual void sendArc(oa::oaArc *arc, const QString &colour) = 0;
  virtual void sendWire(const QPolygon &points, bool isBus, const QString &colour) = 0;
  virtual void sendWireDot(oa::oaShape *shape, const QPoint &centre, const QString &colour) = 0;
  virtual void sendGround(oa::oaShape *shape, const QPoint &position, const QString &colour) = 0;
  virtual void sendCircle(const QPoint &lowerLeft, const QPoint &upperRight, const QString &colour) = 0;
  virtual void sendRect(const QPoint &first, const QPoint &second, const QString &colour) = 0;
  // A wire label's text on its own, and where the host shows it relative to its origin.
  virtual void sendWireLabel(const QPoint &origin, const QString &text, const QPoint &offset,
                             const QString &colour) = 0;
  virtual void sendText(const QPoint &origin, const QString &text, int degrees, const QString &colour) = 0;
  virtual void sendPort(const QPoint &position, const QString &name) = 0;
  // These follow the port they belong to.
  virtual void sendPortData(const QString &key, const QString &value) = 0;
  virtual void sendPortIsGlobal() = 0;

  static QPoint centreOf(const oa::oaBox &box);

  oaPlugInMain &host_;
  PolygonBuffer polygon_;
  oa::oaPointArray points_;

private:
  void sendShape(oa::oaShape *shape);
  void readProperties(oa::oaShape *shape);
  oa::oaString &valueOf(const oa::oaString &name);
  void setColour();
  void forgetProperties();

  void sendDonut(oa::oaDonut *donut);
  void sendDot(oa::oaDot *dot);
  void sendEllipse(oa::oaEllipse *ellipse);
  void sendLine(oa::oaLine *line);
  void sendPath(oa::oaPath *path);
  void sendPathSeg(oa::oaPathSeg *segment);
  void sendPolygonShape(oa::oaPolygon *polygon);
  void sendRectShape(oa::oaRect *rect);
  void sendPortRect(oa::oaRect *rect);
  void sendPortAt(const oa::oaBox &box, const QString &name);
  void sendTextShape(oa::oaText *text);
  void sendEvalText(oa::oaEvalText *text);
  void sendUnsupported();

  WalkFaults &faults_;
  const bool debug_;
  const unsigned int layerLimit_;
  const QString typeKey_;
  const QString symbolKey_;
  const QString defaultColour_;

  bool hasWideNets_;
  // Of the shape being sent. A layer that the host cannot show is 0.
  unsigned int layer_;
  bool hasProperties_;
  bool hasBusFlag_;
  // The default colour or `colour_`.
  const QString *shownColour_;
  oa::oaString labelOffset_;
  oa::oaString portType_;
  oa::oaString portSymbol_;

  // The last colour met and its 8-bit form; neighbours often have the same.
  QString colour_;
  oa::oaString colourText_;
  oa::oaString propertyName_;
  oa::oaString colourValue_;
  oa::oaString otherValue_;
  oa::oaString text_;
  TextBuffer qtText_;
};

#endif
