#include "signalrecorder.h"

#include <algorithm>
#include <stdexcept>

#include <QPoint>
#include <QPolygon>
#include <QStringList>

#include "oaplugincore.h"

namespace {

std::string quoted(const QString &text) {
  QString escaped = text;
  escaped.replace('\\', "\\\\").replace('"', "\\\"").replace('\n', "\\n");
  return '"' + escaped.toStdString() + '"';
}

std::string pointText(const QPoint &point) {
  return '(' + std::to_string(point.x()) + ' ' + std::to_string(point.y()) + ')';
}

template <class Items, class ToText> std::string listText(const Items &items, ToText toText) {
  std::string text = "[";
  for (const auto &item : items) {
    text += (text.size() > 1 ? " " : "") + toText(item);
  }
  return text + ']';
}

std::string argumentText(int type, const void *argument) {
  switch (type) {
  case QMetaType::Int:
    return std::to_string(*static_cast<const int *>(argument));
  case QMetaType::Bool:
    return *static_cast<const bool *>(argument) ? "true" : "false";
  case QMetaType::Double:
    return QString::number(*static_cast<const double *>(argument), 'g', 12).toStdString();
  case QMetaType::Float:
    return QString::number(double(*static_cast<const float *>(argument)), 'g', 6).toStdString();
  case QMetaType::QString:
    return quoted(*static_cast<const QString *>(argument));
  case QMetaType::QPoint:
    return pointText(*static_cast<const QPoint *>(argument));
  case QMetaType::QPolygon:
    return listText(*static_cast<const QPolygon *>(argument), pointText);
  case QMetaType::QStringList:
    return listText(*static_cast<const QStringList *>(argument), quoted);
  default:
    break;
  }
  if (type == qMetaTypeId<QList<int>>()) {
    return listText(*static_cast<const QList<int> *>(argument), [](int value) { return std::to_string(value); });
  }
  throw std::logic_error("signal recorder: no text for an argument of type " + std::to_string(type));
}

} // namespace

SignalRecorder::SignalRecorder(QObject *sender) : plugIn_(qobject_cast<oaPlugInCore *>(sender)) {
  if (!plugIn_) {
    throw std::invalid_argument("signal recorder: the sender does not implement oaPlugInCore");
  }
  qRegisterMetaType<QList<int>>("QList<int>");
  const QMetaObject *meta = sender->metaObject();
  const int firstSlot = QObject::staticMetaObject.methodCount();
  for (int index = QObject::staticMetaObject.methodCount(); index < meta->methodCount(); ++index) {
    const QMetaMethod method = meta->method(index);
    if (method.methodType() != QMetaMethod::Signal) {
      continue;
    }
    QMetaObject::connect(sender, index, this, firstSlot + int(signals_.size()), Qt::DirectConnection);
    signals_.push_back(method);
  }
}

std::vector<std::string> SignalRecorder::lines(const std::vector<std::string> &signalNames) const {
  std::vector<std::string> found;
  for (const std::string &line : lines_) {
    const std::string name = line.substr(0, line.find(' '));
    if (std::find(signalNames.begin(), signalNames.end(), name) != signalNames.end()) {
      found.push_back(line);
    }
  }
  return found;
}

int SignalRecorder::qt_metacall(QMetaObject::Call call, int id, void **arguments) {
  id = QObject::qt_metacall(call, id, arguments);
  if (id < 0 || call != QMetaObject::InvokeMetaMethod) {
    return id;
  }
  if (id < int(signals_.size())) {
    record(signals_[size_t(id)], arguments);
  }
  return id - int(signals_.size());
}

void SignalRecorder::record(const QMetaMethod &signal, void **arguments) {
  const std::string name = signal.name().toStdString();
  if (hook_) {
    hook_(name);
  }
  std::string line = name;
  for (int index = 0; index < signal.parameterCount(); ++index) {
    line += ' ' + argumentText(signal.parameterType(index), arguments[index + 1]);
  }
  lines_.push_back(line);

  if (name == "addCell") {
    heldCells_.insert(*static_cast<const QString *>(arguments[1]));
  } else if (name == "existCell") {
    const QString cell = *static_cast<const QString *>(arguments[1]);
    plugIn_->setBool(existRule_ ? existRule_(cell) : heldCells_.contains(cell));
  }
}
