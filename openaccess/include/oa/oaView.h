#ifndef OAVIEW_H
#define OAVIEW_H

#include "oa/oaDMObject.h"

namespace OpenAccess_4 {

class oaCellView;
class oaViewType;

// A view: a name and a view type. Views have no place of their own on disk, so any of them can be found.
class oaView : public oaDMContainer {
public:
  // Forgets the view. Raises oacLibAccessDenied without write access; cell views are not touched.
  void destroy();
  void getName(oaScalarName &name) const;
  void getName(const oaNameSpace &ns, oaString &out) const;
  oaViewType *getViewType() const;
  oaCollection<oaCellView, oaView> getCellViews() const;

  static oaView *find(const oaLib *lib, const oaScalarName &name, const oaViewType *viewType);
  static oaView *get(const oaLib *lib, const oaScalarName &name, const oaViewType *viewType);
};

} // namespace OpenAccess_4

#endif
