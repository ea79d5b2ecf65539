#include "commands.h"
#include "commandvalues.h"
#include "hosterror.h"
#include "layoutreceiver.h"
#include "modelcopier.h"
#include "oaplugincore.h"
#include "pluginlayoutwriter.h"
#include "pluginsession.h"
#include "schematiccopier.h"
#include "usermessage.h"
#include "viewchoice.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <memory>
#include <string>

namespace {

const QString kLayoutView = QStringLiteral("layout");

struct CopyOptions {
  std::string lib;
  std::string cell;
  std::string targetLib;
  std::string targetCell;
  std::string view; // empty: what the cell has
  bool replace = false;
  bool topOnly = false;
};

// Refuses before anything is written when a cell would be written over.
void requireFreeNames(PluginSession &session, const LayoutModel &model, const QString &lib, const QString &top,
                      const QString &newTop, const std::function<bool(const LayoutCell &)> &isCopied) {
  const QStringList present = session.core().getCellNames(lib);
  for (const LayoutCell &cell : model.cells()) {
    const QString name = cell.name == top ? newTop : cell.name;
    if (isCopied(cell) && present.contains(name))
      throw HostError(QStringLiteral("library %1 has a cell %2 already; --replace writes over it").arg(lib, name));
  }
}

struct CopyPlace {
  QString lib;
  QString cell;
  QString view;
  QString targetLib;
  QString targetCell; // empty: as the cell is called
};

void copyLayout(PluginSession &session, const CopyPlace &place, const CopyOptions &options, ImportReport &report) {
  const LayoutModel model = readLayout(session, place.lib, place.cell, place.view);
  const QString top = model.cell(*model.topCell()).name;
  const QString newTop = place.targetCell.isEmpty() ? top : place.targetCell;
  const bool isInsideOneLibrary = place.lib == place.targetLib;
  if (isInsideOneLibrary && newTop == top)
    throw HostError(QStringLiteral("%1 would be copied onto itself").arg(cellViewName(place.lib, top, place.view)));
  // Inside one library the placed cells are there already.
  const auto isCopied = [&](const LayoutCell &cell) {
    return cell.isDefined && (!isInsideOneLibrary || cell.name == top) && (!options.topOnly || cell.name == top);
  };
  if (!options.replace)
    requireFreeNames(session, model, place.targetLib, top, newTop, isCopied);
  PluginLayoutWriter writer(session, place.targetLib, kLayoutView);
  for (const LayoutCell &cell : model.cells()) {
    if (isCopied(cell) && !writeModelCell(model, cell, cell.name == top ? newTop : cell.name, writer, report))
      report.problem(QStringLiteral("a cell could not be written"), cell.name);
  }
}

void copySchematicOrSymbol(PluginSession &session, const CopyPlace &place, const CopyOptions &options,
                           ImportReport &report) {
  SchematicCopyRequest request;
  request.lib = place.lib;
  request.cell = place.cell;
  request.view = place.view;
  request.targetLib = place.targetLib;
  request.targetCell = place.targetCell.isEmpty() ? place.cell : place.targetCell;
  request.isHierarchical = !options.topOnly;
  request.isReplacing = options.replace;
  if (request.lib == request.targetLib && request.targetCell == request.cell)
    throw HostError(
        QStringLiteral("%1 would be copied onto itself").arg(cellViewName(place.lib, place.cell, place.view)));
  copySchematic(session, request, report);
}

int copyView(const CommandContext &context, const CopyOptions &options) {
  PluginSession session(context);
  CopyPlace place;
  place.lib = nameFromCommandLine(options.lib);
  place.cell = nameFromCommandLine(options.cell);
  place.targetLib = nameFromCommandLine(options.targetLib);
  place.targetCell = nameFromCommandLine(options.targetCell);
  session.requireLibrary(place.targetLib);
  place.view = options.view.empty() ? defaultView(session, place.lib, place.cell) : nameFromCommandLine(options.view);
  ImportReport report;
  if (isSchematicType(session.requireView(place.lib, place.cell, place.view)))
    copySchematicOrSymbol(session, place, options, report);
  else
    copyLayout(session, place, options, report);
  for (const QString &line : report.lines())
    tellUser(line);
  return report.problemCount() > 0 ? 1 : session.exitCode();
}

} // namespace

void addCopyCommand(CLI::App &app, CommandContext &context) {
  auto options = std::make_shared<CopyOptions>();
  CLI::App *command =
      app.add_subcommand("copy", "Copy a layout (shapes and references only), schematic or symbol, with all that it "
                                 "places, to another library");
  command->add_option("LIB", options->lib, "Library to read")->required();
  command->add_option("CELL", options->cell, "Cell to read")->required();
  command->add_option("TARGETLIB", options->targetLib, "Library to write to")->required();
  command->add_option("TARGETCELL", options->targetCell, "Name of the copied cell; default: its own");
  command
      ->add_option("--view", options->view,
                   "View to copy; default: layout, schematic or symbol, the first that exists. A layout is written to "
                   "the view layout, whatever its own is")
      ->type_name("VIEW");
  command->add_flag(
      "--top-only", options->topOnly,
      "Leave out the layouts or schematics below the cell; the symbols that a schematic places are copied all the "
      "same");
  command->add_flag("--replace", options->replace, "Write over cells, or cell views of schematics, that exist");
  command->callback(
      [options, &context] { context.command = [options, &context] { return copyView(context, *options); }; });
}
