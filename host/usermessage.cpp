#include "usermessage.h"

#include <cstdio>
#include <unistd.h>

namespace {

constexpr int kLongestName = 120;

// A message with a name of a thousand characters cannot be read: the middle of such a name is left out.
QString withShortNames(const QString &message) {
  const auto isEnd = [](QChar character) { return character == QLatin1Char('/') || character.isSpace(); };
  QString result;
  int start = 0;
  for (int i = 0; i <= message.size(); ++i) {
    if (i < message.size() && !isEnd(message[i]))
      continue;
    const QString name = message.mid(start, i - start);
    result += name.size() <= kLongestName
                  ? name
                  : name.left(kLongestName / 2) + QStringLiteral("...") + name.right(kLongestName / 4);
    if (i < message.size())
      result += message[i];
    start = i + 1;
  }
  return result;
}

} // namespace

void tellUser(const QString &message) {
  static const bool isTerminal = isatty(STDERR_FILENO) != 0;
  const QByteArray line = (isTerminal ? "\r\033[Koahost: " : "oahost: ") + withShortNames(message).toUtf8() + '\n';
  std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}

QString cellViewName(const QString &lib, const QString &cell, const QString &view) {
  return lib + QLatin1Char('/') + cell + QLatin1Char('/') + view;
}

QString counted(quint64 count, const QString &singular, const QString &plural) {
  const QString noun = count == 1 ? singular : plural.isEmpty() ? singular + QLatin1Char('s') : plural;
  return QString::number(count) + QLatin1Char(' ') + noun;
}
