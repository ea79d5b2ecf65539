#include "commands.h"
#include "commandvalues.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "schematicreceiver.h"
#include "signalprinter.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

namespace {

struct ListOptions {
  std::string lib;
  bool refresh = false;
};

struct ShowOptions {
  std::string lib;
  std::string device;
  std::string format = "text";
};

int listComponents(const CommandContext &context, const ListOptions &options) {
  PluginSession session(context);
  const QString lib = nameFromCommandLine(options.lib);
  session.requireLibrary(lib);
  const int errorsBefore = session.errorCount();
  const QStringList names = session.core().getComponents(lib, session.core().getLibPath(lib), !options.refresh);
  if (names.isEmpty())
    session.requireAnswer(lib, QStringLiteral("library %1").arg(lib), errorsBefore);
  QByteArray lines;
  for (const QString &name : names)
    lines += name.toUtf8() + '\n';
  session.writeOutput(lines);
  return session.exitCode();
}

int showComponent(const CommandContext &context, const ShowOptions &options) {
  PluginSession session(context);
  const QString lib = nameFromCommandLine(options.lib);
  const QString device = nameFromCommandLine(options.device);
  session.requireLibrary(lib);
  requireComponent(session, lib, device);
  SignalPrinter printer(session, options.format == "json" ? SignalPrinter::Format::Json : SignalPrinter::Format::Text);
  session.core().loadComponent(lib, device);
  printer.flush();
  return session.exitCode();
}

} // namespace

void addComponentCommands(CLI::App &app, CommandContext &context) {
  auto list = std::make_shared<ListOptions>();
  CLI::App *components =
      app.add_subcommand("components", "List the cells of a library that have a symbol to be placed; "
                                       "the library keeps the list for the next time");
  components->add_option("LIB", list->lib, "Library")->required();
  components->add_flag("--refresh", list->refresh, "Look through the library again instead of taking the kept list");
  components->callback(
      [list, &context] { context.command = [list, &context] { return listComponents(context, *list); }; });

  auto show = std::make_shared<ShowOptions>();
  CLI::App *component =
      app.add_subcommand("component", "Print the signals that the plug-in sends for a component's symbol, one a line");
  component->add_option("LIB", show->lib, "Library")->required();
  component->add_option("DEVICE", show->device, "Cell, or VIEW@CELL for a symbol in another view than \"symbol\"")
      ->required();
  component->add_option("--format", show->format, "text or json")
      ->check(CLI::IsMember({"text", "json"}))
      ->capture_default_str();
  component->callback(
      [show, &context] { context.command = [show, &context] { return showComponent(context, *show); }; });
}
