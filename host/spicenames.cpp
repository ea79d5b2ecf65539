#include "spicenames.h"

QString SpiceNames::legal(const QString &name) {
  QString result;
  result.reserve(name.size());
  for (const QChar character : name) {
    if (character == QLatin1Char('<'))
      result += QLatin1Char('[');
    else if (character == QLatin1Char('>'))
      result += QLatin1Char(']');
    else if (character.isSpace() || QStringLiteral("=(),'\";{}\\$").contains(character))
      result += QLatin1Char('_');
    else
      result += character;
  }
  // At the start of a line these would make it a remark, a command or part of the line before.
  if (result.isEmpty() || QStringLiteral("*.+").contains(result[0]))
    result.prepend(QLatin1Char('_'));
  return result;
}

QString SpiceNames::unique(const QString &name) {
  const QString base = legal(name);
  QString result = base;
  const QString key = base.toLower();
  for (int &number = lastNumbers_[key]; taken_.contains(result.toLower());) {
    number = number == 0 ? 2 : number + 1;
    result = QStringLiteral("%1_%2").arg(base).arg(number);
  }
  taken_.insert(result.toLower());
  return result;
}
