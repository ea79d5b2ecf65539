#ifndef JUNCTIONDOTS_H
#define JUNCTIONDOTS_H

#include "schematicmodel.h"

// Adds a dot wherever three or more wires meet, or one ends on another, as editors draw them that find such places by
// themselves. Only wires of two points are looked at; one ends on another when that one is upright or level.
void addJunctionDots(SchematicModel &model);

#endif
