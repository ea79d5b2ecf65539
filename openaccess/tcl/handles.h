#ifndef OATCL_HANDLES_H
#define OATCL_HANDLES_H

// Objects of databases in Tcl: the text "oa:0x" and the address, the same for the same object. The text may come from
// anywhere, so it is believed only when the address lies in memory that is known to hold the kit's handles; that
// memory is never returned to the system, and a handle there says itself whether it is alive.

#include "classinfo.h"

namespace OpenAccess_4 {
namespace tcl {

// "" for NULL.
Tcl_Obj *newHandle(const oaObject *object);

enum class HandleState { alive, dead, null, none };

struct Handle {
  HandleState state;
  oaObject *object; // for a living one
};

// NULL is written "", null or NULL. `none`: the text is no handle, or no object was ever given out under it.
Handle readHandle(Tcl_Obj *text);

// The design that a living object is, or belongs to; NULL for objects of technologies, libraries and the session.
oaDesign *designOfObject(oaObject *object);

} // namespace tcl
} // namespace OpenAccess_4

#endif
