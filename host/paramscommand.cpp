#include "cellparameters.h"
#include "commands.h"
#include "commandvalues.h"
#include "pluginsession.h"
#include "usermessage.h"
#include "viewchoice.h"

#include <CLI/CLI.hpp>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <memory>
#include <string>

namespace {

struct ParamsOptions {
  std::string lib;
  std::string cell;
  std::string view; // empty: what the cell has
  std::string format = "text";
};

// Name, type and value in columns; a line feed inside a value is shown as \n.
QByteArray toText(const QVector<CellParameter> &parameters) {
  int nameWidth = 0, typeWidth = 0;
  for (const CellParameter &parameter : parameters) {
    nameWidth = std::max(nameWidth, parameter.name.size());
    typeWidth = std::max(typeWidth, parameter.type.size());
  }
  QByteArray text;
  for (const CellParameter &parameter : parameters) {
    QString line = parameter.name.leftJustified(nameWidth) + QStringLiteral("  ") +
                   parameter.type.leftJustified(typeWidth) + QStringLiteral("  ") + parameter.value;
    line.replace(QLatin1Char('\n'), QStringLiteral("\\n"));
    while (line.endsWith(QLatin1Char(' ')))
      line.chop(1);
    text += line.toUtf8() + '\n';
  }
  return text;
}

QByteArray toJson(const QVector<CellParameter> &parameters) {
  QJsonArray array;
  for (const CellParameter &parameter : parameters) {
    array.append(QJsonObject{{QStringLiteral("name"), parameter.name},
                             {QStringLiteral("type"), parameter.type},
                             {QStringLiteral("value"), parameter.value}});
  }
  return QJsonDocument(array).toJson();
}

int printParameters(const CommandContext &context, const ParamsOptions &options) {
  PluginSession session(context);
  const QString lib = nameFromCommandLine(options.lib);
  const QString cell = nameFromCommandLine(options.cell);
  const QString view = options.view.empty() ? defaultView(session, lib, cell) : nameFromCommandLine(options.view);
  session.requireView(lib, cell, view);
  const QVector<CellParameter> parameters = readCellParameters(session, lib, cell, view);
  if (parameters.isEmpty())
    tellUser(QStringLiteral("%1 has no parameters").arg(cellViewName(lib, cell, view)));
  session.writeOutput(options.format == "json" ? toJson(parameters) : toText(parameters));
  return session.exitCode();
}

} // namespace

void addParamsCommand(CLI::App &app, CommandContext &context) {
  auto options = std::make_shared<ParamsOptions>();
  CLI::App *command = app.add_subcommand(
      "params", "List the parameters of a parametric cell: name, type and default; a list's default comes first");
  command->add_option("LIB", options->lib, "Library")->required();
  command->add_option("CELL", options->cell, "Cell")->required();
  command->add_option("VIEW", options->view, "View; default: layout, schematic or symbol, the first that exists");
  command->add_option("--format", options->format, "text or json")
      ->check(CLI::IsMember({"text", "json"}))
      ->capture_default_str();
  command->callback(
      [options, &context] { context.command = [options, &context] { return printParameters(context, *options); }; });
}
