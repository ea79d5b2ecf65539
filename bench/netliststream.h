#ifndef NETLISTSTREAM_H
#define NETLISTSTREAM_H

#include <vector>

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

// What a sink received of a netlist.
struct ReceivedNetlist {
  qint64 nodes = 0, externals = 0, devices = 0, connections = 0, errors = 0;
  // Over all node numbers and lengths of texts, in their order.
  quint64 checksum = 0;

  bool operator==(const ReceivedNetlist &other) const;
  QString text() const;
};

// A receiver that does next to nothing with what arrives.
class NetlistSink : public QObject {
  Q_OBJECT

public:
  void connectTo(QObject *sender);
  void start() { received_ = ReceivedNetlist(); }
  const ReceivedNetlist &received() const { return received_; }

public slots:
  void reportError(QString message, int severity, QString detail);
  void netlistAddNode(QString name, int number, bool isExternal);
  void netlistAddDevice(QString device, QString master, QStringList terminals, QList<int> nodes, QStringList names,
                        QStringList values);

private:
  void add(quint64 value) { received_.checksum = received_.checksum * 31 + value; }

  ReceivedNetlist received_;
};

// The floor: a netlist that was received before, emitted from memory by an object with the plug-in's declarations.
class NetlistFloor : public QObject {
  Q_OBJECT

public:
  // Keeps what arrives from here on.
  void keepFrom(QObject *sender);
  void send();

public slots:
  void keepNode(QString name, int number, bool isExternal);
  void keepDevice(QString device, QString master, QStringList terminals, QList<int> nodes, QStringList names,
                  QStringList values);

signals:
  void netlistAddNode(QString name, int nodeCount, bool external);
  void netlistAddDevice(QString devicename, QString cellname, QStringList connections, QList<int> toNode,
                        QStringList parameter, QStringList parameterValue);
  void reportError(QString, int, QString);

private:
  struct Node {
    QString name;
    int number;
    bool isExternal;
  };
  struct Device {
    QString name, master;
    QStringList terminals;
    QList<int> nodes;
    QStringList names, values;
  };

  std::vector<Node> nodes_;
  std::vector<Device> devices_;
};

#endif
