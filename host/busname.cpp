#include "busname.h"

#include "schematicconnectivity.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace {

constexpr qint64 kMostBits = qint64(1) << 20;

NameMember scalar(const QString &text) {
  NameMember member;
  member.base = text;
  return member;
}

// The text between two positions that hold markers.
QString between(const QString &text, int first, int second) { return text.mid(first + 1, second - first - 1); }

// A marker that is looked for from a place that was not found is looked for in the last character alone, as the plug-in
// does: this tells A<3> from A<3>x.
NameMember parseMember(QString text) {
  NameMember member;
  const int star = text.indexOf(QLatin1Char('*'));
  if (star > 0 && text.left(star).toInt() > 0) {
    member.repeat = text.left(star).toInt();
    text = text.mid(star + 1);
  }
  const int open = text.indexOf(QLatin1Char('<'));
  const int colon = text.indexOf(QLatin1Char(':'), open);
  const int secondColon = colon < 0 ? -1 : text.indexOf(QLatin1Char(':'), colon + 1);
  const int close = text.indexOf(QLatin1Char('>'), colon);
  const bool isRange = open > 0 && open < colon && colon < close;
  if (!isRange && (open < 1 || close < open)) {
    member.base = text;
    return member;
  }
  member.base = text.left(open) + text.mid(close + 1);
  if (!isRange) {
    member.kind = NameMember::Kind::Bit;
    member.start = between(text, open, close).toInt();
    return member;
  }
  member.kind = NameMember::Kind::Range;
  member.start = between(text, open, colon).toInt();
  member.stop = between(text, colon, secondColon < 0 ? close : secondColon).toInt();
  if (secondColon >= 0) {
    const qint64 step = std::abs(qint64(between(text, secondColon, close).toInt()));
    member.step = step > 0 ? static_cast<int>(std::min<qint64>(step, std::numeric_limits<int>::max())) : 1;
  }
  return member;
}

// Most names are one plain word.
bool isPlainWord(const QString &name) {
  return !name.isEmpty() && std::none_of(name.begin(), name.end(), [](QChar c) {
    return c == QLatin1Char(',') || c == QLatin1Char('*') || c == QLatin1Char('<') || c.isSpace();
  });
}

QStringList trimmedPieces(const QString &name) {
  QStringList pieces = name.split(QLatin1Char(','), Qt::SkipEmptyParts);
  for (QString &piece : pieces)
    piece = piece.trimmed();
  return pieces;
}

} // namespace

qint64 NameMember::bits() const {
  const qint64 once = kind == Kind::Range ? std::abs(qint64(stop) - start) / step + 1 : 1;
  return once * repeat;
}

QString NameMember::bitName(qint64 offset) const {
  if (kind == Kind::Scalar)
    return base;
  const qint64 index = kind == Kind::Bit ? start : start + (stop < start ? -offset : offset) * step;
  return base + QLatin1Char('<') + QString::number(index) + QLatin1Char('>');
}

std::vector<NameMember> membersOfName(const QString &name) {
  if (isPlainWord(name))
    return {scalar(name)};
  std::vector<NameMember> members;
  for (const QString &piece : trimmedPieces(name))
    members.push_back(parseMember(piece));
  return members;
}

int bitsOfName(const QString &name) {
  qint64 bits = 0;
  for (const NameMember &member : membersOfName(name))
    bits = std::min(kMostBits, bits + std::min(kMostBits, member.bits()));
  return static_cast<int>(std::max<qint64>(1, bits));
}

QStringList bitNamesOf(const QString &name) {
  QStringList names;
  for (const NameMember &member : membersOfName(name)) {
    const qint64 once = member.bits() / member.repeat;
    for (qint64 i = 0; i < member.bits() && names.size() < kMostBits; ++i)
      names.append(member.bitName(i % once));
  }
  if (names.isEmpty())
    names.append(name);
  return names;
}

QString plainNetName(const QString &name) {
  if (isPlainWord(name))
    return name;
  if (bitsOfName(name) == 1)
    return bitNamesOf(name).constFirst();
  return trimmedPieces(name).join(QLatin1Char(','));
}

QString repeatedName(const QString &name, int times) {
  if (times == 1)
    return name;
  if (name.contains(QLatin1Char(',')))
    return QStringList(QVector<QString>(times, name).toList()).join(QLatin1Char(','));
  const std::vector<NameMember> members = membersOfName(name);
  const int repeat = members.empty() ? 1 : members.front().repeat;
  const QString once = repeat == 1 ? name : name.mid(name.indexOf(QLatin1Char('*')) + 1);
  return QString::number(qint64(repeat) * times) + QLatin1Char('*') + once;
}

QString unrepeatedName(const QString &name, int times) {
  const QStringList pieces = trimmedPieces(name);
  if (times < 1 || pieces.isEmpty())
    return {};
  if (pieces.size() == 1) {
    const int repeat = membersOfName(name).front().repeat;
    if (repeat % times != 0)
      return {};
    const QString once =
        repeat == 1 ? pieces.front() : pieces.front().mid(pieces.front().indexOf(QLatin1Char('*')) + 1);
    return plainNetName(repeat == times ? once : QString::number(repeat / times) + QLatin1Char('*') + once);
  }
  if (pieces.size() % times != 0)
    return {};
  const int length = pieces.size() / times;
  for (int i = length; i < pieces.size(); ++i) {
    if (pieces[i] != pieces[i - length])
      return {};
  }
  return plainNetName(QStringList(pieces.mid(0, length)).join(QLatin1Char(',')));
}
