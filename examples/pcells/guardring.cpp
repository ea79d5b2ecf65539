// The evaluator "guardRing": a ring of active area, contacts and metal around a free area, whose lower left corner is
// the origin.
//
//   innerWidth, innerHeight   the free area
//   ringWidth                 of each side
//   contacts                  whether there are contacts, and metal over the ring
//   contact...                see Parameters::contactRule()
//   activeLayer, metalLayer
#include "evaluation.h"

#include <algorithm>
#include <cstring>

using namespace oa;
using namespace pcells;

namespace {

class GuardRing : public IPcell {
public:
  void getName(oaString &name) override { name = "guardRing"; }
  void onEval(oaDesign *design, oaPcellDef *pcellDef) override;
};

// Bottom and top go through, left and right stand between them, `gap` away.
std::vector<Box> sidesOf(const Box &hole, Length width, Length gap) {
  const Box outline = hole.enlargedBy(width);
  return {{outline.left, outline.bottom, outline.right, hole.bottom},
          {outline.left, hole.top, outline.right, outline.top},
          {outline.left, hole.bottom + gap, hole.left, hole.top - gap},
          {hole.right, hole.bottom + gap, outline.right, hole.top - gap}};
}

void GuardRing::onEval(oaDesign *design, oaPcellDef *) {
  const Parameters parameters(design);
  const Box hole = {0, 0, parameters.length("innerWidth"), parameters.length("innerHeight")};
  const Length ringWidth = parameters.length("ringWidth");
  const ContactRule contact = parameters.contactRule("contact");
  const oaLayerNum activeLayer = parameters.layer("activeLayer"), metalLayer = parameters.layer("metalLayer");
  // Contacts of neighbouring sides keep their spacing when their enclosures are less than that.
  const Length gap = std::max<Length>(0, contact.spacing - 2 * contact.enclosure);
  std::vector<Box> contactAreas;
  if (parameters.flag("contacts")) {
    parameters.requireAtLeast("ringWidth", ringWidth, contact.room());
    contactAreas = sidesOf(hole, ringWidth, gap);
  }
  Length contactCount = 0;
  for (const Box &area : contactAreas) {
    contactCount += ContactArray(contact, area).count();
  }
  Parameters::limitContacts("contact", contactCount);

  Drawing drawing(design);
  const oaLayerNum topLayer = contactAreas.empty() ? activeLayer : metalLayer;
  for (const Box &side : sidesOf(hole, ringWidth, 0)) {
    oaRect *const active = drawing.rect(activeLayer, side);
    (topLayer == activeLayer ? active : drawing.rect(topLayer, side))->addToNet(drawing.net("RING"));
  }
  for (const Box &area : contactAreas) {
    drawing.contacts(contact, area);
  }
  drawing.pin("RING", topLayer, sidesOf(hole, ringWidth, 0).front());
}

} // namespace

extern "C" IPcell *oaCreatePcell(const char *name) {
  static GuardRing *const evaluator = new GuardRing; // lives as long as the process
  return std::strcmp(name, "guardRing") == 0 ? evaluator : nullptr;
}
