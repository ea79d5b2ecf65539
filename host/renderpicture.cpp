#include "renderpicture.h"

#include <algorithm>
#include <memory>
#include <vector>

#include <QFileInfo>
#include <QPainter>

#include "hosterror.h"
#include "picturefile.h"
#include "renderlayout.h"
#include "renderpage.h"
#include "renderrastercanvas.h"
#include "rendervectorcanvas.h"

namespace {

constexpr double kShapeContrast = 3;
constexpr double kTextContrast = 4.5;

// One drawing, from the model to a painter and a canvas that paint on the same page.
class Picture {
public:
  Picture(const LayoutModel &model, const LayerMap &layers, const QString &title, const PictureOptions &options)
      : model_(model), options_(options), theme_(options.isDark ? RenderTheme::dark() : RenderTheme::light()),
        top_(model.topCell().value_or(0)), index_(model, top_), extent_(index_.extent(top_)) {
    chooseLayers(layers);
    PageContent content;
    content.title = title;
    content.metresPerDbu = model.metresPerDbu();
    content.subtitle = subtitle();
    if (options.hasLegend)
      content.legend = legend();
    page_ = std::make_unique<RenderPage>(QSizeF(options.size), theme_, std::move(content));
  }

  const QColor &background() const { return theme_.background; }

  void paint(QPainter *painter, RenderCanvas *canvas) const {
    painter->setRenderHint(QPainter::TextAntialiasing);
    if (extent_.isEmpty()) {
      page_->paint(painter, canvas, 0, QString());
      page_->paintMessage(painter, QStringLiteral("This cell is empty."));
      return;
    }
    const View view(options_.window.value_or(extent_), page_->drawingArea());
    LayoutPainter layout(model_, index_, top_, options_.levels, view, page_->panel());
    for (const LayerIndex layer : order_) {
      canvas->beginLayer(styles_[layer]);
      layout.paintLayer(layer, canvas);
      canvas->endLayer();
    }
    LayerStyle outline;
    outline.colour = theme_.rule;
    outline.pattern = FillPattern::Outline;
    canvas->beginLayer(outline);
    layout.paintOutlines(canvas);
    canvas->endLayer();
    const QString remarks = paintTexts(painter, &layout);
    page_->paint(painter, canvas, view.scale, remarks);
  }

private:
  // Styles of all layers, and those that are seen in the order in which they are painted.
  void chooseLayers(const LayerMap &layers) {
    counts_ = index_.shownShapes(options_.levels);
    for (LayerIndex layer = 0; layer < model_.layers().size(); ++layer) {
      const LayerPurpose &purpose = model_.layer(layer);
      styles_.push_back(layers.style(purpose.layer, purpose.datatype));
      if (!styles_.back().isFixed)
        styles_.back().colour = readableOn(styles_.back().colour, theme_.background, kShapeContrast);
      if (counts_[layer] > 0)
        order_.push_back(layer);
    }
    std::sort(order_.begin(), order_.end(), [&](LayerIndex first, LayerIndex second) {
      const LayerPurpose &a = model_.layer(first), &b = model_.layer(second);
      const int rankA = layers.paintingRank(a.layer, a.datatype), rankB = layers.paintingRank(b.layer, b.datatype);
      if (rankA != rankB)
        return rankA < rankB; // layers without a rank have -1 and go below
      return isBefore(first, second);
    });
  }

  bool isBefore(LayerIndex first, LayerIndex second) const {
    const LayerPurpose &a = model_.layer(first), &b = model_.layer(second);
    return a.layer != b.layer ? a.layer < b.layer : a.datatype < b.datatype;
  }

  QString subtitle() const {
    if (extent_.isEmpty())
      return QStringLiteral("empty");
    double shapes = 0;
    for (const double count : counts_)
      shapes += count;
    const auto counted = [](double count, const char *noun) {
      const QString number = count < 1e9 ? QString::number(count, 'f', 0) : countText(count);
      return number + QLatin1Char(' ') + QLatin1String(noun) + QLatin1String(count == 1 ? "" : "s");
    };
    QString text = QStringLiteral("%1 × %2   ·   %3 on %4")
                       .arg(lengthText(extent_.width(), model_.metresPerDbu()),
                            lengthText(extent_.height(), model_.metresPerDbu()), counted(shapes, "shape"),
                            counted(static_cast<double>(order_.size()), "layer"));
    const int levels = index_.levels(top_);
    if (options_.levels < levels)
      text += QStringLiteral("   ·   %1 of %2 levels").arg(options_.levels).arg(levels);
    else if (levels > 1)
      text += QStringLiteral("   ·   %1 levels").arg(levels);
    return text;
  }

  std::vector<LegendEntry> legend() const {
    std::vector<LegendEntry> entries;
    // By number, so that a layer is easily found, whatever the painting order.
    std::vector<LayerIndex> byNumber = order_;
    std::sort(byNumber.begin(), byNumber.end(),
              [this](LayerIndex first, LayerIndex second) { return isBefore(first, second); });
    for (const LayerIndex layer : byNumber) {
      const LayerPurpose &purpose = model_.layer(layer);
      entries.push_back(
          {styles_[layer], QStringLiteral("%1/%2").arg(purpose.layer).arg(purpose.datatype), counts_[layer]});
    }
    return entries;
  }

  // Paints all texts and returns what is to be said about the drawing.
  QString paintTexts(QPainter *painter, LayoutPainter *layout) const {
    std::vector<RenderLabel> labels = layout->outlineLabels(theme_.dimText);
    double hidden = 0;
    if (options_.hasTexts) {
      std::vector<QColor> colours;
      for (const LayerStyle &style : styles_)
        colours.push_back(readableOn(style.colour, theme_.background, kTextContrast));
      const std::vector<RenderLabel> textLabels = layout->textLabels(colours);
      labels.insert(labels.end(), textLabels.begin(), textLabels.end());
      if (!options_.window) // else most are out of sight rather than hidden
        hidden = index_.shownTexts(options_.levels) - static_cast<double>(textLabels.size());
    }
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setStyleHint(QFont::SansSerif);
    painter->setFont(font);
    hidden += paintLabels(painter, std::move(labels), page_->panel(), theme_.background);
    QStringList remarks;
    if (hidden > 0)
      remarks += QStringLiteral("texts too small or without room: %1").arg(countText(hidden));
    if (layout->isSimplified())
      remarks += QStringLiteral("simplified: too many elements in one place");
    return remarks.join(QStringLiteral("   ·   "));
  }

  const LayoutModel &model_;
  const PictureOptions &options_;
  RenderTheme theme_;
  CellIndex top_;
  LayoutIndex index_;
  Extent extent_;
  std::vector<double> counts_;
  std::vector<LayerStyle> styles_;
  std::vector<LayerIndex> order_;
  std::unique_ptr<RenderPage> page_;
};

} // namespace

std::optional<PictureFormat> pictureFormatOf(const QString &fileName) {
  const QString ending = QFileInfo(fileName).suffix().toLower();
  if (ending == QLatin1String("png"))
    return PictureFormat::Png;
  if (ending == QLatin1String("svg"))
    return PictureFormat::Svg;
  if (ending == QLatin1String("pdf"))
    return PictureFormat::Pdf;
  return std::nullopt;
}

QByteArray drawPicture(const LayoutModel &model, const LayerMap &layers, const QString &title, PictureFormat format,
                       const PictureOptions &options) {
  if (!model.topCell())
    throw HostError(QStringLiteral("%1: there is no cell to draw").arg(title));
  const Picture picture(model, layers, title, options);
  return pictureFile(format, options.size, picture.background(), title, [&picture](const PictureSheet &sheet) {
    std::unique_ptr<RenderCanvas> canvas;
    if (sheet.image)
      canvas = std::make_unique<RasterCanvas>(sheet.image);
    else
      canvas = std::make_unique<VectorCanvas>(sheet.painter);
    picture.paint(sheet.painter, canvas.get());
  });
}
