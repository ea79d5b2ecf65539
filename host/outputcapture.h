#ifndef OUTPUTCAPTURE_H
#define OUTPUTCAPTURE_H

#include <QByteArray>
#include <QHash>

#include <condition_variable>
#include <mutex>
#include <thread>

// Takes standard output away from everybody else in the process. The plug-in prints its error and diagnostic lines
// there, where they would mix with the data that a command writes; so file descriptor 1 becomes a pipe, a thread
// forwards its lines to standard error while they come, and the command writes to the original standard output through
// write().
class OutputCapture {
public:
  // With `diagnostics`, lines are expected and passed on as they are, and only those that begin with "ERROR (", and
  // the one of a failed lib.defs, are errors. Without, every line is one.
  explicit OutputCapture(bool diagnostics);
  // Restores file descriptor 1.
  ~OutputCapture();
  OutputCapture(const OutputCapture &) = delete;
  OutputCapture &operator=(const OutputCapture &) = delete;

  // Returns when everything printed before the call has been forwarded and counted.
  void synchronise();
  // The next line that is exactly `line` repeats what the user has been told: it is neither shown nor counted. Holds up
  // to the next synchronise().
  void dropLine(const QByteArray &line);
  // Error lines up to the last synchronise().
  int errorCount();

  // Writes to the original standard output. Throws HostError when that fails.
  void write(const QByteArray &bytes);

private:
  void forwardLines();
  void takeBytes(const char *bytes, qsizetype count);
  bool isDropped(const QByteArray &line);
  void forwardLine(const QByteArray &line);

  const bool diagnostics_;
  quint64 marksSent_ = 0;
  int realOutput_ = -1;
  int pipeReader_ = -1;
  std::thread thread_;
  QByteArray pending_; // of the thread: a line without its end
  std::mutex mutex_;
  std::condition_variable marked_;
  quint64 marksSeen_ = 0;
  int errorCount_ = 0;
  QHash<QByteArray, int> linesToDrop_;
};

#endif
