#ifndef CELLORIGIN_H
#define CELLORIGIN_H

#include "layoutmodel.h"

#include <QStringList>

// What a cell of a model is in its library: the data that came with it, read the way the writing operations want it. A
// custom via has a master in the library, which may be a plain cell or a variant of a parametric one.
struct CellOrigin {
  QString lib;
  QString cell;
  QString view;
  enum class Kind { Plain, Variant, StandardVia, CustomVia, VariantAsVia } kind = Kind::Plain;
  // Of a variant of a parametric cell: all its parameters. Of a via: its own list, which says what it is.
  QStringList parameterNames;
  QStringList parameterValues;

  bool isVia() const { return kind == Kind::StandardVia || kind == Kind::CustomVia || kind == Kind::VariantAsVia; }

  // The value of a parameter, empty when there is none.
  QString parameter(const char *name) const;
  // The same of the last one of that name. The layers end a custom via's list, behind parameters of any name.
  QString lastParameter(const char *name) const;
};

CellOrigin originOf(const LayoutCell &cell);

#endif
