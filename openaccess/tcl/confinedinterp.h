#ifndef OATCL_CONFINEDINTERP_H
#define OATCL_CONFINEDINTERP_H

// An interpreter for a script that came with a design, from whoever made that: it can draw the one design it was made
// for and look at what that refers to, and nothing else. It has the commands of the language, and of the package those
// that a confined session has; no files, channels, processes, sockets, events, other interpreters or packages. It runs
// for a limited time and takes a limited amount of memory.
//
// The limits are looked at between commands: a single command that computes for long is not cut short. Nor does any of
// this keep out a script that sets out to crash Tcl, say by nesting brackets until the stack is full: whoever must open
// libraries of unknown origin can switch scripts off (OA_PCELL_TIME_LIMIT=0).

#include "oa/oaException.h"

#include <chrono>
#include <string>

#include <tcl.h>

namespace OpenAccess_4 {

class oaDesign;

namespace tcl {

// What is wrong with a script, for whoever needed what it draws.
class PcellScriptError : public IException {
public:
  // In UTF-8, as Tcl has it.
  explicit PcellScriptError(const std::string &message);
  oaUInt4 getMsgId() const override;
  const oaChar *getMsg() const override { return message_.c_str(); }

private:
  std::string message_;
};

class ConfinedInterp {
public:
  // Raises PcellScriptError when the program has no Tcl and none can be loaded.
  explicit ConfinedInterp(oaDesign *design);
  ~ConfinedInterp();
  ConfinedInterp(const ConfinedInterp &) = delete;
  ConfinedInterp &operator=(const ConfinedInterp &) = delete;

  // Calls a procedure, given as a list of its parameters and its body, with the design as its only argument. Raises
  // PcellScriptError with what Tcl says, and after the limits. May be called once.
  void run(const std::string &argumentsAndBody, double seconds);

private:
  struct Limits {
    std::chrono::steady_clock::time_point end;
    std::size_t memoryBytes; // of the process when the script began
    bool isOutOfMemory;
  };
  static void onSliceEnd(ClientData limits, Tcl_Interp *interp);
  void defineProcedure(const std::string &argumentsAndBody);
  void setLimits(double seconds);
  std::string failure(double seconds) const;

  Tcl_Interp *interp_;
  oaDesign *design_;
  Limits limits_{};
  bool isBroken_ = false; // Tcl gave up in the middle of something
};

} // namespace tcl
} // namespace OpenAccess_4

#endif
