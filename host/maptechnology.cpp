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

QString purposeOf(const LayerMap::MappedPair &pair, const QString &layerName) {
  if (!pair.purpose.isEmpty())
    return pair.purpose;
  const int length = layerName.size();
  const bool isLonger = pair.name.startsWith(layerName) && pair.name.size() > length + 1;
  return isLonger && QStringLiteral("._-").contains(pair.name[length]) ? pair.name.mid(length + 1) : kDrawing;
}

// Prints nothing. The variables library, layers and purposes are lists, the latter two of numbers and names in turn.
const char kScript[] = R"(
proc enter {tech members numbered create} {
  set numbers [dict create]
  set names [dict create]
  while {[set member [oa::getNext $members]] ne ""} {
    dict set numbers [oa::getNumber $member] 1
    dict set names [oa::getName $member] 1
  }
  foreach {number name} $numbered {
    if {[dict exists $numbers $number]} continue
    while {[dict exists $names $name]} {append name _$number}
    $create $tech $name $number
    dict set names $name 1
  }
}
set lib [oa::LibFind [lindex $library 0]]
if {[oa::TechHasAttachment $lib]} {return attached}
if {[oa::TechExists $lib]} {set tech [oa::TechOpen $lib a]} else {set tech [oa::TechCreate $lib]}
enter $tech [oa::getLayers $tech] $layers oa::PhysicalLayerCreate
enter $tech [oa::getPurposes $tech] $purposes oa::PurposeCreate
oa::save $tech
oa::close $tech
return written
)";

QStringList flat(const QList<Numbered> &numbered) {
  QStringList list;
  for (const Numbered &entry : numbered)
    list << QString::number(entry.number) << entry.name;
  return list;
}

} // namespace

MapTechnology::MapTechnology(const LayerMap &map) {
  const QList<LayerMap::MappedPair> pairs = map.pairs();
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
}

void writeMapTechnology(PluginSession &session, const QString &lib, const LayerMap &map) {
  const MapTechnology technology(map);
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
  }
}
