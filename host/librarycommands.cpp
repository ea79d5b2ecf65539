#include "celldata.h"
#include "commands.h"
#include "commandvalues.h"
#include "hosterror.h"
#include "layertable.h"
#include "libraryusers.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "usermessage.h"

#include <CLI/CLI.hpp>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <memory>
#include <string>

namespace {

struct LayersOptions {
  std::string lib;
  std::string format = "text";
  int count = 65536;
};

struct RemoveOptions {
  std::string lib;
  std::string cell;
  std::string view;
  bool isForced = false;
  const CLI::Option *viewOption = nullptr;
};

struct DataOptions {
  std::string lib;
  std::string cell;
  std::string text;
  std::string description;
  bool isRemoved = false;
  const CLI::Option *set = nullptr;
  const CLI::Option *describe = nullptr;
};

struct RegisterOptions {
  std::string path;
};

// A text in double quotes, on one line.
QByteArray quoted(const QString &text) {
  const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
  return list.mid(1, list.size() - 2);
}

// layers

QByteArray layersAsText(const LayerTable &table) {
  QByteArray lines;
  for (const LayerTable::Layer &layer : table.layers())
    lines += QByteArray::number(layer.number) + ' ' + layer.name.toUtf8() + '\n';
  return lines;
}

QByteArray layersAsJson(const LayerTable &table) {
  QJsonArray layers;
  for (const LayerTable::Layer &layer : table.layers())
    layers.append(QJsonObject{{QStringLiteral("number"), layer.number}, {QStringLiteral("name"), layer.name}});
  return QJsonDocument(layers).toJson();
}

// What importLayer() takes for the library. Its name, since a file would be looked for under the name of its directory,
// which may be another library's; but for names that read like a file.
QString layerLocation(PluginSession &session, const QString &lib) {
  if (!lib.endsWith(QLatin1String(".db")) && !lib.contains(QLatin1Char('/')))
    return lib;
  const QString path = session.core().getLibPath(lib);
  if (QFileInfo(path).fileName() != lib)
    throw HostError(
        QStringLiteral("the layers of library %1 cannot be asked for, since its directory %2 has another name")
            .arg(lib, path));
  return path + QStringLiteral("/tech.db");
}

int printLayers(const CommandContext &context, const LayersOptions &options) {
  PluginSession session(context);
  const QString lib = nameFromCommandLine(options.lib);
  session.requireLibrary(lib);
  const LayerTable table(session);
  // An error is printed by the plug-in as well, and told by that.
  if (!session.core().importLayer(layerLocation(session, lib), options.count).isEmpty()) {
    session.synchronise();
    return 1;
  }
  session.writeOutput(options.format == "json" ? layersAsJson(table) : layersAsText(table));
  return session.exitCode();
}

// rm

int removeView(PluginSession &session, const QString &lib, const QString &cell, const QString &view) {
  session.requireView(lib, cell, view);
  session.core().removeView(lib, cell, view);
  if (session.exitCode() != 0)
    return 1;
  if (session.requireViewNames(lib, cell).contains(view))
    throw HostError(QStringLiteral("%1/%2/%3 is still there").arg(lib, cell, view));
  session.writeOutput(QStringLiteral("removed %1/%2/%3\n").arg(lib, cell, view).toUtf8());
  return 0;
}

int removeCell(PluginSession &session, const QString &lib, const QString &cell) {
  session.requireCell(lib, cell);
  const QStringList views = session.requireViewNames(lib, cell);
  if (session.exitCode() != 0)
    return 1;
  session.core().removeCell(lib, cell);
  if (session.exitCode() != 0)
    return 1;
  if (session.requireCellNames(lib).contains(cell))
    throw HostError(QStringLiteral("%1/%2 is still there").arg(lib, cell));
  QString told;
  for (const QString &view : views)
    told += QStringLiteral("removed %1/%2/%3\n").arg(lib, cell, view);
  session.writeOutput((told + QStringLiteral("removed %1/%2\n").arg(lib, cell)).toUtf8());
  return 0;
}

// What somebody edits is not removed unawares: the changes would be lost.
void checkEditors(PluginSession &session, const QString &lib, const QString &cell, const QString &view, bool isForced) {
  const QString editor = viewEditor(session.core().getLibPath(lib), cell, view);
  if (editor.isEmpty())
    return;
  const QString message = QStringLiteral("library %1: somebody edits %2").arg(lib, editor);
  if (!isForced)
    throw HostError(message + QStringLiteral("; nothing is removed, --force removes it all the same"));
  tellUser(message);
}

int runRemove(const CommandContext &context, const RemoveOptions &options) {
  PluginSession session(context);
  const QString lib = nameFromCommandLine(options.lib);
  const QString cell = nameFromCommandLine(options.cell);
  const bool isWholeCell = options.viewOption->count() == 0;
  // A script's variable that is not set must not cost the cell.
  if (!isWholeCell && options.view.empty())
    throw HostError(QStringLiteral("the name of the view to be removed is empty"));
  const QString view = isWholeCell ? QString() : nameFromCommandLine(options.view);
  session.requireLibrary(lib);
  checkEditors(session, lib, cell, view, options.isForced);
  return isWholeCell ? removeCell(session, lib, cell) : removeView(session, lib, cell, view);
}

// data

int showData(PluginSession &session, const QString &lib, const QString &cell) {
  QByteArray lines;
  for (const CellProperty &property : readCellData(session, lib, cell))
    lines += property.name.toUtf8() + ' ' + quoted(property.text) + '\n';
  session.writeOutput(lines);
  return session.exitCode();
}

int runData(const CommandContext &context, const DataOptions &options) {
  PluginSession session(context);
  const QString lib = nameFromCommandLine(options.lib);
  const QString cell = nameFromCommandLine(options.cell);
  session.requireLibrary(lib);
  session.requireCell(lib, cell);
  oaPlugInCore &core = session.core();
  if (options.isRemoved)
    core.removeLayoutData(lib, cell);
  else if (options.set->count() > 0)
    core.writeLayoutData(lib, cell, nameFromCommandLine(options.text));
  else if (options.describe->count() > 0)
    core.writeCdfData(lib, cell, nameFromCommandLine(options.description));
  else
    return showData(session, lib, cell);
  return session.exitCode();
}

// register

int runRegister(const CommandContext &context, const RegisterOptions &options) {
  PluginSession session(context);
  session.requireLibraryDefinitions();
  const QString path = libraryPathFromCommandLine(options.path);
  const QString lib = QFileInfo(path).fileName();
  const bool isThere = session.core().existLib(path);
  const QString error = session.core().registerLibrary(path);
  session.synchronise();
  if (!error.isEmpty())
    throw HostError(error);
  const QString known = session.core().getLibPath(lib);
  if (known.isEmpty())
    throw HostError(QStringLiteral("%1 could not be registered").arg(path));
  if (QFileInfo(known).canonicalFilePath() != QFileInfo(path).canonicalFilePath())
    throw HostError(QStringLiteral("a library %1 is known already, at %2").arg(lib, known));
  session.writeOutput(QStringLiteral("%1 %2 at %3\n")
                          .arg(isThere ? QStringLiteral("registered") : QStringLiteral("created"), lib, path)
                          .toUtf8());
  return session.exitCode();
}

template <typename Options, typename Run>
void setCallback(CLI::App *command, CommandContext &context, std::shared_ptr<Options> options, Run run) {
  command->callback(
      [options, run, &context] { context.command = [options, run, &context] { return run(context, *options); }; });
}

void addLayersCommand(CLI::App &app, CommandContext &context) {
  auto options = std::make_shared<LayersOptions>();
  CLI::App *command = app.add_subcommand("layers", "List the layers of a library's technology: number and name");
  command->add_option("LIB", options->lib, "Library")->required();
  command->add_option("--format", options->format, "text or json")
      ->check(CLI::IsMember({"text", "json"}))
      ->capture_default_str();
  command->add_option("--count", options->count, "Layer numbers from here on are left out")
      ->check(CLI::Range(0, 1 << 24))
      ->capture_default_str();
  setCallback(command, context, options, printLayers);
}

void addRemoveCommand(CLI::App &app, CommandContext &context) {
  auto options = std::make_shared<RemoveOptions>();
  CLI::App *command = app.add_subcommand(
      "rm", "Remove a cell with all its views, or one view; nothing is asked. What another process is editing stays");
  command->add_option("LIB", options->lib, "Library")->required();
  command->add_option("CELL", options->cell, "Cell")->required();
  options->viewOption = command->add_option("VIEW", options->view, "View; without it, the whole cell goes");
  command->add_flag("--force", options->isForced, "Remove also what another process is editing");
  setCallback(command, context, options, runRemove);
}

void addDataCommand(CLI::App &app, CommandContext &context) {
  auto options = std::make_shared<DataOptions>();
  CLI::App *command = app.add_subcommand(
      "data", "Show the data that is kept with a cell, or change the editor's data or the component description");
  command->add_option("LIB", options->lib, "Library")->required();
  command->add_option("CELL", options->cell, "Cell")->required();
  CLI::Option_group *change = command->add_option_group("change");
  options->set = change->add_option("--set", options->text, "Keep this text as the editor's data");
  change->add_flag("--remove", options->isRemoved, "Remove the editor's data");
  options->describe = change->add_option("--cdf", options->description, "Keep this text as the component description");
  change->require_option(0, 1);
  setCallback(command, context, options, runData);
}

void addRegisterCommand(CLI::App &app, CommandContext &context) {
  auto options = std::make_shared<RegisterOptions>();
  CLI::App *command =
      app.add_subcommand("register", "Enter a library directory into lib.defs, under the directory's name; "
                                     "make the library if there is none");
  command->add_option("PATH", options->path, "Directory of the library")->required();
  setCallback(command, context, options, runRegister);
}

} // namespace

void addLibraryCommands(CLI::App &app, CommandContext &context) {
  addLayersCommand(app, context);
  addRemoveCommand(app, context);
  addDataCommand(app, context);
  addRegisterCommand(app, context);
}
