#ifndef LAYOUTCOPIER_H
#define LAYOUTCOPIER_H

#include "importreport.h"

#include <QString>

#include <functional>

class PluginSession;

struct LayoutCopyRequest {
  QString lib;
  QString cell;
  QString view;
  QString targetLib;
  QString targetCell; // name of the copied cell
  // Copy the cells below too.
  bool isHierarchical = true;
  // Write over cell views that exist.
  bool isReplacing = false;
  // Makes the target library where there is none. Called when everything is read and nothing is written yet.
  std::function<void()> makeTarget;
};

// Reads a layout by its signals and writes it by the writing operations, cell by cell. With it go the cells that it
// places from its own library, masters of custom vias among them; in the copies, these are placed from the target
// library. Cells of other libraries, and parametric cells, which cannot be written, stay where they are and are placed
// from there, the latter with their parameters. Vias become the vias that they were; definitions that the target
// library lacks are made in its technology. Inside one library only the cell itself is copied. Below the cell, what the
// target library has already stays.
//
// Throws HostError when the layout cannot be read, and before anything is written when the copy would replace the view
// of the cell and that was not asked for, or a cell view that the copies place. What could not be copied is in `report`
// and in the session's exit code.
void copyLayout(PluginSession &session, const LayoutCopyRequest &request, ImportReport &report);

#endif
