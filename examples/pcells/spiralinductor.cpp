// The evaluator "spiralInductor": a square or octagonal coil around the origin, counterclockwise from the inside out.
// Its last bottom side runs on to the right, to terminal A; an underpass leads from the inner end to B.
//
//   turns, width, spacing, innerDiameter (between inner edges)
//   octagonal                  else square
//   via...                     see Parameters::contactRule()
//   metalLayer, underpassLayer
#include "evaluation.h"

#include <cmath>
#include <cstring>

using namespace oa;
using namespace pcells;

namespace {

class SpiralInductor : public IPcell {
public:
  void getName(oaString &name) override { name = "spiralInductor"; }
  void onEval(oaDesign *design, oaPcellDef *pcellDef) override;
};

Length upOnGrid(double length, Length grid) { return Length(std::ceil(length / double(grid))) * grid; }

// The straight line on which x * point.x + y * point.y is `offset`; x and y are -1, 0 or 1. With whole offsets, where
// lines at 45 degrees meet is on the grid, and all edges are at 45 degrees exactly.
struct Line {
  int x, y;
  Length offset;
};

// Of lines of which the second is turned to the left by 45 or 90 degrees.
oaPoint crossing(const Line &first, const Line &second) {
  return toPoint(first.offset * second.y - second.offset * first.y, first.x * second.offset - second.x * first.offset);
}

struct Coil {
  explicit Coil(const Parameters &parameters);

  Length radius(int turn) const { return firstRadius + turn * (width + spacing); }
  Length outerEnd() const { return radius(turns) + width + width / 2; }
  Line side(int turn, int direction) const;
  std::vector<oaPoint> centreLine() const;
  // Half a width around a place on the x axis or on the line to A.
  Box square(Length x, Length y) const { return Box{x, y, x, y}.enlargedBy(width / 2); }

  int turns;
  Length width, spacing, innerDiameter;
  bool isOctagonal;
  Length firstRadius; // of the centre line
  Length grid;
};

Coil::Coil(const Parameters &parameters)
    : turns(parameters.count("turns", 1, 1000)), width(parameters.evenLength("width")),
      spacing(parameters.length("spacing")), innerDiameter(parameters.evenLength("innerDiameter")),
      isOctagonal(parameters.flag("octagonal")), firstRadius((innerDiameter + width) / 2), grid(parameters.grid()) {
  // The inner end keeps its distance from the side that passes below it.
  parameters.requireAtLeast("innerDiameter", innerDiameter,
                            isOctagonal ? 8 * width + 7 * spacing : 2 * width + 2 * spacing);
}

// Sides are numbered counterclockwise from the right one, in steps of 45 degrees. The offset of a diagonal is rounded
// up once for the first turn and once for each step outwards, so that no gap is less than the spacing.
Line Coil::side(int turn, int direction) const {
  static const int kX[] = {1, 1, 0, -1, -1, -1, 0, 1};
  const Line line = {kX[direction], kX[(direction + 6) % 8], radius(turn)};
  if (direction % 2 == 0) {
    return line;
  }
  const double root = std::sqrt(2.0);
  return {line.x, line.y,
          upOnGrid(root * double(firstRadius), grid) + turn * upOnGrid(root * double(width + spacing), grid)};
}

std::vector<oaPoint> Coil::centreLine() const {
  const int step = isOctagonal ? 1 : 2, bottom = 6;
  std::vector<oaPoint> points = {toPoint(firstRadius, -width / 2)};
  for (int turn = 0, direction = 0; turn != turns - 1 || direction != bottom;) {
    const Line from = side(turn, direction);
    direction = (direction + step) % 8;
    turn += direction == 0 ? 1 : 0;
    points.push_back(crossing(from, side(turn, direction)));
  }
  points.push_back(toPoint(outerEnd(), -radius(turns - 1)));
  return points;
}

void SpiralInductor::onEval(oaDesign *design, oaPcellDef *) {
  const Parameters parameters(design);
  const Coil coil(parameters);
  const ContactRule via = parameters.contactRule("via");
  const oaLayerNum metalLayer = parameters.layer("metalLayer"), underpassLayer = parameters.layer("underpassLayer");
  parameters.requireAtLeast("width", coil.width, via.room());
  const Box innerEnd = coil.square(coil.firstRadius, 0);
  Parameters::limitContacts("via", ContactArray(via, innerEnd).count());

  Drawing drawing(design);
  const Length portX = coil.outerEnd() - coil.width / 2;
  drawing.path(metalLayer, coil.width, coil.centreLine())->addToNet(drawing.net("A"));
  drawing.pin("A", metalLayer, coil.square(portX, -coil.radius(coil.turns - 1)));
  drawing.contacts(via, innerEnd);
  drawing.rect(underpassLayer, {innerEnd.left, innerEnd.bottom, coil.outerEnd(), innerEnd.top})
      ->addToNet(drawing.net("B"));
  drawing.pin("B", underpassLayer, coil.square(portX, 0));
}

} // namespace

extern "C" IPcell *oaCreatePcell(const char *name) {
  static SpiralInductor *const evaluator = new SpiralInductor; // lives as long as the process
  return std::strcmp(name, "spiralInductor") == 0 ? evaluator : nullptr;
}
