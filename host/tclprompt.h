#ifndef TCLPROMPT_H
#define TCLPROMPT_H

#include <QByteArray>
#include <QString>

struct Tcl_Interp;

// The lines that a user types, with editing, history and completion where oahost was built with libedit; otherwise as
// the terminal gives them. One prompt a process.
class TclPrompt {
public:
  // The history is kept in `historyFile`, in memory alone when that is empty. `output` is where the user looks, since
  // the process's standard output need not be that; lines are edited when it is a terminal.
  TclPrompt(Tcl_Interp *interp, const QString &historyFile, int output);
  TclPrompt(const TclPrompt &) = delete;
  TclPrompt &operator=(const TclPrompt &) = delete;

  // The next line without its end, in UTF-8 on a UTF-8 terminal; false at the end of the input.
  bool readLine(const char *prompt, QByteArray &line);
  // Keeps a command for the history. One of several lines comes back as one.
  void remember(QByteArray command);
  // Writes the history file. Losing the history is no reason to complain.
  void save();

private:
  const QByteArray historyFile_;
};

#endif
