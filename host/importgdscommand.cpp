#include "commands.h"
#include "commandvalues.h"
#include "gdsimporter.h"
#include "layermap.h"
#include "maptechnology.h"
#include "oaplugincore.h"
#include "pluginlayoutwriter.h"
#include "pluginsession.h"
#include "progressbar.h"
#include "targetlibrary.h"
#include "unitsprobe.h"
#include "usermessage.h"

#include <CLI/CLI.hpp>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <memory>
#include <set>
#include <string>

namespace {

const QString kView = QStringLiteral("layout");
// What the database gives a new layout: 1000 units a micrometre.
constexpr double kNewLibraryMetresPerDbu = 1e-9;

struct ImportOptions {
  std::string file;
  std::string lib;
  std::string path;
  std::string layers;
};

// The bytes of a file, mapped where possible.
class FileBytes {
public:
  explicit FileBytes(const QString &name) : file_(name) {
    if (QFileInfo(name).isDir())
      throw HostError(QStringLiteral("%1 is a directory; expected a GDSII file").arg(name));
    if (!file_.open(QIODevice::ReadOnly))
      throw HostError(QStringLiteral("%1: %2").arg(name, file_.errorString()));
    size_ = file_.size();
    bytes_ = size_ > 0 ? file_.map(0, size_) : nullptr;
    if (bytes_ == nullptr) {
      // Pipes and empty files cannot be mapped.
      contents_ = file_.readAll();
      bytes_ = reinterpret_cast<const unsigned char *>(contents_.constData());
      size_ = contents_.size();
    }
  }
  const unsigned char *bytes() const { return bytes_; }
  qint64 size() const { return size_; }

private:
  QFile file_;
  QByteArray contents_;
  const unsigned char *bytes_ = nullptr;
  qint64 size_ = 0;
};

// Notes which layers of the file the map does not name, on the way to the plug-in.
class MappedLayoutWriter : public PluginLayoutWriter {
public:
  MappedLayoutWriter(PluginSession &session, const QString &lib, const LayerMap &map)
      : PluginLayoutWriter(session, lib, kView), map_(map) {}

  bool beginCell(const QString &cell) override {
    if (!PluginLayoutWriter::beginCell(cell))
      return false;
    writtenCells_.append(cell);
    return true;
  }
  void writeBox(const QRect &box, LayerPurpose layer) override {
    note(layer);
    PluginLayoutWriter::writeBox(box, layer);
  }
  void writePolygon(const QPolygon &points, LayerPurpose layer) override {
    note(layer);
    PluginLayoutWriter::writePolygon(points, layer);
  }
  void writePath(const QPolygon &points, int width, int caps, LayerPurpose layer) override {
    note(layer);
    PluginLayoutWriter::writePath(points, width, caps, layer);
  }
  void writeText(const ModelText &text, LayerPurpose layer) override {
    note(layer);
    PluginLayoutWriter::writeText(text, layer);
  }
  const QStringList &writtenCells() const { return writtenCells_; }
  QStringList unmappedLayers() const {
    QStringList layers;
    for (const auto &[layer, datatype] : unmapped_)
      layers.append(QStringLiteral("%1/%2").arg(layer).arg(datatype));
    return layers;
  }

private:
  void note(LayerPurpose layer) {
    if (map_.count() > 0 && !map_.contains(layer.layer, layer.datatype))
      unmapped_.emplace(layer.layer, layer.datatype);
  }

  const LayerMap &map_;
  std::set<std::pair<int, int>> unmapped_;
  QStringList writtenCells_;
};

class GdsImport {
public:
  GdsImport(PluginSession &session, const ImportOptions &options)
      : session_(session), file_(QString::fromLocal8Bit(options.file.c_str())), lib_(nameFromCommandLine(options.lib)),
        path_(options.path.empty() ? QString() : libraryPathFromCommandLine(options.path)) {
    if (!options.layers.empty())
      map_ = LayerMap::fromFile(QString::fromLocal8Bit(options.layers.c_str()));
  }

  int run() {
    const FileBytes bytes(file_);
    const GdsParser parser(bytes.bytes(), bytes.size(), file_);
    session_.requireLibraryDefinitions();
    TargetLibrary library(session_, lib_, path_);
    const bool isKnown = library.isKnown();
    const double metresPerDbu = isKnown ? libraryMetresPerDbu() : kNewLibraryMetresPerDbu;
    const CoordinateScale scale(parser.metresPerDbu(), metresPerDbu);
    ImportReport report;
    // Everything that makes the file unusable is found here, before the library is made.
    const GdsIndex index(parser, scale, report);
    const MapTechnology technology(map_);
    const QStringList present = isKnown ? session_.requireCellNames(lib_) : QStringList();
    if (!isKnown)
      library.create();
    if (map_.count() > 0)
      writeMapTechnology(session_, lib_, technology);
    MappedLayoutWriter writer(session_, lib_, map_);
    GdsImporter importer(parser, index, scale, metresPerDbu, writer, report);
    try {
      ProgressBar progress(QStringLiteral("import %1").arg(QFileInfo(file_).fileName()), bytes.size());
      importer.run([&progress](qint64 done) { progress.update(done); });
    } catch (...) {
      tellReplaced(present, writer.writtenCells());
      throw;
    }
    tellReplaced(present, writer.writtenCells());
    tell(report, writer);
    summarise(parser, metresPerDbu, scale, importer.counts());
    return report.problemCount() > 0 ? 1 : session_.exitCode();
  }

private:
  double libraryMetresPerDbu() {
    const double found = probeMetresPerDbu(session_, lib_, kView);
    return found > 0 ? found : kNewLibraryMetresPerDbu;
  }

  void tellReplaced(const QStringList &present, const QStringList &written) const {
    const QSet<QString> cells(present.begin(), present.end());
    QStringList replaced;
    for (const QString &name : written) {
      if (cells.contains(name))
        replaced.append(name);
    }
    if (!replaced.isEmpty()) {
      tellUser(
          QStringLiteral("library %1: the layouts of %2 that it had already are replaced (first: %3)")
              .arg(lib_, counted(static_cast<quint64>(replaced.size()), QStringLiteral("cell")), replaced.first()));
    }
  }

  void tell(const ImportReport &report, const MappedLayoutWriter &writer) const {
    for (const QString &line : report.lines())
      tellUser(QStringLiteral("%1: %2").arg(file_, line));
    const QStringList unmapped = writer.unmappedLayers();
    if (!unmapped.isEmpty())
      tellUser(QStringLiteral("%1: layers that the layer map does not name: %2")
                   .arg(file_, unmapped.join(QLatin1Char(' '))));
  }

  void summarise(const GdsParser &parser, double metresPerDbu, const CoordinateScale &scale,
                 const WrittenCounts &counts) {
    const auto unit = [](double metres) { return QString::number(metres * 1e6, 'g', 9) + QStringLiteral(" um"); };
    const QString lines =
        QStringLiteral("library %1: %2, %3, %4, %5, %6, %7, %8\n"
                       "database unit: %9 in the file, %10 in the library; coordinates %11\n")
            .arg(lib_, counted(counts.cells, QStringLiteral("cell")),
                 counted(counts.boxes, QStringLiteral("box"), QStringLiteral("boxes")),
                 counted(counts.polygons, QStringLiteral("polygon")), counted(counts.paths, QStringLiteral("path")),
                 counted(counts.texts, QStringLiteral("text")), counted(counts.references, QStringLiteral("reference")),
                 counted(counts.arrays, QStringLiteral("array")))
            .arg(unit(parser.metresPerDbu()), unit(metresPerDbu),
                 scale.isIdentity() ? QStringLiteral("unchanged")
                                    : QStringLiteral("multiplied by ") + scale.toString());
    session_.writeOutput(lines.toUtf8());
  }

  PluginSession &session_;
  const QString file_;
  const QString lib_;
  const QString path_;
  LayerMap map_;
};

int importGds(const CommandContext &context, const ImportOptions &options) {
  PluginSession session(context);
  return GdsImport(session, options).run();
}

} // namespace

void addImportGdsCommand(CLI::App &app, CommandContext &context) {
  auto options = std::make_shared<ImportOptions>();
  CLI::App *command =
      app.add_subcommand("import-gds", "Write every structure of a GDSII file as a layout of a library");
  command->add_option("FILE", options->file, "GDSII file")->required();
  command->add_option("--lib", options->lib, "Library to write to")->required()->type_name("NAME");
  command->add_option("--path", options->path, "Directory of the library; it is made when there is none")
      ->type_name("DIR");
  command
      ->add_option("--layers", options->layers,
                   "Layer map: its layers and purposes go into the library's technology; layers of the "
                   "file that it does not name are told")
      ->type_name("MAP");
  command->callback(
      [options, &context] { context.command = [options, &context] { return importGds(context, *options); }; });
}
