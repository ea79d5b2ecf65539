#include "xschemdrawing.h"

#include "evaluatedtext.h"
#include "xschemproperties.h"
#include "xschemreport.h"

#include <QStringList>

#include <cmath>

namespace {

// Leaves room for sums and differences of two coordinates in 32 bits.
constexpr double kLargestCoordinate = 1e9;
constexpr int kTextLayer = 3;
constexpr double kPi = 3.14159265358979323846;

// A text of size 1 takes so many of xschem's units a line, and half as many a character.
constexpr double kLineHeight = 40;
// All texts in the database have one height, and characters of about this width, in database units.
constexpr double kTextHeightDbu = 12;
constexpr double kCharacterWidthDbu = 7.2;

const char *const kLayerColours[] = {"#ffffff", "#0044cc", "#b0b0b0", "#202020", "#208000", "#c02000",
                                     "#0090b0", "#d00000", "#807000", "#007878", "#800080", "#00a000",
                                     "#0000b0", "#605800", "#507050", "#a02020", "#609030", "#009878",
                                     "#b00080", "#908820", "#c05040", "#b08000"};

QPolygon polygon(const QPoint &one, const QPoint &other) { return QPolygon(QVector<QPoint>{one, other}); }

// A layer as the file gives it may be any number.
QString colourOf(double layer) { return xschemLayerColour(layer >= 0 && layer < 1000 ? static_cast<int>(layer) : -1); }

} // namespace

QString xschemLayerColour(int layer) {
  const bool isKnown = layer >= 0 && layer < static_cast<int>(std::size(kLayerColours));
  return QString::fromLatin1(isKnown ? kLayerColours[layer] : "#000000");
}

bool XschemDrawing::isInside(std::initializer_list<double> values, int line) const {
  for (const double value : values) {
    if (std::abs(value * scale_) > kLargestCoordinate) {
      report_.problem(QStringLiteral("a coordinate lies too far outside, the object is left out"),
                      QStringLiteral("%1, found %2").arg(file_.place(line)).arg(value));
      return false;
    }
  }
  return true;
}

QPoint XschemDrawing::rounded(double x, double y) const {
  return QPoint(static_cast<int>(std::lround(x * scale_)), static_cast<int>(std::lround(-y * scale_)));
}

std::optional<QPoint> XschemDrawing::point(double x, double y, int line) const {
  if (!isInside({x, y}, line))
    return std::nullopt;
  constexpr double kTolerance = 1e-6;
  const QPoint result = rounded(x, y);
  if (std::abs(result.x() - x * scale_) > kTolerance || std::abs(result.y() + y * scale_) > kTolerance)
    report_.notice(QStringLiteral("a point between database units is rounded"),
                   QStringLiteral("%1, (%2, %3)").arg(file_.place(line)).arg(x).arg(y));
  return result;
}

Orientation XschemDrawing::orientation(double rotation, double flip) {
  // The model mirrors top to bottom; two quarter turns more make it left to right.
  const bool isFlipped = flip != 0;
  return Orientation(isFlipped, (isFlipped ? 2 : 0) - (static_cast<int>(std::fmod(rotation, 4))));
}

void XschemDrawing::addShape(const XschemObject &object, SchematicModel &model) const {
  const XschemProperties properties(xschemText(object.attributes));
  if (object.tag == 'T') {
    addText(object, model);
    return;
  }
  for (const char *line : {"dash", "bus", "width"}) {
    if (properties.contains(QLatin1String(line)))
      report_.notice(QStringLiteral("dashes and widths of lines are left out"), file_.place(object.line));
  }
  const bool isFilled = properties.isTrue(QStringLiteral("fill"));
  // A graph keeps all that it shows in attributes.
  const bool isGraph = object.tag == 'B' && properties.contains(QStringLiteral("flags"));
  if (isGraph) {
    report_.notice(QStringLiteral("a graph or picture is drawn as its frame"), file_.place(object.line));
  } else {
    static const QStringList meant = {QStringLiteral("dash"), QStringLiteral("bus"), QStringLiteral("width"),
                                      QStringLiteral("fill"), QStringLiteral("bezier")};
    tellLeftOutAttributes(properties, meant, QStringLiteral("a shape"), file_.place(object.line), report_);
  }
  if (object.tag == 'B') {
    addBox(object, isFilled && !isGraph, model);
  } else if (object.tag == 'L') {
    addLines(object, 1, false, model);
  } else if (object.tag == 'P') {
    if (properties.isTrue(QStringLiteral("bezier")))
      report_.notice(QStringLiteral("a curve is drawn with straight lines"), file_.place(object.line));
    addLines(object, 2, isFilled, model);
  } else if (object.tag == 'A') {
    addArc(object, isFilled, model);
  }
}

void XschemDrawing::tellFilling(bool isFilled, const XschemObject &object) const {
  if (isFilled)
    report_.notice(QStringLiteral("a filled box or circle is drawn as its outline"), file_.place(object.line));
}

void XschemDrawing::addBox(const XschemObject &object, bool isFilled, SchematicModel &model) const {
  tellFilling(isFilled, object);
  const auto one = point(object.numbers[1], object.numbers[2], object.line);
  const auto other = one ? point(object.numbers[3], object.numbers[4], object.line) : std::nullopt;
  if (other)
    model.shapes.push_back({SchematicShape::Kind::Rect, polygon(*one, *other), colourOf(object.numbers[0]), QString()});
}

void XschemDrawing::addLines(const XschemObject &object, size_t first, bool isFilled, SchematicModel &model) const {
  QPolygon points;
  for (size_t i = first; i + 1 < object.numbers.size(); i += 2) {
    const auto corner = point(object.numbers[i], object.numbers[i + 1], object.line);
    if (!corner)
      return;
    if (points.isEmpty() || points.last() != *corner)
      points.append(*corner);
  }
  if (isFilled && points.size() > 1 && points.first() == points.last())
    points.removeLast();
  if (points.size() < (isFilled ? 3 : 2)) {
    report_.notice(QStringLiteral("a line without length or a polygon without area is left out"),
                   file_.place(object.line));
    return;
  }
  model.shapes.push_back({isFilled ? SchematicShape::Kind::Polygon : SchematicShape::Kind::Polyline, points,
                          colourOf(object.numbers[0]), QString()});
}

void XschemDrawing::addArc(const XschemObject &object, bool isFilled, SchematicModel &model) const {
  const double x = object.numbers[1], y = object.numbers[2], radius = std::abs(object.numbers[3]);
  // More than a turn, either way, is a turn.
  const double sweep = qBound(-360.0, object.numbers[5], 360.0);
  if (!isInside({std::abs(x) + radius, std::abs(y) + radius}, object.line))
    return;
  const QString colour = colourOf(object.numbers[0]);
  if (radius * scale_ < 0.5 || sweep == 0) {
    report_.notice(QStringLiteral("a line without length or a polygon without area is left out"),
                   file_.place(object.line));
    return;
  }
  if (std::abs(sweep) == 360) {
    tellFilling(isFilled, object);
    const auto lowerLeft = point(x - radius, y + radius, object.line);
    const auto upperRight = point(x + radius, y - radius, object.line);
    if (lowerLeft && upperRight)
      model.shapes.push_back({SchematicShape::Kind::Circle, polygon(*lowerLeft, *upperRight), colour, QString()});
    return;
  }
  // The chords stay within half a database unit of the arc, as far as so many chords are worth it.
  const double largestStep = 2 * std::acos(qMax(0.0, 1 - 0.5 / (radius * scale_))) * 180 / kPi;
  const int chords = qMax(2, static_cast<int>(std::ceil(std::abs(sweep) / qBound(1.0, largestStep, 15.0))));
  const double start = std::fmod(object.numbers[4], 360);
  QPolygon points;
  for (int i = 0; i <= chords; ++i) {
    const double angle = (start + sweep * i / chords) * kPi / 180;
    const QPoint corner = rounded(x + radius * std::cos(angle), y - radius * std::sin(angle));
    if (points.isEmpty() || points.last() != corner)
      points.append(corner);
  }
  const bool isArea = isFilled && points.size() > 2;
  if (points.size() > 1)
    model.shapes.push_back(
        {isArea ? SchematicShape::Kind::Polygon : SchematicShape::Kind::Polyline, points, colour, QString()});
}

void XschemDrawing::addText(const XschemObject &object, SchematicModel &model) const {
  const XschemProperties properties(xschemText(object.attributes));
  const QString text = xschemText(object.text);
  if (properties.isTrue(QStringLiteral("hide"))) {
    report_.notice(QStringLiteral("a hidden text is left out"), file_.place(object.line));
    return;
  }
  static const QStringList meant = {QStringLiteral("layer"), QStringLiteral("hcenter"), QStringLiteral("vcenter"),
                                    QStringLiteral("font"),  QStringLiteral("slant"),   QStringLiteral("weight")};
  tellLeftOutAttributes(properties, meant, QStringLiteral("a text"), file_.place(object.line), report_);
  tellLostCharacters(text, file_.place(object.line), report_);
  const double size = std::abs(object.numbers[5]);
  if (!isInside({object.numbers[0], object.numbers[1], size * text.size() * kLineHeight}, object.line))
    return;
  report_.notice(QStringLiteral("texts have one size and font"), file_.place(object.line));
  SchematicShape shape;
  shape.kind = isEvaluatedText(text) ? SchematicShape::Kind::EvalText : SchematicShape::Kind::Text;
  bool isNumber = false;
  const int layer = properties.value(QStringLiteral("layer")).toInt(&isNumber);
  if (shape.kind == SchematicShape::Kind::Text)
    shape.colour = xschemLayerColour(isNumber ? layer : kTextLayer);
  const QStringList lines = text.split(QLatin1Char('\n'));
  int written = 0;
  for (int i = 0; i < lines.size(); ++i) {
    if (lines[i].trimmed().isEmpty())
      continue;
    ++written;
    addTextLine(lines[i], object, i, lines.size(), properties.isTrue(QStringLiteral("hcenter")),
                properties.isTrue(QStringLiteral("vcenter")), shape, model);
  }
  if (written > 1)
    report_.notice(QStringLiteral("a text of several lines becomes a text for each line"), file_.place(object.line));
  if (written == 0)
    report_.notice(QStringLiteral("an empty text is left out"), file_.place(object.line));
}

// xschem lays a text's box out from its origin, turns and mirrors the box, and writes the text into it from left to
// right, or upwards when the box was turned by a quarter. The line is put into the middle of its part of that box.
void XschemDrawing::addTextLine(const QString &text, const XschemObject &object, int index, int count,
                                bool isCentredAcross, bool isCentredDown, SchematicShape shape,
                                SchematicModel &model) const {
  const double x = object.numbers[0], y = object.numbers[1];
  const Orientation turn = orientation(object.numbers[2], object.numbers[3]);
  // Where the box lies beside the origin: 1 right of it and above, -1 left of it and below.
  const QPoint side = turn.map(QPoint(1, -1));
  const bool isUpright = turn.quarterTurns() % 2 == 1;
  const double line = std::abs(object.numbers[5]) * kLineHeight * scale_;
  const double width = text.size() * kCharacterWidthDbu;
  const int along = isUpright ? side.y() : side.x();
  const int across = isUpright ? side.x() : side.y();
  const double start = isCentredAcross ? -width / 2 : along > 0 ? 0 : -width;
  // Of the line's middle; lines follow each other downwards, or to the right when the text goes upwards.
  const double box = isCentredDown ? -count * line / 2 : across > 0 ? 0 : -count * line;
  const double middle = box + (isUpright ? index + 0.5 : count - index - 0.5) * line;
  double dx = isUpright ? middle + kTextHeightDbu / 2 : start;
  double dy = isUpright ? start : middle - kTextHeightDbu / 2;
  const bool isTurned = isUpright && shape.kind == SchematicShape::Kind::Text;
  if (isUpright && !isTurned) {
    report_.notice(QStringLiteral("an evaluated text cannot stand upright"), file_.place(object.line));
    dx = middle - width / 2;
    dy = along > 0 ? 0 : -kTextHeightDbu;
  }
  shape.points = QPolygon(QVector<QPoint>{
      QPoint(static_cast<int>(std::lround(x * scale_ + dx)), static_cast<int>(std::lround(-y * scale_ + dy)))});
  shape.text = text;
  shape.rotation = isTurned ? 90 : 0;
  model.shapes.push_back(shape);
}
