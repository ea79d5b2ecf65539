#ifndef OAFIG_H
#define OAFIG_H

#include "oa/oaDesignObject.h"

namespace OpenAccess_4 {

class oaNet;
class oaPin;

// Anything with a place: shapes, instances, vias.
class oaFig : public oaBlockObject {
public:
  // The figure leaves its net and pin; displays of it and its properties go too.
  void destroy();
  void getBBox(oaBox &bBox) const;
  // Edges count.
  oaBoolean overlaps(const oaBox &box) const;
  // Raises oacInvalidPointsAfterTransform or oacInvalidBBoxAfterTransform when coordinates would overflow.
  void move(const oaTransform &xform);
  // Moves into another block: gives the new figure, this one is destroyed. It comes off its net and pin.
  oaFig *move(const oaTransform &xform, oaBlock *block);
  oaFig *move(const oaTransform &xform, oaDesign *design);
  // The copy lies on the same layer and purpose, and has no net, no pin and no properties. Copied instances get an
  // automatic name; text displays can be copied within their design only (oacNonDesignTextDisplay).
  oaFig *copy(const oaTransform &xform) const;
  oaFig *copy(const oaTransform &xform, oaBlock *block) const;
  oaFig *copy(const oaTransform &xform, oaDesign *design) const;
};

// A figure that may be on a net.
class oaConnFig : public oaFig {
public:
  // The net that the figure itself is on: false and NULL for a figure of a pin.
  oaBoolean hasNet() const;
  oaNet *getNet() const;
  // Takes the figure off its present net. Raises oacCannotAddPinFigToNet, oacCannotAddFigToImplicitNet,
  // oacNetFigNotInSameBlock; a via cannot be on a net of several bits.
  void addToNet(oaNet *net);
  void removeFromNet();
};

// A figure that may be on a net or in a pin.
class oaPinFig : public oaConnFig {
public:
  oaBoolean hasPin() const;
  oaPin *getPin() const;
  // Takes the figure out of its present pin. Raises oacCannotAddNetFigToPin, oacPinAndFigNotInSameBlock.
  void addToPin(oaPin *pin);
  void removeFromPin();
};

} // namespace OpenAccess_4

#endif
