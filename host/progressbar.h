#ifndef PROGRESSBAR_H
#define PROGRESSBAR_H

#include <QElapsedTimer>
#include <QString>

// A line on standard error that shows how far a long work has come. Nothing is drawn unless standard error is a
// terminal and the work has lasted for half a second. The line is erased at the end.
class ProgressBar {
public:
  // `total` is the amount that counts as done, in any unit; 0 or less shows a plain count.
  ProgressBar(const QString &label, qint64 total);
  ~ProgressBar();
  ProgressBar(const ProgressBar &) = delete;
  ProgressBar &operator=(const ProgressBar &) = delete;

  void update(qint64 done);

private:
  void draw(qint64 done);

  QString label_;
  qint64 total_;
  bool isTerminal_;
  bool isDrawn_ = false;
  qint64 lastDrawnMs_ = 0;
  QElapsedTimer timer_;
};

#endif
