#ifndef PLUGINSESSION_H
#define PLUGINSESSION_H

#include "outputcapture.h"

#include <QHash>
#include <QObject>
#include <QPluginLoader>
#include <QString>
#include <QStringList>

#include <memory>

class oaPlugInCore;
struct CommandContext;

// The loaded plug-in, initialised, with no limit on layer numbers. From the construction on, standard output belongs to
// the plug-in's lines, which are forwarded to standard error; a command prints its own output through writeOutput().
//
// One session a process: the plug-in starts its database once and never stops it.
class PluginSession : public QObject {
  Q_OBJECT

public:
  // Sets HOME, loads the plug-in and calls init(). Throws HostError with the file and the reason.
  explicit PluginSession(const CommandContext &context);
  ~PluginSession() override;

  oaPlugInCore &core() { return *core_; }
  // The object whose signals carry what is read.
  QObject &object() { return *object_; }

  // Waits until all lines that the plug-in has printed so far are forwarded and counted.
  void synchronise();
  // The error lines and error reports so far, as of the last synchronise().
  int errorCount();
  // 1 when the plug-in has complained about anything, else 0.
  int exitCode();

  // While true, reports of the plug-in are neither shown nor counted: for a look at something that the user did not ask
  // for.
  void setReportsIgnored(bool ignored) { areReportsIgnored_ = ignored; }

  // Writes to the process's standard output.
  void writeOutput(const QByteArray &bytes);

  // Throws HostError when there is no lib.defs, or none that can be read.
  void requireLibraryDefinitions();
  // Throws HostError unless the library is known, and when another process writes to it for longer than the user waits:
  // reading operations of the plug-in hardly wait themselves.
  void requireLibrary(const QString &lib);
  // The cells of a library and the views of a cell that is there, for who relies on what is not among them. Throw
  // HostError when they cannot be looked up.
  QStringList requireCellNames(const QString &lib);
  QStringList requireViewNames(const QString &lib, const QString &cell);
  // Throws HostError unless the library has the cell.
  void requireCell(const QString &lib, const QString &cell);
  // Throws HostError when the plug-in has complained since `errorsBefore` were counted: `what` cannot be looked up.
  // Says who holds the library, where that can be known.
  void requireAnswer(const QString &lib, const QString &what, int errorsBefore);
  // Throws HostError unless the cell view exists; returns its view type ("maskLayout", ...).
  QString requireView(const QString &lib, const QString &cell, const QString &view);

private slots:
  void onReportError(const QString &message, int severity, const QString &detail);

private:
  // The reason why a library that lib.defs defines is not there, or an empty text.
  static QString missingLibraryReason(const QString &lib, const QString &libDefsFile);
  void load(const QString &file);

  OutputCapture capture_;
  QPluginLoader loader_;
  QObject *object_ = nullptr;
  oaPlugInCore *core_ = nullptr;
  // Each different report with the number of times it came.
  QHash<QString, int> reports_;
  QStringList repeatedReports_; // in order
  int reportedErrors_ = 0;
  int waitMs_ = 0;
  bool areReportsIgnored_ = false;
};

#endif
