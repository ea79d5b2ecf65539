// The Tcl binding: what a program with an interpreter of its own needs. Scripts write `package require oa` instead.
#ifndef OATCL_H
#define OATCL_H

#include "oa/oaLangException.h"
#include "oa/oaTclEngineFactory.h"
#include "oa/oaTclException.h"

/// Starts the database when nobody has, makes the commands of the name space `oa` and provides the package `oa`.
/// Returns TCL_OK (0); otherwise TCL_ERROR, with the reason in the interpreter's result. May be called again: the
/// commands are then made anew, and objects that scripts hold stay usable.
extern "C" int Oa_Init(Tcl_Interp *interp);

#endif
