#include "commands.h"
#include "commandvalues.h"
#include "hosterror.h"
#include "layoutreceiver.h"
#include "modelcopier.h"
#include "oaplugincore.h"
#include "pluginlayoutwriter.h"
#include "pluginsession.h"
#include "usermessage.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <memory>
#include <string>

namespace {

const QString kView = QStringLiteral("layout");

struct CopyOptions {
  std::string lib;
  std::string cell;
  std::string targetLib;
  std::string targetCell;
  bool replace = false;
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

int copyLayout(const CommandContext &context, const CopyOptions &options) {
  PluginSession session(context);
  const QString lib = nameFromCommandLine(options.lib);
  const QString targetLib = nameFromCommandLine(options.targetLib);
  session.requireLibrary(targetLib);
  const LayoutModel model = readLayout(session, lib, nameFromCommandLine(options.cell), kView);
  const QString top = model.cell(*model.topCell()).name;
  const QString newTop = options.targetCell.empty() ? top : nameFromCommandLine(options.targetCell);
  if (lib == targetLib && newTop == top)
    throw HostError(QStringLiteral("%1 would be copied onto itself").arg(cellViewName(lib, top, kView)));
  // Inside one library the placed cells are there already.
  const auto isCopied = [&](const LayoutCell &cell) {
    return cell.isDefined && (lib != targetLib || cell.name == top);
  };
  if (!options.replace)
    requireFreeNames(session, model, targetLib, top, newTop, isCopied);
  PluginLayoutWriter writer(session, targetLib, kView);
  ImportReport report;
  for (const LayoutCell &cell : model.cells()) {
    if (isCopied(cell) && !writeModelCell(model, cell, cell.name == top ? newTop : cell.name, writer, report))
      report.problem(QStringLiteral("a cell could not be written"), cell.name);
  }
  for (const QString &line : report.lines())
    tellUser(line);
  return report.problemCount() > 0 ? 1 : session.exitCode();
}

} // namespace

void addCopyCommand(CLI::App &app, CommandContext &context) {
  auto options = std::make_shared<CopyOptions>();
  CLI::App *command = app.add_subcommand(
      "copy", "Read a layout with all that it places and write it to another library (shapes and references only)");
  command->add_option("LIB", options->lib, "Library to read")->required();
  command->add_option("CELL", options->cell, "Cell to read")->required();
  command->add_option("TARGETLIB", options->targetLib, "Library to write to")->required();
  command->add_option("TARGETCELL", options->targetCell, "Name of the copied cell; default: its own");
  command->add_flag("--replace", options->replace, "Write over cells that exist");
  command->callback(
      [options, &context] { context.command = [options, &context] { return copyLayout(context, *options); }; });
}
