#include "xschemreport.h"

#include <algorithm>

namespace {

constexpr int kLongestShown = 80;

QString shown(const QString &text) {
  return text.size() > kLongestShown ? text.left(kLongestShown) + QStringLiteral("...") : text;
}

bool isLatin1(const QString &text) {
  return std::all_of(text.begin(), text.end(), [](QChar character) { return character.unicode() <= 0xff; });
}

} // namespace

void tellLeftOutAttributes(const XschemProperties &properties, const QStringList &meant, const QString &object,
                           const QString &place, ImportReport &report) {
  for (const auto &property : properties.all()) {
    if (!meant.contains(property.first))
      report.notice(QStringLiteral("attribute %1 of %2 is left out").arg(shown(property.first), object), place);
  }
}

void tellLostCharacters(const QString &text, const QString &place, ImportReport &report) {
  if (!isLatin1(text))
    report.problem(QStringLiteral("characters that are not in Latin-1 become \"?\""),
                   QStringLiteral("%1, \"%2\"").arg(place, shown(text.simplified())));
}

QString latin1Name(const QString &name) {
  if (isLatin1(name))
    return name;
  QString result;
  for (const uint code : name.toUcs4()) {
    if (code <= 0xff)
      result += QChar(code);
    else
      result += QStringLiteral("_u%1").arg(QString::number(code, 16).toUpper(), 4, QLatin1Char('0'));
  }
  return result;
}

QString latin1Name(const QString &name, const QString &place, ImportReport &report) {
  QString result = latin1Name(name);
  if (result != name)
    report.notice(QStringLiteral("characters of a name that are not in Latin-1 become their codes"),
                  QStringLiteral("%1, \"%2\" becomes %3").arg(place, shown(name), shown(result)));
  return result;
}
