#include "schematicpicture.h"

#include <algorithm>

#include <QPainter>
#include <QStringList>

#include "picturefile.h"
#include "renderpage.h"
#include "renderschematic.h"
#include "rendervectorcanvas.h"

namespace {

const QString kSeparator = QStringLiteral("   ·   ");

QString subtitleOf(const SchematicModel &model, SchematicScene::Kind kind) {
  const auto buses = static_cast<std::size_t>(
      std::count_if(model.wires.begin(), model.wires.end(), [](const SchematicWire &wire) { return wire.isBus; }));
  const struct {
    std::size_t count;
    const char *noun, *nouns;
  } parts[] = {
      {model.placements.size(), "placement", "placements"},
      {model.wires.size() - buses, "wire", "wires"},
      {buses, "bus", "buses"},
      {model.ports.size(), kind == SchematicScene::Kind::Symbol ? "pin" : "port",
       kind == SchematicScene::Kind::Symbol ? "pins" : "ports"},
      {model.labels.size(), "label", "labels"},
      {model.shapes.size(), "shape", "shapes"},
  };
  QStringList counted;
  for (const auto &part : parts)
    if (part.count > 0)
      counted += QStringLiteral("%1 %2").arg(part.count).arg(QLatin1String(part.count == 1 ? part.noun : part.nouns));
  return counted.isEmpty() ? QStringLiteral("empty") : counted.join(kSeparator);
}

// A small drawing is not blown up to letters that fill the page.
Extent shownExtent(const SchematicScene &scene, const QRectF &area) {
  const Extent &extent = scene.extent();
  const double kLinesInHeight = 20;
  const double height = kLinesInHeight * kLineHeightDbu * scene.unit(), width = height * area.width() / area.height();
  const double middleX = (extent.left + extent.right) / 2, middleY = (extent.bottom + extent.top) / 2;
  Extent shown = extent;
  if (extent.width() < width && extent.height() < height)
    shown = {middleX - width / 2, middleY - height / 2, middleX + width / 2, middleY + height / 2};
  return shown;
}

void paintDrawing(const PictureSheet &sheet, SchematicScene *scene, const RenderPage &page, const SchematicTheme &theme,
                  const SchematicPictureOptions &options) {
  VectorCanvas canvas(sheet.painter);
  sheet.painter->setRenderHint(QPainter::TextAntialiasing);
  if (scene->extent().isEmpty()) {
    page.paint(sheet.painter, &canvas, 0, QString());
    page.paintMessage(sheet.painter, scene->kind() == SchematicScene::Kind::Symbol
                                         ? QStringLiteral("This symbol is empty.")
                                         : QStringLiteral("This schematic is empty."));
    return;
  }
  const QRectF area = page.drawingArea();
  const View view(options.window ? *options.window : shownExtent(*scene, area), area);
  SchematicPainter painter(sheet.painter, scene, theme, view, page.panel(), sheet.image == nullptr);
  painter.paint();
  QStringList remarks;
  if (scene->missingSymbols() > 0)
    remarks += QStringLiteral("placements without a symbol: %1").arg(scene->missingSymbols());
  if (painter.hiddenTexts() > 0)
    remarks += QStringLiteral("texts too small or too many to be read: %1").arg(painter.hiddenTexts());
  if (painter.isSimplified())
    remarks += QStringLiteral("simplified: too many symbols");
  page.paint(sheet.painter, &canvas, 0, remarks.join(kSeparator));
}

} // namespace

QByteArray drawSchematicPicture(const SchematicModel &model, SchematicScene::Kind kind,
                                const QHash<QString, const SymbolModel *> &symbols, const QString &title,
                                PictureFormat format, const SchematicPictureOptions &options) {
  const SchematicTheme theme = options.isDark ? SchematicTheme::dark() : SchematicTheme::light();
  PageContent content;
  content.title = title;
  content.subtitle = subtitleOf(model, kind);
  const RenderPage page(QSizeF(options.size), options.isDark ? RenderTheme::dark() : RenderTheme::light(),
                        std::move(content));
  SchematicScene scene(model, kind, symbols, theme, options.hasTexts);
  return pictureFile(format, options.size, theme.background, title,
                     [&](const PictureSheet &sheet) { paintDrawing(sheet, &scene, page, theme, options); });
}
