#ifndef SCHEMATICSINK_H
#define SCHEMATICSINK_H

#include <chrono>
#include <vector>

#include <QObject>
#include <QPoint>
#include <QPolygon>
#include <QString>

#include "schematicworkload.h"

// What a sink received of a schematic, for comparing two streams.
struct ReceivedSchematic {
  qint64 cellData = 0, placements = 0, texts = 0, points = 0, iterations = 0, connections = 0;
  qint64 wires = 0, buses = 0, dots = 0, labels = 0, ports = 0, globals = 0, errors = 0;
  // Over all arguments. Each kind's order counts, and to which placement or port the data belong; how the kinds of
  // drawing are interleaved does not.
  quint64 checksum = 0;

  bool operator==(const ReceivedSchematic &other) const;
  qint64 signalCount() const;
  QString text() const;
};

// A receiver that does next to nothing with what arrives.
class SchematicSink : public QObject {
  Q_OBJECT

public:
  void connectTo(QObject *sender);
  void start();
  // From here on the memory in use is looked at now and then, which takes time.
  void watchMemory() { watchesMemory_ = true; }
  const ReceivedSchematic &received() const { return received_; }
  // From start() to the first signal of all, and to the first placement or drawing. Negative when there was none.
  double firstSignalMs() const { return firstSignalMs_; }
  double firstObjectMs() const { return firstObjectMs_; }
  // The most memory that was in use while signals arrived.
  qint64 mostResidentBytes() const { return mostResidentBytes_; }
  QString firstError() const { return firstError_; }

public slots:
  void reportError(QString message, int severity, QString detail);
  void addCellNumData(int key, QString value);
  void addPlacement(QString device, QString library, QPoint origin, QString trans);
  void setDataString(QString name, QString value);
  void setDataPoint(int type, QPoint value);
  void upgradeToVectorPlacement(int start, int stop);
  void setVectorPlacementConnection(QString terminal, QString net);
  void addWire(QPolygon points);
  void addBus(QPolygon points);
  void addWireDot(QPoint centre);
  void addWireLabel(QPoint origin, QString text, QPoint offset);
  void addPort(QPoint position, QString name);
  void setGlobal(bool isGlobal);

private:
  double elapsedMs() const;
  void noteObject() {
    if (firstObjectMs_ < 0) {
      firstObjectMs_ = elapsedMs();
    }
    if (watchesMemory_) {
      lookAtMemory();
    }
  }
  void lookAtMemory();
  // The number of the placement or port that data belong to.
  quint64 carrier() const { return quint64(received_.placements + received_.ports); }

  ReceivedSchematic received_;
  std::chrono::steady_clock::time_point start_;
  double firstSignalMs_ = -1;
  double firstObjectMs_ = -1;
  bool watchesMemory_ = false;
  qint64 mostResidentBytes_ = 0;
  // Signals until the memory is looked at again.
  qint64 nextLook_ = 0;
  QString firstError_;
};

// The floor: the signals of a workload, emitted from arrays in memory by an object with the plug-in's declarations.
class SchematicFloor : public QObject {
  Q_OBJECT

public:
  SchematicFloor(const schematicworkload::Counts &counts, const QString &lib, const QString &cell);
  void send();

signals:
  void addCellNumData(int, QString);
  void addWireLabel(QPoint, QString name, QPoint offset);
  void addWire(QPolygon pa);
  void addBus(QPolygon pa);
  void addWireDot(QPoint);
  void setGlobal(bool);
  void addPort(QPoint, QString name);
  void addPlacement(QString, QString, QPoint, QString trans);
  void upgradeToVectorPlacement(int start, int stop);
  void setVectorPlacementConnection(QString port, QString net);
  void setDataString(QString, QString);
  void setDataPoint(int type, QPoint);
  void reportError(QString, int, QString);

private:
  struct Placement {
    QString device, library;
    QPoint origin;
    QString trans, name;
    QPoint labelOffset;
    // Where its part of the arrays below ends.
    size_t propertyEnd, connectionEnd;
    bool isIterated;
  };
  struct Wire {
    size_t pointEnd;
    bool isBus;
  };
  struct Label {
    QPoint origin, offset;
    QString text;
  };
  struct Port {
    QPoint position;
    QString name, type;
    bool isGlobal;
  };

  void addPlacements(const schematicworkload::Counts &counts, const QString &lib);
  void sendPlacements();
  void sendDrawing();

  const QString lib_;
  const QString cell_;
  std::vector<Placement> placements_;
  std::vector<schematicworkload::Property> properties_;
  // Terminal and net.
  std::vector<schematicworkload::Property> connections_;
  std::vector<Wire> wires_;
  std::vector<QPoint> points_;
  std::vector<QPoint> dots_;
  std::vector<Label> labels_;
  std::vector<Port> ports_;
};

#endif
