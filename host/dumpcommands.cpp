#include "commands.h"
#include "commandvalues.h"
#include "hosterror.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "unifieddiff.h"
#include "usermessage.h"
#include "viewchoice.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

namespace {

constexpr int kEqual = 0;
constexpr int kDifferent = 1;
constexpr int kTrouble = 2; // as for a wrong command line

struct ViewNames {
  std::string lib;
  std::string cell;
  std::string view; // empty: what the cell has
};

struct DiffNames {
  ViewNames before;
  ViewNames after;
};

void addCellArguments(CLI::App &command, ViewNames &names, const std::string &suffix) {
  command.add_option("LIB" + suffix, names.lib, "Library")->required();
  command.add_option("CELL" + suffix, names.cell, "Cell")->required();
}

void addViewArguments(CLI::App &command, ViewNames &names, const std::string &suffix) {
  addCellArguments(command, names, suffix);
  command.add_option("VIEW" + suffix, names.view, "View")->required();
}

QByteArray dumpOf(PluginSession &session, const ViewNames &names) {
  const QString lib = nameFromCommandLine(names.lib);
  const QString cell = nameFromCommandLine(names.cell);
  const QString view = names.view.empty() ? defaultView(session, lib, cell) : nameFromCommandLine(names.view);
  session.requireView(lib, cell, view);
  const QString text = session.core().getViewDump(lib, cell, view);
  session.synchronise();
  if (text.isEmpty())
    throw HostError(QStringLiteral("%1 cannot be read as a design").arg(cellViewName(lib, cell, view)));
  return text.toUtf8();
}

// Takes the names of library, cell and view out of the header: two views are compared by what is in them.
QByteArray withoutNames(QByteArray dump) {
  int begin = 0;
  for (int line = 0; line < 4; ++line) {
    int end = dump.indexOf('\n', begin);
    for (const char *name : {"library ", "cell ", "view "}) {
      if (dump.mid(begin, static_cast<int>(qstrlen(name))) == name) {
        const int keptEnd = begin + static_cast<int>(qstrlen(name)) - 1;
        dump.remove(keptEnd, end - keptEnd);
        end = keptEnd;
      }
    }
    begin = end + 1;
  }
  return dump;
}

int printDump(const CommandContext &context, const ViewNames &names) {
  PluginSession session(context);
  session.writeOutput(dumpOf(session, names));
  return session.exitCode();
}

int compare(const CommandContext &context, const DiffNames &names) {
  const auto nameOf = [](const ViewNames &view) {
    return QByteArray::fromStdString(view.lib + '/' + view.cell + '/' + view.view);
  };
  PluginSession session(context);
  const QByteArray before = withoutNames(dumpOf(session, names.before));
  const QByteArray after = withoutNames(dumpOf(session, names.after));
  const QByteArray difference = unifiedDiff({nameOf(names.before), before}, {nameOf(names.after), after});
  session.writeOutput(difference);
  if (session.exitCode() != 0)
    return kTrouble;
  return difference.isEmpty() ? kEqual : kDifferent;
}

// A difference has exit code 1 to itself.
int compareOrTell(const CommandContext &context, const DiffNames &names) {
  try {
    return compare(context, names);
  } catch (const HostError &error) {
    tellUser(QString::fromUtf8(error.what()));
    return kTrouble;
  }
}

} // namespace

void addDumpCommands(CLI::App &app, CommandContext &context) {
  auto view = std::make_shared<ViewNames>();
  CLI::App *dump = app.add_subcommand("dump", "Print everything in a view as readable text");
  addCellArguments(*dump, *view, "");
  dump->add_option("VIEW", view->view, "View; default: layout, schematic or symbol, the first that exists");
  dump->callback([view, &context] { context.command = [view, &context] { return printDump(context, *view); }; });

  auto views = std::make_shared<DiffNames>();
  CLI::App *diff = app.add_subcommand(
      "diff", "Compare two views by their dumps; exit code 0: equal, 1: different, 2: something is wrong");
  addViewArguments(*diff, views->before, "");
  addViewArguments(*diff, views->after, "2");
  diff->callback([views, &context] { context.command = [views, &context] { return compareOrTell(context, *views); }; });
}
