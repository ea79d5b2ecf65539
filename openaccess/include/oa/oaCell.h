#ifndef OACELL_H
#define OACELL_H

#include "oa/oaDMObject.h"

namespace OpenAccess_4 {

class oaCellView;

// A cell: a sub-directory of the library. Every call but getName() and getLib() needs access to the library and raises
// oacLibAccessDenied without it; whatever changes the disk needs write access.
class oaCell : public oaDMContainer {
public:
  // Removes the directory with all cell views and management data. Designs that are open stay in memory but can no
  // longer be saved.
  void destroy();
  void getName(oaScalarName &name) const;
  void getName(const oaNameSpace &ns, oaString &out) const;
  oaCollection<oaCellView, oaCell> getCellViews() const;

  // NULL when there is no such cell.
  static oaCell *find(const oaLib *lib, const oaScalarName &name);
  // Makes the cell's directory when there is none.
  static oaCell *get(const oaLib *lib, const oaScalarName &name);
};

} // namespace OpenAccess_4

#endif
