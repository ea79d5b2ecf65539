// Parametric cells whose evaluator is a script that is stored with the cell. The kit finds it by name as it finds every
// evaluator, so that only programs that link it themselves need this header.
#ifndef OATCLPCELL_H
#define OATCLPCELL_H

#include "oa/oaPcell.h"

namespace oaTcl {

class oaTclPcell {
public:
  /// The evaluator of that name, "tclPcell" or "oaPcellScript", which are the same but for the name; NULL for others.
  /// It lives as long as the process. Not linked yet: see oaPcellLink::create().
  static OpenAccess_4::IPcell *get(const char *name);
};

} // namespace oaTcl

#endif
