#ifndef OATCL_SCRIPTERROR_H
#define OATCL_SCRIPTERROR_H

#include <string>

namespace OpenAccess_4 {
namespace tcl {

// An error of a command that the binding itself found. It becomes a Tcl error and never leaves a command.
struct ScriptError {
  std::string message;
  std::string code; // the list for errorCode
};

inline ScriptError valueError(const std::string &message) { return {message, "OA VALUE"}; }

} // namespace tcl
} // namespace OpenAccess_4

#endif
