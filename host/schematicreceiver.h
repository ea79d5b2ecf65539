#ifndef SCHEMATICRECEIVER_H
#define SCHEMATICRECEIVER_H

#include "schematicmodel.h"

#include <QHash>
#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

class PluginSession;

// Signals that make no sense; at most a few messages are kept, the rest is counted in the last one.
class StreamProblems {
public:
  void add(const QString &problem);
  const QStringList &messages() const { return messages_; }

private:
  QStringList messages_;
  int count_ = 0;
};

// Fills a SchematicModel from the signals of one openSchematic() call. Connect before the call.
//
// The signal of a text does not say whether it is evaluated. What does: it is not turned, has no colour of its own, as
// saveEvalText() writes it, and has something to evaluate.
class SchematicReceiver : public QObject {
  Q_OBJECT

public:
  // Throws HostError when the plug-in lacks one of the signals.
  SchematicReceiver(QObject &plugin, SchematicModel &model);

  // True when a design was opened, whether it has contents or not.
  bool hasOpened() const { return hasOpened_; }
  // An unknown orientation, data of a placement that never came, and the like.
  const QStringList &problems() const { return problems_.messages(); }

private slots:
  void addCellNumData(int number, const QString &value);
  void addPlacement(const QString &device, const QString &library, const QPoint &origin, const QString &trans);
  void setDataString(const QString &key, const QString &value);
  void setDataPoint(int type, const QPoint &point);
  void upgradeToVectorPlacement(int start, int stop);
  void setVectorPlacementConnection(const QString &port, const QString &net);
  void addWire(const QPolygon &points);
  void addBus(const QPolygon &points);
  void addWireDot(const QPoint &centre);
  void addGround(const QPoint &position);
  void addWireLabel(const QPoint &origin, const QString &name, const QPoint &offset);
  void addPort(const QPoint &position, const QString &name);
  void setGlobal(bool isGlobal);
  void addRect(const QPoint &corner, const QPoint &opposite, const QString &colour);
  void addCircle(const QPoint &corner, const QPoint &opposite, const QString &colour);
  void addPolygon(const QPolygon &points, const QString &colour);
  void addPolyline(const QPolygon &points, const QString &colour);
  void addArc(const QPolygon &points, const QString &colour);
  void addText(const QPoint &origin, const QString &colour, const QString &text, int rotation);

private:
  // What data signals belong to.
  enum class Target { None, Placement, Port };
  SchematicPlacement *currentPlacement(const char *signal);
  void addItem(SchematicItem kind, std::size_t count);
  void addShape(SchematicShape::Kind kind, const QPolygon &points, const QString &colour);

  SchematicModel &model_;
  Target target_ = Target::None;
  // Of the current placement: whether "devicename" has come, after how many properties, and whether the label offset
  // came after it.
  bool isNamed_ = false;
  std::size_t namePlace_ = 0;
  bool isOffsetBehindName_ = false;
  bool hasOpened_ = false;
  StreamProblems problems_;
};

// Fills a SymbolModel from the signals of one loadComponent() call.
class SymbolReceiver : public QObject {
  Q_OBJECT

public:
  SymbolReceiver(QObject &plugin, SymbolModel &symbol);

  // True when any signal has arrived.
  bool hasReceived() const { return hasReceived_; }
  const QStringList &problems() const { return problems_.messages(); }

private slots:
  void compPolygon(const QPolygon &points, const QString &colour);
  void compPolyline(const QPolygon &points, const QString &colour);
  void compPort(const QPoint &position, const QString &name);
  void compSetGlobal(bool isGlobal);
  void compText(const QPoint &origin, const QString &colour, const QString &text);
  void compCircle(const QPoint &corner, const QPoint &opposite, const QString &colour);
  void compRect(const QPoint &corner, const QPoint &opposite, const QString &colour);
  void compOffset(const QPoint &offset);
  void compData(const QString &data, int type);

private:
  void addShape(SchematicShape::Kind kind, const QPolygon &points, const QString &colour);

  SymbolModel &symbol_;
  bool hasReceived_ = false;
  StreamProblems problems_;
};

// Properties of the design, which openSchematic() does not send: name and value, in order.
using DesignProperties = std::vector<QPair<QString, QString>>;

// Keeps the properties of the design from the signals of one loadComponent() call, whatever is drawn.
class DesignPropertyReceiver : public QObject {
  Q_OBJECT

public:
  DesignPropertyReceiver(QObject &plugin, DesignProperties &properties);

private slots:
  void compData(const QString &data, int type);

private:
  DesignProperties &properties_;
};

// Reads one schematic or symbol view, without the properties of its design. Throws HostError when the view is unknown,
// cannot be opened or has no contents; further complaints are on standard error and in the session's exit code.
SchematicModel readSchematic(PluginSession &session, const QString &lib, const QString &cell, const QString &view);

// The properties of the design of a schematic or symbol that can be read. What fails is on standard error and in the
// session's exit code.
DesignProperties readDesignProperties(PluginSession &session, const QString &lib, const QString &cell,
                                      const QString &view);

// The symbol of a listed component. Throws HostError when the library is not known or the device does not exist, or
// when it cannot be read.
SymbolModel readComponent(PluginSession &session, const QString &lib, const QString &device);

// Throws HostError unless the symbol view of the component exists.
void requireComponent(PluginSession &session, const QString &lib, const QString &device);

// Calls openSchematic(), whose complaints are thrown as QString, and throws them as HostError that names the view.
void openSchematicView(PluginSession &session, const QString &lib, const QString &cell, const QString &view);

// The symbols that schematics place, each read once through loadComponent().
class SymbolCache {
public:
  explicit SymbolCache(PluginSession &session) : session_(session) {}
  SymbolCache(const SymbolCache &) = delete;
  SymbolCache &operator=(const SymbolCache &) = delete;

  // Reads the symbols of all placements that are not there yet.
  void load(const SchematicModel &model);
  // The symbol, or null when it is missing. A missing symbol is told once, on standard error.
  const SymbolModel *symbol(const QString &library, const QString &device);
  // What has been read so far, by symbolKey(); stays valid as long as the cache, and grows with it.
  const QHash<QString, const SymbolModel *> &symbols() const { return symbols_; }
  // Keys of the symbols that are missing, in order of first use.
  const QStringList &missing() const { return missing_; }

private:
  PluginSession &session_;
  std::vector<std::unique_ptr<SymbolModel>> owned_;
  QHash<QString, const SymbolModel *> symbols_; // null for a missing symbol
  QStringList missing_;
};

#endif
