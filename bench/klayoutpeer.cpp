#include "klayoutpeer.h"

#include <stdexcept>

#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

namespace {

const int kTimeoutMs = 30 * 60 * 1000;

QString program() { return QStandardPaths::findExecutable(QStringLiteral("klayout")); }

} // namespace

bool hasKlayout() { return !program().isEmpty(); }

KlayoutFigures runKlayout(int count, const QString &folder) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("QT_QPA_PLATFORM", "offscreen");
  process.setProcessEnvironment(environment);
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  const QString file = QDir(folder).filePath("peer.gds");
  process.start(program(),
                {"-b", "-r", BENCH_KLAYOUT_SCRIPT, "-rd", QString("count=%1").arg(count), "-rd", "file=" + file});
  if (!process.waitForFinished(kTimeoutMs) || process.exitCode() != 0) {
    throw std::runtime_error("klayout did not finish: " + process.errorString().toStdString());
  }
  QFile::remove(file);
  const QStringList figures = QString::fromLatin1(process.readAllStandardOutput()).simplified().split(' ');
  const int start = figures.indexOf("figures");
  if (start < 0 || figures.size() < start + 6 || figures.at(start + 1).toInt() != count) {
    throw std::runtime_error("klayout answered without the figures of " + std::to_string(count) +
                             " rectangles: " + figures.join(' ').toStdString());
  }
  KlayoutFigures result;
  result.writeNs = figures.at(start + 2).toDouble();
  result.loadNs = figures.at(start + 3).toDouble();
  result.walkNs = figures.at(start + 4).toDouble();
  result.fileBytes = figures.at(start + 5).toLongLong();
  return result;
}
