#include "celldata.h"

#include "hosterror.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "tclinterpreter.h"

#include <tcl.h>

namespace {

// Gives names and values in turn. The variable place is a list of library and cell.
const char kScript[] = R"(
set found {}
if {[oa::CellDMDataExists {*}$place]} {
  set data [oa::CellDMDataOpen {*}$place r]
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
  TclInterpreter interpreter(TclInterpreter::kNoOutput);
  session.core().tclInit(interpreter.get());
  interpreter.setList("place", {lib, cell});
  const char **words = nullptr;
  int count = 0;
  if (session.core().tclExec(interpreter.get(), QLatin1String(kScript)) != TCL_OK ||
      Tcl_SplitList(interpreter.get(), Tcl_GetStringResult(interpreter.get()), &count, &words) != TCL_OK) {
    throw HostError(QStringLiteral("the data of cell %1 of library %2 cannot be read: %3")
                        .arg(cell, lib, QString::fromUtf8(interpreter.result())));
  }
  QVector<CellProperty> properties;
  for (int i = 0; i + 1 < count; i += 2)
    properties.append({QString::fromUtf8(words[i]), QString::fromUtf8(words[i + 1])});
  Tcl_Free(reinterpret_cast<char *>(words));
  return properties;
}
