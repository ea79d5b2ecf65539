#include "pluginsession.h"

#include "commands.h"
#include "hosterror.h"
#include "libraryusers.h"
#include "oaplugincore.h"
#include "usermessage.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <limits>

namespace {

// The executable is in bin, the plug-in in lib beside it, in the build tree and after installation.
QString defaultPluginFile() {
  return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../lib/liboaplugin.so"));
}

} // namespace

PluginSession::PluginSession(const CommandContext &context)
    : capture_(context.debug), waitMs_(static_cast<int>(context.waitSeconds * 1000)) {
  if (!context.libraryDefsHome.isEmpty()) {
    const QFileInfo home(context.libraryDefsHome);
    if (!home.isDir())
      throw HostError(QStringLiteral("--lib-defs-home: %1 is not a directory").arg(context.libraryDefsHome));
    qputenv("HOME", QFile::encodeName(home.absoluteFilePath()));
  }
  load(context.pluginFile.isEmpty() ? defaultPluginFile() : context.pluginFile);
  connect(object_, SIGNAL(reportError(QString, int, QString)), this, SLOT(onReportError(QString, int, QString)));
  core_->setLayerMax(std::numeric_limits<int>::max(), std::numeric_limits<int>::max());
  core_->init(context.debug);
  synchronise();
  if (errorCount() > 0)
    throw HostError(QStringLiteral("the plug-in %1 could not start").arg(loader_.fileName()));
}

PluginSession::~PluginSession() {
  for (const QString &report : repeatedReports_)
    tellUser(QStringLiteral("%1 times: %2").arg(reports_.value(report)).arg(report));
}

void PluginSession::load(const QString &file) {
  const QFileInfo found(file);
  if (!found.exists())
    throw HostError(QStringLiteral("plug-in %1 does not exist; name it with --plugin").arg(file));
  loader_.setFileName(found.absoluteFilePath());
  object_ = loader_.instance();
  if (object_ == nullptr)
    throw HostError(QStringLiteral("plug-in %1 cannot be loaded: %2").arg(file, loader_.errorString()));
  core_ = qobject_cast<oaPlugInCore *>(object_);
  if (core_ == nullptr) {
    throw HostError(QStringLiteral("plug-in %1: its object %2 does not have the interface %3")
                        .arg(file, QLatin1String(object_->metaObject()->className()),
                             QLatin1String(qobject_interface_iid<oaPlugInCore *>())));
  }
}

void PluginSession::synchronise() { capture_.synchronise(); }

int PluginSession::errorCount() { return capture_.errorCount() + reportedErrors_; }

int PluginSession::exitCode() {
  synchronise();
  return errorCount() > 0 ? 1 : 0;
}

void PluginSession::writeOutput(const QByteArray &bytes) { capture_.write(bytes); }

void PluginSession::requireLibraryDefinitions() {
  const QString file = core_->getLibDefsFilename();
  synchronise();
  if (file.isEmpty())
    throw HostError(QStringLiteral("%1/lib.defs cannot be read as a library definition file")
                        .arg(QString::fromLocal8Bit(qgetenv("HOME"))));
}

QString PluginSession::missingLibraryReason(const QString &lib, const QString &libDefsFile) {
  QFile file(libDefsFile);
  if (!file.open(QIODevice::ReadOnly))
    return {};
  while (!file.atEnd()) {
    const QList<QByteArray> words = file.readLine().simplified().split(' ');
    if (words.size() != 3 || words[0] != "DEFINE" || QString::fromLatin1(words[1]) != lib)
      continue;
    const QDir directory(QFileInfo(libDefsFile).dir().filePath(QFile::decodeName(words[2])));
    if (!directory.exists())
      return QStringLiteral(": there is no directory %1").arg(directory.path());
    if (!directory.exists(QStringLiteral(".oalib")))
      return QStringLiteral(": %1 is no library, it has no .oalib").arg(directory.path());
    return QStringLiteral(": %1").arg(directory.path());
  }
  return {};
}

void PluginSession::requireLibrary(const QString &lib) {
  requireLibraryDefinitions();
  const QString path = core_->getLibPath(lib);
  synchronise();
  if (path.isEmpty()) {
    const QString file = core_->getLibDefsFilename();
    if (core_->getLibs().contains(lib)) {
      throw HostError(QStringLiteral("library %1 is defined in %2, but its directory cannot be opened%3")
                          .arg(lib, file, missingLibraryReason(lib, file)));
    }
    throw HostError(QStringLiteral("library %1 is not known; it is not defined in %2").arg(lib, file));
  }
  // What is asked for all the same would seem not to be there.
  if (!waitForLibrary(path, waitMs_)) {
    const QString holder = accessHolder(path);
    throw HostError(QStringLiteral("library %1 is being written by %2; waited for %3 s")
                        .arg(lib, holder.isEmpty() ? QStringLiteral("another process") : holder)
                        .arg(waitMs_ / 1000.0));
  }
}

void PluginSession::requireAnswer(const QString &lib, const QString &what, int errorsBefore) {
  synchronise();
  if (errorCount() == errorsBefore)
    return;
  const QString holder = accessHolder(core_->getLibPath(lib));
  throw HostError(QStringLiteral("%1 cannot be looked up%2")
                      .arg(what, holder.isEmpty()
                                     ? QString()
                                     : QStringLiteral(": %1 holds access to library %2").arg(holder, lib)));
}

QStringList PluginSession::requireCellNames(const QString &lib) {
  const int errorsBefore = errorCount();
  QStringList cells = core_->getCellNames(lib);
  requireAnswer(lib, QStringLiteral("the cells of library %1").arg(lib), errorsBefore);
  return cells;
}

QStringList PluginSession::requireViewNames(const QString &lib, const QString &cell) {
  const int errorsBefore = errorCount();
  QStringList views = core_->getViewNames(lib, cell);
  requireAnswer(lib, QStringLiteral("the views of cell %1 of library %2").arg(cell, lib), errorsBefore);
  return views;
}

void PluginSession::requireCell(const QString &lib, const QString &cell) {
  requireLibrary(lib);
  const int errorsBefore = errorCount();
  if (core_->getCellNames(lib).contains(cell))
    return;
  requireAnswer(lib, QStringLiteral("cell %1 of library %2").arg(cell, lib), errorsBefore);
  throw HostError(QStringLiteral("library %1 has no cell %2").arg(lib, cell));
}

QString PluginSession::requireView(const QString &lib, const QString &cell, const QString &view) {
  requireLibrary(lib);
  const int errorsBefore = errorCount();
  QString type = core_->getViewType(lib, cell, view);
  synchronise();
  if (type.isEmpty()) {
    requireAnswer(lib, cellViewName(lib, cell, view), errorsBefore);
    requireCell(lib, cell);
    throw HostError(QStringLiteral("cell %1 of library %2 has no view %3").arg(cell, lib, view));
  }
  return type;
}

void PluginSession::onReportError(const QString &message, int severity, const QString &detail) {
  if (areReportsIgnored_)
    return;
  constexpr int kErrorSeverity = 1;
  if (severity <= kErrorSeverity)
    ++reportedErrors_;
  // A writing operation names itself and the object in the detail, and prints "ERROR (<operation>): <message>" as well.
  const int labelLength = detail.indexOf(QLatin1String(": "));
  if (labelLength > 0)
    capture_.dropLine("ERROR (" + detail.left(labelLength).toLatin1() + "): " + message.toLatin1().trimmed());
  const QString report = detail.isEmpty() ? message : message + QStringLiteral(": ") + detail;
  // Of very many different texts, the later ones are not kept for the count.
  constexpr int kCountedReports = 10000;
  if (reports_.size() >= kCountedReports && !reports_.contains(report)) {
    tellUser(report);
    return;
  }
  int &count = reports_[report];
  ++count;
  if (count == 1)
    tellUser(report);
  else if (count == 2)
    repeatedReports_.append(report);
}
