#include "outputcapture.h"

#include "hosterror.h"
#include "usermessage.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {

// A byte that no message holds. Sent down the pipe, it comes out behind everything printed before.
constexpr char kMark = '\x01';

// A fault in a loop may print a line for each of a million shapes.
constexpr int kForwardedErrors = 100;

HostError systemError(const char *what) {
  return HostError(QStringLiteral("%1: %2").arg(QLatin1String(what), QString::fromLocal8Bit(std::strerror(errno))));
}

} // namespace

OutputCapture::OutputCapture(bool diagnostics) : diagnostics_(diagnostics) {
  std::fflush(stdout);
  int ends[2];
  if (pipe(ends) != 0)
    throw systemError("pipe for the plug-in's output");
  pipeReader_ = ends[0];
  realOutput_ = dup(STDOUT_FILENO);
  if (realOutput_ < 0 || dup2(ends[1], STDOUT_FILENO) < 0)
    throw systemError("standard output");
  close(ends[1]);
  thread_ = std::thread([this] { forwardLines(); });
}

OutputCapture::~OutputCapture() {
  std::fflush(stdout);
  // The last writing end of the pipe closes with this, which ends the thread.
  dup2(realOutput_, STDOUT_FILENO);
  thread_.join();
  close(realOutput_);
  close(pipeReader_);
  if (errorCount_ > kForwardedErrors)
    tellUser(QStringLiteral("%1 further messages of the plug-in not shown").arg(errorCount_ - kForwardedErrors));
}

void OutputCapture::synchronise() {
  std::fflush(stdout);
  // Not under the lock: the pipe may be full, and the thread that empties it takes the lock.
  ssize_t written = 0;
  do
    written = ::write(STDOUT_FILENO, &kMark, 1);
  while (written < 0 && errno == EINTR);
  if (written != 1)
    return;
  const quint64 mark = ++marksSent_;
  std::unique_lock<std::mutex> lock(mutex_);
  marked_.wait(lock, [&] { return marksSeen_ >= mark; });
  linesToDrop_.clear();
}

void OutputCapture::dropLine(const QByteArray &line) {
  const std::lock_guard<std::mutex> lock(mutex_);
  ++linesToDrop_[line];
}

bool OutputCapture::isDropped(const QByteArray &line) {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto found = linesToDrop_.find(line);
  if (found == linesToDrop_.end())
    return false;
  if (--*found == 0)
    linesToDrop_.erase(found);
  return true;
}

int OutputCapture::errorCount() {
  const std::lock_guard<std::mutex> lock(mutex_);
  return errorCount_;
}

void OutputCapture::write(const QByteArray &bytes) {
  const char *next = bytes.constData();
  auto left = static_cast<std::size_t>(bytes.size());
  while (left > 0) {
    const ssize_t written = ::write(realOutput_, next, left);
    if (written < 0 && errno == EINTR)
      continue;
    if (written < 0)
      throw systemError("standard output");
    next += written;
    left -= static_cast<std::size_t>(written);
  }
}

void OutputCapture::forwardLines() {
  char buffer[1 << 16];
  for (;;) {
    const ssize_t count = read(pipeReader_, buffer, sizeof buffer);
    if (count < 0 && errno == EINTR)
      continue;
    if (count <= 0)
      break;
    takeBytes(buffer, count);
  }
  if (!pending_.isEmpty())
    forwardLine(pending_);
}

void OutputCapture::takeBytes(const char *bytes, qsizetype count) {
  for (qsizetype i = 0; i < count; ++i) {
    if (bytes[i] == '\n') {
      forwardLine(pending_);
      pending_.clear();
    } else if (bytes[i] == kMark) {
      const std::lock_guard<std::mutex> lock(mutex_);
      ++marksSeen_;
      marked_.notify_all();
    } else {
      pending_.append(bytes[i]);
    }
  }
}

void OutputCapture::forwardLine(const QByteArray &line) {
  if (line.trimmed().isEmpty())
    return;
  if (diagnostics_ && !line.startsWith("ERROR (") && !line.startsWith("create lib list failed")) {
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
    std::fputc('\n', stderr);
    return;
  }
  if (isDropped(line.trimmed()))
    return;
  int errors = 0;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    errors = ++errorCount_;
  }
  if (errors <= kForwardedErrors)
    tellUser(QString::fromLocal8Bit(line.trimmed()));
}
