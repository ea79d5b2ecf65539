#include "libraryusers.h"

#include <QDir>
#include <QFile>
#include <QStringList>

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <thread>
#include <unistd.h>

namespace {

// Whether a process holds a lock on the file that excludes readers. The look itself is a shared lock, held for an
// instant.
bool isLocked(const QString &path) {
  const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  if (file < 0)
    return false;
  const bool isHeld = ::flock(file, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  ::close(file);
  return isHeld;
}

// Directories of cells and views: characters but letters, digits, '_' and '@' are '#' and two hexadecimal digits.
QString nameOfDirectory(const QString &directory) {
  QString name;
  for (int i = 0; i < directory.size(); ++i) {
    bool isCode = false;
    const int code = directory.mid(i + 1, 2).toInt(&isCode, 16);
    if (directory[i] == QLatin1Char('#') && isCode && i + 2 < directory.size()) {
      name += QLatin1Char(static_cast<char>(code));
      i += 2;
    } else {
      name += directory[i];
    }
  }
  return name;
}

// The directories in `directory` of that name, all of them for an empty one.
QStringList directoriesNamed(const QString &directory, const QString &name) {
  QStringList found;
  const QDir parent(directory);
  for (const QString &entry : parent.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    if (name.isEmpty() || nameOfDirectory(entry) == name)
      found.append(parent.filePath(entry));
  }
  return found;
}

// The lines of a lock file, "login ann", "process 4711" and others, without its path.
QString lockText(const QString &path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    return {};
  constexpr int kMostBytes = 1024;
  QStringList parts;
  for (const QString &line : QString::fromLocal8Bit(file.read(kMostBytes)).split(QLatin1Char('\n'))) {
    if (!line.trimmed().isEmpty() && !line.startsWith(QLatin1String("path ")))
      parts.append(line.simplified());
  }
  return parts.join(QStringLiteral(", "));
}

// The lock file in the directory that a process holds, empty when there is none.
QString heldLockIn(const QString &directory) {
  const QDir files(directory);
  for (const QString &file : files.entryList({QStringLiteral("*.cdslck")}, QDir::Files | QDir::Hidden)) {
    if (isLocked(files.filePath(file)))
      return files.filePath(file);
  }
  return {};
}

QString processName(const QByteArray &id) {
  QFile name(QStringLiteral("/proc/%1/comm").arg(QLatin1String(id)));
  const QString text = QStringLiteral("process %1").arg(QLatin1String(id));
  return name.open(QIODevice::ReadOnly)
             ? QStringLiteral("%1 (%2)").arg(text, QString::fromLocal8Bit(name.readAll()).trimmed())
             : text;
}

} // namespace

bool waitForLibrary(const QString &directory, int timeoutMs) {
  using Clock = std::chrono::steady_clock;
  constexpr auto kPause = std::chrono::milliseconds(20);
  const QString file = directory + QStringLiteral("/.oalib");
  const Clock::time_point end = Clock::now() + std::chrono::milliseconds(timeoutMs);
  while (isLocked(file)) {
    if (Clock::now() >= end)
      return false;
    std::this_thread::sleep_for(kPause);
  }
  return true;
}

// Lines of /proc/locks: "1: FLOCK  ADVISORY  WRITE 4711 fe:01:131090 0 EOF".
QString accessHolder(const QString &directory) {
  struct stat status;
  QFile locks(QStringLiteral("/proc/locks"));
  if (::stat(QFile::encodeName(directory + QStringLiteral("/.oalib")).constData(), &status) != 0 ||
      !locks.open(QIODevice::ReadOnly))
    return {};
  const QByteArray place = QStringLiteral("%1:%2:%3")
                               .arg(major(status.st_dev), 2, 16, QLatin1Char('0'))
                               .arg(minor(status.st_dev), 2, 16, QLatin1Char('0'))
                               .arg(quint64(status.st_ino))
                               .toLatin1();
  const QByteArray own = QByteArray::number(::getpid());
  for (const QByteArray &line : locks.readAll().split('\n')) {
    const QList<QByteArray> words = line.simplified().split(' ');
    if (words.size() >= 6 && words[1] == "FLOCK" && words[5] == place && words[4] != own && words[4].toInt() > 0)
      return processName(words[4]);
  }
  return {};
}

QString viewEditor(const QString &directory, const QString &cell, const QString &view) {
  for (const QString &cellDirectory : directoriesNamed(directory, cell)) {
    const QString ofCell = view.isEmpty() ? heldLockIn(cellDirectory) : QString();
    if (!ofCell.isEmpty())
      return QStringLiteral("%1: %2").arg(cell, lockText(ofCell));
    for (const QString &viewDirectory : directoriesNamed(cellDirectory, view)) {
      const QString ofView = heldLockIn(viewDirectory);
      if (!ofView.isEmpty())
        return QStringLiteral("%1/%2: %3").arg(cell, nameOfDirectory(QDir(viewDirectory).dirName()), lockText(ofView));
    }
  }
  return {};
}
