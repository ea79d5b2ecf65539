#ifndef PLUGINLAYOUTWRITER_H
#define PLUGINLAYOUTWRITER_H

#include "layoutwriter.h"

#include <QStringList>

class PluginSession;

// A master anywhere. The parameters, in parallel lists, are those of a parametric cell, or the list that describes a
// via.
struct CellMaster {
  QString lib;
  QString cell;
  QString view;
  QStringList parameterNames;
  QStringList parameterValues;
};

// Writes layout views through the plug-in. Refusals of single objects are on standard error and in the session's error
// count; endCell() adds which cell they belong to.
class PluginLayoutWriter : public LayoutWriter {
public:
  PluginLayoutWriter(PluginSession &session, const QString &lib, const QString &view);

  bool beginCell(const QString &cell) override;
  void writeBox(const QRect &box, LayerPurpose layer) override;
  void writePolygon(const QPolygon &points, LayerPurpose layer) override;
  void writePath(const QPolygon &points, int width, int caps, LayerPurpose layer) override;
  void writeText(const ModelText &text, LayerPurpose layer) override;
  // Places a cell of the library that is written, in the view that is written.
  void writeReference(const QString &cell, const ModelReference &reference) override;
  // The same for any master. The cell field of `reference` is not used.
  void placeMaster(const CellMaster &master, const ModelReference &reference);
  void endCell() override;

private:
  PluginSession &session_;
  const QString lib_;
  const QString view_;
  QString cell_;
  int errorsBefore_ = 0;
};

#endif
