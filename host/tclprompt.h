#ifndef TCLPROMPT_H
#define TCLPROMPT_H

#include "tclinterrupt.h"

#include <QByteArray>
#include <QString>

struct Tcl_Interp;

// The commands that a user types, with editing, history and completion where oahost was built with libedit; otherwise
// as the terminal gives them. One prompt a process.
class TclPrompt {
public:
  // The history is kept in `historyFile`, in memory alone when that is empty. `output` is where the user looks, since
  // the process's standard output need not be that; lines are edited when it is a terminal.
  TclPrompt(Tcl_Interp *interp, const QString &historyFile, int output);
  TclPrompt(const TclPrompt &) = delete;
  TclPrompt &operator=(const TclPrompt &) = delete;

  // The next command, of one line or several, in UTF-8 on a UTF-8 terminal; false at the end of the input. Ctrl-C drops
  // what was typed of it.
  bool readCommand(QByteArray &command);

private:
  enum class Input { line, dropped, end };
  Input readLine(const char *prompt, QByteArray &line);
  // Keeps a command for the history, whose file is written at once: not every session ends well. One of several lines
  // comes back as one. Losing the history is no reason to complain.
  void remember(QByteArray command);

  const QByteArray historyFile_;
  const TclInterrupt interrupt_;
};

#endif
