#include "commands.h"
#include "commandvalues.h"
#include "gdsexporter.h"
#include "layoutreceiver.h"
#include "pluginsession.h"
#include "progressbar.h"
#include "usermessage.h"

#include <CLI/CLI.hpp>
#include <QSaveFile>

#include <memory>
#include <string>

namespace {

struct ExportOptions {
  std::string lib;
  std::string cell;
  std::string view = "layout";
  std::string output;
};

int exportGds(const CommandContext &context, const ExportOptions &options) {
  const QString fileName = QString::fromLocal8Bit(options.output.c_str());
  requireOrdinaryOutput(fileName);
  PluginSession session(context);
  const QString lib = nameFromCommandLine(options.lib);
  const LayoutModel model =
      readLayout(session, lib, nameFromCommandLine(options.cell), nameFromCommandLine(options.view));
  // Written beside the target and renamed at the end: a failure leaves an older file as it was.
  QSaveFile file(fileName);
  if (!file.open(QIODevice::WriteOnly))
    throw HostError(QStringLiteral("%1: %2").arg(fileName, file.errorString()));
  GdsWriter writer(file, fileName);
  ImportReport report;
  {
    ProgressBar progress(QStringLiteral("export %1").arg(fileName), static_cast<qint64>(model.cells().size()));
    GdsExporter exporter(model, writer, report);
    exporter.run(lib.toLatin1(), [&progress](qint64 done) { progress.update(done); });
  }
  if (!file.commit())
    throw HostError(QStringLiteral("%1: %2").arg(fileName, file.errorString()));
  for (const QString &line : report.lines())
    tellUser(QStringLiteral("%1: %2").arg(fileName, line));
  return report.problemCount() > 0 ? 1 : session.exitCode();
}

} // namespace

void addExportGdsCommand(CLI::App &app, CommandContext &context) {
  auto options = std::make_shared<ExportOptions>();
  CLI::App *command = app.add_subcommand("export-gds", "Write a layout and all that it places as a GDSII file");
  command->add_option("LIB", options->lib, "Library")->required();
  command->add_option("CELL", options->cell, "Cell")->required();
  command->add_option("VIEW", options->view, "View")->capture_default_str();
  command->add_option("-o,--output", options->output, "GDSII file to write")->required()->type_name("FILE");
  command->callback(
      [options, &context] { context.command = [options, &context] { return exportGds(context, *options); }; });
}
