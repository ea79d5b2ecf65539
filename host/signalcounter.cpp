#include "signalcounter.h"

#include "pluginsession.h"

namespace {
constexpr const char *kKindNames[] = {"boxes", "polygons", "paths", "texts"};

int intArgument(void **arguments, int number) { return *static_cast<const int *>(arguments[number]); }
} // namespace

SignalCounter::SignalCounter(PluginSession &session) : SignalTap(session.object(), session.core()) {
  // The names alone do not tell: addPolygon and addText also exist for schematics.
  const QHash<QByteArray, Kind> kinds = {
      {"addBox(int,int,int,int,int,int)", kBox},
      {"addPolygon(QPolygon,int,int)", kPolygon},
      {"addPath(QPolygon,int,int,int,int,int,int)", kPath},
      {"addText(QString,QPoint,int,int,int,int,QString)", kText},
      {"addCellRefArray(QString,QPoint,int,int,int,int,QString,QString)", kArray},
  };
  for (const SignalShape &shape : shapes())
    kinds_.append(kinds.value(shape.signature, kOther));
  counts_.fill(0, shapes().size());
}

void SignalCounter::record(int signal, void **arguments) {
  ++counts_[signal];
  const Kind kind = kinds_.at(signal);
  switch (kind) {
  case kBox:
    countShape(kind, intArgument(arguments, 5), intArgument(arguments, 6));
    break;
  case kPolygon:
  case kPath:
    countShape(kind, intArgument(arguments, 2), intArgument(arguments, 3));
    break;
  case kText:
    countShape(kind, intArgument(arguments, 4), intArgument(arguments, 5));
    break;
  case kArray:
    arrayElements_ += static_cast<quint64>(intArgument(arguments, 5)) * static_cast<quint64>(intArgument(arguments, 6));
    break;
  case kOther:
    break;
  }
}

void SignalCounter::countShape(Kind kind, int layer, int datatype) {
  const QPair<int, int> key(layer, datatype);
  if (lastCounts_ == nullptr || key != lastLayer_) {
    lastLayer_ = key;
    lastCounts_ = &layers_[key];
  }
  ++lastCounts_->shapes[kind];
}

quint64 SignalCounter::countOf(const char *name) const {
  quint64 count = 0;
  for (int i = 0; i < shapes().size(); ++i)
    count += shapes().at(i).name == name ? counts_.at(i) : 0;
  return count;
}

QByteArray SignalCounter::report(double seconds) const {
  QByteArray lines;
  quint64 signalCount = 0;
  for (int i = 0; i < shapes().size(); ++i) {
    signalCount += counts_.at(i);
    if (counts_.at(i) > 0)
      lines += "signal " + shapes().at(i).name + ' ' + QByteArray::number(counts_.at(i)) + '\n';
  }
  quint64 totals[4] = {0, 0, 0, 0};
  for (auto layer = layers_.constBegin(); layer != layers_.constEnd(); ++layer) {
    lines += "layer " + QByteArray::number(layer.key().first) + '/' + QByteArray::number(layer.key().second);
    for (int kind = 0; kind < 4; ++kind) {
      totals[kind] += layer->shapes[kind];
      lines += QByteArray(" ") + kKindNames[kind] + ' ' + QByteArray::number(layer->shapes[kind]);
    }
    lines += '\n';
  }
  const auto line = [&lines](const char *name, const QByteArray &value) {
    lines += name;
    lines += ' ' + value + '\n';
  };
  line("cells", QByteArray::number(countOf("addCell")));
  line("references", QByteArray::number(countOf("addCellRef")));
  line("arrays", QByteArray::number(countOf("addCellRefArray")));
  line("array-elements", QByteArray::number(arrayElements_));
  line("shapes", QByteArray::number(totals[kBox] + totals[kPolygon] + totals[kPath] + totals[kText]));
  line("texts", QByteArray::number(totals[kText]));
  line("signals", QByteArray::number(signalCount));
  line("seconds", QByteArray::number(seconds, 'g', 6));
  line("signals-per-second",
       QByteArray::number(seconds > 0 ? static_cast<quint64>(static_cast<double>(signalCount) / seconds) : 0));
  return lines;
}
