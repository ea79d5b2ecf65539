#ifndef OAKIT_VIAREFERENCES_H
#define OAKIT_VIAREFERENCES_H

// What the rest of the design layer needs to know of vias; see references.h for the same of instances.

#include "designdatabase.h"
#include "oa/oaTransform.h"

namespace OpenAccess_4 {

class oaFig;
class oaRefHeader;

namespace kit {

oaBox viaBox(DesignDatabase &design, Row via);
void moveVia(DesignDatabase &design, Row via, const oaTransform &xform);
oaFig *copyVia(DesignDatabase &design, Row via, const oaTransform &xform, DesignDatabase &target);
// Called when the via is about to be destroyed.
void viaIsGoing(DesignDatabase &design, Row via);
// Adds the boxes of all vias to `box`.
void mergeViaBoxes(DesignDatabase &design, oaBox &box);
// False when a header is unbound, or bound to what its definition is no more: a box made from them may be out of date.
bool areViaMastersCurrent(const DesignDatabase &design);
// Binds the masters of all headers of the design that can be bound.
void bindViaMasters(DesignDatabase &design);
// To be called before a design is saved: stores the boxes of masters in the headers, and the masters' names.
void storeViaMasters(DesignDatabase &design);
// The header of a via's handle.
oaRefHeader *headerOfViaHandle(const oaObject *via);

} // namespace kit
} // namespace OpenAccess_4

#endif
