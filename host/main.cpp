// oahost: does what the editor does with the plug-in, from the command line. See commands.h for how a command is added.

#include "commands.h"
#include "hosterror.h"
#include "usermessage.h"

#include <CLI/CLI.hpp>
#include <QGuiApplication>
#include <QtGlobal>

#include <csignal>
#include <cstdio>
#include <exception>
#include <memory>
#include <new>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kFailure = 1;
constexpr int kUsageError = 2;

struct GlobalOptions {
  std::string pluginFile;
  std::string libraryDefsHome;
  bool debug = false;
  double waitSeconds = 10;
};

void addGlobalOptions(CLI::App &app, GlobalOptions &options) {
  app.add_option("--plugin", options.pluginFile, "Plug-in to load; default: ../lib/liboaplugin.so from the executable")
      ->type_name("FILE");
  app.add_option("--lib-defs-home", options.libraryDefsHome,
                 "Directory that takes the place of HOME, where lib.defs is looked for and made")
      ->type_name("DIR");
  app.add_option("--wait", options.waitSeconds, "Wait so long for a library that another process writes to")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.0, 86400.0))
      ->capture_default_str();
  app.add_flag("--debug", options.debug, "Print the plug-in's progress lines on standard error");
  app.set_version_flag("--version", std::string("oahost " OAHOST_VERSION), "Print the version and exit");
  app.require_subcommand(1);
  app.fallthrough();
}

// Qt's own remarks (a missing runtime directory, say) mean nothing to a user of the command line; what stops the
// program does.
void dropQtRemarks(QtMsgType type, const QMessageLogContext &, const QString &text) {
  if (type == QtCriticalMsg || type == QtFatalMsg)
    tellUser(text);
}

// Drawing needs fonts, but never a display.
std::unique_ptr<QCoreApplication> makeApplication(const CommandContext &context, int &argc, char **argv) {
  qInstallMessageHandler(dropQtRemarks);
  if (!context.needsDrawing)
    return std::make_unique<QCoreApplication>(argc, argv);
  qputenv("QT_QPA_PLATFORM",
          "offscreen"); // a desktop sets another one, which its terminals elsewhere have no display for
  return std::make_unique<QGuiApplication>(argc, argv);
}

int runCommand(const CommandContext &context) {
  try {
    return context.command();
  } catch (const std::bad_alloc &) {
    tellUser(QStringLiteral("out of memory"));
  } catch (const std::exception &error) {
    tellUser(QString::fromUtf8(error.what()));
  } catch (const QString &message) {
    // What some reading operations of the plug-in let pass to the host.
    tellUser(message);
  }
  return kFailure;
}

// Streams and databases are mapped. Nothing of ours shortens one in place; what another program cuts ends up here
// instead of in a silent death. Cells that were saved stay.
void fileWasCut(int) {
  static const char message[] = "oahost: a file was cut short, or its disk failed, while it was read\n";
  [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, message, sizeof message - 1);
  ::_exit(kFailure);
}

int run(int argc, char **argv) {
  CLI::App app("Reads and writes OpenAccess libraries through the editor's plug-in", "oahost");
  GlobalOptions options;
  CommandContext context;
  addGlobalOptions(app, options);
  addInfoCommands(app, context);
  addComponentCommands(app, context);
  addReadCommand(app, context);
  addParamsCommand(app, context);
  addLibraryCommands(app, context);
  addNetlistCommand(app, context);
  addImportGdsCommand(app, context);
  addImportXschemCommand(app, context);
  addExportGdsCommand(app, context);
  addCopyCommand(app, context);
  addDumpCommands(app, context);
  addTclCommand(app, context);
#ifdef OAHOST_HAS_RENDER
  addRenderCommand(app, context);
#endif
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError &error) {
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success))
      return app.exit(error);
    // An unknown command is left over, and CLI11 only misses the known one.
    const std::vector<std::string> unknown = app.remaining();
    tellUser(unknown.empty() ? QString::fromStdString(error.what())
                             : QStringLiteral("%1 is not known here").arg(QString::fromStdString(unknown.front())));
    tellUser(QStringLiteral("oahost --help and oahost COMMAND --help tell what is expected"));
    return kUsageError;
  }
  context.pluginFile = QString::fromLocal8Bit(options.pluginFile.c_str());
  context.libraryDefsHome = QString::fromLocal8Bit(options.libraryDefsHome.c_str());
  context.debug = options.debug;
  context.waitSeconds = options.waitSeconds;
  std::signal(SIGBUS, fileWasCut);
  const std::unique_ptr<QCoreApplication> application = makeApplication(context, argc, argv);
  return runCommand(context);
}

} // namespace

int main(int argc, char **argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception &error) {
    std::fprintf(stderr, "oahost: %s\n", error.what());
    return kFailure;
  }
}
