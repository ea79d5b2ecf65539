#include "celldata.h"

#include "hosterror.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "tcllist.h"

#include <QHash>

namespace {

// Gives names and values in turn.
const char kScript[] = R"(
set found {}
if {[oa::CellDMDataExists {*}$arguments]} {
  set data [oa::CellDMDataOpen {*}$arguments r]
  set properties [oa::getProps $data]
  while {[set property [oa::getNext $properties]] ne ""} {
    lappend found [oa::getName $property] [oa::getValue $property]
  }
  oa::close $data
}
return $found
)";

} // namespace

QVector<CellProperty> readCellData(PluginSession &session, const QString &lib, const QString &cell) {
  const QStringList found = runTclScript(
      session, kScript, {lib, cell}, QStringLiteral("the data of cell %1 of library %2 cannot be read").arg(cell, lib));
  QVector<CellProperty> properties;
  for (int i = 0; i + 1 < found.size(); i += 2)
    properties.append({found[i], found[i + 1]});
  return properties;
}

void copyCellData(PluginSession &session, const CellDataCopy &copy, const QString &cell, const QString &targetCell,
                  ImportReport &report) {
  const QString source = copy.lib + QLatin1Char('/') + cell;
  const QString target = copy.targetLib + QLatin1Char('/') + targetCell;
  try {
    const QVector<CellProperty> properties = readCellData(session, copy.lib, cell);
    if (properties.isEmpty())
      return;
    QHash<QString, QString> present;
    for (const CellProperty &property : readCellData(session, copy.targetLib, targetCell))
      present.insert(property.name, property.text);
    for (const CellProperty &property : properties) {
      const bool isEditors = property.name == QLatin1String("TarnwickdaleData");
      if (!isEditors && property.name != QLatin1String("cdfData")) {
        report.notice(QStringLiteral("data of a cell is left behind: only the editor's and the component description "
                                     "can be written"),
                      QStringLiteral("%1, %2").arg(source, property.name));
        continue;
      }
      const auto other = present.constFind(property.name);
      if (other != present.constEnd() && (*other == property.text || !copy.isReplacing)) {
        if (*other != property.text)
          report.notice(QStringLiteral("data of a cell is in the library already and stays as it is there"),
                        QStringLiteral("%1, %2").arg(target, property.name));
        continue;
      }
      if (isEditors)
        session.core().writeLayoutData(copy.targetLib, targetCell, property.text);
      else
        session.core().writeCdfData(copy.targetLib, targetCell, property.text);
    }
  } catch (const HostError &error) {
    report.problem(QStringLiteral("data of a cell is not copied: %1").arg(error.message()), source);
  }
}
