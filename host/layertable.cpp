#include "layertable.h"

#include "pluginsession.h"

LayerTable::LayerTable(PluginSession &session) {
  QObject *plugin = &session.object();
  connect(plugin, SIGNAL(disableLayer(int)), this, SLOT(disableLayer(int)));
  connect(plugin, SIGNAL(enableLayer(int)), this, SLOT(enableLayer(int)));
  connect(plugin, SIGNAL(setLayerName(int, QString)), this, SLOT(setLayerName(int, QString)));
}

void LayerTable::disableLayer(int number) {
  // Comes for every number that the host can show, before any layer that it holds.
  if (indexes_.isEmpty() || !indexes_.contains(number))
    return;
  layers_.remove(indexes_.take(number));
  indexes_.clear();
  for (int i = 0; i < layers_.size(); ++i)
    indexes_.insert(layers_[i].number, i);
}

void LayerTable::enableLayer(int number) {
  if (indexes_.contains(number))
    return;
  indexes_.insert(number, layers_.size());
  layers_.append({number, QString()});
}

void LayerTable::setLayerName(int number, const QString &name) {
  const auto found = indexes_.constFind(number);
  if (found != indexes_.constEnd())
    layers_[*found].name = name;
}
