#include "renderlayout.h"

#include <algorithm>
#include <cmath>

#include "rendercanvas.h"

namespace {

// Deeper hierarchies are shown as outlines, so that walking them never outgrows the stack.
constexpr int kMostLevels = 500;
// Rows of pixels that are filled cost too: hierarchies that pile up copies at one place could ask for any number of
// them.
constexpr std::int64_t kRowsPerVisit = 2;
// Outlines of cells beyond the last level; more than these are told apart by nobody.
constexpr std::size_t kMostOutlines = 1'000'000;
// Labels that are considered; a picture has room for some thousands.
constexpr std::size_t kMostLabels = 200'000;
// Cells smaller than this show neither their texts nor their name.
constexpr double kSmallestLabelledCell = 12;
// Texts of lower levels whose letters are smaller than this are not enlarged but left out.
constexpr double kSmallestLetterOfCells = 5;

// Every how many elements of an array are painted: enough to have two a pixel, where a pixel shows no more.
int arrayStep(double pitchPixels, int count) {
  const double kElementsPerPixel = 2;
  const double pitch = std::abs(pitchPixels);
  if (pitch * kElementsPerPixel >= 1)
    return 1;
  const double step = pitch > 0 ? 1 / (pitch * kElementsPerPixel) : count;
  return static_cast<int>(std::clamp(step, 1.0, static_cast<double>(std::max(count, 1))));
}

} // namespace

LayoutPainter::LayoutPainter(const LayoutModel &model, const LayoutIndex &index, CellIndex top, int levels,
                             const View &view, const QRectF &area)
    : model_(model), index_(index), top_(top), levels_(std::min(levels, kMostLevels)), view_(view), area_(area) {}

// Boxes without width or height are seen too, which QRectF::intersects() denies.
bool LayoutPainter::isSeen(const QRectF &box) const {
  return box.right() >= area_.left() && box.left() <= area_.right() && box.bottom() >= area_.top() &&
         box.top() <= area_.bottom();
}

bool LayoutPainter::isSpent() {
  isSimplified_ = isSimplified_ || budget_ <= 0;
  return budget_ <= 0;
}

bool LayoutPainter::spend() {
  if (isSpent())
    return false;
  --budget_;
  return true;
}

// Calls visit(placement) for the elements of a reference that differ in the picture, the last of each row and column
// included.
template <typename Visit>
void LayoutPainter::forEachElement(const Placement &parent, const ModelReference &reference, Visit visit) {
  const int columnStep = arrayStep(reference.columnPitch * view_.scale, reference.columns);
  const int rowStep = arrayStep(reference.rowPitch * view_.scale, reference.rows);
  const auto next = [](int position, int step, int count) {
    return position < count - 1 ? std::min<std::int64_t>(static_cast<std::int64_t>(position) + step, count - 1) : count;
  };
  for (int row = 0; row < reference.rows; row = static_cast<int>(next(row, rowStep, reference.rows))) {
    for (int column = 0; column < reference.columns;
         column = static_cast<int>(next(column, columnStep, reference.columns))) {
      if (!spend())
        return;
      const double x = reference.origin.x() + static_cast<double>(column) * reference.columnPitch;
      const double y = reference.origin.y() + static_cast<double>(row) * reference.rowPitch;
      visit(parent.of(reference.orientation, x, y));
    }
  }
}

void LayoutPainter::paintLayer(LayerIndex layer, RenderCanvas *canvas) {
  layer_ = layer;
  canvas_ = canvas;
  budget_ = workLimit_;
  if (levels_ > 0 && index_.content(top_, layer))
    paintCell(top_, Placement(), 1);
}

void LayoutPainter::paintCell(CellIndex cellIndex, const Placement &placement, int level) {
  const LayoutCell &cell = model_.cell(cellIndex);
  const LayerContent &content = *index_.content(cellIndex, layer_);
  paintShapes(cell, content, CellToPicture(view_, placement));
  if (!content.isBelow || level >= levels_)
    return;
  for (const ModelReference &reference : cell.references) {
    const LayerContent *below =
        index_.isFollowed(cellIndex, reference) ? index_.content(reference.cell, layer_) : nullptr;
    if (!below)
      continue;
    const QRectF whole = view_.map(placement.map(referenceExtent(reference, below->extent)));
    if (!isSeen(whole))
      continue;
    if (whole.width() < 1 && whole.height() < 1) {
      paintBox(whole);
      continue;
    }
    forEachElement(placement, reference, [&](const Placement &element) {
      const QRectF box = view_.map(element.map(below->extent));
      if (!isSeen(box))
        return;
      if (box.width() < 1 && box.height() < 1)
        paintBox(box);
      else
        paintCell(reference.cell, element, level + 1);
    });
    if (isSpent())
      paintBox(whole);
  }
}

void LayoutPainter::paintShapes(const LayoutCell &cell, const LayerContent &content, const CellToPicture &toPicture) {
  for (const std::uint32_t row : content.boxes) {
    if (!spend())
      return;
    const ModelBox &box = cell.boxes[row];
    paintBox(toPicture.map(box.left, box.bottom, box.right, box.top));
  }
  for (const std::uint32_t row : content.polygons) {
    if (!spend())
      return;
    const ModelPolygon &polygon = cell.polygons[row];
    const QPoint *points = cell.pointsOf(polygon);
    QPolygonF mapped;
    mapped.reserve(static_cast<int>(polygon.pointCount));
    for (std::uint32_t i = 0; i < polygon.pointCount; ++i)
      mapped.append(toPicture.map(points[i].x(), points[i].y()));
    paintPolygon(mapped);
  }
  for (const std::uint32_t row : content.paths) {
    if (!spend())
      return;
    paintPath(cell, cell.paths[row], toPicture);
  }
}

void LayoutPainter::paintBox(const QRectF &box) {
  if (!isSeen(box))
    return;
  if (box.width() < 1 && box.height() < 1) {
    canvas_->addPoint(box.center());
    return;
  }
  const QRectF seen(QPointF(std::max(box.left(), area_.left()), std::max(box.top(), area_.top())),
                    QPointF(std::min(box.right(), area_.right()), std::min(box.bottom(), area_.bottom())));
  budget_ -= static_cast<std::int64_t>(seen.height()) / kRowsPerVisit;
  canvas_->addBox(seen);
}

void LayoutPainter::paintPolygon(const QPolygonF &polygon) {
  const QRectF box = polygon.boundingRect();
  if (box.width() < 1 || box.height() < 1) {
    paintBox(box);
    return;
  }
  budget_ -= static_cast<std::int64_t>(std::min(box.height(), area_.height())) / kRowsPerVisit + polygon.size();
  if (area_.contains(box)) {
    canvas_->addPolygon(polygon);
    return;
  }
  const QPolygonF seen = clippedPolygon(polygon, area_);
  if (seen.size() >= 3)
    canvas_->addPolygon(seen);
}

void LayoutPainter::paintPath(const LayoutCell &cell, const ModelPath &path, const CellToPicture &toPicture) {
  const QPoint *points = cell.pointsOf(path);
  QPolygonF mapped;
  mapped.reserve(static_cast<int>(path.pointCount));
  for (std::uint32_t i = 0; i < path.pointCount; ++i)
    mapped.append(toPicture.map(points[i].x(), points[i].y()));
  if (mapped.isEmpty())
    return;
  const double widthPixels = path.width * view_.scale;
  const QPolygonF outline = widthPixels >= 1 ? outlineOf(path, mapped, view_.scale) : QPolygonF();
  if (!outline.isEmpty()) {
    paintPolygon(outline);
    return;
  }
  const QRectF box = mapped.boundingRect();
  if (box.width() < 1 && box.height() < 1) {
    paintBox(box);
    return;
  }
  for (int i = 0; i + 1 < mapped.size(); ++i) {
    QPointF from = mapped[i], to = mapped[i + 1];
    if (clipLine(&from, &to, area_))
      canvas_->addLine(from, to);
  }
}

void LayoutPainter::collectOutlines(CellIndex cellIndex, const Placement &placement, int level) {
  for (const ModelReference &reference : model_.cell(cellIndex).references) {
    if (!index_.isFollowed(cellIndex, reference)) {
      // Never sent, or placed inside itself: nothing is known but where it stands.
      const QPointF origin = view_.map(placement.map(reference.origin.x(), reference.origin.y()));
      outlined_.push_back({QRectF(origin, origin), reference.cell});
      continue;
    }
    const bool isLast = level >= levels_;
    if (!isLast && index_.levels(reference.cell) + level <= levels_ && index_.isComplete(reference.cell))
      continue;
    forEachElement(placement, reference, [&](const Placement &element) {
      const QRectF box = view_.map(element.map(index_.extent(reference.cell)));
      if (index_.extent(reference.cell).isEmpty() || outlined_.size() >= kMostOutlines)
        return;
      if (isLast)
        outlined_.push_back({box, reference.cell});
      else if (box.width() >= 1 || box.height() >= 1)
        collectOutlines(reference.cell, element, level + 1);
    });
  }
}

void LayoutPainter::paintOutlines(RenderCanvas *canvas) {
  canvas_ = canvas;
  outlined_.clear();
  budget_ = workLimit_;
  if (levels_ > 0)
    collectOutlines(top_, Placement(), 1);
  else
    outlined_.push_back({view_.map(index_.extent(top_)), top_});
  for (const OutlinedCell &outlined : outlined_)
    paintBox(outlined.box);
}

std::vector<RenderLabel> LayoutPainter::outlineLabels(const QColor &colour) const {
  std::vector<RenderLabel> labels;
  for (const OutlinedCell &outlined : outlined_) {
    const bool isPoint = outlined.box.isEmpty();
    const double longSide = std::max(outlined.box.width(), outlined.box.height());
    const double shortSide = std::min(outlined.box.width(), outlined.box.height());
    if (!isPoint && (shortSide < kSmallestLabelledCell || longSide < 3 * kSmallestLabelledCell))
      continue;
    RenderLabel label;
    label.text = model_.cell(outlined.cell).name;
    label.anchor = outlined.box.center();
    label.horizontal = isPoint ? 0 : 1;
    label.vertical = 1;
    label.height = std::min(shortSide * 0.25, 16.0);
    label.orientation = Orientation(false, outlined.box.height() > 1.5 * outlined.box.width() ? 1 : 0);
    label.colour = colour;
    label.hasMarker = isPoint;
    label.isCounted = false;
    label.widest = isPoint ? 0 : longSide - 4;
    labels.push_back(label);
  }
  return labels;
}

std::vector<RenderLabel> LayoutPainter::textLabels(const std::vector<QColor> &colours) {
  std::vector<RenderLabel> labels;
  budget_ = workLimit_;
  if (levels_ > 0)
    collectTexts(top_, Placement(), 1, colours, &labels);
  return labels;
}

void LayoutPainter::collectTexts(CellIndex cellIndex, const Placement &placement, int level,
                                 const std::vector<QColor> &colours, std::vector<RenderLabel> *labels) {
  const LayoutCell &cell = model_.cell(cellIndex);
  for (const ModelText &text : cell.texts) {
    if (!spend() || labels->size() >= kMostLabels)
      return;
    RenderLabel label;
    label.height = text.height * view_.scale;
    label.anchor = view_.map(placement.map(text.origin.x(), text.origin.y()));
    if ((level > 1 && label.height < kSmallestLetterOfCells) || !area_.contains(label.anchor))
      continue;
    label.text = text.text;
    setPresentation(&label, text.presentation);
    label.orientation = text.orientation.then(placement.orientation);
    label.colour = colours[text.layer];
    label.depth = level;
    labels->push_back(label);
  }
  if (level >= levels_)
    return;
  for (const ModelReference &reference : cell.references) {
    if (!index_.isFollowed(cellIndex, reference) || !index_.holdsTexts(reference.cell))
      continue;
    forEachElement(placement, reference, [&](const Placement &element) {
      const QRectF box = view_.map(element.map(index_.extent(reference.cell)));
      if (std::max(box.width(), box.height()) >= kSmallestLabelledCell && isSeen(box))
        collectTexts(reference.cell, element, level + 1, colours, labels);
    });
  }
}
