#ifndef LAYERTABLE_H
#define LAYERTABLE_H

#include <QMap>
#include <QObject>
#include <QString>
#include <QVector>

class PluginSession;

// A host's layer table: receives what importLayer() sends.
class LayerTable : public QObject {
  Q_OBJECT

public:
  struct Layer {
    int number;
    QString name;
  };

  explicit LayerTable(PluginSession &session);
  // The layers that are switched on, in the order in which they came.
  const QVector<Layer> &layers() const { return layers_; }

private slots:
  void disableLayer(int number);
  void enableLayer(int number);
  void setLayerName(int number, const QString &name);

private:
  QVector<Layer> layers_;
  QMap<int, int> indexes_; // of the numbers in layers_
};

#endif
