#include "commandvalues.h"

#include "hosterror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace {

QString requireLatin1(const QString &text) {
  if (QString::fromLatin1(text.toLatin1()) != text)
    throw HostError(
        QStringLiteral("\"%1\" has characters that a library cannot hold; only Latin-1 is possible").arg(text));
  return text;
}

} // namespace

QString nameFromCommandLine(const std::string &text) { return requireLatin1(QString::fromStdString(text)); }

QString libraryPathFromCommandLine(const std::string &text) {
  const QString given = QString::fromLocal8Bit(text.c_str());
  QString path = QDir::cleanPath(QFileInfo(given).absoluteFilePath());
  // The first: in a locale without these characters.
  if (QFile::encodeName(given) != text.c_str() || QFile::encodeName(path) != path.toLatin1()) {
    throw HostError(QStringLiteral("%1: the plug-in would make another directory of the characters in this path; the "
                                   "path of a library has to be ASCII here")
                        .arg(path));
  }
  return path;
}

void requireOrdinaryOutput(const QString &fileName) {
  struct stat status;
  if (stat(QFile::encodeName(fileName).constData(), &status) == 0 && !S_ISREG(status.st_mode))
    throw HostError(QStringLiteral("%1: is no ordinary file").arg(fileName));
}
