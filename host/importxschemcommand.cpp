#include "commands.h"
#include "commandvalues.h"
#include "hosterror.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "progressbar.h"
#include "schematicwriter.h"
#include "targetlibrary.h"
#include "usermessage.h"
#include "xschemimporter.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <vector>

namespace {

const QString kSymbolView = QStringLiteral("symbol");
const QString kSchematicView = QStringLiteral("schematic");

constexpr char kHelp[] =
    R"(FILE.sym becomes the view "symbol" and FILE.sch the view "schematic" of the cell
FILE; of a directory, all such files below it do. Symbols that a schematic
places are imported too, when found: in the folder of the schematic, in those
above it, then in those that --symbols names; first by the whole reference
(lib/nand2.sym), then by its last parts (nand2.sym).

Symbols of xschem's own library devices/ need not be there: ipin, opin, iopin
are ports; lab_pin, lab_wire name a net; vdd, vcc, vss, gnd make it global;
noconn, lab_show are left out; title, architecture, code, ... become properties
of the schematic; parax_cap, capa, res are made as cells of the library.

Names: A[3:0] becomes A<3:0>; a character beyond Latin-1 becomes its code, _u03A9.
Attributes of a placement, and the template of a symbol, become properties; other
attributes of a symbol properties "xschem.type", "xschem.format" and so on.
Layers become colours, texts get one size.

What could not be taken over as it stands is told with file and line. The exit
code is 1 when something was left out, and everything else is written then.)";

struct ImportOptions {
  std::vector<std::string> inputs;
  std::string lib;
  std::string path;
  std::vector<std::string> symbols;
  double scale = 4;
  bool isRecursive = false;
  bool replace = false;
};

struct Counts {
  quint64 symbols = 0, schematics = 0, placements = 0, wires = 0, nets = 0, ports = 0;
};

class XschemImport {
public:
  XschemImport(PluginSession &session, const ImportOptions &options)
      : session_(session), lib_(nameFromCommandLine(options.lib)),
        path_(options.path.empty() ? QString() : libraryPathFromCommandLine(options.path)),
        isReplacing_(options.replace) {
    request_.library = lib_;
    for (const std::string &input : options.inputs)
      request_.inputs.append(QString::fromLocal8Bit(input.c_str()));
    for (const std::string &directory : options.symbols)
      request_.symbolDirectories.append(QString::fromLocal8Bit(directory.c_str()));
    request_.scale = options.scale;
    request_.isRecursive = options.isRecursive;
  }

  int run() {
    session_.requireLibraryDefinitions();
    XschemImporter importer(request_, report_);
    {
      ProgressBar progress(QStringLiteral("import-xschem"), 0);
      importer.run([&progress](qint64 done, qint64) { progress.update(done); });
    }
    TargetLibrary library(session_, lib_, path_);
    chooseCells(importer, library.isKnown());
    if (symbols_.empty() && schematics_.empty()) {
      tellReport();
      throw HostError(QStringLiteral("there is nothing to write into library %1").arg(lib_));
    }
    if (!library.isKnown())
      library.create();
    write(importer);
    tellReport();
    summarise();
    return report_.problemCount() > 0 ? 1 : session_.exitCode();
  }

private:
  bool isPresent(const QString &cell, const QString &view) {
    return session_.requireViewNames(lib_, cell).contains(view);
  }

  bool canBeCell(const QString &cell, const QString &source) {
    if (!cell.isEmpty() && QString::fromLatin1(cell.toLatin1()) == cell)
      return true;
    report_.problem(QStringLiteral("a file's name is no name of a cell; only Latin-1 is possible"), source);
    return false;
  }

  // What is to be written. Throws HostError when the library has any of it already and it is not to be replaced.
  void chooseCells(const XschemImporter &importer, bool isKnown) {
    QStringList cells = isKnown ? session_.requireCellNames(lib_) : QStringList();
    const QSet<QString> present(cells.begin(), cells.end());
    const auto requireFree = [&](const QString &cell, const QString &view) {
      if (!isReplacing_ && present.contains(cell) && isPresent(cell, view))
        throw HostError(
            QStringLiteral("%1 exists already; --replace writes over it").arg(cellViewName(lib_, cell, view)));
    };
    for (const XschemSymbol *symbol : importer.symbols()) {
      if (!canBeCell(symbol->cell, symbol->source))
        continue;
      if (symbol->isNamed) {
        requireFree(symbol->cell, kSymbolView);
      } else if (!isReplacing_ && present.contains(symbol->cell) && isPresent(symbol->cell, kSymbolView)) {
        // It came with an earlier schematic.
        report_.notice(QStringLiteral("a placed symbol is in the library already and stays as it is there"),
                       symbol->cell);
        continue;
      }
      symbols_.push_back(symbol);
    }
    for (const XschemCellSchematic &schematic : importer.schematics()) {
      if (!canBeCell(schematic.cell, schematic.source))
        continue;
      requireFree(schematic.cell, kSchematicView);
      schematics_.push_back(&schematic);
    }
  }

  void write(const XschemImporter &importer) {
    ProgressBar progress(QStringLiteral("write %1").arg(lib_),
                         static_cast<qint64>(symbols_.size() + schematics_.size()));
    qint64 done = 0;
    for (const XschemSymbol *symbol : symbols_) {
      counts_.symbols += writeSymbol(session_, lib_, symbol->cell, kSymbolView, symbol->model, report_) ? 1 : 0;
      progress.update(++done);
    }
    const QHash<QString, const SymbolModel *> table = importer.symbolTable();
    for (const XschemCellSchematic *schematic : schematics_) {
      const SchematicModel &model = schematic->model;
      if (writeSchematic(session_, lib_, schematic->cell, kSchematicView, model, table, report_)) {
        counts_.schematics += 1;
        counts_.placements += model.placements.size();
        counts_.wires += model.wires.size();
        counts_.ports += model.ports.size();
        counts_.nets += findConnectivity(model, table).nets.size();
      }
      progress.update(++done);
    }
  }

  void tellReport() {
    for (const QString &line : report_.lines())
      tellUser(line);
  }

  void summarise() {
    const QStringList parts = {counted(counts_.symbols, QStringLiteral("symbol")),
                               counted(counts_.schematics, QStringLiteral("schematic")),
                               counted(counts_.placements, QStringLiteral("placement")),
                               counted(counts_.ports, QStringLiteral("port")),
                               counted(counts_.wires, QStringLiteral("wire")),
                               counted(counts_.nets, QStringLiteral("net"))};
    session_.writeOutput(QStringLiteral("library %1: %2\n").arg(lib_, parts.join(QStringLiteral(", "))).toUtf8());
  }

  PluginSession &session_;
  const QString lib_;
  const QString path_;
  const bool isReplacing_;
  XschemImportOptions request_;
  ImportReport report_;
  std::vector<const XschemSymbol *> symbols_;
  std::vector<const XschemCellSchematic *> schematics_;
  Counts counts_;
};

int importXschem(const CommandContext &context, const ImportOptions &options) {
  PluginSession session(context);
  return XschemImport(session, options).run();
}

} // namespace

void addImportXschemCommand(CLI::App &app, CommandContext &context) {
  auto options = std::make_shared<ImportOptions>();
  CLI::App *command = app.add_subcommand(
      "import-xschem", "Write schematics and symbols of xschem (file versions 1.0 to 1.2) into a library");
  command->footer(kHelp);
  command->add_option("FILE", options->inputs, "Files .sch and .sym, and directories with such files below them")
      ->required();
  command->add_option("--lib", options->lib, "Library to write to")->required()->type_name("NAME");
  command->add_option("--path", options->path, "Directory of the library; it is made when there is none")
      ->type_name("DIR");
  command->add_option("--symbols", options->symbols, "Directories where else to search for placed symbols")
      ->type_name("DIR")
      ->check(CLI::Validator(CLI::ExistingDirectory).description(""));
  command->add_option("--scale", options->scale, "Database units for one unit of xschem; default: 4")
      ->type_name("N")
      ->check(CLI::Range(0.001, 1e6).description(""));
  command->add_flag("--recursive", options->isRecursive,
                    "Import the schematics that lie beside placed symbols as well");
  command->add_flag("--replace", options->replace, "Write over views that exist");
  command->callback(
      [options, &context] { context.command = [options, &context] { return importXschem(context, *options); }; });
}
