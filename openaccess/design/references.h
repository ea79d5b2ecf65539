#ifndef OAKIT_REFERENCES_H
#define OAKIT_REFERENCES_H

// What figures in general need to know about instances and vias. `table` is the design's table of instances or of vias,
// `row` a living row.

#include "designdatabase.h"
#include "oa/oaTransform.h"

namespace OpenAccess_4 {

class oaFig;

namespace kit {

// The stored orientation of an instance or via. Raises oacCorruptedDatabase.
oaOrientEnum orientOfRef(const RefTable &refs, Row row);
// The box of the master's block where the reference places it, one element of an array; it ends where the range of
// coordinates does. Inverted boxes stay as they are.
oaBox placedBox(const RefTable &refs, Row row, const oaBox &masterBox);

// The box of the master's block where the reference places it; of an array, all elements together. Inverted for an
// empty or unknown master.
oaBox refBox(DesignDatabase &design, const Table &table, Row row);
// Raises for implicit bits of vector instances.
void moveRef(DesignDatabase &design, Table &table, Row row, const oaTransform &xform);
// A copy in the design `target`, which has a block; instances get an automatic name. Raises for implicit bits of vector
// instances, and for vector instances and explicit bits, which cannot have such a name.
oaFig *copyRef(DesignDatabase &design, const Table &table, Row row, const oaTransform &xform, DesignDatabase &target);
// With everything that depends on it. Raises for implicit bits of vector instances.
void destroyRef(DesignDatabase &design, Table &table, Row row);
// Adds the boxes of all instances and vias to `box`. Must be cheap when no master has changed since the last call.
void mergeRefBoxes(DesignDatabase &design, oaBox &box);
// Binds the masters of all headers of the design that can be bound.
void bindMasters(DesignDatabase &design);

} // namespace kit
} // namespace OpenAccess_4

#endif
