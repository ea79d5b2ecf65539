#include "layoutcopier.h"

#include "celldata.h"
#include "cellorigin.h"
#include "hosterror.h"
#include "layoutreceiver.h"
#include "modelcopier.h"
#include "oaplugincore.h"
#include "pluginlayoutwriter.h"
#include "pluginsession.h"
#include "schematiccopycheck.h"
#include "technologycopy.h"
#include "unitsprobe.h"
#include "usermessage.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <vector>

namespace {

using Kind = CellOrigin::Kind;

bool isEmpty(const LayoutCell &cell) { return cell.shapeOrder.empty() && cell.references.empty(); }

// Numbers of the layers of its shapes.
std::set<int> layersOf(const LayoutModel &model, const LayoutCell &cell) {
  std::set<int> numbers;
  const auto add = [&](const auto &shapes) {
    for (const auto &shape : shapes)
      numbers.insert(model.layer(shape.layer).layer);
  };
  add(cell.boxes);
  add(cell.polygons);
  add(cell.paths);
  add(cell.texts);
  return numbers;
}

int errorsSoFar(PluginSession &session) {
  session.synchronise();
  return session.errorCount();
}

class LayoutCopier {
public:
  LayoutCopier(PluginSession &session, const LayoutCopyRequest &request, ImportReport &report);
  void copy();

private:
  bool isInsideOneLibrary() const { return request_.lib == request_.targetLib; }
  bool isWritable(CellIndex index) const;
  QString targetCell(CellIndex index) const;
  QString targetView(CellIndex index) const;
  QString masterLibrary(CellIndex index) const;
  QString originalView(CellIndex index) const;
  void chooseCells();
  void requireContent() const;
  void requireKeptCells() const;
  void keepTakenViews();
  void defineVias();
  void writeCell(CellIndex index);
  CellMaster masterOf(CellIndex index) const;
  void tellWhatStays();
  void checkUnits();

  PluginSession &session_;
  const LayoutCopyRequest &request_;
  ImportReport &report_;
  const int errorsBefore_;
  const LayoutModel model_;
  const CellIndex top_;
  std::vector<CellOrigin> origins_; // of each cell of the model
  std::vector<CellIndex> copied_;
};

LayoutCopier::LayoutCopier(PluginSession &session, const LayoutCopyRequest &request, ImportReport &report)
    : session_(session), request_(request), report_(report), errorsBefore_(errorsSoFar(session)),
      model_(readLayout(session, request.lib, request.cell, request.view)), top_(*model_.topCell()) {
  for (const LayoutCell &cell : model_.cells())
    origins_.push_back(originOf(cell));
}

void LayoutCopier::copy() {
  requireContent();
  chooseCells();
  requireKeptCells();
  request_.makeTarget();
  if (!request_.isReplacing)
    keepTakenViews();
  if (!isInsideOneLibrary())
    defineVias();
  for (const CellIndex index : copied_)
    writeCell(index);
  for (const CellIndex index : copied_)
    copyCellData(session_, {request_.lib, request_.targetLib, request_.isReplacing}, origins_[index].cell,
                 targetCell(index), report_);
  tellWhatStays();
  checkUnits();
}

// Whether the cell can be written as it came: a variant would lose its parameters, a standard via has no master.
bool LayoutCopier::isWritable(CellIndex index) const {
  const CellOrigin &origin = origins_[index];
  return model_.cell(index).isDefined && origin.lib == request_.lib &&
         (origin.kind == Kind::Plain || origin.kind == Kind::CustomVia);
}

// A cell view once, though it may have come as a cell and as the master of vias.
void LayoutCopier::chooseCells() {
  copied_.push_back(top_);
  if (isInsideOneLibrary() || !request_.isHierarchical)
    return;
  QSet<QString> chosen{targetView(top_)};
  for (CellIndex index = 0; index < model_.cells().size(); ++index) {
    if (isWritable(index) && !chosen.contains(targetView(index))) {
      chosen.insert(targetView(index));
      copied_.push_back(index);
    }
  }
}

QString LayoutCopier::targetCell(CellIndex index) const {
  return index == top_ ? request_.targetCell : origins_[index].cell;
}

QString LayoutCopier::originalView(CellIndex index) const {
  return cellViewName(origins_[index].lib, origins_[index].cell, origins_[index].view);
}

QString LayoutCopier::targetView(CellIndex index) const {
  return cellViewName(request_.targetLib, targetCell(index), origins_[index].view);
}

// A cell that could not be read, as one whose evaluator is missing, would be copied as an empty one.
void LayoutCopier::requireContent() const {
  if (isEmpty(model_.cell(top_)) && session_.errorCount() > errorsBefore_) {
    throw HostError(QStringLiteral("%1 is not copied: nothing of it could be read")
                        .arg(cellViewName(request_.lib, request_.cell, request_.view)));
  }
}

// A cell of another name must not be written where a cell of the model will be placed from: that one would be lost, and
// the written one would contain itself.
void LayoutCopier::requireKeptCells() const {
  QHash<QString, CellIndex> written;
  for (const CellIndex index : copied_)
    written.insert(targetView(index), index);
  for (CellIndex index = 0; index < model_.cells().size(); ++index) {
    const CellOrigin &origin = origins_[index];
    if (!model_.cell(index).isDefined || origin.kind == Kind::StandardVia)
      continue;
    const QString place = cellViewName(masterLibrary(index), targetCell(index), origin.view);
    const auto found = written.constFind(place);
    if (found == written.constEnd() || originalView(*found) == originalView(index))
      continue;
    throw HostError(QStringLiteral("%1 cannot be copied to %2: below %3, this is where %4 is placed from")
                        .arg(originalView(*found), place, originalView(top_), originalView(index)));
  }
}

// What is there below the cell may have come with an earlier copy and stays; the cell's own view must be free.
void LayoutCopier::keepTakenViews() {
  const QStringList present = session_.requireCellNames(request_.targetLib);
  const QSet<QString> cells(present.begin(), present.end());
  const auto isKept = [&](CellIndex index) {
    const QString cell = targetCell(index);
    const QString &view = origins_[index].view;
    if (!cells.contains(cell) || !session_.requireViewNames(request_.targetLib, cell).contains(view))
      return false;
    if (index == top_)
      throw HostError(QStringLiteral("library %1 has a cell %2 already, with a view %3; --replace writes over it")
                          .arg(request_.targetLib, cell, view));
    const bool isSame = isSameContent(session_.core().getViewDump(request_.lib, origins_[index].cell, view),
                                      session_.core().getViewDump(request_.targetLib, cell, view));
    report_.notice(QStringLiteral("a placed cell is in the library already and stays as it is there%1")
                       .arg(isSame ? QString() : QStringLiteral(", although its dump is another one")),
                   targetView(index));
    return true;
  };
  copied_.erase(std::remove_if(copied_.begin(), copied_.end(), isKept), copied_.end());
}

// Those of the vias in the copied cells.
void LayoutCopier::defineVias() {
  std::set<CellIndex> placed;
  for (const CellIndex index : copied_) {
    for (const ModelReference &reference : model_.cell(index).references)
      placed.insert(reference.cell);
  }
  std::map<QString, ViaDefinition> definitions;
  for (const CellIndex index : placed) {
    const CellOrigin &origin = origins_[index];
    if (!origin.isVia())
      continue;
    const QString name = origin.parameter("oaViaDefName");
    ViaDefinition &definition = definitions[name];
    definition.name = name;
    definition.layers.merge(layersOf(model_, model_.cell(index)));
    if (origin.kind != Kind::StandardVia) {
      definition.lib = masterLibrary(index);
      definition.cell = origin.cell;
      definition.view = origin.view;
    } else if (origin.parameter("cutRows").toUInt() > 1 || origin.parameter("cutColumns").toUInt() > 1) {
      definition.arrayCutLayers.insert(origin.parameter("cutLayer").toInt());
    }
  }
  std::vector<ViaDefinition> list;
  list.reserve(definitions.size());
  for (const auto &[name, definition] : definitions)
    list.push_back(definition);
  copyViaDefinitions(session_, list, request_.lib, request_.targetLib, report_);
}

// Where the cell is after the copy. Without the cells below, those that could be copied are taken to be there.
QString LayoutCopier::masterLibrary(CellIndex index) const {
  return isWritable(index) ? request_.targetLib : origins_[index].lib;
}

void LayoutCopier::writeCell(CellIndex index) {
  const LayoutCell &cell = model_.cell(index);
  PluginLayoutWriter writer(session_, request_.targetLib, origins_[index].view);
  if (!writer.beginCell(targetCell(index))) {
    report_.problem(QStringLiteral("a cell could not be written"), cell.name);
    return;
  }
  writeModelShapes(model_, cell, writer, report_);
  for (const ModelReference &reference : cell.references)
    writer.placeMaster(masterOf(reference.cell), reference);
  writer.endCell();
}

CellMaster LayoutCopier::masterOf(CellIndex index) const {
  const CellOrigin &origin = origins_[index];
  switch (origin.kind) {
  case Kind::Plain:
    // A cell that was referred to and never sent came without data.
    if (origin.cell.isEmpty())
      return {request_.targetLib, model_.cell(index).name, request_.view, {}, {}};
    return {masterLibrary(index), targetCell(index), origin.view, {}, {}};
  case Kind::Variant:
  case Kind::StandardVia:
  case Kind::CustomVia:
  case Kind::VariantAsVia:
    break;
  }
  return {origin.lib, origin.cell, origin.view, origin.parameterNames, origin.parameterValues};
}

void LayoutCopier::tellWhatStays() {
  if (origins_[top_].kind == Kind::Variant) {
    report_.notice(QStringLiteral("a parametric cell is copied as it looks with its default parameters"),
                   cellViewName(request_.lib, request_.cell, request_.view));
  }
  QSet<QString> told;
  for (CellIndex index = 0; index < model_.cells().size(); ++index) {
    const CellOrigin &origin = origins_[index];
    const QString place = cellViewName(origin.lib, origin.cell, origin.view);
    if (index == top_ || isInsideOneLibrary() || origin.lib != request_.lib || told.contains(place) ||
        (origin.kind != Kind::Variant && origin.kind != Kind::VariantAsVia))
      continue;
    told.insert(place);
    report_.notice(QStringLiteral("a parametric cell cannot be copied and is placed from where it is"), place);
  }
}

// A library's layouts have one database unit, that of its technology, and no operation sets it.
void LayoutCopier::checkUnits() {
  const double source = model_.metresPerDbu();
  const double target = probeMetresPerDbu(session_, request_.targetLib, origins_[top_].view);
  constexpr double kTolerance = 1e-9;
  if (source > 0 && target > 0 && std::abs(target / source - 1) > kTolerance) {
    report_.problem(QStringLiteral("the library has another database unit, so the copy has another size"),
                    QStringLiteral("library %1: %2 um, library %3: %4 um")
                        .arg(request_.targetLib)
                        .arg(target * 1e6)
                        .arg(request_.lib)
                        .arg(source * 1e6));
  }
}

} // namespace

void copyLayout(PluginSession &session, const LayoutCopyRequest &request, ImportReport &report) {
  LayoutCopier(session, request, report).copy();
}
