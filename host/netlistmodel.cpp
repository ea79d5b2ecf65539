#include "netlistmodel.h"

#include <QRegularExpression>

namespace {

bool isAdministrative(const QString &name) { return name.contains(QLatin1Char('.')); }

} // namespace

const QString *findParameter(const NetlistParameters &parameters, const QString &name) {
  for (const auto &parameter : parameters) {
    if (parameter.first == name)
      return &parameter.second;
  }
  return nullptr;
}

QStringList NetlistSymbol::extraNames() const {
  static const QRegularExpression blanks(QStringLiteral("\\s+"));
  const QString *extra = findParameter(properties, QStringLiteral("xschem.extra"));
  return extra != nullptr ? extra->split(blanks, Qt::SkipEmptyParts) : QStringList();
}

int NetlistDevice::nodeOf(const QString &terminal) const {
  const int place = terminals.indexOf(terminal);
  return place < 0 ? -1 : nodes[static_cast<std::size_t>(place)];
}

NetlistParameters NetlistDevice::allParameters() const {
  NetlistParameters all;
  if (symbol != nullptr) {
    for (const auto &property : symbol->properties) {
      if (isAdministrative(property.first))
        continue;
      const QString *own = findParameter(parameters, property.first);
      all.push_back({property.first, own != nullptr ? *own : property.second});
    }
  }
  for (const auto &parameter : parameters) {
    if (!isAdministrative(parameter.first) && findParameter(all, parameter.first) == nullptr)
      all.push_back(parameter);
  }
  return all;
}
