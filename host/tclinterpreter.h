#ifndef TCLINTERPRETER_H
#define TCLINTERPRETER_H

#include <QByteArray>
#include <QString>
#include <QStringList>

struct Tcl_Interp;

// A Tcl interpreter as tclsh has it: with Tcl's own library of procedures, and the channel stdout on the program's
// standard output even while file descriptor 1 belongs to the plug-in's lines.
class TclInterpreter {
public:
  // `outputDescriptor` becomes the channel stdout and is closed with it; for kNoOutput the channel is left alone, for
  // scripts that print nothing. Throws HostError when Tcl cannot start.
  explicit TclInterpreter(int outputDescriptor);
  static constexpr int kNoOutput = -1;
  ~TclInterpreter();
  TclInterpreter(const TclInterpreter &) = delete;
  TclInterpreter &operator=(const TclInterpreter &) = delete;

  Tcl_Interp *get() const { return interp_; }

  // The variables argc, argv, argv0 and tcl_interactive. `program` is the script, or else this program.
  void setArguments(const QString &program, const QStringList &arguments, bool isInteractive);
  void setList(const char *variable, const QStringList &elements);
  // In UTF-8.
  QByteArray result() const;
  // The result of the last evaluation, and after a failure where it came about; in UTF-8.
  QByteArray errorInfo() const;
  void writeOutput(const QByteArray &utf8);
  void flushOutput();
  // What Tcl does when the program ends: exit handlers, channels.
  static void shutDown();

private:
  Tcl_Interp *interp_;
};

// Text for an operation of the plug-in that hands it to Tcl in 8-bit form: each character is one byte of the UTF-8 that
// Tcl wants, so that every text arrives whole.
QString textForTcl(const QByteArray &utf8);

#endif
