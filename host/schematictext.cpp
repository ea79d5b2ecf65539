#include "schematictext.h"

#include "renderlabels.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kMeasuredPixels = 64;
// Below this, letters of whole pixels would be off by too much.
constexpr int kSmallestFontPixels = 9;

QFont fontOfPixels(int pixels) {
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setStyleHint(QFont::SansSerif);
  font.setPixelSize(pixels);
  // So that a text is as wide as the sum of its letters, at any size.
  font.setKerning(false);
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

} // namespace

TextMeasure::TextMeasure() : measured_(fontOfPixels(kMeasuredPixels)) {
  const QFontMetricsF metrics(measured_);
  lineHeight_ = metrics.ascent() + metrics.descent();
  ascent_ = metrics.ascent() / lineHeight_;
}

double TextMeasure::advance(QChar character) {
  const auto known = advances_.constFind(character);
  if (known != advances_.constEnd())
    return *known;
  return *advances_.insert(character, QFontMetricsF(measured_).horizontalAdvance(character));
}

QSizeF TextMeasure::size(const QString &text) {
  double widest = 0, width = 0;
  int lines = 1;
  for (const QChar character : text) {
    if (character == QLatin1Char('\n')) {
      ++lines;
      width = 0;
    } else {
      width += advance(character);
      widest = std::max(widest, width);
    }
  }
  return {widest * lineHeightDbu_ / lineHeight_, lines * lineHeightDbu_};
}

Extent TextMeasure::extent(const SchematicText &text) {
  RenderLabel label;
  label.anchor = QPointF(text.anchor.x(), -text.anchor.y()); // labels have y downwards
  label.horizontal = text.horizontal;
  label.vertical = text.vertical;
  label.orientation = text.orientation;
  const QRectF box = labelBox(label, size(text.text));
  return {box.left(), -box.bottom(), box.right(), -box.top()};
}

QFont TextMeasure::font(double pixels) const {
  return fontOfPixels(std::max(1, static_cast<int>(std::lround(pixels * kMeasuredPixels / lineHeight_))));
}

SchematicTextPainter::SchematicTextPainter(QPainter *painter, TextMeasure *measure, const View &view,
                                           const QRectF &area, double smallestPixels, int most)
    : painter_(painter), measure_(measure), view_(view), area_(area), linePixels_(measure->lineHeight() * view.scale),
      smallestPixels_(smallestPixels), font_(measure->font(linePixels_)), fontScale_(1), textsLeft_(most) {
  if (font_.pixelSize() < kSmallestFontPixels) {
    font_ = measure->font(kSmallestFontPixels * 2);
    const QFontMetricsF metrics(font_);
    fontScale_ = linePixels_ / (metrics.ascent() + metrics.descent());
  }
}

void SchematicTextPainter::paint(const SchematicText &text) {
  const QRectF box = view_.map(measure_->extent(text));
  if (text.text.isEmpty() || !area_.intersects(box))
    return;
  if (linePixels_ < smallestPixels_ || textsLeft_ == 0) {
    ++hiddenTexts_;
    return;
  }
  --textsLeft_;
  const bool readsUpwards = text.orientation.quarterTurns() % 2 == 1;
  painter_->save();
  painter_->translate(readsUpwards ? box.bottomLeft() : box.topLeft());
  if (readsUpwards)
    painter_->rotate(-90);
  painter_->scale(fontScale_, fontScale_);
  painter_->setFont(font_);
  painter_->setPen(text.colour);
  const double line = linePixels_ / fontScale_;
  double baseLine = measure_->ascent() * line;
  for (const QString &words : text.text.split(QLatin1Char('\n'))) {
    if (!words.isEmpty())
      painter_->drawText(QPointF(0, baseLine), words);
    baseLine += line;
  }
  painter_->restore();
}

QString shownLines(const QString &text) {
  const int kMostCharacters = 160, kMostLines = 60;
  QStringList lines = text.split(QLatin1Char('\n'));
  if (lines.size() > kMostLines) {
    lines = lines.mid(0, kMostLines);
    lines += QString(QChar(0x2026));
  }
  for (QString &line : lines) {
    if (line.size() > kMostCharacters)
      line = line.left(kMostCharacters) + QChar(0x2026);
    for (QChar &character : line)
      if (!character.isPrint() && !character.isSurrogate())
        character = QLatin1Char(' ');
  }
  return lines.join(QLatin1Char('\n'));
}
