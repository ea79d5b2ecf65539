// OpenAccess for scripts of the host. The interpreter is the host's: it is neither made nor deleted here, and what an
// evaluation leaves in it as result is for the host to read.
//
// Failures of OpenAccess inside a command are errors of the script. What is caught here has escaped an evaluation.

#include "oapluginmain.h"

#include <cstdio>

#include <oaLangException.h>
#include <oaTclEngineFactory.h>
#include <tcl.h>

#include "qttoolkit.h"

// The start of the binding's package.
extern "C" int Oa_Init(Tcl_Interp *interp);

namespace {

// Tells what the body raises; false then. Exceptions of other types pass to the host.
template <typename Body> bool printingExceptions(Body body) {
  try {
    body();
    return true;
  } catch (const oa::oaException &exception) {
    std::printf("OpenAccess Exception: %s\n", static_cast<const oa::oaChar *>(exception.getMsg()));
  } catch (const oaLang::oaLangException &exception) {
    std::printf("oaTclException: %s\n", static_cast<const oa::oaChar *>(exception.getMsg()));
  }
  return false;
}

// The completion code of `evaluate(interp, text)`, -1 when an exception escaped. Text goes to Tcl in its 8-bit form,
// which Tcl reads as UTF-8.
int completionCode(int (*evaluate)(Tcl_Interp *, const char *), Tcl_Interp *interp, const QString &text) {
  int code = -1;
  printingExceptions([&] { code = evaluate(interp, toolkit::toEightBit(text).constData()); });
  return code;
}

} // namespace

void oaPlugInMain::tclInit(Tcl_Interp *interp) {
  printingExceptions([&] {
    // The engine belongs to the interpreter; nothing here needs a hold on it.
    if (auto *engine = oaTcl::oaTclEngineFactory::create(interp)) {
      engine->release();
    }
    const int code = Oa_Init(interp);
    if (code != 0) {
      std::printf("tcl oa init error: %d\n", code);
    }
  });
}

int oaPlugInMain::tclExecFile(Tcl_Interp *interp, QString file) {
  return completionCode([](Tcl_Interp *in, const char *path) { return Tcl_EvalFile(in, path); }, interp, file);
}

int oaPlugInMain::tclExec(Tcl_Interp *interp, QString command) {
  return completionCode([](Tcl_Interp *in, const char *script) { return Tcl_Eval(in, script); }, interp, command);
}
