#ifndef SHAPESENDER_H
#define SHAPESENDER_H

#include <QString>

#include "buffers.h"
#include "directsignal.h"
#include "oapluginmain.h"

// Sends the shapes and pin labels of blocks, one function for each kind of shape. Nothing in a block is changed: what
// has no signal of its own is sent as the points that its conversion would have.
class ShapeSender {
public:
  explicit ShapeSender(oaPlugInMain &host);

  void sendShapes(oa::oaBlock *block);
  // The terminal's name at every figure of its pins.
  void sendPinLabels(oa::oaBlock *block);
  // The host's text for an orientation.
  const QString &transOf(const oa::oaOrient &orient) const { return trans_[int(oa::oaOrientEnum(orient)) & 7]; }

private:
  // What a text and a text display have in common.
  struct Label {
    oa::oaPoint origin;
    oa::oaDist height;
    int presentation;
    const QString *trans;
  };

  void sendShape(oa::oaShape *shape, oa::oaTypeEnum type);
  void sendRect(oa::oaRect *rect);
  void sendDot(oa::oaDot *dot);
  void sendPolygon(oa::oaPolygon *polygon);
  void sendEllipse(oa::oaEllipse *ellipse);
  void sendDonut(oa::oaDonut *donut);
  void sendPath(oa::oaPath *path);
  void sendPathSeg(oa::oaPathSeg *segment);
  void sendLine(oa::oaLine *line);
  void sendArc(oa::oaArc *arc);
  void sendText(oa::oaText *text);
  void sendEvalText(oa::oaEvalText *text);
  void sendTextDisplay(oa::oaTextDisplay *display);
  void sendUnsupported(oa::oaShape *shape);

  template <typename Text> Label labelOf(const Text *text) const;
  void emitText(oa::oaShape *shape, const Label &label);
  void emitPolygon(oa::oaShape *shape);
  void emitPath(oa::oaShape *shape, const QPolygon &points, oa::oaDist width, int caps, oa::oaDist beginExt,
                oa::oaDist endExt);
  void sendPinLabel(oa::oaPinFig *fig);

  // Numbers that the host cannot show become 0; the reserved ones, such as the drawing purpose, are negative when read
  // as signed.
  int layerOf(const oa::oaShape *shape) const { return within(shape->getLayerNum(), layerLimit_); }
  int datatypeOf(const oa::oaShape *shape) const { return within(shape->getPurposeNum(), datatypeLimit_); }
  static int within(unsigned int number, unsigned int limit) { return number < limit ? int(number) : 0; }

  oaPlugInMain &host_;
  const DirectSignal<int, int, int, int, int, int> addBox_;
  const DirectSignal<QPolygon, int, int> addPolygon_;
  const DirectSignal<QPolygon, int, int, int, int, int, int> addPath_;
  const DirectSignal<QString, QPoint, int, int, int, int, QString> addText_;
  const bool debug_;
  const unsigned int layerLimit_;
  const unsigned int datatypeLimit_;
  QString trans_[8];
  oa::oaPointArray points_;
  PolygonBuffer polygon_;
  oa::oaString text_;
  TextBuffer qtText_;
};

#endif
