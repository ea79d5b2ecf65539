#ifndef XSCHEMBUILTINS_H
#define XSCHEMBUILTINS_H

#include "xschemsymbols.h"

// The symbols of xschem's own library "devices" that have a fixed meaning, so that schematics can be read where the
// library is not installed.
struct XschemBuiltIn {
  const char *cell;
  XschemRole role;
  bool isGlobal;
  const char *defaultLabel; // null when a label has to say its own
  // Of a device: its symbol in xschem's format, with a drawing of our own.
  const char *symbol;
};

// Null when the name is none of these.
const XschemBuiltIn *xschemBuiltIn(const QString &cell);

// The role that the type in a symbol's attributes stands for.
XschemRole xschemRoleOfType(const QString &type);

#endif
