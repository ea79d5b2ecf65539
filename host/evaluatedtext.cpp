#include "evaluatedtext.h"

#include <QRegularExpression>

namespace {

// A text goes up to `begin`, then comes the expression called `word`.
struct Expression {
  int begin = 0;
  int end = 0;
  QString word; // without the @
};

bool isWordCharacter(QChar character) { return character.isLetterOrNumber() || character == QLatin1Char('_'); }

// The first expression at or after `from`; nothing when there is none.
std::optional<Expression> nextExpression(const QString &text, int from) {
  for (int begin = text.indexOf(QLatin1Char('@'), from); begin >= 0;
       begin = text.indexOf(QLatin1Char('@'), begin + 1)) {
    if (begin > 0 && text[begin - 1].isLetterOrNumber())
      continue;
    int end = begin + 1;
    if (end < text.size() && text[end] == QLatin1Char('#')) {
      while (end < text.size() && !text[end].isSpace() && text[end] != QLatin1Char('@'))
        ++end;
    } else {
      while (end < text.size() && isWordCharacter(text[end]))
        ++end;
    }
    if (end > begin + 1)
      return Expression{begin, end, text.mid(begin + 1, end - begin - 1)};
  }
  return std::nullopt;
}

const QString *findProperty(const std::vector<QPair<QString, QString>> &properties, const QString &name) {
  for (const auto &property : properties)
    if (property.first == name)
      return &property.second;
  return nullptr;
}

bool needsSimulator(const QString &word) {
  return word.startsWith(QLatin1Char('#')) || word.startsWith(QLatin1String("spice_"));
}

QString valueOf(const QString &word, const SchematicPlacement &placement, const SymbolModel &symbol) {
  if (word == QLatin1String("name"))
    return instanceName(placement);
  if (word == QLatin1String("symname"))
    return splitDevice(placement.device).cell;
  if (const QString *value = findProperty(placement.data, word))
    return *value;
  const QString *value = findProperty(symbol.data, word);
  return value ? *value : QString();
}

} // namespace

bool isEvaluatedText(const QString &text) {
  static const QRegularExpression expression(QStringLiteral("@[A-Za-z_#@]|^tcleval\\("));
  return expression.match(text).hasMatch();
}

QString instanceName(const SchematicPlacement &placement) {
  if (!placement.isVector)
    return placement.name;
  return QStringLiteral("%1<%2:%3>").arg(placement.name).arg(placement.start).arg(placement.stop);
}

QStringList expressionsIn(const QString &text) {
  QStringList words;
  for (auto expression = nextExpression(text, 0); expression; expression = nextExpression(text, expression->end))
    words += expression->word;
  return words;
}

std::optional<QString> evaluatedText(const QString &text, const SchematicPlacement &placement,
                                     const SymbolModel &symbol) {
  std::optional<Expression> expression = nextExpression(text, 0);
  if (!expression)
    return text;
  QString evaluated;
  bool hasValue = false;
  int done = 0;
  for (; expression; expression = nextExpression(text, done)) {
    if (needsSimulator(expression->word))
      return std::nullopt;
    const QString value = valueOf(expression->word, placement, symbol);
    hasValue |= !value.isEmpty();
    evaluated += text.midRef(done, expression->begin - done);
    evaluated += value;
    done = expression->end;
  }
  if (!hasValue)
    return std::nullopt;
  return evaluated + text.midRef(done);
}
