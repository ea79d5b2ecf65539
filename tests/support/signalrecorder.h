#ifndef SIGNALRECORDER_H
#define SIGNALRECORDER_H

#include <functional>
#include <string>
#include <vector>

#include <QMetaMethod>
#include <QObject>
#include <QSet>
#include <QString>

class oaPlugInCore;

// Connects itself to every signal that a plug-in object's own class declares, whichever side of a shared library that
// class lives on, and writes one line for each emission: the signal's name and its arguments in order. Integers, reals
// and truth values are bare, texts stand in double quotes, points are "(x y)", polygons and lists "[a b c]".
//
//     addBox 0 0 10 5 4 0
//     addCellRef "inv" (100 200) "R90" "I1"
//
// existCell() is answered by a rule; the default is the truth, which is whether addCell() has come for that name.
class SignalRecorder : public QObject {
public:
  // `sender` must implement oaPlugInCore and outlive the recorder.
  explicit SignalRecorder(QObject *sender);

  // The answer to existCell(name).
  void answerExistCell(std::function<bool(const QString &)> rule) { existRule_ = std::move(rule); }
  // Called before each emission is recorded; a place to act inside the walk, as a host's slot does.
  void onSignal(std::function<void(const std::string &signalName)> hook) { hook_ = std::move(hook); }

  const std::vector<std::string> &lines() const { return lines_; }
  // The lines of the named signals only, in the order of arrival.
  std::vector<std::string> lines(const std::vector<std::string> &signalNames) const;
  void clear() { lines_.clear(); }

  // Routes the emissions; one virtual slot for each connected signal, numbered after QObject's own methods.
  int qt_metacall(QMetaObject::Call call, int id, void **arguments) override;

private:
  void record(const QMetaMethod &signal, void **arguments);

  oaPlugInCore *plugIn_;
  std::vector<QMetaMethod> signals_;
  std::vector<std::string> lines_;
  QSet<QString> heldCells_;
  std::function<bool(const QString &)> existRule_;
  std::function<void(const std::string &)> hook_;
};

#endif
