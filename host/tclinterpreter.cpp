#include "tclinterpreter.h"

#include "hosterror.h"

#include <QCoreApplication>

#include <cstdint>

#include <tcl.h>

namespace {

Tcl_Obj *toTcl(const QString &text) {
  const QByteArray utf8 = text.toUtf8();
  return Tcl_NewStringObj(utf8.constData(), utf8.size());
}

void setGlobal(Tcl_Interp *interp, const char *name, Tcl_Obj *value) {
  Tcl_SetVar2Ex(interp, name, nullptr, value, TCL_GLOBAL_ONLY);
}

void replaceOutput(Tcl_Interp *interp, int descriptor) {
  Tcl_Channel channel =
      Tcl_MakeFileChannel(reinterpret_cast<ClientData>(static_cast<std::intptr_t>(descriptor)), TCL_WRITABLE);
  Tcl_SetChannelOption(nullptr, channel, "-buffering", "line");
  Tcl_SetStdChannel(channel, TCL_STDOUT);
  Tcl_RegisterChannel(interp, channel);
}

} // namespace

TclInterpreter::TclInterpreter(int outputDescriptor) {
  Tcl_FindExecutable(QCoreApplication::applicationFilePath().toLocal8Bit().constData());
  interp_ = Tcl_CreateInterp();
  if (outputDescriptor != kNoOutput)
    replaceOutput(interp_, outputDescriptor);
  if (Tcl_Init(interp_) != TCL_OK) {
    const QString reason = QString::fromUtf8(result());
    Tcl_DeleteInterp(interp_);
    throw HostError(QStringLiteral("Tcl cannot start: %1").arg(reason));
  }
}

TclInterpreter::~TclInterpreter() {
  flushOutput();
  Tcl_DeleteInterp(interp_);
}

void TclInterpreter::setArguments(const QString &program, const QStringList &arguments, bool isInteractive) {
  setGlobal(interp_, "argc", Tcl_NewIntObj(arguments.size()));
  setList("argv", arguments);
  setGlobal(interp_, "argv0", toTcl(program));
  setGlobal(interp_, "tcl_interactive", Tcl_NewIntObj(isInteractive ? 1 : 0));
}

void TclInterpreter::setList(const char *variable, const QStringList &elements) {
  Tcl_Obj *list = Tcl_NewListObj(0, nullptr);
  for (const QString &element : elements)
    Tcl_ListObjAppendElement(interp_, list, toTcl(element));
  setGlobal(interp_, variable, list);
}

QByteArray TclInterpreter::result() const { return Tcl_GetStringResult(interp_); }

QByteArray TclInterpreter::errorInfo() const {
  const char *text = Tcl_GetVar2(interp_, "errorInfo", nullptr, TCL_GLOBAL_ONLY);
  return text != nullptr && *text != '\0' ? QByteArray(text) : result();
}

void TclInterpreter::writeOutput(const QByteArray &utf8) {
  if (Tcl_Channel channel = Tcl_GetStdChannel(TCL_STDOUT)) {
    Tcl_WriteChars(channel, utf8.constData(), utf8.size());
    Tcl_Flush(channel);
  }
}

void TclInterpreter::flushOutput() {
  if (Tcl_Channel channel = Tcl_GetStdChannel(TCL_STDOUT))
    Tcl_Flush(channel);
}

void TclInterpreter::shutDown() { Tcl_Finalize(); }

QString textForTcl(const QByteArray &utf8) { return QString::fromLatin1(utf8); }
