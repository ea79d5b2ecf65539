#include "commands.h"
#include "commandvalues.h"
#include "hosterror.h"
#include "netlistjson.h"
#include "netlistreader.h"
#include "netlistspice.h"
#include "pluginsession.h"
#include "progressbar.h"
#include "usermessage.h"

#include <CLI/CLI.hpp>
#include <QSaveFile>

#include <memory>
#include <string>

namespace {

struct NetlistOptions {
  std::string lib;
  std::string cell;
  std::string view = "schematic";
  std::string format = "spice";
  std::string output;
};

// Written beside the target and renamed at the end: a failure leaves an older file as it was.
void writeFile(const QString &fileName, const QByteArray &bytes) {
  QSaveFile file(fileName);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
    throw HostError(QStringLiteral("%1: %2").arg(fileName, file.errorString()));
}

int writeNetlist(const CommandContext &context, const NetlistOptions &options) {
  const QString fileName = QString::fromLocal8Bit(options.output.c_str());
  if (!fileName.isEmpty())
    requireOrdinaryOutput(fileName);
  PluginSession session(context);
  ImportReport report;
  const QString lib = nameFromCommandLine(options.lib);
  const QString cell = nameFromCommandLine(options.cell);
  const QString view = nameFromCommandLine(options.view);
  QByteArray bytes;
  {
    ProgressBar progress(QStringLiteral("netlist %1").arg(cellViewName(lib, cell, view)), 0);
    const Netlist netlist =
        readNetlist(session, lib, cell, view, report, [&progress](qint64 done) { progress.update(done); });
    bytes = options.format == "json" ? toJson(netlist) : toSpice(netlist, report);
  }
  if (fileName.isEmpty())
    session.writeOutput(bytes);
  else
    writeFile(fileName, bytes);
  for (const QString &line : report.lines())
    tellUser(line);
  return report.problemCount() > 0 ? 1 : session.exitCode();
}

} // namespace

void addNetlistCommand(CLI::App &app, CommandContext &context) {
  auto options = std::make_shared<NetlistOptions>();
  CLI::App *command = app.add_subcommand("netlist", "Print the netlist of a cell and of all schematics under it");
  command->add_option("LIB", options->lib, "Library")->required();
  command->add_option("CELL", options->cell, "Cell")->required();
  command->add_option("VIEW", options->view, "View of the cell; under it, it is always \"schematic\"")
      ->capture_default_str();
  command->add_option("--format", options->format, "spice, or json (names as in the database, all parameters)")
      ->check(CLI::IsMember({"spice", "json"}))
      ->capture_default_str();
  command->add_option("-o,--output", options->output, "File to write; default: standard output")->type_name("FILE");
  command->footer(
      "SPICE: one .subckt for each cell, masters before their users, the top cell last. Its ports are the terminals\n"
      "of the cell's symbol; without a symbol, the ports of the schematic. Other nets that lead outside are .global.\n"
      "A device whose cell has a schematic is a call with the letter X. Any other device is the line that the\n"
      "symbol's property xschem.format prescribes; without it, the properties spiceprefix (default X) and model\n"
      "(default: the cell) and all other properties as name=value, those of the symbol as defaults. Its nodes are in\n"
      "the order in which the symbol's terminals are drawn. A letter that the name begins with is not repeated. Bits\n"
      "are written name[3]; characters that SPICE does not take become \"_\", and names that differ in case only get "
      "a\n"
      "number; both are told on standard error.\n"
      "The exit code is 1 when anything is missing or does not fit; everything else is printed all the same.");
  command->callback(
      [options, &context] { context.command = [options, &context] { return writeNetlist(context, *options); }; });
}
