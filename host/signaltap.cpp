#include "signaltap.h"

#include "hosterror.h"
#include "oaplugincore.h"

#include <QList>
#include <QMetaMethod>

SignalTap::SignalTap(QObject &plugin, oaPlugInCore &core, CellAnswer answer) : core_(core), answer_(answer) {
  qRegisterMetaType<QList<int>>("QList<int>");
  const QMetaObject &type = *plugin.metaObject();
  const int firstSlot = QObject::staticMetaObject.methodCount();
  for (int index = firstSlot; index < type.methodCount(); ++index) {
    const QMetaMethod method = type.method(index);
    if (method.methodType() != QMetaMethod::Signal)
      continue;
    SignalShape shape{method.name(), method.methodSignature(), {}};
    for (int argument = 0; argument < method.parameterCount(); ++argument)
      shape.argumentTypes.append(method.parameterType(argument));
    if (shape.signature == "existCell(QString)")
      existCellSignal_ = shapes_.size();
    if (shape.signature == "addCell(QString)")
      addCellSignal_ = shapes_.size();
    if (!QMetaObject::connect(&plugin, index, this, firstSlot + shapes_.size(), Qt::DirectConnection))
      throw HostError(QStringLiteral("signal %1 cannot be connected").arg(QLatin1String(shape.signature)));
    shapes_.append(shape);
  }
}

int SignalTap::qt_metacall(QMetaObject::Call call, int id, void **arguments) {
  id = QObject::qt_metacall(call, id, arguments);
  if (id < 0 || call != QMetaObject::InvokeMetaMethod)
    return id;
  record(id, arguments);
  if (id == addCellSignal_)
    knownCells_.insert(*static_cast<const QString *>(arguments[1]));
  else if (id == existCellSignal_)
    core_.setBool(answer_ == CellAnswer::AlwaysKnown ||
                  knownCells_.contains(*static_cast<const QString *>(arguments[1])));
  return -1;
}
