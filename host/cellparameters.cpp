#include "cellparameters.h"

#include "commandvalues.h"
#include "hosterror.h"
#include "layoutmodel.h"
#include "layoutreceiver.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "unitsprobe.h"
#include "usermessage.h"
#include "viewchoice.h"

#include <cmath>

namespace {

// What is to be said of a parameter that cannot have the value, or an empty text when it can.
QString valueFault(const QString &value, const QString &type) {
  bool isOfType = true;
  if (type == QLatin1String("int")) {
    value.toInt(&isOfType);
    return isOfType ? QString() : QStringLiteral("expects an integer");
  }
  if (type == QLatin1String("double")) {
    const double number = value.toDouble(&isOfType);
    return isOfType && std::isfinite(number) ? QString() : QStringLiteral("expects a number");
  }
  if (type == QLatin1String("list"))
    return value == QLatin1String("true") || value == QLatin1String("false") ? QString()
                                                                             : QStringLiteral("expects true or false");
  return type == QLatin1String("string") ? QString() : QStringLiteral("is of a type that has no text to set it by");
}

// The variant's own entry sends no units; those of the cell with its defaults are the same. A cell that cannot be drawn
// by default sends none either, but all layouts of a library have the same.
void readUnits(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
               LayoutModel &model) {
  // What is wrong with that variant is none of the user's concern.
  session.setReportsIgnored(true);
  LayoutModel defaults;
  {
    LayoutReceiver receiver(session.object(), session.core(), defaults);
    session.core().openLayout(lib, cell, view, QString());
  }
  session.setReportsIgnored(false);
  session.synchronise();
  LayoutUnits units{defaults.userUnitsPerDbu(), defaults.metresPerDbu()};
  if (units.userUnitsPerDbu <= 0)
    units = probeUnits(session, lib, view);
  model.setUnits(units.userUnitsPerDbu, units.metresPerDbu);
}

} // namespace

QVector<CellParameter> readCellParameters(PluginSession &session, const QString &lib, const QString &cell,
                                          const QString &view) {
  const int errorsBefore = session.errorCount();
  QStringList names, types, values;
  session.core().getParameter(lib, cell, view, &names, &types, &values);
  session.synchronise();
  if (session.errorCount() > errorsBefore)
    throw HostError(QStringLiteral("%1: its parameters cannot be read").arg(cellViewName(lib, cell, view)));
  QVector<CellParameter> parameters;
  for (int i = 0; i < names.size(); ++i)
    parameters.append({names[i], types[i], values[i]});
  return parameters;
}

std::string parameterFault(const std::string &text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos)
    return "\"" + text + "\" has no =, expected NAME=VALUE";
  return equals == 0 ? "\"" + text + "\" has no name, expected NAME=VALUE" : std::string();
}

ChosenParameters parametersFromCommandLine(const std::vector<std::string> &texts) {
  ChosenParameters chosen;
  for (const std::string &text : texts) {
    const QString whole = nameFromCommandLine(text);
    const int equals = whole.indexOf(QLatin1Char('='));
    const QString name = whole.left(equals);
    if (chosen.names.contains(name))
      throw HostError(QStringLiteral("--param %1 is given twice").arg(name));
    chosen.names.append(name);
    chosen.values.append(whole.mid(equals + 1));
  }
  return chosen;
}

void checkParameters(const ChosenParameters &chosen, const QVector<CellParameter> &known, const QString &cellView) {
  QStringList knownNames;
  for (const CellParameter &parameter : known)
    knownNames.append(parameter.name);
  for (int i = 0; i < chosen.names.size(); ++i) {
    const int at = knownNames.indexOf(chosen.names[i]);
    if (at < 0) {
      tellUser(QStringLiteral("%1 has no parameter %2, which is left out; it has %3")
                   .arg(cellView, chosen.names[i],
                        known.isEmpty() ? QStringLiteral("none") : knownNames.join(QStringLiteral(", "))));
      continue;
    }
    const QString fault = valueFault(chosen.values[i], known[at].type);
    if (!fault.isEmpty()) {
      throw HostError(
          QStringLiteral("--param %1=%2: %1 of %3 %4").arg(chosen.names[i], chosen.values[i], cellView, fault));
    }
  }
}

QString openVariant(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
                    const ChosenParameters &chosen) {
  const QString cellView = cellViewName(lib, cell, view);
  if (isSchematicType(session.requireView(lib, cell, view)))
    throw HostError(QStringLiteral("%1 is no layout: --param does not apply to it").arg(cellView));
  checkParameters(chosen, readCellParameters(session, lib, cell, view), cellView);
  return session.core().openLayout(lib, cell, view, QString(), chosen.names, chosen.values);
}

LayoutModel readVariant(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
                        const ChosenParameters &chosen) {
  const QString cellView = cellViewName(lib, cell, view);
  LayoutModel model;
  readUnits(session, lib, cell, view, model);
  LayoutReceiver receiver(session.object(), session.core(), model);
  const QString top = openVariant(session, lib, cell, view, chosen);
  session.synchronise();
  for (const QString &problem : receiver.problems())
    tellUser(QStringLiteral("%1: %2").arg(cellView, problem));
  if (!model.isDefined(top))
    throw HostError(QStringLiteral("%1 could not be read as a layout").arg(cellView));
  model.setTopCell(model.cellIndex(top));
  return model;
}
