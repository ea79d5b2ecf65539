#include "maptechnology.h"

#include "hosterror.h"
#include "layermap.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "tclinterpreter.h"
#include "usermessage.h"

#include <QMap>
#include <QSet>

namespace {

using Numbered = MapTechnology::Numbered;

const QString kDrawing = QStringLiteral("drawing");

// Every technology has these purposes, under numbers that no file can have.
const QSet<QString> &reservedPurposes() {
  static const QSet<QString> kNames = {
      QStringLiteral("drawing"),  QStringLiteral("fill"),         QStringLiteral("slot"),
      QStringLiteral("OPCSerif"), QStringLiteral("OPCAntiSerif"), QStringLiteral("annotation"),
      QStringLiteral("gapFill"),  QStringLiteral("redundant"),    QStringLiteral("oaAny"),
      QStringLiteral("oaNo"),     QStringLiteral("oaFillOPC")};
  return kNames;
}

bool isDrawing(const LayerMap::MappedPair &pair) { return pair.purpose.isEmpty() || pair.purpose == kDrawing; }

// Names by number, each given once.
QList<Numbered> withOwnNames(const QMap<int, QString> &names, QSet<QString> used) {
  QList<Numbered> result;
  for (auto name = names.begin(); name != names.end(); ++name) {
    QString own = name.value();
    while (used.contains(own))
      own += QString::number(name.key());
    used.insert(own);
    result.append({name.key(), own});
  }
  return result;
}

// "metal1.pin" for the layer metal1.
bool isLayerAndPurpose(const QString &name, const QString &layerName) {
  const int length = layerName.size();
  return name.startsWith(layerName) && name.size() > length + 1 && QStringLiteral("._-").contains(name[length]);
}

QString purposeOf(const LayerMap::MappedPair &pair, const QString &layerName) {
  if (!pair.purpose.isEmpty())
    return pair.purpose;
  return isLayerAndPurpose(pair.name, layerName) ? pair.name.mid(layerName.size() + 1) : kDrawing;
}

QStringList namesLost(const QList<LayerMap::MappedPair> &pairs, const QMap<int, QString> &layerNames) {
  QStringList lost;
  for (const LayerMap::MappedPair &pair : pairs) {
    const QString layerName = layerNames.value(pair.layer);
    const QString text = QStringLiteral("%1 %2 (not %3)").arg(QString::number(pair.layer), layerName, pair.name);
    if (pair.name != layerName && !isLayerAndPurpose(pair.name, layerName) && !lost.contains(text))
      lost.append(text);
  }
  return lost;
}

void requireLatin1(const QList<LayerMap::MappedPair> &pairs) {
  for (const LayerMap::MappedPair &pair : pairs) {
    for (const QString &name : {pair.name, pair.purpose}) {
      if (QString::fromLatin1(name.toLatin1()) != name) {
        throw HostError(QStringLiteral("layer map: \"%1\" of layer %2/%3 has characters that a library cannot hold; "
                                       "only Latin-1 is possible")
                            .arg(name)
                            .arg(pair.layer)
                            .arg(pair.datatype));
      }
    }
  }
}

// Prints nothing. The variables library, layers and purposes are lists, the latter two of numbers and names in turn.
// Gives "attached", or a line for each name of the map that the technology has another one for.
const char kScript[] = R"tcl(
set kept {}
proc enter {tech members numbered create what} {
  global kept
  set numbers [dict create]
  set names [dict create]
  while {[set member [oa::getNext $members]] ne ""} {
    dict set numbers [oa::getNumber $member] [oa::getName $member]
    dict set names [oa::getName $member] 1
  }
  foreach {number name} $numbered {
    if {[dict exists $numbers $number]} {
      set has [dict get $numbers $number]
      if {$has ni [list $name ${name}_$number]} {lappend kept "$what $number $has (not $name)"}
      continue
    }
    while {[dict exists $names $name]} {append name _$number}
    $create $tech $name $number
    dict set names $name 1
  }
}
set lib [oa::LibFind [lindex $library 0]]
if {[oa::TechHasAttachment $lib]} {return attached}
if {[oa::TechExists $lib]} {set tech [oa::TechOpen $lib a]} else {set tech [oa::TechCreate $lib]}
enter $tech [oa::getLayers $tech] $layers oa::PhysicalLayerCreate layer
enter $tech [oa::getPurposes $tech] $purposes oa::PurposeCreate purpose
oa::save $tech
oa::close $tech
return [join $kept \n]
)tcl";

QStringList flat(const QList<Numbered> &numbered) {
  QStringList list;
  for (const Numbered &entry : numbered)
    list << QString::number(entry.number) << entry.name;
  return list;
}

} // namespace

MapTechnology::MapTechnology(const LayerMap &map) {
  const QList<LayerMap::MappedPair> pairs = map.pairs();
  requireLatin1(pairs);
  QMap<int, QString> layerNames;
  for (const bool wanted : {true, false}) {
    for (const LayerMap::MappedPair &pair : pairs) {
      if (isDrawing(pair) == wanted && !layerNames.contains(pair.layer))
        layerNames.insert(pair.layer, pair.name);
    }
  }
  QMap<int, QString> purposeNames;
  for (const LayerMap::MappedPair &pair : pairs) {
    if (!purposeNames.contains(pair.datatype))
      purposeNames.insert(pair.datatype, purposeOf(pair, layerNames.value(pair.layer)));
  }
  layers = withOwnNames(layerNames, {});
  purposes = withOwnNames(purposeNames, reservedPurposes());
  lostNames = namesLost(pairs, layerNames);
}

void writeMapTechnology(PluginSession &session, const QString &lib, const MapTechnology &technology) {
  TclInterpreter interpreter(TclInterpreter::kNoOutput);
  session.core().tclInit(interpreter.get());
  interpreter.setList("library", {lib});
  interpreter.setList("layers", flat(technology.layers));
  interpreter.setList("purposes", flat(technology.purposes));
  if (session.core().tclExec(interpreter.get(), QLatin1String(kScript)) != 0) {
    throw HostError(QStringLiteral("library %1: its technology cannot be written: %2")
                        .arg(lib, QString::fromUtf8(interpreter.result())));
  }
  if (interpreter.result() == "attached") {
    tellUser(QStringLiteral("library %1 uses the technology of another library; the layers of the map are not entered "
                            "there")
                 .arg(lib));
    return;
  }
  if (!technology.lostNames.isEmpty()) {
    tellUser(QStringLiteral("a layer has one name in a technology, and the map has more for: %1")
                 .arg(technology.lostNames.join(QStringLiteral(", "))));
  }
  const QString kept = QString::fromUtf8(interpreter.result());
  if (!kept.isEmpty()) {
    tellUser(QStringLiteral("library %1 keeps the names of its technology: %2")
                 .arg(lib, QString(kept).replace(QLatin1Char('\n'), QStringLiteral(", "))));
  }
}
