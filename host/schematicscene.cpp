#include "schematicscene.h"

#include "evaluatedtext.h"
#include "gridfinder.h"
#include "junctionsides.h"

#include <QSet>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kGap = 3; // units
constexpr int kMostPropertyLines = 3;
constexpr int kMostPropertyCharacters = 24;
// Half the sides of the box in the place of a missing symbol.
constexpr double kMissingHalfWidthDbu = 50, kMissingHalfHeightDbu = 30;

// Arrow heads and the like are solid; larger polygons let through what lies below them.
double fillOf(const SchematicShape &shape, const Extent &extent) {
  const double kLargestSolidDbu = 24;
  if (shape.kind != SchematicShape::Kind::Polygon)
    return 0;
  return std::max(extent.width(), extent.height()) <= kLargestSolidDbu ? 1 : 0.12;
}

bool isText(const SchematicShape &shape) {
  return shape.kind == SchematicShape::Kind::Text || shape.kind == SchematicShape::Kind::EvalText;
}

// The side on which a body lies, seen from a point at or outside its edge.
Side sideOfBody(const QPointF &point, const Extent &body) {
  const double width = std::max(body.width(), 1.0), height = std::max(body.height(), 1.0);
  const double dx = ((body.left + body.right) / 2 - point.x()) / width;
  const double dy = ((body.bottom + body.top) / 2 - point.y()) / height;
  if (std::fabs(dx) >= std::fabs(dy))
    return dx >= 0 ? Side::Right : Side::Left;
  return dy >= 0 ? Side::Up : Side::Down;
}

// The first and last points of lines, with the direction in which the line goes on from there.
using LineEnds = std::map<std::pair<double, double>, Side>;

void addLineEnds(const QPolygonF &line, LineEnds *ends) {
  if (line.size() < 2 || line.first() == line.last())
    return;
  const auto add = [ends](const QPointF &end, const QPointF &next) {
    const QPointF step = next - end;
    const Side side = std::fabs(step.x()) > std::fabs(step.y()) ? (step.x() > 0 ? Side::Right : Side::Left)
                                                                : (step.y() > 0 ? Side::Up : Side::Down);
    ends->emplace(std::make_pair(end.x(), end.y()), side);
  };
  add(line[0], line[1]);
  add(line[line.size() - 1], line[line.size() - 2]);
}

// The side on which a symbol's body lies, seen from a pin: where the pin's lead goes, if it has one.
Side sideOfBody(const QPointF &pin, const Extent &body, const LineEnds &ends) {
  const auto lead = ends.find({pin.x(), pin.y()});
  return lead != ends.end() ? lead->second : sideOfBody(pin, body);
}

Side turnedSide(Side side, Orientation orientation) {
  const QPointF unit = unitVector(side);
  const QPointF turned = Placement{orientation, 0, 0}.map(unit.x(), unit.y());
  if (std::fabs(turned.x()) > std::fabs(turned.y()))
    return turned.x() > 0 ? Side::Right : Side::Left;
  return turned.y() > 0 ? Side::Up : Side::Down;
}

// Puts a text beside a place, on the given side of it. Above and below, it reads upwards.
void putBeside(SchematicText *text, const QPointF &place, Side side, double gap) {
  text->anchor = place + gap * unitVector(side);
  text->vertical = 1;
  text->horizontal = side == Side::Left || side == Side::Down ? 2 : 0;
  text->orientation = Orientation(false, side == Side::Up || side == Side::Down ? 1 : 0);
}

// Where a port's arrow leads, seen from the place of its connection: away from the only wire or symbol there, else to
// the side where ports of its direction are usually drawn, if that is free.
Side sideOfPort(const SchematicPort &port, const JunctionSides::Neighbours &neighbours) {
  const Side usual = port.isGlobal ? Side::Up : isInput(port) && !isOutput(port) ? Side::Left : Side::Right;
  const Side candidates[] = {usual, Side::Left, Side::Right, Side::Up, Side::Down};
  for (const Sides &taken : {neighbours.wires, neighbours.bodies})
    for (const Side side : candidates)
      if (taken.isOnly(oppositeOf(side)))
        return side;
  for (const Side side : candidates)
    if (!neighbours.wires.has(side) && !neighbours.bodies.has(side))
      return side;
  return usual;
}

QString propertyLines(const SchematicPlacement &placement, const QStringList &shownKeys) {
  QStringList lines;
  int left = 0;
  for (const auto &property : placement.data) {
    if (property.second.isEmpty() || shownKeys.contains(property.first))
      continue;
    if (lines.size() == kMostPropertyLines) {
      ++left;
      continue;
    }
    QString line = property.first + QLatin1Char('=') + property.second;
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    if (line.size() > kMostPropertyCharacters)
      line = line.left(kMostPropertyCharacters - 1) + QChar(0x2026);
    lines += line;
  }
  if (left > 0)
    lines += QStringLiteral("… %1 more").arg(left);
  return lines.join(QLatin1Char('\n'));
}

// A pin's name as a symbol's texts may spell it.
QString spelling(QString name) {
  return name.replace(QLatin1Char('['), QLatin1Char('<')).replace(QLatin1Char(']'), QLatin1Char('>'));
}

} // namespace

Placement placementOf(const SchematicPlacement &placement) {
  return {placement.orientation, static_cast<double>(placement.origin.x()), static_cast<double>(placement.origin.y())};
}

SchematicScene::SchematicScene(const SchematicModel &model, Kind kind,
                               const QHash<QString, const SymbolModel *> &symbols, const SchematicTheme &theme,
                               bool hasTexts)
    : model_(model), kind_(kind), theme_(theme), hasTexts_(hasTexts), colours_(theme) {
  drawingOfPlacement_.reserve(model.placements.size());
  for (const SchematicPlacement &placement : model.placements) {
    drawingOfPlacement_.push_back(drawingOf(symbolKey(placement.library, placement.device), symbols));
    missingSymbols_ += drawingOfPlacement_.back()->symbol == nullptr;
  }
  chooseUnit();
  for (std::size_t i = 0; i < model.placements.size(); ++i)
    addPlacement(model.placements[i], *drawingOfPlacement_[i]);
  for (const SchematicShape &shape : model.shapes)
    addShape(shape);
  const Extent body = extent_;
  for (const SchematicWire &wire : model.wires)
    extent_.add(extentOf(QPolygonF(wire.points)));
  for (const QPoint &dot : model.wireDots)
    extent_.add(dot.x(), dot.y());
  JunctionSides sides;
  findJunctions(&sides);
  if (kind == Kind::Symbol)
    addPins(body);
  else
    for (const SchematicPort &port : model.ports)
      addPort(port, sides);
  for (const SchematicGround &ground : model.grounds)
    for (QPolygonF &stroke : groundStrokes(ground.position, unit_))
      addStroke({std::move(stroke), theme_.ground, 0});
  for (const SchematicLabel &label : model.labels)
    addLabel(label, sides);
}

double SchematicScene::gap() const { return kGap * unit_; }

void SchematicScene::chooseUnit() {
  GridFinder grid;
  Extent extent; // of what has a place and a size of its own
  const auto addPoint = [&](const QPointF &point) {
    grid.add(point);
    extent.add(point.x(), point.y());
  };
  for (std::size_t i = 0; i < model_.placements.size(); ++i) {
    addPoint(QPointF(model_.placements[i].origin));
    extent.add(placementOf(model_.placements[i]).map(drawingOfPlacement_[i]->extent));
  }
  for (const auto &drawing : drawings_)
    for (const QPointF &pin : drawing.second.pins)
      grid.add(pin);
  for (const SchematicWire &wire : model_.wires)
    for (const QPoint &point : wire.points)
      addPoint(QPointF(point));
  for (const SchematicPort &port : model_.ports)
    addPoint(QPointF(port.position));
  for (const SchematicShape &shape : model_.shapes)
    if (!isText(shape))
      extent.add(extentOf(strokeOf(shape)));
  // As large as the grid has room for, but no larger than is needed to read it: so many lines fill a page.
  const double kShareOfGrid = 0.9, kLinesOfPage = 60;
  const double readable = std::max(extent.height(), 0.75 * extent.width()) / kLinesOfPage;
  unit_ = std::max(1.0, std::min(kShareOfGrid * grid.pitch(), readable) / kLineHeightDbu);
  measure_.setLineHeight(kLineHeightDbu * unit_);
}

SchematicText SchematicScene::textOfShape(const SchematicShape &shape, const QColor &colour, const Extent &body) {
  SchematicText text;
  text.text = shownLines(shape.text);
  text.anchor = QPointF(shape.points.value(0));
  text.colour = colour;
  text.orientation = Orientation(false, shape.rotation / 90);
  if (unit_ <= 1)
    return text;
  // A text that is enlarged keeps its middle line, and the end that is near the symbol's edge.
  const Placement turn{text.orientation, 0, 0};
  const QPointF along = turn.map(1, 0), up = turn.map(0, 1);
  const QSizeF size = measure_.size(text.text) / unit_;
  text.anchor += up * size.height() / 2;
  text.vertical = 1;
  if (body.isEmpty())
    return text;
  const double first = QPointF::dotProduct(QPointF(body.left, body.bottom), along);
  const double second = QPointF::dotProduct(QPointF(body.right, body.top), along);
  const double begin = QPointF::dotProduct(text.anchor, along), end = begin + size.width();
  const double before = begin - std::min(first, second), after = std::max(first, second) - end;
  const bool isInside = before >= 0 && after >= 0;
  if (end <= std::min(first, second) || (isInside && after < before / 2))
    text.horizontal = 2;
  else if (isInside && before > after / 2)
    text.horizontal = 1;
  text.anchor += along * size.width() * text.horizontal / 2;
  return text;
}

void SchematicScene::findJunctions(JunctionSides *sides) const {
  for (const SchematicPort &port : model_.ports)
    sides->addPlace(port.position);
  for (const SchematicLabel &label : model_.labels)
    sides->addPlace(label.origin);
  for (const SchematicWire &wire : model_.wires)
    sides->addWire(wire.points);
  for (std::size_t i = 0; i < model_.placements.size(); ++i) {
    const Placement placement = placementOf(model_.placements[i]);
    const SymbolDrawing &drawing = *drawingOfPlacement_[i];
    for (std::size_t pin = 0; pin < drawing.pins.size(); ++pin)
      sides->addTerminal(placement.map(drawing.pins[pin].x(), drawing.pins[pin].y()),
                         turnedSide(drawing.pinBodies[pin], placement.orientation));
  }
}

const SymbolDrawing *SchematicScene::drawingOf(const QString &key, const QHash<QString, const SymbolModel *> &symbols) {
  const auto known = drawings_.find(key);
  if (known != drawings_.end())
    return &known->second;
  const SymbolModel *symbol = symbols.value(key);
  return &drawings_.emplace(key, symbol ? makeDrawing(*symbol) : makeMissing()).first->second;
}

SymbolDrawing SchematicScene::makeDrawing(const SymbolModel &symbol) {
  SymbolDrawing drawing;
  drawing.symbol = &symbol;
  LineEnds leads;
  for (const SchematicShape &shape : symbol.shapes) {
    if (isText(shape)) {
      drawing.texts.push_back(&shape);
      drawing.textColours.push_back(colours_.colour(shape.colour));
      drawing.shownKeys += expressionsIn(shape.text);
      continue;
    }
    SceneStroke stroke{strokeOf(shape), colours_.colour(shape.colour), 0};
    const Extent extent = extentOf(stroke.points);
    stroke.fill = fillOf(shape, extent);
    addLineEnds(stroke.points, &leads);
    drawing.extent.add(extent);
    drawing.segments += static_cast<int>(stroke.points.size());
    if (!stroke.points.isEmpty())
      drawing.strokes.push_back(std::move(stroke));
  }
  for (const SchematicPort &port : symbol.ports)
    drawing.extent.add(port.position.x(), port.position.y());
  for (const SchematicPort &port : symbol.ports) {
    const QPointF pin(port.position);
    drawing.pins.push_back(pin);
    drawing.pinBodies.push_back(sideOfBody(pin, drawing.extent, leads));
  }
  drawing.segments += 4 * static_cast<int>(drawing.pins.size());
  if (drawing.extent.isEmpty())
    return makeMissing(); // nothing of it can be seen
  return drawing;
}

SymbolDrawing SchematicScene::makeMissing() const {
  SymbolDrawing drawing;
  drawing.extent = {-kMissingHalfWidthDbu, -kMissingHalfHeightDbu, kMissingHalfWidthDbu, kMissingHalfHeightDbu};
  drawing.segments = 4;
  return drawing;
}

void SchematicScene::addStroke(SceneStroke stroke) {
  extent_.add(extentOf(stroke.points));
  strokes_.push_back(std::move(stroke));
}

void SchematicScene::addText(const SchematicText &text) {
  if (!hasTexts_ || text.text.trimmed().isEmpty())
    return;
  extent_.add(measure_.extent(text));
  texts_.push_back(text);
}

void SchematicScene::addShape(const SchematicShape &shape) {
  const QColor colour = colours_.colour(shape.colour);
  if (isText(shape)) {
    addText(textOfShape(shape, colour, Extent()));
    return;
  }
  SceneStroke stroke{strokeOf(shape), colour, 0};
  stroke.fill = fillOf(shape, extentOf(stroke.points));
  if (!stroke.points.isEmpty())
    addStroke(std::move(stroke));
}

void SchematicScene::addPlacement(const SchematicPlacement &placement, const SymbolDrawing &drawing) {
  const Placement toSchematic = placementOf(placement);
  Extent box = toSchematic.map(drawing.extent);
  if (hasTexts_ && drawing.symbol) {
    for (std::size_t i = 0; i < drawing.texts.size(); ++i) {
      const auto evaluated = evaluatedText(drawing.texts[i]->text, placement, *drawing.symbol);
      if (!evaluated)
        continue;
      SchematicShape shape = *drawing.texts[i];
      shape.text = *evaluated;
      SchematicText text = textOfShape(shape, drawing.textColours[i], drawing.extent);
      text.anchor = toSchematic.map(text.anchor.x(), text.anchor.y());
      text.orientation = text.orientation.then(placement.orientation);
      box.add(measure_.extent(text));
      addText(text);
    }
  }
  if (!drawing.symbol) {
    SchematicText device;
    device.text = shownLines(placement.device);
    device.anchor = QPointF(toSchematic.x, toSchematic.y);
    device.horizontal = device.vertical = 1;
    device.colour = theme_.missing;
    addText(device);
  }
  extent_.add(box);
  // A symbol that shows the name itself shows all that its maker wants to be seen.
  if (!drawing.shownKeys.contains(QLatin1String("name")))
    addPlacementName(placement, drawing, box);
}

void SchematicScene::addPlacementName(const SchematicPlacement &placement, const SymbolDrawing &drawing,
                                      const Extent &box) {
  SchematicText name;
  name.text = shownLines(instanceName(placement));
  name.colour = theme_.name;
  if (placement.labelOffset) {
    name.anchor = QPointF(placement.origin) + QPointF(*placement.labelOffset);
    addNameBlock(placement, drawing, name);
    return;
  }
  Sides used; // by pins, whose wires go on from there
  for (const Side body : drawing.pinBodies)
    used.add(oppositeOf(turnedSide(body, placement.orientation)));
  if (!used.has(Side::Up)) {
    name.anchor = QPointF(box.left, box.top + gap());
  } else if (!used.has(Side::Right)) {
    name.anchor = QPointF(box.right + gap(), box.top);
    name.vertical = 0;
  } else if (!used.has(Side::Down)) {
    name.anchor = QPointF(box.left, box.bottom - gap());
    name.vertical = 0;
  } else {
    // Beyond the corner, where no wire leads straight to a pin.
    const double right = placementOf(placement).map(drawing.extent).right;
    name.anchor = QPointF(right + gap(), box.top + gap());
  }
  addNameBlock(placement, drawing, name);
}

void SchematicScene::addNameBlock(const SchematicPlacement &placement, const SymbolDrawing &drawing,
                                  SchematicText name) {
  SchematicText properties = name;
  properties.text = shownLines(propertyLines(placement, drawing.shownKeys));
  properties.colour = theme_.property;
  if (properties.text.isEmpty()) {
    addText(name);
    return;
  }
  // A block that stands on its anchor grows upwards, one that hangs from it downwards.
  if (name.vertical == 2 && !placement.labelOffset) {
    name.anchor.ry() += measure_.size(properties.text).height();
  } else if (name.vertical == 2) {
    properties.vertical = 0;
  } else {
    properties.anchor.ry() -= measure_.lineHeight();
  }
  addText(name);
  addText(properties);
}

void SchematicScene::addPort(const SchematicPort &port, const JunctionSides &sides) {
  const Side side = sideOfPort(port, sides.at(port.position));
  for (QPolygonF &stroke : portStrokes(port, side, unit_)) {
    const double fill = port.isGlobal ? 0 : 0.12;
    addStroke({std::move(stroke), theme_.port, fill});
  }
  SchematicText name;
  name.text = shownLines(port.name);
  name.colour = theme_.port;
  putBeside(&name, port.position, side, kPortLength * unit_ + gap());
  addText(name);
}

void SchematicScene::addPins(const Extent &body) {
  LineEnds leads;
  QSet<QString> shownNames; // what the symbol says itself
  for (const SceneStroke &stroke : strokes_)
    addLineEnds(stroke.points, &leads);
  for (const SchematicShape &shape : model_.shapes)
    if (isText(shape))
      shownNames.insert(spelling(shape.text));
  for (const SchematicPort &pin : model_.ports) {
    const Side bodySide = body.isEmpty() ? Side::Right : sideOfBody(pin.position, body, leads);
    addStroke({pinStroke(pin, bodySide, unit_), theme_.port, 1});
    if (shownNames.contains(spelling(pin.name)))
      continue;
    SchematicText name;
    name.text = shownLines(pin.name);
    name.colour = theme_.port;
    putBeside(&name, pin.position, oppositeOf(bodySide), 2 * gap());
    addText(name);
  }
}

void SchematicScene::addLabel(const SchematicLabel &label, const JunctionSides &sides) {
  SchematicText text;
  text.text = shownLines(label.text);
  text.colour = theme_.label;
  text.anchor = QPointF(label.origin);
  if (!label.offset.isNull()) {
    text.anchor += QPointF(label.offset);
    addText(text);
    return;
  }
  const JunctionSides::Neighbours &neighbours = sides.at(label.origin);
  const Sides &wires = neighbours.wires, &bodies = neighbours.bodies;
  if (wires.has(Side::Left) || wires.has(Side::Right)) {
    // On the wire, and over its end rather than beyond it.
    text.anchor.ry() += 2 * unit_;
    text.horizontal = wires.isOnly(Side::Left) ? 2 : 0;
  } else if (bodies.isEmpty() && (wires.isOnly(Side::Up) || wires.isOnly(Side::Down))) {
    putBeside(&text, label.origin, wires.has(Side::Up) ? Side::Down : Side::Up, gap());
  } else if (!wires.isEmpty()) {
    text.anchor.rx() += gap();
  } else {
    for (const Side side : {Side::Right, Side::Left, Side::Up, Side::Down})
      if (bodies.has(side)) {
        putBeside(&text, label.origin, oppositeOf(side), kPinHalfSide * unit_ + gap());
        break;
      }
  }
  addText(text);
}
