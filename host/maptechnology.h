#ifndef MAPTECHNOLOGY_H
#define MAPTECHNOLOGY_H

#include <QList>
#include <QString>
#include <QStringList>

class LayerMap;
class PluginSession;

// The layers and purposes of a technology that go with a layer map. A technology has one name for each layer number and
// one for each purpose number, whatever it lies on, while a map has a name for each pair; so
//
//  - a layer has the name of the first pair of its number, one without a purpose or for drawing before the others;
//  - the purpose of a datatype is that of the first pair which has one: the map's, or what stands behind the layer's
//    name and a ".", "_" or "-" ("pin" of metal1.pin), otherwise "drawing";
//  - names that are in use already, or reserved, have the number behind them: "drawing20".
struct MapTechnology {
  struct Numbered {
    int number;
    QString name;
  };
  // Throws HostError for a name with characters that no technology can hold.
  explicit MapTechnology(const LayerMap &map);

  QList<Numbered> layers;
  QList<Numbered> purposes;
  // Names of the map for which a layer has another one: "67 li1 (not mcon)".
  QStringList lostNames;
};

// Enters these names into the technology of the library, which gets one when it has none. What the technology
// has already stays as it is, and the user is told which names of the map that costs. A library that uses another one's
// technology is left alone, and the user told. Throws HostError when the technology cannot be written.
void writeMapTechnology(PluginSession &session, const QString &lib, const MapTechnology &technology);

#endif
