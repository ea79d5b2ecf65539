#ifndef SIGNALTAP_H
#define SIGNALTAP_H

#include <QByteArray>
#include <QObject>
#include <QSet>
#include <QString>
#include <QVector>

class oaPlugInCore;

// What a signal of the plug-in looks like, found from its meta-object, so that no list of the signals needs to be kept
// here.
struct SignalShape {
  QByteArray name;
  QByteArray signature;       // normalised: "addBox(int,int,int,int,int,int)"
  QVector<int> argumentTypes; // meta-type numbers
};

// Receives every signal of the plug-in, in order, through one function, and answers existCell(). The class has no
// slots: each signal is connected to a method number behind those of QObject, which qt_metacall() turns into a call of
// record().
class SignalTap : public QObject {
public:
  // How existCell() is answered: with what addCell() has sent so far, or always with yes, so that no master is read.
  enum class CellAnswer { Truthful, AlwaysKnown };
  SignalTap(QObject &plugin, oaPlugInCore &core, CellAnswer answer = CellAnswer::Truthful);

  const QVector<SignalShape> &shapes() const { return shapes_; }
  int qt_metacall(QMetaObject::Call call, int id, void **arguments) override;

protected:
  // `signal` is an index into shapes(). arguments[1] points at the first argument, and so on.
  virtual void record(int signal, void **arguments) = 0;

private:
  oaPlugInCore &core_;
  const CellAnswer answer_;
  QVector<SignalShape> shapes_;
  QSet<QString> knownCells_;
  int existCellSignal_ = -1;
  int addCellSignal_ = -1;
};

#endif
