// The evaluator "resistor": vertical segments side by side, joined to a meander, with a contacted head at either end.
// Heads grow away from the meander, so that they never meet a neighbouring segment.
//
//        +----+   +---- B     w, l             width and height of a segment
//        |    |   |           segments         how many
//        |    |   |           spacing          between neighbouring segments
//   A ---+    +---+           contact...       see Parameters::contactRule()
//                             bodyLayer, metalLayer
#include "evaluation.h"

#include <algorithm>
#include <cstring>

using namespace oa;
using namespace pcells;

namespace {

class Resistor : public IPcell {
public:
  void getName(oaString &name) override { name = "resistor"; }
  void onEval(oaDesign *design, oaPcellDef *pcellDef) override;
};

void drawHead(Drawing &drawing, const char *netName, const Box &head, oaLayerNum bodyLayer, oaLayerNum metalLayer,
              const ContactRule &contact) {
  drawing.rect(bodyLayer, head);
  drawing.contacts(contact, head);
  drawing.rect(metalLayer, head)->addToNet(drawing.net(netName));
  drawing.pin(netName, metalLayer, head);
}

void Resistor::onEval(oaDesign *design, oaPcellDef *) {
  const Parameters parameters(design);
  const Length w = parameters.length("w"), l = parameters.length("l"), spacing = parameters.length("spacing");
  const int segments = parameters.count("segments", 1, 10000);
  const ContactRule contact = parameters.contactRule("contact");
  const oaLayerNum bodyLayer = parameters.layer("bodyLayer"), metalLayer = parameters.layer("metalLayer");
  if (segments > 1) {
    parameters.requireAtLeast("l", l, w + spacing);
  }

  const Length pitch = w + spacing, last = (segments - 1) * pitch;
  const Length headWidth = std::max(w, contact.room()), headHeight = contact.room();
  const Box firstHead = {w - headWidth, -headHeight, w, 0};
  const Length lastHeadBottom = segments % 2 == 1 ? l : -headHeight;
  const Box lastHead = {last, lastHeadBottom, last + headWidth, lastHeadBottom + headHeight};
  Parameters::limitContacts("contact", 2 * ContactArray(contact, firstHead).count());

  Drawing drawing(design);
  for (int i = 0; i < segments; ++i) {
    const Length left = i * pitch, right = left + w;
    drawing.rect(bodyLayer, {left, 0, right, l});
    if (i < segments - 1) {
      const Length linkBottom = i % 2 == 0 ? l - w : 0;
      drawing.rect(bodyLayer, {right, linkBottom, right + spacing, linkBottom + w});
    }
  }
  drawHead(drawing, "A", firstHead, bodyLayer, metalLayer, contact);
  drawHead(drawing, "B", lastHead, bodyLayer, metalLayer, contact);
}

} // namespace

extern "C" IPcell *oaCreatePcell(const char *name) {
  static Resistor *const evaluator = new Resistor; // lives as long as the process
  return std::strcmp(name, "resistor") == 0 ? evaluator : nullptr;
}
