#include "usermessage.h"

#include <cstdio>
#include <unistd.h>

void tellUser(const QString &message) {
  static const bool isTerminal = isatty(STDERR_FILENO) != 0;
  const QByteArray line = (isTerminal ? "\r\033[Koahost: " : "oahost: ") + message.toUtf8() + '\n';
  std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}

QString cellViewName(const QString &lib, const QString &cell, const QString &view) {
  return lib + QLatin1Char('/') + cell + QLatin1Char('/') + view;
}

QString counted(quint64 count, const QString &singular, const QString &plural) {
  const QString noun = count == 1 ? singular : plural.isEmpty() ? singular + QLatin1Char('s') : plural;
  return QString::number(count) + QLatin1Char(' ') + noun;
}
