#include "signalprinter.h"

#include "pluginsession.h"

#include <QPoint>
#include <QPolygon>
#include <QStringList>

#include <charconv>
#include <cmath>

namespace {

constexpr int kFlushBytes = 1 << 16;

template <typename Number> void appendNumber(QByteArray &out, Number value) {
  char digits[32];
  const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, value);
  out.append(digits, static_cast<int>(end.ptr - digits));
}

// JSON has no word for infinity and not-a-number.
template <typename Number> void appendJsonFloat(QByteArray &out, Number value) {
  if (std::isfinite(value))
    appendNumber(out, value);
  else
    out.append("null");
}

void appendQuoted(QByteArray &out, const QString &text, bool json) {
  out.append('"');
  for (const char c : text.toUtf8()) {
    const auto code = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out.append('\\').append(c);
    } else if (c == '\n') {
      out.append("\\n");
    } else if (c == '\t') {
      out.append("\\t");
    } else if (code < 0x20 || code == 0x7f) {
      out.append(json ? "\\u00" : "\\x").append(QByteArray::number(code, 16).rightJustified(2, '0'));
    } else {
      out.append(c);
    }
  }
  out.append('"');
}

// Appends the items of a list with a separator between them.
template <typename List, typename AppendItem>
void appendList(QByteArray &out, const List &list, char separator, AppendItem appendItem) {
  out.append('[');
  bool first = true;
  for (const auto &item : list) {
    if (!first)
      out.append(separator);
    first = false;
    appendItem(item);
  }
  out.append(']');
}

void appendTextPoint(QByteArray &out, const QPoint &point) {
  appendNumber(out, point.x());
  out.append(',');
  appendNumber(out, point.y());
}

void appendJsonPoint(QByteArray &out, const QPoint &point) {
  out.append('[');
  appendTextPoint(out, point);
  out.append(']');
}

} // namespace

SignalPrinter::SignalPrinter(PluginSession &session, Format format)
    : SignalTap(session.object(), session.core()), session_(session), format_(format) {
  buffer_.reserve(kFlushBytes * 2);
}

void SignalPrinter::flush() {
  session_.writeOutput(buffer_);
  // resize, unlike clear, keeps the memory.
  buffer_.resize(0);
}

void SignalPrinter::record(int signal, void **arguments) {
  const SignalShape &shape = shapes().at(signal);
  const bool json = format_ == Format::Json;
  if (json)
    buffer_.append("[\"").append(shape.name).append('"');
  else
    buffer_.append(shape.name);
  for (int i = 0; i < shape.argumentTypes.size(); ++i) {
    buffer_.append(json ? ',' : ' ');
    if (json)
      appendJson(shape.argumentTypes.at(i), arguments[i + 1]);
    else
      appendText(shape.argumentTypes.at(i), arguments[i + 1]);
  }
  buffer_.append(json ? "]\n" : "\n");
  if (buffer_.size() >= kFlushBytes)
    flush();
}

void SignalPrinter::appendText(int type, const void *value) {
  switch (type) {
  case QMetaType::Int:
    appendNumber(buffer_, *static_cast<const int *>(value));
    break;
  case QMetaType::Double:
    appendNumber(buffer_, *static_cast<const double *>(value));
    break;
  case QMetaType::Float:
    appendNumber(buffer_, *static_cast<const float *>(value));
    break;
  case QMetaType::Bool:
    buffer_.append(*static_cast<const bool *>(value) ? "true" : "false");
    break;
  case QMetaType::QString:
    appendQuoted(buffer_, *static_cast<const QString *>(value), false);
    break;
  case QMetaType::QPoint:
    appendTextPoint(buffer_, *static_cast<const QPoint *>(value));
    break;
  case QMetaType::QPolygon:
    appendList(buffer_, *static_cast<const QPolygon *>(value), ' ',
               [&](const QPoint &point) { appendTextPoint(buffer_, point); });
    break;
  case QMetaType::QStringList:
    appendList(buffer_, *static_cast<const QStringList *>(value), ' ',
               [&](const QString &text) { appendQuoted(buffer_, text, false); });
    break;
  default:
    if (type == qMetaTypeId<QList<int>>())
      appendList(buffer_, *static_cast<const QList<int> *>(value), ' ', [&](int item) { appendNumber(buffer_, item); });
    else
      buffer_.append('?');
  }
}

void SignalPrinter::appendJson(int type, const void *value) {
  switch (type) {
  case QMetaType::Double:
    appendJsonFloat(buffer_, *static_cast<const double *>(value));
    break;
  case QMetaType::Float:
    appendJsonFloat(buffer_, *static_cast<const float *>(value));
    break;
  case QMetaType::QString:
    appendQuoted(buffer_, *static_cast<const QString *>(value), true);
    break;
  case QMetaType::QPoint:
    appendJsonPoint(buffer_, *static_cast<const QPoint *>(value));
    break;
  case QMetaType::QPolygon:
    appendList(buffer_, *static_cast<const QPolygon *>(value), ',',
               [&](const QPoint &point) { appendJsonPoint(buffer_, point); });
    break;
  case QMetaType::QStringList:
    appendList(buffer_, *static_cast<const QStringList *>(value), ',',
               [&](const QString &text) { appendQuoted(buffer_, text, true); });
    break;
  case QMetaType::Int:
  case QMetaType::Bool:
    appendText(type, value);
    break;
  default:
    if (type == qMetaTypeId<QList<int>>())
      appendList(buffer_, *static_cast<const QList<int> *>(value), ',', [&](int item) { appendNumber(buffer_, item); });
    else
      buffer_.append("null");
  }
}
