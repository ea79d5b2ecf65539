#ifndef XSCHEMSCHEMATIC_H
#define XSCHEMSCHEMATIC_H

#include "xschemdrawing.h"
#include "xschemnames.h"
#include "xschemsymbols.h"

// Turns a schematic of xschem into a model: ports, labels, grounds, wires, placements and drawing.
class XschemSchematic {
public:
  // Placements get `library`; all but the names are borrowed. `scale`: see XschemDrawing.
  XschemSchematic(const XschemFile &file, const QString &library, double scale, XschemSymbols &symbols,
                  ImportReport &report);

  SchematicModel build();

private:
  void addEmbeddedSymbols();
  void addWire(const XschemObject &object);
  void addPlacement(const XschemObject &object);
  void addDevice(const XschemSymbol &symbol, const XschemProperties &properties, const QPoint &origin,
                 Orientation orientation, int line);
  void addLabelOrPort(const XschemSymbol &symbol, const XschemProperties &properties, const QPoint &position, int line);
  void keepRemark(const XschemObject &object, const XschemSymbol &symbol, const XschemProperties &properties);

  const XschemFile &file_;
  const QString library_;
  const XschemDrawing drawing_;
  XschemSymbols &symbols_;
  ImportReport &report_;
  XschemNames names_;
  SchematicModel model_;
  QHash<QString, int> remarks_; // number of each name
};

#endif
