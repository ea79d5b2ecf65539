#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <QSaveFile>
#include <QStringList>

#include "cellparameters.h"
#include "commands.h"
#include "commandvalues.h"
#include "hosterror.h"
#include "layermap.h"
#include "layoutreceiver.h"
#include "pluginsession.h"
#include "renderpicture.h"
#include "schematicpicture.h"
#include "schematicreceiver.h"
#include "usermessage.h"
#include "viewchoice.h"

namespace {

struct RenderCommandOptions {
  std::string lib;
  std::string cell;
  std::string view; // empty: what the cell has
  std::string output;
  std::string size = "1600x1200";
  std::string layers;
  std::string background; // empty: dark for layouts, light for schematics
  std::string window;
  std::vector<std::string> params;
  int levels = -1;
  bool noLegend = false;
  bool noTexts = false;
};

constexpr int kSmallestSide = 64;
constexpr int kLargestSide = 20000;
constexpr qint64 kMostPixels = 200'000'000;

bool parseSize(const std::string &text, QSize *size) {
  const QStringList sides = QString::fromStdString(text).toLower().split(QLatin1Char('x'));
  if (sides.size() != 2)
    return false;
  bool isWidth = false, isHeight = false;
  *size = QSize(sides[0].toInt(&isWidth), sides[1].toInt(&isHeight));
  return isWidth && isHeight;
}

// "" when `text` is a size that can be drawn, else what is wrong, for CLI11.
std::string sizeFault(const std::string &text) {
  QSize size;
  if (!parseSize(text, &size))
    return "\"" + text + "\" is no size, expected WIDTHxHEIGHT in pixels";
  if (std::min(size.width(), size.height()) < kSmallestSide || std::max(size.width(), size.height()) > kLargestSide ||
      static_cast<qint64>(size.width()) * size.height() > kMostPixels)
    return text + " is out of range: each side has 64 to 20000 pixels, the picture at most 200 million";
  return {};
}

std::string fileFault(const std::string &fileName) {
  if (pictureFormatOf(QString::fromLocal8Bit(fileName.c_str())))
    return {};
  return "\"" + fileName + "\" has no known ending, expected .png, .svg or .pdf";
}

// Four numbers, left, bottom, right, top, in user units.
bool parseWindow(const std::string &text, Extent *window) {
  const QStringList words = QString::fromStdString(text).split(QLatin1Char(','));
  if (words.size() != 4)
    return false;
  double values[4];
  for (int i = 0; i < 4; ++i) {
    bool isNumber = false;
    values[i] = words[i].toDouble(&isNumber);
    if (!isNumber || !std::isfinite(values[i]))
      return false;
  }
  window->left = values[0];
  window->bottom = values[1];
  window->right = values[2];
  window->top = values[3];
  return window->width() > 0 && window->height() > 0;
}

std::string windowFault(const std::string &text) {
  Extent window;
  return parseWindow(text, &window) ? std::string() : "\"" + text + "\" is no window, expected LEFT,BOTTOM,RIGHT,TOP";
}

PictureOptions layoutOptions(const RenderCommandOptions &options, const LayoutModel &model) {
  PictureOptions picture;
  parseSize(options.size, &picture.size);
  if (options.levels >= 0)
    picture.levels = options.levels;
  picture.isDark = options.background != "light";
  picture.hasLegend = !options.noLegend;
  picture.hasTexts = !options.noTexts;
  Extent window;
  if (parseWindow(options.window, &window)) {
    if (model.userUnitsPerDbu() <= 0) {
      throw HostError(QStringLiteral("--window is in user units, and nothing tells those of %1: its layouts cannot be "
                                     "drawn with their default parameters")
                          .arg(nameFromCommandLine(options.lib)));
    }
    for (double *side : {&window.left, &window.bottom, &window.right, &window.top})
      *side /= model.userUnitsPerDbu();
    picture.window = window;
  }
  return picture;
}

SchematicPictureOptions schematicOptions(const RenderCommandOptions &options) {
  SchematicPictureOptions picture;
  parseSize(options.size, &picture.size);
  picture.isDark = options.background == "dark";
  picture.hasTexts = !options.noTexts;
  Extent window;
  if (parseWindow(options.window, &window))
    picture.window = window;
  return picture;
}

void writePicture(const QString &fileName, const QByteArray &bytes) {
  // Written beside the target and renamed over it, so that a picture is never half there.
  QSaveFile file(fileName);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
    throw HostError(QStringLiteral("picture %1 cannot be written: %2").arg(fileName, file.errorString()));
}

QString titleOf(const QString &lib, const QString &cell, const QString &view) {
  return lib + QStringLiteral(" / ") + cell + QStringLiteral(" / ") + view;
}

QByteArray layoutPicture(PluginSession &session, const RenderCommandOptions &options, const LayerMap &layers,
                         const QString &lib, const QString &cell, const QString &view, PictureFormat format) {
  const ChosenParameters parameters = parametersFromCommandLine(options.params);
  const LayoutModel model =
      parameters.isEmpty() ? readLayout(session, lib, cell, view) : readVariant(session, lib, cell, view, parameters);
  QString title = titleOf(lib, cell, view);
  for (int i = 0; i < parameters.names.size(); ++i)
    title += QStringLiteral(" %1=%2").arg(parameters.names[i], parameters.values[i]);
  return drawPicture(model, layers, title, format, layoutOptions(options, model));
}

QByteArray schematicPicture(PluginSession &session, const RenderCommandOptions &options, const QString &lib,
                            const QString &cell, const QString &view, SchematicScene::Kind kind, PictureFormat format) {
  if (!options.layers.empty() || options.levels >= 0 || !options.params.empty())
    throw HostError(QStringLiteral("%1 is no layout: --layers, --levels and --param do not apply to it")
                        .arg(cellViewName(lib, cell, view)));
  const SchematicModel model = readSchematic(session, lib, cell, view);
  SymbolCache symbols(session);
  symbols.load(model);
  return drawSchematicPicture(model, kind, symbols.symbols(), titleOf(lib, cell, view), format,
                              schematicOptions(options));
}

int renderView(const CommandContext &context, const RenderCommandOptions &options) {
  const QString lib = nameFromCommandLine(options.lib);
  const QString cell = nameFromCommandLine(options.cell);
  const QString output = QString::fromLocal8Bit(options.output.c_str());
  const PictureFormat format = *pictureFormatOf(output);
  requireOrdinaryOutput(output);
  // Before the design, which may take long to read.
  LayerMap layers;
  if (!options.layers.empty())
    layers = LayerMap::fromFile(QString::fromLocal8Bit(options.layers.c_str()));
  PluginSession session(context);
  const QString view = options.view.empty() ? defaultView(session, lib, cell) : nameFromCommandLine(options.view);
  const QString type = session.requireView(lib, cell, view);
  if (isSchematicType(type)) {
    const bool isSymbol = type == QLatin1String("schematicSymbol");
    const auto kind = isSymbol ? SchematicScene::Kind::Symbol : SchematicScene::Kind::Schematic;
    writePicture(output, schematicPicture(session, options, lib, cell, view, kind, format));
  } else {
    writePicture(output, layoutPicture(session, options, layers, lib, cell, view, format));
  }
  return session.exitCode();
}

} // namespace

void addRenderCommand(CLI::App &app, CommandContext &context) {
  auto options = std::make_shared<RenderCommandOptions>();
  CLI::App *command = app.add_subcommand("render", "Draw a layout, schematic or symbol as a picture");
  command->add_option("LIB", options->lib, "Library")->required();
  command->add_option("CELL", options->cell, "Cell")->required();
  command->add_option("VIEW", options->view, "View; default: layout, else schematic, else symbol");
  command
      ->add_option("-o,--output", options->output,
                   "Picture to write; its ending chooses the format: .png, .svg or .pdf")
      ->required()
      ->check(CLI::Validator(fileFault, "FILE"));
  command->add_option("--size", options->size, "Size in pixels")
      ->check(CLI::Validator(sizeFault, "WxH"))
      ->capture_default_str();
  command->add_option("--layers", options->layers, "Table of layer names and colours, for layouts")->type_name("MAP");
  command
      ->add_option("--levels", options->levels,
                   "Levels of a layout's cells to show, 1: the cell alone; those below are outlined")
      ->check(CLI::Range(0, 1'000'000));
  command
      ->add_option("--background", options->background,
                   "dark or light; default: dark for layouts, light for schematics and symbols")
      ->check(CLI::IsMember({"dark", "light"}));
  command
      ->add_option("--window", options->window,
                   "Part to show: left,bottom,right,top in user units of a layout, else in database units; "
                   "default: everything")
      ->check(CLI::Validator(windowFault, "L,B,R,T"));
  command
      ->add_option("--param", options->params,
                   "NAME=VALUE of a parametric layout, the others at their defaults; may be repeated")
      ->check(CLI::Validator(parameterFault, "NAME=VALUE"))
      ->allow_extra_args(false);
  command->add_flag("--no-legend", options->noLegend, "Leave the legend away");
  command->add_flag("--no-texts", options->noTexts, "Leave the texts away");
  command->callback([options, &context] {
    context.needsDrawing = true;
    context.command = [options, &context] { return renderView(context, *options); };
  });
}
