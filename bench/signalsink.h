#ifndef SIGNALSINK_H
#define SIGNALSINK_H

#include <chrono>
#include <vector>

#include <QObject>
#include <QPoint>
#include <QPolygon>
#include <QSet>
#include <QString>

#include "workload.h"

class oaPlugInCore;

// What a sink received, for comparing two streams.
struct Received {
  qint64 boxes = 0, polygons = 0, paths = 0, references = 0, questions = 0, cells = 0, errors = 0;
  // Sum over all arguments of all shapes and references; the order does not matter, a missing or changed argument does.
  quint64 checksum = 0;

  bool operator==(const Received &other) const;
  QString text() const;
};

// A receiver that does next to nothing with what arrives. It answers existCell() truthfully, as a host does.
class SignalSink : public QObject {
  Q_OBJECT

public:
  // `plugIn` gets the answers.
  explicit SignalSink(oaPlugInCore *plugIn) : plugIn_(plugIn) {}

  void connectTo(QObject *sender);
  void start();
  const Received &received() const { return received_; }
  // From start() to the first signal of all, and to the first shape or reference. Negative when there was none.
  double firstSignalMs() const { return firstSignalMs_; }
  double firstObjectMs() const { return firstObjectMs_; }
  // Bytes of memory in use when the last cell was complete and the design still open.
  qint64 residentBytesAtEnd() const { return residentBytes_; }
  QString firstError() const { return firstError_; }

public slots:
  void reportError(QString message, int severity, QString detail);
  void setUnits(double userUnitsPerDbu, double metresPerDbu);
  void setCurrentCell(QString name);
  void addCell(QString name);
  void existCell(QString name);
  void addBox(int left, int bottom, int width, int height, int layer, int datatype);
  void addPolygon(QPolygon points, int layer, int datatype);
  void addPath(QPolygon points, int layer, int datatype, int width, int caps, int beginExt, int endExt);
  void addCellRef(QString cell, QPoint origin, QString trans, QString instance);

private:
  double elapsedMs() const;
  void noteFirstObject() {
    if (firstObjectMs_ < 0) {
      firstObjectMs_ = elapsedMs();
    }
  }

  oaPlugInCore *plugIn_;
  Received received_;
  QSet<QString> heldCells_;
  std::chrono::steady_clock::time_point start_;
  double firstSignalMs_ = -1;
  double firstObjectMs_ = -1;
  qint64 residentBytes_ = 0;
  QString firstError_;
};

// The floor: the signals of a workload, emitted from arrays in memory by an object with the plug-in's declarations.
class FloorSender : public QObject {
  Q_OBJECT

public:
  FloorSender(workload::Kind kind, int count);
  void send();

signals:
  void setUnits(double, double);
  void setCurrentCell(QString);
  void addCell(QString cellname);
  void existCell(QString cellname);
  void addBox(int left, int bottom, int width, int height, int layer, int datatype);
  void addPolygon(QPolygon pa, int layer, int datatype);
  void addPath(QPolygon pa, int layer, int datatype, int width, int caps, int bExt, int eExt);
  void addCellRef(QString cell, QPoint, QString trans, QString devicename);
  void reportError(QString, int, QString);

private:
  struct Box {
    int left, bottom, width, height, layer, datatype;
  };
  struct Reference {
    QString cell;
    QPoint origin;
    QString trans, instance;
  };

  void sendMasters();

  workload::Kind kind_;
  std::vector<Box> boxes_;
  std::vector<QPoint> points_;
  std::vector<int> layers_;
  std::vector<Reference> references_;
};

#endif
