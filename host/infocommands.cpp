#include "commands.h"
#include "commandvalues.h"
#include "oaplugincore.h"
#include "pluginsession.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

namespace {

struct Names {
  std::string lib;
  std::string cell;
  std::string view;
};

QByteArray toLines(const QStringList &names) {
  QByteArray lines;
  for (const QString &name : names)
    lines += name.toUtf8() + '\n';
  return lines;
}

int printInfo(PluginSession &session, const Names &) {
  QString report = session.core().info();
  session.writeOutput(report.remove(QLatin1Char('\r')).toUtf8());
  return session.exitCode();
}

int printLibraries(PluginSession &session, const Names &) {
  session.writeOutput(toLines(session.core().getLibs()));
  return session.exitCode();
}

int printCells(PluginSession &session, const Names &names) {
  const QString lib = nameFromCommandLine(names.lib);
  session.requireLibrary(lib);
  session.writeOutput(toLines(session.requireCellNames(lib)));
  return session.exitCode();
}

int printViews(PluginSession &session, const Names &names) {
  const QString lib = nameFromCommandLine(names.lib);
  const QString cell = nameFromCommandLine(names.cell);
  session.requireLibrary(lib);
  const QStringList views = session.requireViewNames(lib, cell);
  if (views.isEmpty())
    session.requireCell(lib, cell);
  session.writeOutput(toLines(views));
  return session.exitCode();
}

int printViewType(PluginSession &session, const Names &names) {
  const QString type = session.requireView(nameFromCommandLine(names.lib), nameFromCommandLine(names.cell),
                                           nameFromCommandLine(names.view));
  session.writeOutput(type.toUtf8() + '\n');
  return session.exitCode();
}

using Print = int (*)(PluginSession &, const Names &);

// `nameCount` of library, cell and view are the command's arguments.
void addQuery(CLI::App &app, CommandContext &context, const char *name, const char *description, int nameCount,
              Print print) {
  auto names = std::make_shared<Names>();
  CLI::App *command = app.add_subcommand(name, description);
  if (nameCount > 0)
    command->add_option("LIB", names->lib, "Library")->required();
  if (nameCount > 1)
    command->add_option("CELL", names->cell, "Cell")->required();
  if (nameCount > 2)
    command->add_option("VIEW", names->view, "View")->required();
  command->callback([names, print, &context] {
    context.command = [names, print, &context] {
      PluginSession session(context);
      return print(session, *names);
    };
  });
}

} // namespace

void addInfoCommands(CLI::App &app, CommandContext &context) {
  addQuery(app, context, "info", "Report the OpenAccess kit, its directories and lib.defs", 0, printInfo);
  addQuery(app, context, "libs", "List the libraries that lib.defs defines", 0, printLibraries);
  addQuery(app, context, "cells", "List the cells of a library", 1, printCells);
  addQuery(app, context, "views", "List the views of a cell", 2, printViews);
  addQuery(app, context, "view-type", "Print the type of a view", 3, printViewType);
}
