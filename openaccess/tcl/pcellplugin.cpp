// The shared objects tclPcell.so and oaPcellScript.so, where the kit looks for evaluators of these names.

#include "oa/oaTclPcell.h"

extern "C" __attribute__((visibility("default"))) OpenAccess_4::IPcell *oaCreatePcell(const char *name) {
  return oaTcl::oaTclPcell::get(name);
}
