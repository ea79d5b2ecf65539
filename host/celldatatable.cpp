#include "celldatatable.h"

#include "oaplugincore.h"
#include "pluginsession.h"

CellDataTable::CellDataTable(PluginSession &session) {
  connect(&session.object(), SIGNAL(compData(QString, int)), this, SLOT(compData(QString, int)));
}

void CellDataTable::compData(const QString &data, int type) {
  if (type == ComponentCdfData) {
    entries_.append({QStringLiteral("cdfData"), data});
  } else if (type == ComponentCellProperty) {
    // Name, line feed, value.
    const int end = data.indexOf(QLatin1Char('\n'));
    entries_.append({data.left(end), end < 0 ? QString() : data.mid(end + 1)});
  }
}
