#ifndef MODELCOPIER_H
#define MODELCOPIER_H

#include "importreport.h"
#include "layoutmodel.h"

class LayoutWriter;

// Writes the shapes of a cell that was read, between beginCell() and endCell() of a writer. Paths with free end
// extensions are expressed as writing allows, and told.
void writeModelShapes(const LayoutModel &model, const LayoutCell &cell, LayoutWriter &writer, ImportReport &report);

#endif
