#include "cellparameters.h"
#include "commands.h"
#include "commandvalues.h"
#include "hosterror.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "schematicreceiver.h"
#include "signalcounter.h"
#include "signalprinter.h"
#include "viewchoice.h"

#include <CLI/CLI.hpp>
#include <QElapsedTimer>

#include <memory>
#include <string>
#include <vector>

namespace {

struct ReadOptions {
  std::string lib;
  std::string cell;
  std::string view; // empty: what the cell has
  std::string format = "text";
  std::vector<std::string> params;
};

// Opens the view by the operation that its type calls for.
void openView(PluginSession &session, const ReadOptions &options) {
  const QString lib = nameFromCommandLine(options.lib);
  const QString cell = nameFromCommandLine(options.cell);
  const QString view = options.view.empty() ? defaultView(session, lib, cell) : nameFromCommandLine(options.view);
  const ChosenParameters parameters = parametersFromCommandLine(options.params);
  if (!parameters.isEmpty())
    openVariant(session, lib, cell, view, parameters);
  else if (isSchematicType(session.requireView(lib, cell, view)))
    openSchematicView(session, lib, cell, view);
  else
    session.core().openLayout(lib, cell, view, QString());
}

int readView(const CommandContext &context, const ReadOptions &options) {
  PluginSession session(context);
  if (options.format == "count") {
    SignalCounter counter(session);
    QElapsedTimer timer;
    timer.start();
    openView(session, options);
    session.writeOutput(counter.report(static_cast<double>(timer.nsecsElapsed()) * 1e-9));
  } else {
    SignalPrinter printer(session,
                          options.format == "json" ? SignalPrinter::Format::Json : SignalPrinter::Format::Text);
    try {
      openView(session, options);
    } catch (...) {
      // What came before the failure has been received.
      printer.flush();
      throw;
    }
    printer.flush();
  }
  return session.exitCode();
}

} // namespace

void addReadCommand(CLI::App &app, CommandContext &context) {
  auto options = std::make_shared<ReadOptions>();
  CLI::App *command =
      app.add_subcommand("read", "Print the signals that the plug-in sends for a cell view, one a line");
  command->add_option("LIB", options->lib, "Library")->required();
  command->add_option("CELL", options->cell, "Cell")->required();
  command->add_option("VIEW", options->view, "View; default: layout, schematic or symbol, the first that exists");
  command->add_option("--format", options->format, "text, json, or count (signals and shapes counted, and the speed)")
      ->check(CLI::IsMember({"text", "json", "count"}))
      ->capture_default_str();
  command
      ->add_option("--param", options->params,
                   "NAME=VALUE of a parametric layout, the others at their defaults; may be repeated. The "
                   "variant comes without units")
      ->check(CLI::Validator(parameterFault, "NAME=VALUE"))
      ->allow_extra_args(false);
  command->callback(
      [options, &context] { context.command = [options, &context] { return readView(context, *options); }; });
}
