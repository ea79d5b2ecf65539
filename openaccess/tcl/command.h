#ifndef OATCL_COMMAND_H
#define OATCL_COMMAND_H

// The commands of the name space "oa". A command has all forms of that name; which one is meant is decided by the
// arguments of each call.

#include "parameter.h"

#include <string>
#include <vector>

namespace OpenAccess_4 {
namespace tcl {

class Command {
public:
  explicit Command(std::string name) : name_(std::move(name)) {}

  const std::string &name() const { return name_; } // without "oa::"
  void add(const Form &form) { forms_.push_back(&form); }

  // Returns a Tcl completion code; nothing is thrown.
  int run(Tcl_Interp *interp, int count, Tcl_Obj *const *arguments) const;
  // Whether a session that is confined to one design has it.
  bool isForConfined() const;
  // A line for each form: the command, its parameters and what they are.
  std::string help() const;

private:
  const Form *choose(int count, Tcl_Obj *const *arguments) const;
  [[noreturn]] void refuse(int count, Tcl_Obj *const *arguments) const;
  std::vector<const Form *> formsOfFirst(int count, Tcl_Obj *const *arguments) const;

  std::string name_;
  std::vector<const Form *> forms_;
};

// All commands in the order of their names, made at first need.
const std::vector<Command> &allCommands();
const Command *findCommand(const std::string &name);

// Makes the commands and constants in the interpreter, those that its session is confined to. Returns a Tcl completion
// code.
int makeCommands(Tcl_Interp *interp);

} // namespace tcl
} // namespace OpenAccess_4

#endif
