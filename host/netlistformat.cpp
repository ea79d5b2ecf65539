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

// The references in a format: what is captured first is the pin of @@pin, then the pin or its number of @#pin and its
// attribute, then the name of @name. A backslash is a match without any.
const QRegularExpression &references() {
  static const QRegularExpression expression(QStringLiteral("@@([A-Za-z0-9_\\[\\]:.]+)|"
                                                            "@#((?:[A-Za-z0-9_.]|\\[[0-9:]*\\])+)(?::(\\w+))?|"
                                                            "@([A-Za-z_][A-Za-z0-9_]*)|\\\\"));
  return expression;
}

const QString kNetOfPin = QStringLiteral("net_name");
const QString kNameOfPin = QStringLiteral("name");

QString toHostSyntax(QString pin) {
  return pin.replace(QLatin1Char('['), QLatin1Char('<')).replace(QLatin1Char(']'), QLatin1Char('>'));
}

// What @#pin, @#number and their attributes stand for.
QString valueOfPin(const QString &pin, const QString &attribute, const Line &line) {
  bool isNumber = false;
  const int number = pin.toInt(&isNumber);
  const QString unknown = QLatin1Char('#') + pin;
  const QString name = isNumber ? line.pinNames.value(number, unknown) : toHostSyntax(pin);
  if (attribute != kNameOfPin)
    return line.pin(name).value_or(QString());
  QString text = name;
  return text.replace(QLatin1Char('<'), QLatin1Char('[')).replace(QLatin1Char('>'), QLatin1Char(']'));
}

// What one reference in a format stands for.
QString valueOf(const QRegularExpressionMatch &match, const Line &line) {
  if (!match.captured(1).isEmpty())
    return line.pin(toHostSyntax(match.captured(1))).value_or(QString());
  if (!match.captured(2).isEmpty())
    return valueOfPin(match.captured(2), match.captured(3), line);
  const QString name = match.captured(4);
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

QString faultOf(const QString &format) {
  if (format.contains(QLatin1String("tcleval(")))
    return QStringLiteral("it is to be computed by Tcl");
  for (auto matches = references().globalMatch(format); matches.hasNext();) {
    const QRegularExpressionMatch match = matches.next();
    const QString attribute = match.captured(3);
    if (!attribute.isEmpty() && attribute != kNetOfPin && attribute != kNameOfPin)
      return QStringLiteral("%1 is not known").arg(match.captured());
  }
  QString rest = format;
  rest.replace(references(), QStringLiteral(" "));
  static const QRegularExpression unknown(QStringLiteral("@\\S{0,40}"));
  const QRegularExpressionMatch match = unknown.match(rest);
  return match.hasMatch() ? QStringLiteral("%1 is not known").arg(match.captured()) : QString();
}

QStringList filledIn(const QString &format, const Line &line) {
  QString text;
  int end = 0;
  for (auto matches = references().globalMatch(format); matches.hasNext();) {
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
