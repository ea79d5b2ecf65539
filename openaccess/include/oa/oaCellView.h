#ifndef OACELLVIEW_H
#define OACELLVIEW_H

#include "oa/oaDMObject.h"

namespace OpenAccess_4 {

class oaCell;
class oaView;
class oaViewType;

// A cell view: a directory in the cell's, with a primary file that tells the view type. Access as for oaCell.
class oaCellView : public oaDMContainer {
public:
  // Removes the directory and all its files.
  void destroy();
  oaCell *getCell() const;
  oaView *getView() const;
  // The file that holds the design or text.
  oaDMFile *getPrimary() const;

  static oaCellView *find(const oaCell *cell, const oaView *view);
  static oaCellView *find(const oaLib *lib, const oaScalarName &cellName, const oaScalarName &viewName);
  // Makes cell, directory, `master.tag` and an empty primary file when there is no such cell view; raises
  // oacMismatchViewType when it exists with another type.
  static oaCellView *get(const oaCell *cell, const oaView *view);
  static oaCellView *get(const oaLib *lib, const oaScalarName &cellName, const oaScalarName &viewName,
                         const oaViewType *viewType);
};

} // namespace OpenAccess_4

#endif
