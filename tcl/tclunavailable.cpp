// The bridge of a build whose kit has no Tcl binding.

#include "oapluginmain.h"

void oaPlugInMain::tclInit(Tcl_Interp *) { reportUnavailable("tclInit"); }

int oaPlugInMain::tclExecFile(Tcl_Interp *, QString) {
  reportUnavailable("tclExecFile");
  return -1;
}

int oaPlugInMain::tclExec(Tcl_Interp *, QString) {
  reportUnavailable("tclExec");
  return -1;
}
