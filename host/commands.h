#ifndef COMMANDS_H
#define COMMANDS_H

#include <QString>

#include <functional>

namespace CLI {
class App;
}

// What the command line has said. Each addXxxCommand() registers one subcommand; its CLI11 callback stores in `command`
// what is to be done, which main() calls after it has made the application object. A command works through a
// PluginSession and reports failures by throwing HostError (hosterror.h).
struct CommandContext {
  QString pluginFile;      // empty: found from the place of the executable
  QString libraryDefsHome; // empty: HOME as it is
  bool debug = false;
  double waitSeconds = 0; // for a library that another process writes to
  // Set by the callback of a command that draws: it gets a QGuiApplication (fonts) instead of a QCoreApplication.
  bool needsDrawing = false;
  // Returns the exit code.
  std::function<int()> command;
};

void addInfoCommands(CLI::App &app, CommandContext &context);      // info, libs, cells, views, view-type
void addComponentCommands(CLI::App &app, CommandContext &context); // components, component
void addLibraryCommands(CLI::App &app, CommandContext &context);   // layers, rm, data, register
void addNetlistCommand(CLI::App &app, CommandContext &context);
void addParamsCommand(CLI::App &app, CommandContext &context);
void addReadCommand(CLI::App &app, CommandContext &context);
void addImportGdsCommand(CLI::App &app, CommandContext &context);
void addImportXschemCommand(CLI::App &app, CommandContext &context);
void addExportGdsCommand(CLI::App &app, CommandContext &context);
void addCopyCommand(CLI::App &app, CommandContext &context);
void addDumpCommands(CLI::App &app, CommandContext &context); // dump, diff
void addTclCommand(CLI::App &app, CommandContext &context);
void addRenderCommand(CLI::App &app, CommandContext &context);

#endif
