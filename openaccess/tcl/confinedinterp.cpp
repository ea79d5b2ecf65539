#include "confinedinterp.h"

#include "command.h"
#include "handles.h"
#include "oa/oaDesign.h"
#include "oa/oaDesignMsgIds.h"
#include "session.h"
#include "texts.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>
#include <unistd.h>

namespace OpenAccess_4 {
namespace tcl {

namespace {

// The limits are checked this often, so a script may take as much memory more as it gets in that time.
constexpr long kSliceMs = 20;
constexpr std::size_t kMostMemoryBytes = std::size_t(1) << 30;
constexpr int kMostCommands = 100000000;
constexpr char kProcedure[] = "GenCellProc";

// Makes what is left of a new interpreter that Tcl itself has made safe. Everything that is not named here goes: a list
// of what must go would be wrong with the next release of Tcl.
constexpr char kPrune[] = R"(
  foreach space [namespace children ::] {
    if {$space ne {::tcl}} {namespace delete $space}
  }
  foreach space [namespace children ::tcl] {
    if {$space ni {::tcl::array ::tcl::dict ::tcl::info ::tcl::mathfunc ::tcl::mathop ::tcl::namespace ::tcl::string}} {
      namespace delete $space
    }
  }
  foreach command [info commands ::tcl::*] {rename $command {}}
  foreach command [info commands ::*] {
    if {[string range $command 2 end] ni {
      append apply array break catch concat continue dict error eval expr for foreach format global if incr info join
      lappend lassign lindex linsert list llength lmap lrange lrepeat lreplace lreverse lsearch lset lsort namespace proc
      regexp regsub rename return scan set split string subst switch tailcall throw try unset uplevel upvar variable while
    }} {rename $command {}}
  }
  unset -nocomplain space command
  # Tcl's own library of procedures, which is not there, has these two.
  proc ::tcl::mathfunc::max {first args} {
    foreach number $args {if {$number > $first} {set first $number}}
    return $first
  }
  proc ::tcl::mathfunc::min {first args} {
    foreach number $args {if {$number < $first} {set first $number}}
    return $first
  }
)";

// Tcl ends the program when a value would become larger than 2 GiB, or when there is no memory left. A script must not
// be able to do that.
struct TclPanic {
  std::string message;
};
thread_local int runningScripts = 0;

[[noreturn]] void onPanic(const char *format, ...) {
  char text[512];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  if (runningScripts > 0) {
    throw TclPanic{text};
  }
  std::fprintf(stderr, "%s\n", text); // as Tcl does
  std::abort();
}

// Tcl has no way to tell which handler there was; outside of scripts it is Tcl's own.
class PanicGuard {
public:
  PanicGuard() {
    ++runningScripts;
    Tcl_SetPanicProc(onPanic);
  }
  ~PanicGuard() {
    if (--runningScripts == 0) {
      Tcl_SetPanicProc(nullptr);
    }
  }
  PanicGuard(const PanicGuard &) = delete;
  PanicGuard &operator=(const PanicGuard &) = delete;
};

// In a program that has used no Tcl by now, the first interpreter comes from the system's library.
Tcl_Interp *loadTcl() {
  void *library = nullptr;
  for (const char *name : {"libtcl8.6.so", "libtcl8.6.so.0"}) {
    library = library == nullptr ? ::dlopen(name, RTLD_NOW | RTLD_GLOBAL) : library;
  }
  if (library == nullptr) {
    const char *why = ::dlerror();
    throw PcellScriptError(std::string("there is no Tcl 8.6 to run the script: ") + (why == nullptr ? "" : why));
  }
  auto *find = reinterpret_cast<void (*)(const char *)>(::dlsym(library, "Tcl_FindExecutable"));
  auto *create = reinterpret_cast<Tcl_Interp *(*)()>(::dlsym(library, "Tcl_CreateInterp"));
  if (find == nullptr || create == nullptr) {
    throw PcellScriptError("libtcl8.6.so is no Tcl library: it lacks Tcl_FindExecutable or Tcl_CreateInterp");
  }
  find(nullptr);
  return create();
}

Tcl_Interp *newInterp() {
  Tcl_Interp *interp = tclStubsPtr == nullptr ? loadTcl() : Tcl_CreateInterp();
  if (Tcl_InitStubs(interp, "8.6", 0) == nullptr) {
    throw PcellScriptError("the interpreter for the script is not one of Tcl 8.6");
  }
  return interp;
}

// 0 when the system does not tell.
std::size_t processMemoryBytes() {
  unsigned long long allPages = 0, residentPages = 0;
  if (std::FILE *file = std::fopen("/proc/self/statm", "re")) {
    const int read = std::fscanf(file, "%llu %llu", &allPages, &residentPages);
    residentPages = read == 2 ? residentPages : 0;
    std::fclose(file);
  }
  return residentPages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

void endSliceSoon(Tcl_Interp *interp) {
  Tcl_Time end;
  Tcl_GetTime(&end);
  end.usec += kSliceMs * 1000;
  end.sec += end.usec / 1000000;
  end.usec %= 1000000;
  Tcl_LimitSetTime(interp, &end);
}

std::string inSeconds(double seconds) {
  char text[32];
  std::snprintf(text, sizeof text, "%g s", seconds);
  return text;
}

} // namespace

PcellScriptError::PcellScriptError(const std::string &message) : message_(bytesOfMessage(message)) {}
oaUInt4 PcellScriptError::getMsgId() const { return oacInvalidPcellMaster; }

ConfinedInterp::ConfinedInterp(oaDesign *design) : interp_(newInterp()), design_(design) {
  Session::of(interp_).confineTo(design);
  if (Tcl_MakeSafe(interp_) != TCL_OK || Tcl_Eval(interp_, kPrune) != TCL_OK || makeCommands(interp_) != TCL_OK) {
    const std::string why = Tcl_GetStringResult(interp_);
    Tcl_DeleteInterp(interp_);
    throw PcellScriptError("no interpreter can be made for the script: " + why);
  }
}

ConfinedInterp::~ConfinedInterp() {
  Tcl_LimitRemoveHandler(interp_, TCL_LIMIT_TIME, onSliceEnd, &limits_);
  Tcl_LimitTypeReset(interp_, TCL_LIMIT_TIME);
  // A broken one is given up with what it holds: it could be in the middle of changing any of that.
  if (!isBroken_) {
    Tcl_DeleteInterp(interp_);
  }
}

void ConfinedInterp::onSliceEnd(ClientData limits, Tcl_Interp *interp) {
  Limits &own = *static_cast<Limits *>(limits);
  own.isOutOfMemory = processMemoryBytes() > own.memoryBytes + kMostMemoryBytes;
  if (!own.isOutOfMemory && std::chrono::steady_clock::now() < own.end) {
    endSliceSoon(interp);
  }
}

void ConfinedInterp::setLimits(double seconds) {
  const auto duration = std::chrono::duration<double>(seconds);
  limits_.end = std::chrono::steady_clock::now() + std::chrono::duration_cast<std::chrono::milliseconds>(duration);
  limits_.memoryBytes = processMemoryBytes();
  Tcl_LimitAddHandler(interp_, TCL_LIMIT_TIME, onSliceEnd, &limits_, nullptr);
  endSliceSoon(interp_);
  Tcl_LimitSetGranularity(interp_, TCL_LIMIT_TIME, 1);
  Tcl_LimitTypeSet(interp_, TCL_LIMIT_TIME);
  Tcl_LimitSetCommands(interp_, kMostCommands);
  Tcl_LimitTypeSet(interp_, TCL_LIMIT_COMMANDS);
}

void ConfinedInterp::defineProcedure(const std::string &argumentsAndBody) {
  Tcl_Obj *list = Tcl_NewStringObj(argumentsAndBody.data(), static_cast<int>(argumentsAndBody.size()));
  Tcl_IncrRefCount(list);
  int count = 0;
  Tcl_Obj **parts = nullptr;
  int code = Tcl_ListObjGetElements(interp_, list, &count, &parts);
  if (code == TCL_OK && count == 2) {
    Tcl_Obj *words[] = {Tcl_NewStringObj("proc", -1), Tcl_NewStringObj(kProcedure, -1), parts[0], parts[1]};
    for (Tcl_Obj *word : words) {
      Tcl_IncrRefCount(word);
    }
    code = Tcl_EvalObjv(interp_, 4, words, TCL_EVAL_GLOBAL);
    for (Tcl_Obj *word : words) {
      Tcl_DecrRefCount(word);
    }
  }
  Tcl_DecrRefCount(list);
  if (code != TCL_OK || count != 2) {
    throw PcellScriptError(std::string(kProcedure) + " must be a list of a procedure's arguments and its body, " +
                           (code == TCL_OK ? "but has " + std::to_string(count) + " elements"
                                           : std::string("but: ") + Tcl_GetStringResult(interp_)));
  }
}

// What the script says, and in which line.
std::string ConfinedInterp::failure(double seconds) const {
  if (limits_.isOutOfMemory) {
    return "the script was stopped: it took more than " + std::to_string(kMostMemoryBytes >> 20) + " MiB of memory";
  }
  if (Tcl_LimitTypeExceeded(interp_, TCL_LIMIT_TIME) != 0) {
    return "the script was stopped after " + inSeconds(seconds);
  }
  if (Tcl_LimitTypeExceeded(interp_, TCL_LIMIT_COMMANDS) != 0) {
    return "the script was stopped after " + std::to_string(kMostCommands) + " commands";
  }
  constexpr std::size_t kLongestMessage = 1000;
  std::string message = Tcl_GetStringResult(interp_);
  if (message.size() > kLongestMessage) {
    message = message.substr(0, kLongestMessage) + "...";
  }
  const char *info = Tcl_GetVar2(interp_, "errorInfo", nullptr, TCL_GLOBAL_ONLY);
  const std::string trace = info == nullptr ? "" : info;
  const std::string place = std::string("(procedure \"") + kProcedure + "\" line ";
  const std::size_t found = trace.rfind(place);
  if (found != std::string::npos) {
    const std::size_t number = found + place.size();
    message += " (line " + trace.substr(number, trace.find(')', number) - number) + ")";
  }
  return message;
}

void ConfinedInterp::run(const std::string &argumentsAndBody, double seconds) {
  try {
    const PanicGuard guard;
    defineProcedure(argumentsAndBody);
    setLimits(seconds);
    Tcl_Obj *words[] = {Tcl_NewStringObj(kProcedure, -1), newHandle(design_)};
    for (Tcl_Obj *word : words) {
      Tcl_IncrRefCount(word);
    }
    const int code = Tcl_EvalObjv(interp_, 2, words, TCL_EVAL_GLOBAL);
    for (Tcl_Obj *word : words) {
      Tcl_DecrRefCount(word);
    }
    if (code != TCL_OK) {
      throw PcellScriptError(failure(seconds));
    }
  } catch (const TclPanic &reason) {
    isBroken_ = true;
    throw PcellScriptError("the script was stopped: " + reason.message);
  }
}

} // namespace tcl
} // namespace OpenAccess_4
