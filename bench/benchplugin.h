#ifndef BENCHPLUGIN_H
#define BENCHPLUGIN_H

#include <memory>

#include <QList>
#include <QPluginLoader>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

class oaPlugInCore;

// The plug-in, loaded as a host loads it, with a library "bench" in a folder of its own that is also the home
// directory.
class BenchPlugin {
public:
  // An empty `file` is the plug-in of this build. Without `folder` the library is a new one in a temporary directory
  // under `parentFolder`, which goes with the object; with it, the library of an earlier object is used. Raises
  // std::runtime_error.
  BenchPlugin(const QString &file, const QString &parentFolder, const QString &folder = QString());

  oaPlugInCore &operator*() const { return *plugIn_; }
  oaPlugInCore *operator->() const { return plugIn_; }
  QObject *object() { return loader_.instance(); }
  const QString &file() const { return file_; }
  const QString &folder() const { return folder_; }
  // The design file of a cell's view.
  QString designFile(const QString &cell, const QString &view = QStringLiteral("layout")) const;

  static QString lib() { return QStringLiteral("bench"); }

private:
  QString file_;
  std::unique_ptr<QTemporaryDir> temporary_;
  QString folder_;
  QPluginLoader loader_;
  oaPlugInCore *plugIn_;
};

// Memory of this process that is in RAM, mapped files included.
qint64 residentBytes();

// Runs this program once more with the arguments and returns the `count` figures that it prints, for what only a
// process of its own can measure. Raises std::runtime_error.
QList<double> figuresOfOwnProcess(const QStringList &arguments, int count);

// Takes a file out of the page cache, as far as the system lets us.
void dropFromCache(const QString &file);

#endif
