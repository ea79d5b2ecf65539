#include "targetlibrary.h"

#include "hosterror.h"
#include "oaplugincore.h"
#include "pluginsession.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

// Also of paths where there is nothing, which have no canonical form.
bool isSamePath(const QString &one, const QString &other) {
  const QString canonical = QFileInfo(one).canonicalFilePath();
  if (!canonical.isEmpty())
    return canonical == QFileInfo(other).canonicalFilePath();
  return QDir::cleanPath(QFileInfo(one).absoluteFilePath()) == QDir::cleanPath(QFileInfo(other).absoluteFilePath());
}

} // namespace

TargetLibrary::TargetLibrary(PluginSession &session, const QString &lib, const QString &path)
    : session_(session), lib_(lib), path_(path.isEmpty() ? QString() : QFileInfo(path).absoluteFilePath()),
      isKnown_(find()) {}

bool TargetLibrary::find() {
  const QString known = session_.core().getLibPath(lib_);
  session_.synchronise();
  if (!known.isEmpty()) {
    if (!path_.isEmpty() && !isSamePath(known, path_))
      throw HostError(QStringLiteral("library %1 is known already, at %2, not at %3").arg(lib_, known, path_));
    session_.requireLibrary(lib_);
    return true;
  }
  if (path_.isEmpty())
    throw HostError(QStringLiteral("library %1 is not known; --path says where to make it").arg(lib_));
  const bool isThere = session_.core().existLib(path_) && session_.core().checkLib(lib_, path_, false);
  if (isThere)
    session_.requireLibrary(lib_);
  return isThere;
}

// What keeps the library from being made at the path, or an empty text.
QString TargetLibrary::fault() const {
  constexpr int kLongestPath = 4095;
  constexpr int kLongestFileName = 255;
  const QFileInfo directory(path_);
  const QFileInfo parent(directory.dir().path());
  const QFileInfo libDefs(session_.core().getLibDefsFilename());
  if (lib_.isEmpty() || lib_.contains(QLatin1Char('/')))
    return QStringLiteral("\"%1\" is no name of a library").arg(lib_);
  if (QFile::encodeName(path_).size() > kLongestPath ||
      QFile::encodeName(directory.fileName()).size() > kLongestFileName)
    return QStringLiteral("the path is too long");
  if (!libDefs.isWritable())
    return QStringLiteral("%1 cannot be written").arg(libDefs.filePath());
  if (!directory.exists())
    return !parent.isDir()        ? QStringLiteral("there is no directory %1").arg(parent.filePath())
           : !parent.isWritable() ? QStringLiteral("the directory %1 cannot be written").arg(parent.filePath())
                                  : QString();
  if (!directory.isDir())
    return QStringLiteral("it is no directory");
  return {};
}

void TargetLibrary::create() {
  const QString reason = fault();
  if (!reason.isEmpty())
    throw HostError(QStringLiteral("library %1 cannot be made at %2: %3").arg(lib_, path_, reason));
  const bool isEmptyDirectory = QDir(path_).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  const bool isMade = session_.core().checkLib(lib_, path_, true);
  session_.synchronise();
  if (!isMade)
    throw HostError(QStringLiteral("library %1 cannot be made at %2%3")
                        .arg(lib_, path_,
                             QFileInfo::exists(path_) && !isEmptyDirectory
                                 ? QStringLiteral(": the directory exists and is not empty")
                                 : QString()));
  if (!session_.core().getLibs().contains(lib_)) {
    throw HostError(QStringLiteral("library %1: %2 has no entry for it; its directory %3 remains")
                        .arg(lib_, session_.core().getLibDefsFilename(), path_));
  }
  isKnown_ = true;
}
