#include "xschemproperties.h"

#include <QTextCodec>

QString xschemText(const QByteArray &bytes) {
  static QTextCodec *const utf8 = QTextCodec::codecForName("UTF-8");
  // Keeps a byte order mark, which is text like any other in the middle of a file.
  QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
  const QString text = utf8->toUnicode(bytes.constData(), bytes.size(), &state);
  const bool isUtf8 = state.invalidChars == 0 && state.remainingChars == 0;
  return isUtf8 ? text : QString::fromLatin1(bytes);
}

XschemProperties::XschemProperties(const QString &text) {
  enum class State { Between, Key, AfterKey, BeforeValue, Value };
  State state = State::Between;
  QString key, value;
  bool isQuoted = false;
  for (int i = 0; i < text.size(); ++i) {
    QChar character = text[i];
    const bool isEscaped = character == QLatin1Char('\\') && i + 1 < text.size();
    if (isEscaped)
      character = text[++i];
    const bool isQuote = !isEscaped && character == QLatin1Char('"');
    if (isQuote)
      isQuoted = !isQuoted;
    const bool isBlank = !isEscaped && !isQuoted && !isQuote && character.isSpace();
    const bool isEqualSign = !isEscaped && !isQuoted && character == QLatin1Char('=');
    if (state == State::Value && isBlank) {
      add(key, value);
      state = State::Between;
      continue;
    }
    if (state == State::Key && isBlank) {
      state = State::AfterKey;
      continue;
    }
    if ((state == State::Key || state == State::AfterKey) && isEqualSign) {
      value.clear();
      state = State::BeforeValue;
      continue;
    }
    if (isBlank || (state == State::Between && isEqualSign))
      continue;
    if (state == State::Between || state == State::AfterKey) {
      // A word that no "=" followed is dropped here.
      key.clear();
      state = State::Key;
    } else if (state == State::BeforeValue) {
      state = State::Value;
    }
    if (!isQuote)
      (state == State::Key ? key : value).append(character);
  }
  if (state == State::Value || state == State::BeforeValue)
    add(key, value);
}

QString XschemProperties::value(const QString &key) const {
  const auto found = indexOf_.constFind(key);
  return found == indexOf_.constEnd() ? QString() : properties_[static_cast<size_t>(*found)].second;
}

bool XschemProperties::isTrue(const QString &key) const {
  const QString text = value(key).toLower();
  return text == QLatin1String("true") || text == QLatin1String("1") || text == QLatin1String("full");
}

void XschemProperties::add(const QString &key, const QString &value) {
  if (key.isEmpty() || indexOf_.contains(key))
    return;
  indexOf_.insert(key, static_cast<int>(properties_.size()));
  properties_.push_back({key, value});
}

bool isTclExpression(const QString &value) { return value.startsWith(QLatin1String("tcleval(")); }
