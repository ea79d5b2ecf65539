#ifndef DESIGNNAME_H
#define DESIGNNAME_H

#include <QString>

#include "designholder.h"
#include "oaconvert.h"

// A schematic or symbol by its three names.
struct DesignName {
  DesignName(const QString &libText, const QString &cellText, const QString &viewText);

  // Opens the stored design for reading. Throws the text "can not open" when OpenAccess answers with nothing.
  oa::oaDesign *open() const;
  // Exchanges the open super master of a parametric design for its evaluation with the default parameters. Throws the
  // text "can not create parametric cell" when there is none. An evaluation without an evaluator has no top block.
  void evaluateDefaults(DesignHolder &super) const;

  oa::oaScalarName lib, cell, view;
};

#endif
