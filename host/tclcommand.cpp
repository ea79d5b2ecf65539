#include "commands.h"
#include "hosterror.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "tclinterpreter.h"
#include "tclprompt.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <QFile>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

#include <tcl.h>
#include <unistd.h>

namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;

struct TclOptions {
  QString home; // before --lib-defs-home takes its place
  std::string command;
  bool hasCommand = false;
  QStringList words; // the script and its arguments
};

// What Tcl's command exit has to end; there is one in the process.
PluginSession *exitingSession = nullptr;

// Ends the process as Tcl's exit wants it: at once, from the middle of an evaluation. The session's thread still runs,
// so nothing is destroyed under its feet.
[[noreturn]] void leave(ClientData code) {
  TclInterpreter::shutDown();
  exitingSession->synchronise();
  std::fflush(nullptr);
  std::_Exit(static_cast<int>(reinterpret_cast<std::intptr_t>(code)));
}

class TclRun {
public:
  TclRun(const CommandContext &context, const TclOptions &options)
      : output_(duplicateOutput()), session_(context), options_(options), interpreter_(output_) {
    exitingSession = &session_;
    Tcl_SetExitProc(leave);
    session_.core().tclInit(interpreter_.get());
    if (session_.exitCode() != 0) {
      throw HostError(QStringLiteral("the OpenAccess commands are not available: %1")
                          .arg(QString::fromUtf8(interpreter_.result())));
    }
  }

  int run() {
    if (options_.hasCommand)
      return runCommand();
    if (!options_.words.isEmpty())
      return runScript();
    return isatty(STDIN_FILENO) != 0 ? converse() : readCommands();
  }

private:
  // Standard output belongs to the plug-in's lines while the session lives.
  static int duplicateOutput() {
    const int descriptor = dup(STDOUT_FILENO);
    if (descriptor < 0)
      throw HostError(QStringLiteral("standard output is closed"));
    return descriptor;
  }

  static QString program() { return QCoreApplication::arguments().value(0); }

  int runCommand() {
    interpreter_.setArguments(program(), {}, false);
    return ended(evaluate(QByteArray::fromStdString(options_.command)));
  }

  int runScript() {
    const QString script = options_.words.first();
    interpreter_.setArguments(script, options_.words.mid(1), false);
    return ended(session_.core().tclExecFile(interpreter_.get(), textForTcl(script.toUtf8())));
  }

  int evaluate(const QByteArray &utf8) { return session_.core().tclExec(interpreter_.get(), textForTcl(utf8)); }

  // The exit code of the whole run.
  int ended(int completionCode) {
    if (completionCode != TCL_OK)
      tellFailure();
    interpreter_.flushOutput();
    session_.synchronise();
    return completionCode == TCL_OK ? kSuccess : kFailure;
  }

  void tellFailure() {
    interpreter_.flushOutput();
    session_.synchronise();
    std::fprintf(stderr, "%s\n", interpreter_.errorInfo().constData());
  }

  // One command after the other from a file or pipe. A failure is told, and the next command runs.
  int readCommands() {
    interpreter_.setArguments(program(), {}, false);
    QByteArray command;
    for (std::string line; std::getline(std::cin, line);) {
      command += QByteArray::fromStdString(line) + '\n';
      if (Tcl_CommandComplete(command.constData()) == 0)
        continue;
      if (evaluate(command) != TCL_OK)
        tellFailure();
      command.clear();
    }
    return command.trimmed().isEmpty() ? kSuccess : ended(evaluate(command));
  }

  int converse() {
    interpreter_.setArguments(program(), {}, true);
    TclPrompt prompt(interpreter_.get(),
                     options_.home.isEmpty() ? QString() : options_.home + QStringLiteral("/.oahost_history"), output_);
    QByteArray command;
    while (prompt.readCommand(command)) {
      const int code = evaluate(command);
      const QByteArray result = interpreter_.result();
      if (code != TCL_OK)
        std::fprintf(stderr, "%s\n", result.constData());
      else if (!result.isEmpty())
        interpreter_.writeOutput(result + '\n');
      interpreter_.flushOutput(); // a line that has not ended yet stands before the next prompt
      session_.synchronise();
    }
    interpreter_.writeOutput("\n");
    return kSuccess;
  }

  const int output_;
  PluginSession session_;
  const TclOptions &options_;
  TclInterpreter interpreter_;
};

class TclUsage : public CLI::Formatter {
public:
  // CLI11 knows nothing of words that only this command reads.
  std::string make_usage(const CLI::App *, std::string) const override {
    return "Usage: oahost [OPTIONS] tcl [SCRIPT [ARG ...] | -c COMMAND]\n";
  }
};

const char kDetails[] =
    R"(SCRIPT is a file; what stands behind it is left to it, in the variable argv.
Commands that come from a pipe or a file are run one after the other, whatever
becomes of the one before. The exit code is 1 when the script, the command or an
unfinished last command has failed, and what the Tcl command exit says.

On a terminal commands are typed at a prompt. TAB completes names of commands,
variables ($...) and files; a command that is not finished goes on at "> ". The
last 1000 commands are kept in $HOME/.oahost_history. Ctrl-C drops what is typed
or ends the command that runs. The end of the input (Ctrl-D) or the command
exit ends the session.)";

int runTcl(const CommandContext &context, const TclOptions &options) {
  if (options.hasCommand && !options.words.isEmpty())
    throw HostError(QStringLiteral("%1 is not expected after -c COMMAND").arg(options.words.first()));
  return TclRun(context, options).run();
}

} // namespace

void addTclCommand(CLI::App &app, CommandContext &context) {
  auto options = std::make_shared<TclOptions>();
  CLI::App *command = app.add_subcommand(
      "tcl", "Run a Tcl script, a command, or without either what is typed, with the OpenAccess commands");
  command->formatter(std::make_shared<TclUsage>());
  command->footer(kDetails);
  // Whatever stands behind the script is the script's.
  command->fallthrough(false);
  command->prefix_command();
  CLI::Option *given = command->add_option("-c", options->command, "Command to run")->type_name("COMMAND");
  command->callback([options, given, command, &context] {
    options->home = QString::fromLocal8Bit(qgetenv("HOME"));
    options->hasCommand = given->count() > 0;
    for (const std::string &word : command->remaining())
      options->words.append(QString::fromLocal8Bit(word.c_str()));
    context.command = [options, &context] { return runTcl(context, *options); };
  });
}
