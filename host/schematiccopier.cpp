#include "schematiccopier.h"

#include "celldata.h"
#include "hosterror.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "schematiccopycheck.h"
#include "schematicfacts.h"
#include "schematicreceiver.h"
#include "schematicwriter.h"
#include "usermessage.h"

#include <QHash>
#include <QSet>
#include <QVector>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

struct CellView {
  QString cell;
  QString view;
};

struct CellName {
  QString lib;
  QString cell;
};

class SchematicCopier {
public:
  SchematicCopier(PluginSession &session, const SchematicCopyRequest &request, ImportReport &report)
      : session_(session), request_(request), report_(report) {}
  void copy();

private:
  struct Schematic {
    QString cell;
    SchematicModel model;
  };

  bool isInsideOneLibrary() const { return request_.lib == request_.targetLib; }
  QString targetCell(const QString &cell) const { return cell == request_.cell ? request_.targetCell : cell; }
  bool hasView(const QString &cell, const QString &view, const char *type);
  QStringList newDevices(const SchematicModel &model);
  void collectSchematic(const QString &cell);
  void collectSymbol(const CellView &symbol);
  bool mayPlaceWritten(const QSet<QString> &written);
  QVector<CellName> placedCells(bool isDeep);
  SchematicModel readQuietly(const CellName &name);
  void requireKeptCells();
  bool isTaken(const CellView &view);
  void keepTakenViews();
  QString dumpOf(const QString &lib, const CellView &view);
  void placeFromTarget(SchematicModel &model) const;
  void copySymbol(const CellView &symbol);
  void copySchematic(Schematic &schematic);
  void checkCopy(const CellView &view, const SchematicFacts &facts);
  void tellMissingSymbols(const Schematic &schematic);
  void tellParameters(const Schematic &schematic, const SchematicFacts &facts);
  void copyData();
  // One cell view that cannot be read does not keep the others from being copied.
  template <typename Step> void attempt(Step step) {
    try {
      step();
    } catch (const HostError &error) {
      report_.problem(QStringLiteral("not copied: %1").arg(error.message()), request_.targetLib);
    }
  }

  PluginSession &session_;
  const SchematicCopyRequest &request_;
  ImportReport &report_;
  std::vector<CellView> symbols_;
  QSet<QString> knownSymbols_;
  std::vector<Schematic> schematics_;
  QSet<QString> knownSchematics_;
  QSet<QString> knownDevices_;
  QSet<QString> checkedSymbols_;
};

void SchematicCopier::copy() {
  const QString type = session_.requireView(request_.lib, request_.cell, request_.view);
  if (type == QLatin1String("schematicSymbol")) {
    // Read already here, so that a symbol that cannot be read ends the command.
    readSchematic(session_, request_.lib, request_.cell, request_.view);
    collectSymbol({request_.cell, request_.view});
  } else {
    // Grows while the schematics below are found.
    collectSchematic(request_.cell);
    for (std::size_t i = 0; i < schematics_.size() && !isInsideOneLibrary(); ++i) {
      for (const QString &device : newDevices(schematics_[i].model)) {
        const DeviceName master = splitDevice(device);
        collectSymbol({master.cell, master.view});
        if (request_.isHierarchical && hasView(master.cell, request_.view, "schematic"))
          attempt([&] { collectSchematic(master.cell); });
      }
    }
  }
  requireKeptCells();
  request_.makeTarget();
  if (!request_.isReplacing)
    keepTakenViews();
  for (const CellView &symbol : symbols_)
    attempt([&] { copySymbol(symbol); });
  for (Schematic &schematic : schematics_)
    attempt([&] { copySchematic(schematic); });
  copyData();
}

// What a schematic places from its library and none before it did.
QStringList SchematicCopier::newDevices(const SchematicModel &model) {
  QStringList devices;
  for (const SchematicPlacement &placement : model.placements) {
    if (placement.library != request_.lib || knownDevices_.contains(placement.device))
      continue;
    knownDevices_.insert(placement.device);
    devices.append(placement.device);
  }
  return devices;
}

bool SchematicCopier::hasView(const QString &cell, const QString &view, const char *type) {
  return session_.requireViewNames(request_.lib, cell).contains(view) &&
         session_.core().getViewType(request_.lib, cell, view) == QLatin1String(type);
}

void SchematicCopier::collectSchematic(const QString &cell) {
  if (knownSchematics_.contains(cell))
    return;
  knownSchematics_.insert(cell);
  Schematic schematic{cell, readSchematic(session_, request_.lib, cell, request_.view)};
  schematic.model.data = readDesignProperties(session_, request_.lib, cell, request_.view);
  schematics_.push_back(std::move(schematic));
  const QString symbol = QStringLiteral("symbol");
  if (hasView(cell, symbol, "schematicSymbol"))
    collectSymbol({cell, symbol});
}

// A symbol that does not exist is told when the placement is connected.
void SchematicCopier::collectSymbol(const CellView &symbol) {
  const QString key = symbolKey(symbol.cell, symbol.view);
  if (knownSymbols_.contains(key))
    return;
  knownSymbols_.insert(key);
  if (session_.requireViewNames(request_.lib, symbol.cell).contains(symbol.view))
    symbols_.push_back(symbol);
}

// False when nothing below the schematics that are read can be where a copy is written.
bool SchematicCopier::mayPlaceWritten(const QSet<QString> &written) {
  if (request_.targetCell != request_.cell && session_.requireCellNames(request_.lib).contains(request_.targetCell))
    return true;
  if (isInsideOneLibrary() || !session_.core().getLibs().contains(request_.targetLib))
    return false;
  const QStringList present = session_.requireCellNames(request_.targetLib);
  return QSet<QString>(present.begin(), present.end()).intersects(written);
}

// What the schematics that are read place, and if deep, what all schematics below place.
QVector<CellName> SchematicCopier::placedCells(bool isDeep) {
  QVector<CellName> placed;
  QSet<QString> known;
  const auto add = [&](const SchematicModel &model) {
    for (const SchematicPlacement &placement : model.placements) {
      const CellName name{placement.library, splitDevice(placement.device).cell};
      const QString key = symbolKey(name.lib, name.cell);
      if (known.contains(key))
        continue;
      known.insert(key);
      placed.append(name);
    }
  };
  for (const Schematic &schematic : schematics_)
    add(schematic.model);
  const QStringList libs = session_.core().getLibs();
  for (int i = 0; isDeep && i < placed.size(); ++i) { // grows
    const CellName name = placed[i];
    const bool isRead = name.lib == request_.lib && knownSchematics_.contains(name.cell);
    if (!isRead && libs.contains(name.lib))
      add(readQuietly(name));
  }
  return placed;
}

// Empty when the cell has no such schematic. It is only looked at, so its faults are none of the user's concern.
SchematicModel SchematicCopier::readQuietly(const CellName &name) {
  SchematicModel model;
  session_.setReportsIgnored(true);
  if (session_.core().getViewType(name.lib, name.cell, request_.view) == QLatin1String("schematic")) {
    SchematicReceiver receiver(session_.object(), model);
    try {
      openSchematicView(session_, name.lib, name.cell, request_.view);
    } catch (const HostError &) { // NOLINT(bugprone-empty-catch): what cannot be read places nothing
    }
  }
  session_.setReportsIgnored(false);
  return model;
}

// A cell of another name must not be written where a cell of the hierarchy will be placed from: that one would be lost,
// and the written one would contain itself.
void SchematicCopier::requireKeptCells() {
  if (schematics_.empty()) // a symbol places nothing
    return;
  QHash<QString, QSet<QString>> sources; // by the target cell
  for (const CellView &symbol : symbols_)
    sources[targetCell(symbol.cell)].insert(symbol.cell);
  for (const Schematic &schematic : schematics_)
    sources[targetCell(schematic.cell)].insert(schematic.cell);
  const QStringList targets = sources.keys();
  const QSet<QString> written(targets.begin(), targets.end());
  for (const CellName &placed : placedCells(mayPlaceWritten(written))) {
    const bool isMoved = placed.lib == request_.lib && !isInsideOneLibrary();
    if (!isMoved && placed.lib != request_.targetLib)
      continue;
    const QString cell = isMoved ? targetCell(placed.cell) : placed.cell;
    for (const QString &source : sources.value(cell)) {
      if (placed.lib == request_.lib && placed.cell == source)
        continue;
      throw HostError(QStringLiteral("cell %1 cannot be copied to %2: below %3, this is where %4 is placed from")
                          .arg(symbolKey(request_.lib, source), symbolKey(request_.targetLib, cell),
                               cellViewName(request_.lib, request_.cell, request_.view),
                               symbolKey(placed.lib, placed.cell)));
    }
  }
}

bool SchematicCopier::isTaken(const CellView &view) {
  return session_.requireViewNames(request_.targetLib, targetCell(view.cell)).contains(view.view);
}

// What is there below the cell may have come with an earlier copy and stays; the cell's own views must be free.
void SchematicCopier::keepTakenViews() {
  const auto isKept = [&](const CellView &view, const char *what) {
    if (!isTaken(view))
      return false;
    if (view.cell == request_.cell)
      throw HostError(QStringLiteral("library %1 has a cell %2 with a view %3 already; --replace writes over it")
                          .arg(request_.targetLib, targetCell(view.cell), view.view));
    const QString where = cellViewName(request_.targetLib, view.cell, view.view);
    const ViewNetlist source = readViewNetlist(session_, request_.lib, view.cell, view.view);
    const ViewNetlist kept = readViewNetlist(session_, request_.targetLib, view.cell, view.view);
    const QString isOther = isSameContent(dumpOf(request_.lib, view), dumpOf(request_.targetLib, view))
                                ? QString()
                                : QStringLiteral(", although it is another one");
    report_.notice(
        QStringLiteral("%1 is in the library already and stays as it is there%2").arg(QLatin1String(what), isOther),
        where);
    compareNetlists(source, kept, where, report_);
    return true;
  };
  symbols_.erase(std::remove_if(symbols_.begin(), symbols_.end(),
                                [&](const CellView &symbol) { return isKept(symbol, "a placed symbol"); }),
                 symbols_.end());
  schematics_.erase(std::remove_if(schematics_.begin(), schematics_.end(),
                                   [&](const Schematic &schematic) {
                                     return isKept({schematic.cell, request_.view}, "the schematic of a placed cell");
                                   }),
                    schematics_.end());
}

QString SchematicCopier::dumpOf(const QString &lib, const CellView &view) {
  return session_.core().getViewDump(lib, view.cell, view.view);
}

void SchematicCopier::placeFromTarget(SchematicModel &model) const {
  if (isInsideOneLibrary())
    return;
  for (SchematicPlacement &placement : model.placements) {
    if (placement.library != request_.lib)
      continue;
    placement.library = request_.targetLib;
    const DeviceName master = splitDevice(placement.device);
    if (master.cell == request_.cell)
      placement.device.replace(placement.device.size() - master.cell.size(), master.cell.size(), request_.targetCell);
  }
}

void SchematicCopier::copySymbol(const CellView &symbol) {
  const QString where = cellViewName(request_.lib, symbol.cell, symbol.view);
  SymbolModel model;
  static_cast<SchematicModel &>(model) = readSchematic(session_, request_.lib, symbol.cell, symbol.view);
  // The drawing comes from the schematic reader, which tells more; the properties come with the component.
  const SymbolModel component = readComponent(session_, request_.lib, joinDevice({symbol.cell, symbol.view}));
  model.data = component.data;
  if (!component.parameters.isEmpty())
    report_.notice(QStringLiteral("a parametric symbol is copied as it looks with its default parameters"), where);
  placeFromTarget(model);
  const SchematicFacts facts = readSchematicFacts(session_, request_.lib, symbol.cell, symbol.view);
  completeModel(model, facts);
  if (writeSymbol(session_, request_.targetLib, targetCell(symbol.cell), symbol.view, model,
                  planKnownNets(model, facts), report_))
    checkCopy(symbol, facts);
}

void SchematicCopier::copySchematic(Schematic &schematic) {
  const SchematicFacts facts = readSchematicFacts(session_, request_.lib, schematic.cell, request_.view);
  completeModel(schematic.model, facts);
  tellParameters(schematic, facts);
  placeFromTarget(schematic.model);
  tellMissingSymbols(schematic);
  if (writeSchematic(session_, request_.targetLib, targetCell(schematic.cell), request_.view, schematic.model,
                     planKnownNets(schematic.model, facts), report_))
    checkCopy({schematic.cell, request_.view}, facts);
}

void SchematicCopier::checkCopy(const CellView &view, const SchematicFacts &facts) {
  const QString cell = targetCell(view.cell);
  const QString where = cellViewName(request_.targetLib, cell, view.view);
  compareNetlists(facts.netlist, readViewNetlist(session_, request_.targetLib, cell, view.view), where, report_);
  compareDumps(dumpOf(request_.lib, view), dumpOf(request_.targetLib, {cell, view.view}), where, report_);
}

// Each missing symbol once.
void SchematicCopier::tellMissingSymbols(const Schematic &schematic) {
  for (const SchematicPlacement &placement : schematic.model.placements) {
    const QString key = symbolKey(placement.library, placement.device);
    if (checkedSymbols_.contains(key))
      continue;
    checkedSymbols_.insert(key);
    if (session_.core().existComponent(placement.library, placement.device))
      continue;
    report_.problem(
        QStringLiteral("the placed symbol %1 is missing").arg(key),
        QStringLiteral("%1, placement %2")
            .arg(cellViewName(request_.targetLib, targetCell(schematic.cell), request_.view), placement.name));
  }
}

void SchematicCopier::tellParameters(const Schematic &schematic, const SchematicFacts &facts) {
  constexpr int kShown = 20;
  const int count = facts.parametric.size();
  if (count == 0)
    return;
  QString names = QStringList(facts.parametric.mid(0, kShown)).join(QStringLiteral(", "));
  if (count > kShown)
    names += QStringLiteral(" and %1 more").arg(count - kShown);
  report_.problem(QStringLiteral("no operation places a symbol with parameters, those of %1 are lost").arg(names),
                  cellViewName(request_.targetLib, targetCell(schematic.cell), request_.view));
}

// The host's data of all cells of which a view was copied.
void SchematicCopier::copyData() {
  QStringList cells;
  for (const CellView &symbol : symbols_)
    cells.append(symbol.cell);
  for (const Schematic &schematic : schematics_)
    cells.append(schematic.cell);
  cells.removeDuplicates();
  const CellDataCopy copy{request_.lib, request_.targetLib, request_.isReplacing};
  for (const QString &cell : cells)
    copyCellData(session_, copy, cell, targetCell(cell), report_);
}

} // namespace

void copySchematic(PluginSession &session, const SchematicCopyRequest &request, ImportReport &report) {
  SchematicCopier(session, request, report).copy();
}
