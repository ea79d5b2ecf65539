#include "renderpage.h"

#include <algorithm>
#include <cmath>

#include <QFontMetricsF>
#include <QPainter>

#include "rendercanvas.h"
#include "renderlabels.h"

namespace {

constexpr int kSmallestFont = 9;
// The legend takes no more of the page's width than this.
constexpr double kWidestLegend = 0.42;

// The largest of 1, 2, 5 times a power of ten that is not above `limit`.
double roundLength(double limit) {
  const double power = std::pow(10.0, std::floor(std::log10(limit)));
  const double digits = limit / power;
  return power * (digits >= 5 ? 5 : digits >= 2 ? 2 : 1);
}

} // namespace

RenderTheme RenderTheme::dark() {
  return {QColor(0x10, 0x12, 0x16), QColor(0xe8, 0xea, 0xed), QColor(0x9a, 0xa0, 0xa8), QColor(0x5c, 0x64, 0x6e)};
}

RenderTheme RenderTheme::light() {
  return {QColor(Qt::white), QColor(0x1a, 0x1c, 0x20), QColor(0x5c, 0x62, 0x6a), QColor(0xb4, 0xba, 0xc2)};
}

QString lengthText(double dbu, double metresPerDbu) {
  if (metresPerDbu <= 0)
    return QString::number(dbu, 'g', 10) + QStringLiteral(" dbu");
  const double metres = dbu * metresPerDbu;
  const struct {
    double metres;
    const char *unit;
  } units[] = {{1, "m"}, {1e-3, "mm"}, {1e-6, "µm"}, {1e-9, "nm"}};
  for (const auto &unit : units)
    if (metres >= unit.metres * 0.9999999)
      return QString::number(metres / unit.metres, 'g', 6) + QLatin1Char(' ') + QString::fromUtf8(unit.unit);
  return QString::number(metres / 1e-9, 'g', 6) + QStringLiteral(" nm");
}

QString countText(double count) {
  if (count < 1e6)
    return QString::number(count, 'f', 0);
  const struct {
    double factor;
    const char *unit;
  } prefixes[] = {{1e12, " T"}, {1e9, " G"}, {1e6, " M"}};
  for (const auto &prefix : prefixes)
    if (count >= prefix.factor)
      return QString::number(count / prefix.factor, 'g', 3) + QLatin1String(prefix.unit);
  return QString();
}

RenderPage::RenderPage(const QSizeF &size, const RenderTheme &theme, PageContent content)
    : size_(size), theme_(theme), content_(std::move(content)),
      fontPixels_(std::clamp(static_cast<int>(std::min(size.width(), size.height()) / 80), kSmallestFont, 40)),
      margin_(fontPixels_) {
  const double top = margin_ + fontPixels_ * 3.4, bottom = size_.height() - margin_ - fontPixels_ * 2.6;
  legend_ = chooseLegend(bottom - top);
  const double right =
      size_.width() - margin_ - (legend_.columns > 0 ? legend_.columns * legend_.columnWidth() + margin_ : 0);
  panel_ = QRectF(QPointF(margin_, top), QPointF(std::max(right, margin_ + 1), std::max(bottom, top + 1)));
}

QRectF RenderPage::drawingArea() const {
  const double inset = std::min({fontPixels_ * 1.5, panel_.width() / 8, panel_.height() / 8});
  return panel_.adjusted(inset, inset, -inset, -inset);
}

QFont RenderPage::font(double pixels, bool isBold) const {
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setStyleHint(QFont::SansSerif);
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixels))));
  font.setBold(isBold);
  return font;
}

RenderPage::LegendLayout RenderPage::legendFor(int fontPixels, double height, double widest) const {
  LegendLayout layout;
  layout.fontPixels = fontPixels;
  const QFontMetricsF metrics(font(fontPixels));
  for (const LegendEntry &entry : content_.legend) {
    layout.nameWidth = std::max(layout.nameWidth, metrics.horizontalAdvance(shownText(entry.style.name)));
    layout.numbersWidth = std::max(layout.numbersWidth, metrics.horizontalAdvance(entry.numbers));
    layout.countWidth = std::max(layout.countWidth, metrics.horizontalAdvance(countText(entry.shapeCount)));
  }
  layout.nameWidth = std::min(layout.nameWidth, fontPixels * 15.0);
  const int entries = static_cast<int>(content_.legend.size());
  layout.rows = std::max(1, static_cast<int>((height - layout.rowHeight()) / layout.rowHeight()));
  const int wanted = (entries + layout.rows - 1) / layout.rows;
  layout.columns = std::min(wanted, static_cast<int>(widest / layout.columnWidth()));
  layout.shown = std::min(entries, layout.rows * layout.columns);
  return layout;
}

RenderPage::LegendLayout RenderPage::chooseLegend(double height) const {
  LegendLayout layout;
  for (int pixels = fontPixels_; pixels >= kSmallestFont; --pixels) {
    layout = legendFor(pixels, height, size_.width() * kWidestLegend);
    if (layout.shown == static_cast<int>(content_.legend.size()))
      break;
  }
  return layout;
}

void RenderPage::paintHeader(QPainter *painter) const {
  const double width = size_.width() - 2 * margin_;
  painter->setFont(font(fontPixels_ * 1.35, true));
  painter->setPen(theme_.text);
  const QRectF titleBox(margin_, margin_ * 0.8, width, fontPixels_ * 1.8);
  painter->drawText(titleBox, Qt::AlignLeft | Qt::AlignVCenter,
                    QFontMetricsF(painter->font()).elidedText(content_.title, Qt::ElideMiddle, width));
  painter->setFont(font(fontPixels_));
  painter->setPen(theme_.dimText);
  painter->drawText(titleBox.translated(0, fontPixels_ * 1.75), Qt::AlignLeft | Qt::AlignVCenter,
                    QFontMetricsF(painter->font()).elidedText(content_.subtitle, Qt::ElideRight, width));
}

void RenderPage::paintLegendEntry(QPainter *painter, RenderCanvas *canvas, const LegendEntry &entry,
                                  const QPointF &corner) const {
  const double height = legend_.rowHeight();
  QRectF cell(corner, QSizeF(legend_.swatchWidth(), height));
  canvas->beginLayer(entry.style);
  canvas->addBox(cell.adjusted(0, height * 0.12, 0, -height * 0.12));
  canvas->endLayer();
  const QFontMetricsF metrics(painter->font());
  cell = QRectF(cell.right() + legend_.gap(), corner.y(), legend_.nameWidth + 1, height);
  painter->setPen(theme_.text);
  painter->drawText(cell, Qt::AlignLeft | Qt::AlignVCenter,
                    metrics.elidedText(shownText(entry.style.name), Qt::ElideMiddle, cell.width()));
  cell = QRectF(cell.right() + legend_.gap(), corner.y(), legend_.numbersWidth + 1, height);
  painter->setPen(theme_.dimText);
  painter->drawText(cell, Qt::AlignLeft | Qt::AlignVCenter, entry.numbers);
  cell = QRectF(cell.right() + legend_.gap(), corner.y(), legend_.countWidth + 1, height);
  painter->drawText(cell, Qt::AlignRight | Qt::AlignVCenter, countText(entry.shapeCount));
}

void RenderPage::paintLegend(QPainter *painter, RenderCanvas *canvas) const {
  if (legend_.columns == 0)
    return;
  painter->setFont(font(legend_.fontPixels));
  for (int i = 0; i < legend_.shown; ++i) {
    const int column = i / legend_.rows, row = i % legend_.rows;
    const QPointF corner(panel_.right() + margin_ + column * legend_.columnWidth(),
                         panel_.top() + row * legend_.rowHeight());
    paintLegendEntry(painter, canvas, content_.legend[static_cast<std::size_t>(i)], corner);
  }
  const int missing = static_cast<int>(content_.legend.size()) - legend_.shown;
  if (missing > 0) {
    painter->setPen(theme_.dimText);
    const QRectF line(panel_.right() + margin_, panel_.top() + legend_.rows * legend_.rowHeight(),
                      legend_.columnWidth(), legend_.rowHeight());
    painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("and %1 more layers").arg(missing));
  }
}

double RenderPage::paintScaleBar(QPainter *painter, double pixelsPerDbu) const {
  const double metresPerDbu = content_.metresPerDbu;
  const double widestDbu = panel_.width() * 0.25 / pixelsPerDbu;
  // A round length in the unit that is shown.
  const double barDbu =
      metresPerDbu > 0 ? roundLength(widestDbu * metresPerDbu) / metresPerDbu : roundLength(widestDbu);
  const double length = barDbu * pixelsPerDbu;
  const QRectF bar(panel_.left(), panel_.bottom() + fontPixels_ * 1.5, length, fontPixels_ * 0.4);
  const int kParts = 4;
  for (int part = 0; part < kParts; part += 2)
    painter->fillRect(QRectF(bar.left() + length * part / kParts, bar.top(), length / kParts, bar.height()),
                      theme_.text);
  painter->setPen(QPen(theme_.text, 1));
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(bar);
  painter->setFont(font(fontPixels_));
  const QString text = lengthText(barDbu, metresPerDbu);
  const QPointF textStart(bar.right() + fontPixels_ * 0.7, bar.bottom() + fontPixels_ * 0.2);
  painter->drawText(textStart, text);
  return textStart.x() + QFontMetricsF(painter->font()).horizontalAdvance(text);
}

void RenderPage::paint(QPainter *painter, RenderCanvas *canvas, double pixelsPerDbu, const QString &remarks) const {
  painter->setPen(QPen(theme_.rule, 1));
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(panel_);
  paintHeader(painter);
  paintLegend(painter, canvas);
  const double barEnd = pixelsPerDbu > 0 ? paintScaleBar(painter, pixelsPerDbu) : panel_.left();
  painter->setFont(font(fontPixels_ * 0.85));
  painter->setPen(theme_.dimText);
  const double left = barEnd + fontPixels_ * 2;
  const QRectF line(left, panel_.bottom() + fontPixels_ * 0.8, size_.width() - margin_ - left, fontPixels_ * 2);
  if (line.width() > fontPixels_ * 8)
    painter->drawText(line, Qt::AlignRight | Qt::AlignVCenter,
                      QFontMetricsF(painter->font()).elidedText(remarks, Qt::ElideRight, line.width()));
}

void RenderPage::paintMessage(QPainter *painter, const QString &message) const {
  painter->setFont(font(fontPixels_ * 1.5));
  painter->setPen(theme_.dimText);
  painter->drawText(panel_, Qt::AlignCenter | Qt::TextWordWrap, message);
}
