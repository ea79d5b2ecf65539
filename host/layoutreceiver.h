#ifndef LAYOUTRECEIVER_H
#define LAYOUTRECEIVER_H

#include "layoutmodel.h"

#include <QObject>

#include <vector>

class PluginSession;
class oaPlugInCore;

// Fills a LayoutModel from the layout signals and answers existCell() truthfully. Connect before openLayout() is
// called.
class LayoutReceiver : public QObject {
  Q_OBJECT

public:
  // Signals that make no sense (a shape outside a cell, an unknown orientation) are counted as problems and left out.
  LayoutReceiver(QObject &plugin, oaPlugInCore &core, LayoutModel &model);

  // What was wrong with the stream; at most a few messages, the rest counted in the last one.
  const QStringList &problems() const { return problems_; }

private slots:
  void setUnits(double userUnitsPerDbu, double metresPerDbu);
  void setCurrentCell(const QString &name);
  void existCell(const QString &name);
  void addCell(const QString &name);
  void endCell();
  void addCellData(const QString &name, const QString &value);
  void addCellNumData(int number, const QString &value);
  void addCellDataInt(const QString &name, int value);
  void addCellDataFloat(const QString &name, float value);
  void addBox(int left, int bottom, int width, int height, int layer, int datatype);
  void addPath(const QPolygon &points, int layer, int datatype, int width, int caps, int bExt, int eExt);
  void addPolygon(const QPolygon &points, int layer, int datatype);
  void addText(const QString &text, const QPoint &origin, int height, int layer, int datatype, int presentation,
               const QString &trans);
  void addCellRef(const QString &cell, const QPoint &origin, const QString &trans, const QString &name);
  void addCellRefArray(const QString &cell, const QPoint &origin, int columnPitch, int rowPitch, int columns, int rows,
                       const QString &trans, const QString &name);

private:
  LayoutCell *currentCell(const char *signal);
  Orientation orientation(const QString &trans, const QString &where);
  void addProblem(const QString &problem);

  oaPlugInCore &core_;
  LayoutModel &model_;
  // Cells begun and not ended, the innermost last: masters arrive in the middle of the cells that place them.
  std::vector<CellIndex> openCells_;
  QStringList problems_;
  int problemCount_ = 0;
};

// Reads one layout with all it places. Throws HostError when the cell view is unknown or nothing arrives; further
// complaints are on standard error and in the session's exit code.
LayoutModel readLayout(PluginSession &session, const QString &lib, const QString &cell, const QString &view);

#endif
