// The evaluator "mosTransistor": fingers side by side on one active area; sources and drains take turns, source first.
// Seen from the left, with two fingers:
//
//      +---G---+               w, l           width of a finger (vertical), length of its channel
//    +-|--+  +-|--+            fingers        how many
//    | S  |D |  S |            contacts       whether sources and drains have contacts and metal
//    +-|--+  +-|--+            gateContact    whether a contacted bar joins the fingers above the active area
//                              type           "nmos", or "pmos", which adds a well
//
// Rules: gateSpacing (contact to gate), gateExtension (gate beyond active area), wellEnclosure, contact... (see
// Parameters::contactRule()), activeLayer, polyLayer, metalLayer, wellLayer.
#include "evaluation.h"

#include <algorithm>
#include <cstring>

using namespace oa;
using namespace pcells;

namespace {

class MosTransistor : public IPcell {
public:
  void getName(oaString &name) override { name = "mosTransistor"; }
  void onEval(oaDesign *design, oaPcellDef *pcellDef) override;
};

// What is where. The active area has its lower left corner at the origin.
struct Transistor {
  explicit Transistor(const Parameters &parameters);

  Length gateLeft(int finger) const { return outer + finger * (l + inner); }
  Box gate(int finger) const { return {gateLeft(finger), -gateExtension, gateLeft(finger) + l, w + gateExtension}; }
  Box active() const { return {0, 0, gateLeft(fingers - 1) + l + outer, w}; }
  // Source or drain, from 0 to `fingers`; even ones are sources.
  Box diffusion(int index) const {
    return {index == 0 ? 0 : gateLeft(index - 1) + l, 0, index == fingers ? active().right : gateLeft(index), w};
  }
  Box stripe(int index) const {
    const Length left = index * (l + inner);
    return {left, 0, left + contact.room(), w};
  }
  Box gateBar() const;

  Length w, l, gateSpacing, gateExtension, wellEnclosure;
  int fingers;
  bool hasContacts, hasGateContact, hasWell;
  ContactRule contact;
  oaLayerNum activeLayer, polyLayer, metalLayer, wellLayer;
  Length inner, outer; // widths of the diffusions between two fingers and beyond the last one
};

Transistor::Transistor(const Parameters &parameters)
    : w(parameters.length("w")), l(parameters.length("l")), gateSpacing(parameters.length("gateSpacing")),
      gateExtension(parameters.length("gateExtension")), wellEnclosure(parameters.length("wellEnclosure", 0)),
      fingers(parameters.count("fingers", 1, 1000)), hasContacts(parameters.flag("contacts")),
      hasGateContact(parameters.flag("gateContact")), hasWell(parameters.choice("type", {"nmos", "pmos"}) == "pmos"),
      contact(parameters.contactRule("contact")), activeLayer(parameters.layer("activeLayer")),
      polyLayer(parameters.layer("polyLayer")), metalLayer(parameters.layer("metalLayer")),
      wellLayer(parameters.layer("wellLayer")) {
  const Length contactRoom = hasContacts ? contact.size : 0;
  inner = contactRoom + 2 * gateSpacing;
  outer = contactRoom + gateSpacing + contact.enclosure;
  if (hasContacts) {
    parameters.requireAtLeast("w", w, contact.room());
    // The metal of a source must not reach that of the drain beyond the gate.
    parameters.requireAtMost("contactEnclosure", contact.enclosure, gateSpacing);
  }
  Parameters::limitContacts("contact", (hasContacts ? (fingers + 1) * ContactArray(contact, stripe(0)).count() : 0) +
                                           (hasGateContact ? ContactArray(contact, gateBar()).count() : 0));
}

Box Transistor::gateBar() const {
  const Length span = gateLeft(fingers - 1) + l - gateLeft(0), width = std::max(span, contact.room());
  const Length left = gateLeft(0) - halfOnGrid(width - span, contact.grid), bottom = w + gateExtension;
  return {left, bottom, left + width, bottom + contact.room()};
}

void drawDiffusions(Drawing &drawing, const Transistor &mos) {
  drawing.rect(mos.activeLayer, mos.active());
  for (int i = 0; i <= mos.fingers; ++i) {
    const char *const netName = i % 2 == 0 ? "S" : "D";
    if (mos.hasContacts) {
      drawing.contacts(mos.contact, mos.stripe(i));
      drawing.rect(mos.metalLayer, mos.stripe(i))->addToNet(drawing.net(netName));
      drawing.pin(netName, mos.metalLayer, mos.stripe(i));
    } else {
      drawing.pin(netName, mos.activeLayer, mos.diffusion(i));
    }
  }
}

void drawGates(Drawing &drawing, const Transistor &mos) {
  oaNet *const net = drawing.net("G");
  for (int i = 0; i < mos.fingers; ++i) {
    drawing.rect(mos.polyLayer, mos.gate(i))->addToNet(net);
    if (!mos.hasGateContact) {
      drawing.pin("G", mos.polyLayer, mos.gate(i));
    }
  }
  if (mos.hasGateContact) {
    drawing.rect(mos.polyLayer, mos.gateBar())->addToNet(net);
    drawing.contacts(mos.contact, mos.gateBar());
    drawing.rect(mos.metalLayer, mos.gateBar())->addToNet(net);
    drawing.pin("G", mos.metalLayer, mos.gateBar());
  }
}

void MosTransistor::onEval(oaDesign *design, oaPcellDef *) {
  const Transistor mos{Parameters(design)};
  Drawing drawing(design);
  if (mos.hasWell) {
    drawing.rect(mos.wellLayer, mos.active().enlargedBy(mos.wellEnclosure));
  }
  drawDiffusions(drawing, mos);
  drawGates(drawing, mos);
}

} // namespace

extern "C" IPcell *oaCreatePcell(const char *name) {
  static MosTransistor *const evaluator = new MosTransistor; // lives as long as the process
  return std::strcmp(name, "mosTransistor") == 0 ? evaluator : nullptr;
}
