#ifndef MODELCOPIER_H
#define MODELCOPIER_H

#include "importreport.h"
#include "layoutmodel.h"

class LayoutWriter;

// Writes a cell that was read back through a writer, under `name`; the cells that it places are named as the model
// names them. Paths with free end extensions are expressed as writing allows, and told.
//
// False when the writer cannot begin the cell.
bool writeModelCell(const LayoutModel &model, const LayoutCell &cell, const QString &name, LayoutWriter &writer,
                    ImportReport &report);

#endif
