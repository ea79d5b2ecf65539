#include "benchplugin.h"

#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>

#include "oaplugincore.h"

BenchPlugin::BenchPlugin(const QString &file, const QString &parentFolder, const QString &folder)
    : file_(file.isEmpty() ? QStringLiteral(BENCH_PLUGIN) : file), folder_(folder), loader_(file_), plugIn_(nullptr) {
  if (folder_.isEmpty()) {
    temporary_.reset(new QTemporaryDir(QDir(parentFolder).filePath("bench-XXXXXX")));
    if (!temporary_->isValid()) {
      throw std::runtime_error("no temporary folder in " + parentFolder.toStdString() + ": " +
                               temporary_->errorString().toStdString());
    }
    folder_ = temporary_->path();
  }
  qputenv("HOME", folder_.toLocal8Bit());
  QDir::setCurrent(folder_);
  plugIn_ = qobject_cast<oaPlugInCore *>(loader_.instance());
  if (!plugIn_) {
    throw std::runtime_error(file_.toStdString() +
                             " is no plug-in of this host: " + loader_.errorString().toStdString());
  }
  plugIn_->init(false);
  plugIn_->setLayerMax(256, 256);
  if (!plugIn_->checkLib(lib(), QDir(folder_).filePath(lib()), true)) {
    throw std::runtime_error("cannot make the library bench in " + folder_.toStdString());
  }
}

QString BenchPlugin::designFile(const QString &cell, const QString &view) const {
  const QString file = view == QLatin1String("schematic") ? QStringLiteral("sch.oa") : view + ".oa";
  return QDir(folder_).filePath(lib() + '/' + cell + '/' + view + '/' + file);
}

qint64 residentBytes() {
  QFile statm(QStringLiteral("/proc/self/statm"));
  if (!statm.open(QIODevice::ReadOnly)) {
    return 0;
  }
  return statm.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE);
}

QList<double> figuresOfOwnProcess(const QStringList &arguments, int count) {
  QProcess process;
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(QCoreApplication::applicationFilePath(), arguments);
  if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
    throw std::runtime_error("the program's own further process failed");
  }
  const QList<QByteArray> words = process.readAllStandardOutput().simplified().split(' ');
  QList<double> figures;
  bool isNumber = true;
  for (const QByteArray &word : words) {
    figures.append(isNumber ? word.toDouble(&isNumber) : 0);
  }
  if (!isNumber || figures.size() != count) {
    throw std::runtime_error("the program's own further process printed no figures");
  }
  return figures;
}

void dropFromCache(const QString &file) {
  const int descriptor = ::open(QFile::encodeName(file).constData(), O_RDONLY);
  if (descriptor >= 0) {
    fdatasync(descriptor);
    posix_fadvise(descriptor, 0, 0, POSIX_FADV_DONTNEED);
    ::close(descriptor);
  }
}
