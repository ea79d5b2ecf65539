#include "tclinterrupt.h"

#include <cstring>

#include <pthread.h>
#include <tcl.h>
#include <unistd.h>

namespace {

// For the signal handler, which is given nothing else.
volatile std::sig_atomic_t isReading = 0;
volatile std::sig_atomic_t isDropped = 0;
volatile std::sig_atomic_t isEnding = 0;
sigjmp_buf *readingPlace = nullptr;
const char *freshText = "";
pthread_t readingThread;
Tcl_AsyncHandler commandEnder = nullptr;

void onInterrupt(int signal) {
  if (pthread_equal(pthread_self(), readingThread) == 0) {
    pthread_kill(readingThread, signal);
    return;
  }
  if (isReading != 0) {
    isDropped = 1;
    if (readingPlace != nullptr) {
      isReading = 0;
      siglongjmp(*readingPlace, 1);
    }
    static_cast<void>(!write(STDERR_FILENO, freshText, std::strlen(freshText)));
  } else if (isEnding == 0) {
    isEnding = 1;
    Tcl_AsyncMark(commandEnder);
  } else {
    std::signal(signal, SIG_DFL);
    raise(signal);
  }
}

// Tcl calls this between two commands.
int endCommand(ClientData, Tcl_Interp *interp, int code) {
  if (interp == nullptr) {
    return code;
  }
  Tcl_SetObjResult(interp, Tcl_NewStringObj("interrupted", -1));
  return TCL_ERROR;
}

} // namespace

TclInterrupt::TclInterrupt() : async_(Tcl_AsyncCreate(endCommand, nullptr)) {
  readingThread = pthread_self();
  commandEnder = async_;
  struct sigaction action = {};
  action.sa_handler = onInterrupt;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, &previous_);
}

TclInterrupt::~TclInterrupt() {
  sigaction(SIGINT, &previous_, nullptr);
  Tcl_AsyncDelete(async_);
}

void TclInterrupt::beginReading(sigjmp_buf *place, const char *freshPrompt) {
  readingPlace = place;
  freshText = freshPrompt;
  isEnding = 0;
  isReading = 1;
}

void TclInterrupt::endReading() { isReading = 0; }

bool TclInterrupt::takeDropped() {
  const bool wasDropped = isDropped != 0;
  isDropped = 0;
  return wasDropped;
}
