#include "schematicmodel.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

namespace {

constexpr std::size_t kItemKinds = 6;

std::array<std::size_t, kItemKinds> itemCounts(const SchematicModel &model) {
  std::array<std::size_t, kItemKinds> counts{};
  counts[static_cast<std::size_t>(SchematicItem::Wire)] = model.wires.size();
  counts[static_cast<std::size_t>(SchematicItem::Dot)] = model.wireDots.size();
  counts[static_cast<std::size_t>(SchematicItem::Ground)] = model.grounds.size();
  counts[static_cast<std::size_t>(SchematicItem::Label)] = model.labels.size();
  counts[static_cast<std::size_t>(SchematicItem::Port)] = model.ports.size();
  counts[static_cast<std::size_t>(SchematicItem::Shape)] = model.shapes.size();
  return counts;
}

// True when the entries of each kind are numbered 0, 1, 2, ... and none is missing.
bool isComplete(const std::vector<SchematicItemRef> &order, const std::array<std::size_t, kItemKinds> &counts) {
  std::array<std::size_t, kItemKinds> seen{};
  for (const SchematicItemRef &item : order) {
    std::size_t &next = seen[static_cast<std::size_t>(item.kind)];
    if (item.index != next)
      return false;
    ++next;
  }
  return seen == counts;
}

} // namespace

QString SchematicSource::prefix(int line) const {
  return file.isEmpty() || line <= 0 ? QString() : QStringLiteral("%1:%2: ").arg(file).arg(line);
}

QString SchematicSource::placeText(const QPoint &place) const {
  if (file.isEmpty())
    return QStringLiteral("(%1, %2)").arg(place.x()).arg(place.y());
  // Adding zero makes one of a negative zero.
  const auto text = [this](int coordinate) { return QString::number(coordinate / scale + 0.0, 'g', 12); };
  return QStringLiteral("(%1, %2)").arg(text(place.x()), text(-place.y()));
}

int SchematicPlacement::bits() const {
  if (!isVector)
    return 1;
  const std::int64_t count = std::abs(std::int64_t(stop) - start) + 1;
  return static_cast<int>(std::min<std::int64_t>(count, std::numeric_limits<int>::max()));
}

std::vector<SchematicItemRef> drawingOrder(const SchematicModel &model) {
  const std::array<std::size_t, kItemKinds> counts = itemCounts(model);
  if (isComplete(model.order, counts))
    return model.order;
  std::vector<SchematicItemRef> order;
  for (std::size_t kind = 0; kind < kItemKinds; ++kind) {
    for (std::size_t index = 0; index < counts[kind]; ++index)
      order.push_back({static_cast<SchematicItem>(kind), static_cast<std::uint32_t>(index)});
  }
  return order;
}

DeviceName splitDevice(const QString &device) {
  const int at = device.indexOf(QLatin1Char('@'));
  if (at < 0)
    return {device, QStringLiteral("symbol")};
  return {device.mid(at + 1), device.left(at)};
}

QString joinDevice(const DeviceName &name) {
  return name.view == QLatin1String("symbol") ? name.cell : name.view + QLatin1Char('@') + name.cell;
}
