#ifndef IMPORTREPORT_H
#define IMPORTREPORT_H

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

// What was done otherwise than the source said, collected over a whole import or export: each kind is told once, with
// its count and the place where it was met first.
class ImportReport {
public:
  // The outcome is equivalent, or as good as the target can hold.
  void notice(const QString &what, const QString &where) { add(what, where, false); }
  // Something was left out; the command fails after finishing its work.
  void problem(const QString &what, const QString &where) { add(what, where, true); }

  int problemCount() const { return problemCount_; }
  // "12 times: <what> (first: <where>)", in order of first appearance.
  QStringList lines() const;

private:
  struct Entry {
    QString what;
    QString firstPlace;
    quint64 count = 0;
  };
  void add(const QString &what, const QString &where, bool isProblem);

  QVector<Entry> entries_;
  QHash<QString, int> entryOf_;
  int problemCount_ = 0;
};

#endif
