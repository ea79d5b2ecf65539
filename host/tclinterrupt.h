#ifndef TCLINTERRUPT_H
#define TCLINTERRUPT_H

#include <csetjmp>
#include <csignal>

struct Tcl_AsyncHandler_;

// What Ctrl-C does while commands are typed and run: it drops the line, or ends the command with the error
// "interrupted". A second one for a command that goes on all the same, since it catches errors or is in the middle of a
// long call of the database, ends the process as usual. One a process; the thread that makes it is the one that reads
// and evaluates.
class TclInterrupt {
public:
  TclInterrupt();
  ~TclInterrupt();
  TclInterrupt(const TclInterrupt &) = delete;
  TclInterrupt &operator=(const TclInterrupt &) = delete;

  // While a line is read: Ctrl-C leaves the reading function for `place` where that is set, and otherwise writes the
  // text to standard error and lets it go on.
  static void beginReading(sigjmp_buf *place, const char *freshPrompt);
  static void endReading();
  // Whether a line was dropped since the last question.
  static bool takeDropped();

private:
  struct sigaction previous_;
  Tcl_AsyncHandler_ *async_;
};

#endif
