#include "layoutreceiver.h"

#include "hosterror.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "usermessage.h"

#include <utility>

namespace {

constexpr int kKeptProblems = 20;

// The far edge of a box. The signal carries a width that may have wrapped around for a box wider than half the number
// range; unsigned addition brings the edge back.
int edge(int start, int size) { return static_cast<int>(static_cast<unsigned>(start) + static_cast<unsigned>(size)); }

} // namespace

LayoutReceiver::LayoutReceiver(QObject &plugin, oaPlugInCore &core, LayoutModel &model) : core_(core), model_(model) {
  const std::pair<const char *, const char *> connections[] = {
      {SIGNAL(setUnits(double, double)), SLOT(setUnits(double, double))},
      {SIGNAL(setCurrentCell(QString)), SLOT(setCurrentCell(QString))},
      {SIGNAL(existCell(QString)), SLOT(existCell(QString))},
      {SIGNAL(addCell(QString)), SLOT(addCell(QString))},
      {SIGNAL(endCell()), SLOT(endCell())},
      {SIGNAL(addCellData(QString, QString)), SLOT(addCellData(QString, QString))},
      {SIGNAL(addCellNumData(int, QString)), SLOT(addCellNumData(int, QString))},
      {SIGNAL(addCellDataInt(QString, int)), SLOT(addCellDataInt(QString, int))},
      {SIGNAL(addCellDataFloat(QString, float)), SLOT(addCellDataFloat(QString, float))},
      {SIGNAL(addBox(int, int, int, int, int, int)), SLOT(addBox(int, int, int, int, int, int))},
      {SIGNAL(addPath(QPolygon, int, int, int, int, int, int)), SLOT(addPath(QPolygon, int, int, int, int, int, int))},
      {SIGNAL(addPolygon(QPolygon, int, int)), SLOT(addPolygon(QPolygon, int, int))},
      {SIGNAL(addText(QString, QPoint, int, int, int, int, QString)),
       SLOT(addText(QString, QPoint, int, int, int, int, QString))},
      {SIGNAL(addCellRef(QString, QPoint, QString, QString)), SLOT(addCellRef(QString, QPoint, QString, QString))},
      {SIGNAL(addCellRefArray(QString, QPoint, int, int, int, int, QString, QString)),
       SLOT(addCellRefArray(QString, QPoint, int, int, int, int, QString, QString))},
  };
  for (const auto &[signal, slot] : connections) {
    if (!connect(&plugin, signal, this, slot, Qt::DirectConnection))
      throw HostError(QStringLiteral("the plug-in has no signal %1").arg(QLatin1String(signal + 1)));
  }
}

void LayoutReceiver::setUnits(double userUnitsPerDbu, double metresPerDbu) {
  model_.setUnits(userUnitsPerDbu, metresPerDbu);
}

void LayoutReceiver::setCurrentCell(const QString &name) { model_.setTopCell(model_.cellIndex(name)); }

void LayoutReceiver::existCell(const QString &name) { core_.setBool(model_.isDefined(name)); }

void LayoutReceiver::addCell(const QString &name) {
  if (model_.isDefined(name))
    addProblem(QStringLiteral("cell %1 arrived twice").arg(name));
  const CellIndex index = model_.cellIndex(name);
  model_.cell(index).isDefined = true;
  openCells_.push_back(index);
}

void LayoutReceiver::endCell() {
  if (openCells_.empty()) {
    addProblem(QStringLiteral("endCell outside a cell"));
    return;
  }
  openCells_.pop_back();
}

void LayoutReceiver::addCellData(const QString &name, const QString &value) {
  if (LayoutCell *cell = currentCell("addCellData"))
    cell->cellData.push_back({0, name, value});
}

void LayoutReceiver::addCellNumData(int number, const QString &value) {
  if (LayoutCell *cell = currentCell("addCellNumData"))
    cell->cellData.push_back({number, QString(), value});
}

void LayoutReceiver::addCellDataInt(const QString &name, int value) {
  if (LayoutCell *cell = currentCell("addCellDataInt"))
    cell->cellData.push_back({0, name, value});
}

void LayoutReceiver::addCellDataFloat(const QString &name, float value) {
  if (LayoutCell *cell = currentCell("addCellDataFloat"))
    cell->cellData.push_back({0, name, value});
}

void LayoutReceiver::addBox(int left, int bottom, int width, int height, int layer, int datatype) {
  if (LayoutCell *cell = currentCell("addBox"))
    cell->addBox({left, bottom, edge(left, width), edge(bottom, height), model_.layerIndex(layer, datatype)});
}

void LayoutReceiver::addPath(const QPolygon &points, int layer, int datatype, int width, int caps, int bExt, int eExt) {
  if (LayoutCell *cell = currentCell("addPath"))
    cell->addPath(points, {0, 0, model_.layerIndex(layer, datatype), width, caps, bExt, eExt});
}

void LayoutReceiver::addPolygon(const QPolygon &points, int layer, int datatype) {
  if (LayoutCell *cell = currentCell("addPolygon"))
    cell->addPolygon(points, model_.layerIndex(layer, datatype));
}

void LayoutReceiver::addText(const QString &text, const QPoint &origin, int height, int layer, int datatype,
                             int presentation, const QString &trans) {
  if (LayoutCell *cell = currentCell("addText")) {
    cell->addText({text, origin, height, model_.layerIndex(layer, datatype), presentation,
                   orientation(trans, QStringLiteral("text \"%1\"").arg(text))});
  }
}

void LayoutReceiver::addCellRef(const QString &cellName, const QPoint &origin, const QString &trans,
                                const QString &name) {
  if (LayoutCell *cell = currentCell("addCellRef"))
    cell->references.push_back({model_.cellIndex(cellName), origin, orientation(trans, name), false, 1, 1, 0, 0, name});
}

void LayoutReceiver::addCellRefArray(const QString &cellName, const QPoint &origin, int columnPitch, int rowPitch,
                                     int columns, int rows, const QString &trans, const QString &name) {
  if (LayoutCell *cell = currentCell("addCellRefArray")) {
    cell->references.push_back({model_.cellIndex(cellName), origin, orientation(trans, name), true, columns, rows,
                                columnPitch, rowPitch, name});
  }
}

LayoutCell *LayoutReceiver::currentCell(const char *signal) {
  if (!openCells_.empty())
    return &model_.cell(openCells_.back());
  addProblem(QStringLiteral("%1 outside a cell").arg(QLatin1String(signal)));
  return nullptr;
}

Orientation LayoutReceiver::orientation(const QString &trans, const QString &where) {
  const std::optional<Orientation> known = Orientation::fromSignalText(trans);
  if (!known)
    addProblem(QStringLiteral("%1: orientation \"%2\" is not known, taken as unrotated").arg(where, trans));
  return known.value_or(Orientation());
}

void LayoutReceiver::addProblem(const QString &problem) {
  ++problemCount_;
  if (problemCount_ <= kKeptProblems)
    problems_.append(problem);
  else if (problemCount_ == kKeptProblems + 1)
    problems_.append(QStringLiteral("more problems of this kind are not shown"));
}

LayoutModel readLayout(PluginSession &session, const QString &lib, const QString &cell, const QString &view) {
  session.requireView(lib, cell, view);
  LayoutModel model;
  LayoutReceiver receiver(session.object(), session.core(), model);
  session.core().openLayout(lib, cell, view, QString());
  session.synchronise();
  for (const QString &problem : receiver.problems())
    tellUser(QStringLiteral("%1: %2").arg(cellViewName(lib, cell, view), problem));
  if (!model.topCell())
    throw HostError(QStringLiteral("%1 could not be read as a layout").arg(cellViewName(lib, cell, view)));
  return model;
}
