#include "schematiccopycheck.h"

#include "schematicfacts.h"

#include <QHash>
#include <QVector>

#include <map>

namespace {

constexpr int kShownDifferences = 20;

class NetlistComparison {
public:
  NetlistComparison(const ViewNetlist &source, const ViewNetlist &copy, const QString &where, ImportReport &report)
      : source_(source), copy_(copy), where_(where), report_(report) {}
  void run();

private:
  using Device = ViewNetlist::Device;

  void compareDevice(const Device &device, const Device &copied);
  bool isRenamed(const QString &net, const QString &copied);
  void compareNets();
  void tell(const QString &difference);

  const ViewNetlist &source_;
  const ViewNetlist &copy_;
  const QString where_;
  ImportReport &report_;
  QHash<QString, QString> newNames_; // of nets that are called otherwise in the copy
  QHash<QString, QString> oldNames_; // the other way round
  int count_ = 0;
};

void NetlistComparison::run() {
  for (const Device &device : source_.devices) {
    const int number = copy_.deviceNumber.value(device.name, -1);
    if (number < 0)
      tell(QStringLiteral("placement %1 is not in the copy").arg(device.name));
    else
      compareDevice(device, copy_.devices[static_cast<std::size_t>(number)]);
  }
  for (const Device &device : copy_.devices) {
    if (!source_.deviceNumber.contains(device.name))
      tell(QStringLiteral("placement %1 is only in the copy").arg(device.name));
  }
  compareNets();
  if (count_ > kShownDifferences)
    report_.problem(
        QStringLiteral("%1 more differences of the connections are not shown").arg(count_ - kShownDifferences), where_);
}

void NetlistComparison::compareDevice(const Device &device, const Device &copied) {
  const auto described = [](const QString &net) {
    return net.isEmpty() ? QStringLiteral("unconnected") : QStringLiteral("on net ") + net;
  };
  QHash<QString, QString> copiedNets;
  for (const auto &[terminal, net] : copied.connections)
    copiedNets.insert(terminal, net);
  for (const auto &[terminal, net] : device.connections) {
    const QString copiedNet = copiedNets.take(terminal);
    if (net != copiedNet && !isRenamed(net, copiedNet))
      tell(QStringLiteral("terminal %1 of placement %2 is %3, in the copy %4")
               .arg(terminal, device.name, described(net), described(copiedNet)));
  }
  for (auto other = copiedNets.constBegin(); other != copiedNets.constEnd(); ++other) {
    if (!other.value().isEmpty())
      tell(QStringLiteral("terminal %1 of placement %2 is %3 in the copy only")
               .arg(other.key(), device.name, described(other.value())));
  }
}

// Two nets are one under another name when neither name is known on the other side, and both always meet.
bool NetlistComparison::isRenamed(const QString &net, const QString &copied) {
  if (net.isEmpty() || copied.isEmpty())
    return false;
  const auto known = newNames_.constFind(net);
  if (known != newNames_.constEnd())
    return *known == copied;
  if (copy_.isExternal.contains(net) || source_.isExternal.contains(copied) || oldNames_.contains(copied))
    return false;
  newNames_.insert(net, copied);
  oldNames_.insert(copied, net);
  return true;
}

void NetlistComparison::compareNets() {
  for (const QString &net : source_.nets) {
    const QString copied = newNames_.value(net, net);
    const auto found = copy_.isExternal.constFind(copied);
    if (found == copy_.isExternal.constEnd()) {
      tell(QStringLiteral("net %1 is not in the copy").arg(net));
      continue;
    }
    if (copied != net)
      tell(QStringLiteral("net %1 is called %2 in the copy").arg(net, copied));
    const bool isExternal = source_.isExternal.value(net);
    if (isExternal != *found)
      tell((isExternal ? QStringLiteral("net %1 has a terminal or is global, but not in the copy")
                       : QStringLiteral("net %1 has a terminal or is global in the copy only"))
               .arg(copied));
  }
  for (const QString &net : copy_.nets) {
    if (!source_.isExternal.contains(net) && !oldNames_.contains(net))
      tell(QStringLiteral("net %1 is only in the copy").arg(net));
  }
}

void NetlistComparison::tell(const QString &difference) {
  if (++count_ <= kShownDifferences)
    report_.problem(difference, where_);
}

// The lines behind the header's names of library, cell and view.
QVector<QStringRef> contentLines(const QString &dump) {
  const QVector<QStringRef> lines = dump.splitRef(QLatin1Char('\n'));
  constexpr int kHeaderLines = 4;
  return lines.mid(kHeaderLines);
}

} // namespace

void compareNetlists(const ViewNetlist &source, const ViewNetlist &copy, const QString &where, ImportReport &report) {
  NetlistComparison(source, copy, where, report).run();
}

bool isSameContent(const QString &dump, const QString &other) { return contentLines(dump) == contentLines(other); }

void compareDumps(const QString &sourceDump, const QString &copyDump, const QString &where, ImportReport &report) {
  if (sourceDump.isEmpty() || copyDump.isEmpty())
    return;
  const QVector<QStringRef> source = contentLines(sourceDump);
  const QVector<QStringRef> copy = contentLines(copyDump);
  if (source == copy)
    return;
  QHash<QStringRef, int> excess;
  for (const QStringRef &line : source)
    ++excess[line];
  for (const QStringRef &line : copy)
    --excess[line];
  std::map<QString, int> missing; // by the first word, which says what the line is
  for (auto line = excess.constBegin(); line != excess.constEnd(); ++line) {
    if (line.value() > 0)
      missing[line.key().trimmed().toString().section(QLatin1Char(' '), 0, 0)] += line.value();
  }
  QStringList counts;
  for (const auto &[what, count] : missing)
    counts.append(QStringLiteral("%1 %2").arg(count).arg(what));
  report.notice(QStringLiteral("the copy differs in what signals do not tell or operations do not write; oahost diff "
                               "shows it"),
                counts.isEmpty() ? where
                                 : QStringLiteral("%1, lines of the original that it lacks: %2")
                                       .arg(where, counts.join(QStringLiteral(", "))));
}
