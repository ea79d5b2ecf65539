#ifndef SCHEMATICCOPIER_H
#define SCHEMATICCOPIER_H

#include "importreport.h"

#include <QString>

#include <functional>

class PluginSession;

struct SchematicCopyRequest {
  QString lib;
  QString cell;
  QString view; // a schematic or a symbol
  QString targetLib;
  QString targetCell; // name of the copied cell
  // Copy the schematics of the placed cells too, those of the view's name.
  bool isHierarchical = true;
  // Write over cell views that exist.
  bool isReplacing = false;
  // Makes the target library where there is none. Called when everything is read and nothing is written yet.
  std::function<void()> makeTarget;
};

// Reads a schematic by its signals and its netlist and writes it by the writing operations; a copy that is connected
// otherwise is a problem. With it go its cell's symbol and the symbols that it places from its own library, and the
// schematics of those cells; in the copies, what is placed from the source library is placed from the target library.
// Inside one library only the cell itself is copied: schematic and symbol. A symbol is copied alone. What the host
// keeps with the cells goes along. Below the cell, what the target library has already stays.
//
// Throws HostError when the view cannot be read, and before anything is written when a copy would replace a view
// of the cell and that was not asked for, or a cell that the copies place. What could not be copied is in `report` and
// in the session's exit code.
void copySchematic(PluginSession &session, const SchematicCopyRequest &request, ImportReport &report);

#endif
