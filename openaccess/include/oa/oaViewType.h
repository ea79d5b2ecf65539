#ifndef OAVIEWTYPE_H
#define OAVIEWTYPE_H

#include "oa/oaDMTypes.h"
#include "oa/oaObject.h"

namespace OpenAccess_4 {

// A view type. There is one object for each, so pointers may be compared; it lives as long as the process.
class oaViewType : public oaSessionObject {
public:
  void getName(oaString &name) const;

  // Raises oacViewTypeExists.
  static oaViewType *create(const oaString &name);
  // NULL when no type of that name is reserved or was created. Names as the reserved types have them: "maskLayout",
  // "schematic".
  static oaViewType *find(const oaString &name);
  static oaViewType *get(oaReservedViewType type);
  static oaCollection<oaViewType, oaSession> getViewTypes();
};

} // namespace OpenAccess_4

#endif
