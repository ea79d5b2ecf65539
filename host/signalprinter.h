#ifndef SIGNALPRINTER_H
#define SIGNALPRINTER_H

#include "signaltap.h"

class PluginSession;

// Writes each signal as one line to the session's output. Two forms:
//
//   text   addBox 0 0 10 5 4 0              name and arguments in order, one blank between
//          addPolygon [0,0 10,0 10,5] 4 0   points as x,y; lists in brackets
//          addCell "inv"                    texts quoted, with \" \\ \n \t and \xHH for other control characters
//   JSON   ["addBox",0,0,10,5,4,0]          points as [x,y], point and text lists as arrays
//
// Numbers have as many digits as it takes to read the same value back.
class SignalPrinter : public SignalTap {
public:
  enum class Format { Text, Json };
  SignalPrinter(PluginSession &session, Format format);
  // Writes out what is still buffered.
  void flush();

protected:
  void record(int signal, void **arguments) override;

private:
  void appendText(int type, const void *value);
  void appendJson(int type, const void *value);

  PluginSession &session_;
  const Format format_;
  QByteArray buffer_;
};

#endif
