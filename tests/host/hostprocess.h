#ifndef HOSTPROCESS_H
#define HOSTPROCESS_H

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <stdexcept>

struct HostResult {
  int exitCode = -1;
  QByteArray output;
  std::string errors;
};

// Runs the built oahost in a folder and with a HOME of its own.
class HostProcess {
public:
  HostResult run(const QStringList &arguments) const {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", folder_.path());
    environment.remove("QT_QPA_PLATFORM"); // a desktop's, or that of a test program that draws itself
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder_.path());
    process.start(OAHOST_FILE, arguments);
    constexpr int kTimeoutMs = 120000;
    if (!process.waitForFinished(kTimeoutMs)) {
      throw std::runtime_error("oahost " + arguments.join(' ').toStdString() + " did not end");
    }
    const bool hasCrashed = process.exitStatus() == QProcess::CrashExit;
    return {hasCrashed ? -1 : process.exitCode(), process.readAllStandardOutput(),
            process.readAllStandardError().toStdString()};
  }
  // The words of a command line without quotes.
  HostResult run(const char *arguments) const { return run(QString(arguments).split(' ')); }

  QString path(const QString &name) const { return folder_.filePath(name); }
  void write(const QString &name, const QByteArray &bytes) const {
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
      throw std::runtime_error("cannot write " + name.toStdString());
    }
  }
  QByteArray read(const QString &name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

private:
  QTemporaryDir folder_;
};

#endif
