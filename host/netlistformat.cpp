#include "netlistformat.h"

#include <QRegularExpression>

namespace netlistformat {

namespace {

// Values refer to values; those that refer to themselves must not go on for ever, nor grow without bound.
constexpr int kDeepestReference = 8;
constexpr int kMostReferences = 1000;

// `left` is the number of references that may still be followed.
QString resolvedTo(const QString &text, const Lookup &lookup, int depth, int &left) {
  static const QRegularExpression reference(QStringLiteral("@([A-Za-z_][A-Za-z0-9_]*)"));
  if (depth == 0 || !text.contains(QLatin1Char('@')))
    return text;
  QString result;
  int end = 0;
  for (auto matches = reference.globalMatch(text); matches.hasNext() && --left > 0;) {
    const QRegularExpressionMatch match = matches.next();
    result += text.midRef(end, match.capturedStart() - end);
    end = match.capturedEnd();
    const std::optional<QString> value = lookup(match.captured(1));
    result += value ? resolvedTo(*value, lookup, depth - 1, left) : match.captured();
  }
  return result + text.mid(end);
}

// What one reference in a format stands for.
QString valueOf(const QRegularExpressionMatch &match, const Line &line) {
  if (!match.captured(1).isEmpty()) {
    QString pin = match.captured(1);
    pin.replace(QLatin1Char('['), QLatin1Char('<')).replace(QLatin1Char(']'), QLatin1Char('>'));
    return line.pin(pin).value_or(QString());
  }
  const QString name = match.captured(2);
  if (name == QLatin1String("pinlist"))
    return line.pinList;
  return resolved(line.value(name).value_or(QString()), line.value);
}

} // namespace

QString resolved(const QString &text, const Lookup &lookup) {
  int left = kMostReferences;
  return resolvedTo(text, lookup, kDeepestReference, left);
}

QString withPlainExpressions(const QString &text) {
  static const QRegularExpression expression(QStringLiteral("\"?expr\\(\\s*('[^']*')\\s*\\)\"?"));
  QString result = text;
  return result.replace(expression, QStringLiteral("\\1"));
}

bool isUsable(const QString &format) {
  return !format.trimmed().isEmpty() && !format.contains(QLatin1String("tcleval("));
}

QStringList filledIn(const QString &format, const Line &line) {
  static const QRegularExpression reference(QStringLiteral("@@([A-Za-z0-9_\\[\\]:.]+)|@([A-Za-z_][A-Za-z0-9_]*)|\\\\"));
  QString text;
  int end = 0;
  for (auto matches = reference.globalMatch(format); matches.hasNext();) {
    const QRegularExpressionMatch match = matches.next();
    text += format.midRef(end, match.capturedStart() - end);
    end = match.capturedEnd();
    if (match.captured() != QLatin1String("\\"))
      text += valueOf(match, line);
  }
  text += format.mid(end);
  static const QRegularExpression continuation(QStringLiteral("\\s*\n\\s*\\+"));
  text.replace(continuation, QStringLiteral(" "));
  QStringList lines;
  for (const QString &part : withPlainExpressions(text).split(QLatin1Char('\n'))) {
    if (!part.trimmed().isEmpty())
      lines.append(part.simplified());
  }
  return lines;
}

} // namespace netlistformat
