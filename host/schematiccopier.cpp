#include "schematiccopier.h"

#include "hosterror.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "schematicreceiver.h"
#include "schematicwriter.h"
#include "usermessage.h"

#include <QSet>

#include <utility>
#include <vector>

namespace {

struct CellView {
  QString cell;
  QString view;
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
  void requireFreeViews();
  void placeFromTarget(SchematicModel &model) const;
  void writeSymbols();
  void writeSymbolCopy(const CellView &symbol);
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
  if (!request_.isReplacing)
    requireFreeViews();
  writeSymbols();
  SymbolCache cache(session_);
  for (Schematic &schematic : schematics_) {
    placeFromTarget(schematic.model);
    cache.load(schematic.model);
    writeSchematic(session_, request_.targetLib, targetCell(schematic.cell), request_.view, schematic.model,
                   cache.symbols(), report_);
  }
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
  return session_.core().getViewNames(request_.lib, cell).contains(view) &&
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
  if (session_.core().getViewNames(request_.lib, symbol.cell).contains(symbol.view))
    symbols_.push_back(symbol);
}

void SchematicCopier::requireFreeViews() {
  std::vector<CellView> copies = symbols_;
  for (const Schematic &schematic : schematics_)
    copies.push_back({schematic.cell, request_.view});
  for (const CellView &copy : copies) {
    const QString cell = targetCell(copy.cell);
    if (session_.core().getViewNames(request_.targetLib, cell).contains(copy.view)) {
      throw HostError(QStringLiteral("library %1 has a cell %2 with a view %3 already; --replace writes over it")
                          .arg(request_.targetLib, cell, copy.view));
    }
  }
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

void SchematicCopier::writeSymbols() {
  for (const CellView &symbol : symbols_)
    attempt([&] { writeSymbolCopy(symbol); });
}

void SchematicCopier::writeSymbolCopy(const CellView &symbol) {
  SymbolModel model;
  static_cast<SchematicModel &>(model) = readSchematic(session_, request_.lib, symbol.cell, symbol.view);
  // The drawing comes from the schematic reader, which tells more; the properties come with the component.
  const SymbolModel component = readComponent(session_, request_.lib, joinDevice({symbol.cell, symbol.view}));
  model.data = component.data;
  model.description = component.description;
  if (!component.parameters.isEmpty()) {
    report_.notice(QStringLiteral("a parametric symbol is copied as it looks with its default parameters"),
                   cellViewName(request_.lib, symbol.cell, symbol.view));
  }
  placeFromTarget(model);
  writeSymbol(session_, request_.targetLib, targetCell(symbol.cell), symbol.view, model, report_);
}

} // namespace

void copySchematic(PluginSession &session, const SchematicCopyRequest &request, ImportReport &report) {
  SchematicCopier(session, request, report).copy();
}
