#include "renderlabels.h"

#include <algorithm>
#include <cmath>

#include <QFontMetricsF>
#include <QPainter>

void setPresentation(RenderLabel *label, int presentation) {
  const int horizontal = presentation & 3, vertical = presentation >> 2;
  const bool isValid = presentation >= 0 && horizontal <= 2 && vertical <= 2;
  label->horizontal = isValid ? horizontal : 0;
  label->vertical = isValid ? vertical : 0;
}

QRectF labelBox(const RenderLabel &label, const QSizeF &size) {
  // In the text's own axes, x along the line and y up, the anchor at the origin; then turned, then the picture's y
  // down.
  const double left = -0.5 * label.horizontal * size.width(), right = left + size.width();
  const double top = 0.5 * label.vertical * size.height(), bottom = top - size.height();
  const auto turned = [&label](double x, double y) {
    const QPoint xAxis = label.orientation.map(QPoint(1, 0)), yAxis = label.orientation.map(QPoint(0, 1));
    return QPointF(x * xAxis.x() + y * yAxis.x(), -(x * xAxis.y() + y * yAxis.y()));
  };
  return QRectF(turned(left, bottom), turned(right, top)).normalized().translated(label.anchor);
}

QString shownText(const QString &text) {
  const int kMostCharacters = 64;
  QString shown = text.left(kMostCharacters);
  for (QChar &character : shown)
    if (!character.isPrint())
      character = QLatin1Char(' ');
  return text.size() > kMostCharacters ? shown + QChar(0x2026) : shown;
}

namespace {

// Which parts of the area are taken, in squares of a few pixels.
class Occupancy {
public:
  explicit Occupancy(const QRectF &area)
      : area_(area), columns_(static_cast<int>(area.width() / kSquare) + 1),
        rows_(static_cast<int>(area.height() / kSquare) + 1), isTaken_(static_cast<std::size_t>(columns_) * rows_) {}

  bool isFree(const QRectF &box) const {
    const QRect squares = squaresOf(box);
    for (int row = squares.top(); row <= squares.bottom(); ++row)
      for (int column = squares.left(); column <= squares.right(); ++column)
        if (isTaken_[static_cast<std::size_t>(row) * columns_ + column])
          return false;
    return true;
  }

  void take(const QRectF &box) {
    const QRect squares = squaresOf(box);
    for (int row = squares.top(); row <= squares.bottom(); ++row)
      for (int column = squares.left(); column <= squares.right(); ++column)
        isTaken_[static_cast<std::size_t>(row) * columns_ + column] = true;
  }

private:
  static constexpr double kSquare = 3;

  QRect squaresOf(const QRectF &box) const {
    const auto column = [this](double x) {
      return std::clamp(static_cast<int>((x - area_.left()) / kSquare), 0, columns_ - 1);
    };
    const auto row = [this](double y) {
      return std::clamp(static_cast<int>((y - area_.top()) / kSquare), 0, rows_ - 1);
    };
    return QRect(QPoint(column(box.left()), row(box.top())), QPoint(column(box.right()), row(box.bottom())));
  }

  QRectF area_;
  int columns_, rows_;
  std::vector<bool> isTaken_;
};

// `box` moved into `area` along each direction in which it fits.
QRectF movedInside(QRectF box, const QRectF &area) {
  if (box.width() <= area.width())
    box.moveLeft(std::clamp(box.left(), area.left(), area.right() - box.width()));
  if (box.height() <= area.height())
    box.moveTop(std::clamp(box.top(), area.top(), area.bottom() - box.height()));
  return box;
}

class LabelPainter {
public:
  LabelPainter(QPainter *painter, const QRectF &area, const QColor &background)
      : painter_(painter), area_(area), background_(background), occupancy_(area), font_(painter->font()) {}

  // False when there is no room for the label.
  bool paint(const RenderLabel &label) {
    QString text = shownText(label.text);
    QFont font = font_;
    font.setPixelSize(static_cast<int>(std::lround(std::clamp(label.height, kSmallestLetters, kLargestLetters))));
    const QFontMetricsF metrics(font);
    if (label.widest > 0 && metrics.horizontalAdvance(text) > label.widest) {
      const int kFewestCharacters = 6;
      text = metrics.elidedText(text, Qt::ElideMiddle, label.widest);
      if (text.size() < kFewestCharacters)
        return false;
    }
    const QSizeF size(metrics.horizontalAdvance(text) + 2, metrics.height());
    const QRectF box = movedInside(labelBox(label, size), area_);
    if (!area_.contains(box) || !occupancy_.isFree(box))
      return false;
    occupancy_.take(box);
    paintPlate(box);
    if (label.hasMarker && !box.adjusted(2, 2, -2, -2).contains(label.anchor))
      paintMarker(label);
    painter_->setFont(font);
    painter_->setPen(label.colour);
    painter_->save();
    if (label.orientation.quarterTurns() % 2 == 1) {
      painter_->translate(box.bottomLeft());
      painter_->rotate(-90);
    } else {
      painter_->translate(box.topLeft());
    }
    painter_->drawText(QPointF(1, metrics.ascent()), text);
    painter_->restore();
    return true;
  }

private:
  void paintPlate(const QRectF &box) {
    QColor plate = background_;
    plate.setAlphaF(0.6);
    painter_->fillRect(box, plate);
  }

  void paintMarker(const RenderLabel &label) {
    const double kArm = 2.5;
    painter_->setPen(QPen(label.colour, 1));
    painter_->drawLine(label.anchor - QPointF(kArm, 0), label.anchor + QPointF(kArm, 0));
    painter_->drawLine(label.anchor - QPointF(0, kArm), label.anchor + QPointF(0, kArm));
  }

  QPainter *painter_;
  QRectF area_;
  QColor background_;
  Occupancy occupancy_;
  QFont font_;
};

bool isSameLabel(const RenderLabel &first, const RenderLabel &second) {
  return first.text == second.text && first.anchor == second.anchor;
}

} // namespace

int paintLabels(QPainter *painter, std::vector<RenderLabel> labels, const QRectF &area, const QColor &background) {
  std::stable_sort(labels.begin(), labels.end(),
                   [](const RenderLabel &first, const RenderLabel &second) { return first.depth < second.depth; });
  LabelPainter labelPainter(painter, area, background);
  int leftOut = 0;
  const RenderLabel *lastPainted = nullptr;
  for (const RenderLabel &label : labels) {
    if (label.text.trimmed().isEmpty())
      continue;
    // Pin labels stand on several layers at one place; once is enough.
    if (lastPainted && isSameLabel(*lastPainted, label))
      continue;
    if (labelPainter.paint(label))
      lastPainted = &label;
    else if (label.isCounted)
      ++leftOut;
  }
  return leftOut;
}
