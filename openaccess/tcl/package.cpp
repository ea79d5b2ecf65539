// The entry points of the package.

#include "oa/oaTcl.h"

#include "classes.h"
#include "command.h"
#include "forms.h"
#include "session.h"
#include "texts.h"

#include <string>

namespace OpenAccess_4 {
namespace tcl {

namespace {

int runCommand(ClientData command, Tcl_Interp *interp, int count, Tcl_Obj *const arguments[]) {
  return static_cast<const Command *>(command)->run(interp, count - 1, arguments + 1);
}

} // namespace

int makeCommands(Tcl_Interp *interp) {
  const bool isConfined = Session::of(interp).confinedTo() != nullptr;
  Tcl_Namespace *space = Tcl_FindNamespace(interp, "::oa", nullptr, 0);
  if (space == nullptr) {
    space = Tcl_CreateNamespace(interp, "::oa", nullptr, nullptr);
  }
  if (space == nullptr) {
    return TCL_ERROR;
  }
  for (const Command &command : allCommands()) {
    if (isConfined && !command.isForConfined()) {
      continue;
    }
    Tcl_CreateObjCommand(interp, ("::oa::" + command.name()).c_str(), runCommand, const_cast<Command *>(&command),
                         nullptr);
  }
  for (std::size_t i = 0; i < kConstantCount; ++i) {
    const std::string name = std::string("::oa::") + kConstants[i].name;
    if (Tcl_SetVar2Ex(interp, name.c_str(), nullptr, Tcl_NewWideIntObj(kConstants[i].value), TCL_LEAVE_ERR_MSG) ==
        nullptr) {
      return TCL_ERROR;
    }
  }
  return Tcl_Export(interp, space, "*", 0);
}

} // namespace tcl
} // namespace OpenAccess_4

extern "C" __attribute__((visibility("default"))) int Oa_Init(Tcl_Interp *interp) {
  using namespace OpenAccess_4;
  if (interp == nullptr || Tcl_InitStubs(interp, "8.6", 0) == nullptr) {
    return TCL_ERROR;
  }
  try {
    oaDesignInit();
    tcl::Session::of(interp);
  } catch (const oaException &exception) {
    Tcl_SetObjResult(interp, Tcl_NewStringObj(tcl::readableMessage(std::string(exception.getMsg())).c_str(), -1));
    return TCL_ERROR;
  }
  if (tcl::makeCommands(interp) != TCL_OK) {
    return TCL_ERROR;
  }
  return Tcl_PkgProvide(interp, "oa", "2.2");
}
