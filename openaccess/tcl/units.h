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

// Rounds to the nearest; raises ScriptError for what does not fit.
oaCoord toCoordinate(double uu, double dbuPerUU);
oaDist toDistance(double uu, double dbuPerUU);

// An integer when the unit is the database unit, a double otherwise.
Tcl_Obj *newLength(oaInt8 dbu, double dbuPerUU);

// The coarsest usual unit in which all numbers in the arguments, lists included, are whole: a plain list that is no
// member of a design has no unit of its own.
double unitOfList(Tcl_Obj *const *arguments, int count);

} // namespace tcl
} // namespace OpenAccess_4

#endif
