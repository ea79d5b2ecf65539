#ifndef OATCL_UNITS_H
#define OATCL_UNITS_H

// User units: what scripts write, as doubles. Database units: what the kit stores, as integers.

#include "oa/oaDesignDB.h"

#include <tcl.h>

namespace OpenAccess_4 {
namespace tcl {

// Database units in a user unit of the design that the object belongs to, the defaults of its view type when it has no
// technology; for objects of a technology those of mask layouts. Raises ScriptError for objects of neither.
double dbuPerUUOf(oaObject *object);

// Round to the nearest; raise ScriptError for what does not fit.
oaCoord toCoordinate(double uu, double dbuPerUU);
oaDist toDistance(double uu, double dbuPerUU);
// For the text of a length that has become 0: raises ScriptError when it was not 0 and counted database units, since
// then it was meant in others.
void refuseVanished(Tcl_Obj *text, double dbuPerUU);

// An integer when the unit is the database unit, a double otherwise.
Tcl_Obj *newLength(oaInt8 dbu, double dbuPerUU);

// A unit for arguments that belong to no design: one in which all numbers in them, lists included, are whole, and as
// many times finer as leaves room for computing with them.
double unitOfLists(Tcl_Obj *const *arguments, int count);
// Whether all numbers in the arguments, lists included, are whole database units.
bool areWhole(Tcl_Obj *const *arguments, int count, double dbuPerUU);

} // namespace tcl
} // namespace OpenAccess_4

#endif
