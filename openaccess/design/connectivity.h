#ifndef OAKIT_CONNECTIVITY_H
#define OAKIT_CONNECTIVITY_H

// What the rest of the design layer needs to know of nets, terminals, pins and instances; see references.h for
// instances as figures.

#include "designdatabase.h"

namespace OpenAccess_4 {
namespace kit {

// To be called by DesignDatabase::rowIsGoing for every row: cuts the links of a net, terminal, pin, instance or
// instance terminal and destroys what depends on it. Figures of a net or pin stay, without it. Does nothing for rows of
// other tables.
void connectivityRowIsGoing(DesignDatabase &design, Table &table, Row row);

// To be called when a design is purged although others have bound it: their headers become unbound.
void masterIsGoing(const DesignDatabase &master);

// True when instances inside `design`, through bound masters, lead to `wanted`, or when both are the same.
bool reachesThroughMasters(const DesignDatabase &design, const DesignDatabase &wanted);

// To be called before a design is saved: stores the boxes of bound masters in the headers.
void storeMasterBoxes(DesignDatabase &design);

} // namespace kit
} // namespace OpenAccess_4

#endif
