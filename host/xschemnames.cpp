#include "xschemnames.h"

#include "xschemreport.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {

// Wider buses are no circuit but a slip of the pen.
constexpr qint64 kWidestName = 65536;
constexpr int kDeepestParentheses = 16;

// Part of a name: a scalar, or the bits start, start +- step, ... stop of a vector.
struct Member {
  QString base;
  bool isVector = false;
  int start = 0;
  int stop = 0;
  int step = 1;
  int repeat = 1;

  qint64 width() const { return repeat * (std::abs(qint64(stop) - start) / step + 1); }
};
using Members = std::vector<Member>;

// Why a name cannot be expressed.
struct NameFault {
  const char *reason;
};

// The pieces between commas that stand in no brackets.
QStringList splitList(const QString &text) {
  QStringList pieces;
  int depth = 0, start = 0;
  for (int i = 0; i <= text.size(); ++i) {
    const QChar character = i < text.size() ? text[i] : QLatin1Char(',');
    if (character == QLatin1Char('[') || character == QLatin1Char('('))
      ++depth;
    else if (character == QLatin1Char(']') || character == QLatin1Char(')'))
      --depth;
    if (i < text.size() && (character != QLatin1Char(',') || depth > 0))
      continue;
    const QString piece = text.mid(start, i - start).trimmed();
    if (!piece.isEmpty())
      pieces.append(piece);
    start = i + 1;
  }
  return pieces;
}

int toNumber(const QString &text) {
  bool isNumber = false;
  const int number = text.trimmed().toInt(&isNumber);
  if (!isNumber)
    throw NameFault{"its range holds something else than numbers"};
  if (number < 0)
    throw NameFault{"a bit is below 0"};
  return number;
}

class NameParser {
public:
  static Members parse(const QString &name) {
    NameParser parser;
    parser.addList(name, 0);
    if (parser.members_.empty())
      throw NameFault{"it is empty"};
    return parser.members_;
  }

private:
  void addList(const QString &text, int depth) {
    if (depth > kDeepestParentheses)
      throw NameFault{"its parentheses are nested too deeply"};
    for (const QString &piece : splitList(text))
      addPiece(piece, depth);
  }

  void addPiece(const QString &piece, int depth) {
    static const QRegularExpression countBefore(QStringLiteral("^(\\d+)\\s*\\*\\s*(.+)$"));
    static const QRegularExpression countAfter(QStringLiteral("^([^*]+?)\\s*\\*\\s*(\\d+)$"));
    const QRegularExpressionMatch before = countBefore.match(piece);
    const QRegularExpressionMatch after = countAfter.match(piece);
    if (before.hasMatch()) {
      addRepeated(before.captured(2), before.captured(1).toInt(), depth);
    } else if (after.hasMatch()) {
      // A list with the count after it repeats each of its names by itself.
      Members list = NameParser::parse(after.captured(1));
      if (list.size() > 1 || list.front().isVector)
        throw NameFault{"a count stands after a list"};
      addRepeated(after.captured(1), after.captured(2).toInt(), depth);
    } else if (piece.startsWith(QLatin1Char('(')) && piece.endsWith(QLatin1Char(')'))) {
      addList(piece.mid(1, piece.size() - 2), depth + 1);
    } else {
      addName(piece);
    }
  }

  void addRepeated(const QString &text, int count, int depth) {
    if (count < 1)
      throw NameFault{"a repeat count is below 1"};
    NameParser list;
    list.addList(text, depth + 1);
    if (list.members_.size() == 1) {
      Member member = list.members_.front();
      if (qint64(member.repeat) * count > kWidestName)
        throw NameFault{"it means more than 65536 bits"};
      member.repeat *= count;
      add(member);
      return;
    }
    for (int i = 0; i < count && !list.members_.empty(); ++i) {
      for (const Member &member : list.members_)
        add(member);
    }
  }

  void addName(const QString &name) {
    static const QRegularExpression brackets(QStringLiteral("\\[([^\\[\\]]*)\\]"));
    static const QRegularExpression plainNumber(QStringLiteral("^\\s*\\d+\\s*$"));
    // The brackets that hold a range, or else the last ones, tell the bits; others belong to the name.
    QRegularExpressionMatch bits;
    bool hasRange = false;
    for (auto matches = brackets.globalMatch(name); matches.hasNext();) {
      const QRegularExpressionMatch match = matches.next();
      const bool isRange = !plainNumber.match(match.captured(1)).hasMatch();
      if (isRange && hasRange)
        throw NameFault{"it has two ranges"};
      if (isRange || !hasRange)
        bits = match;
      hasRange = hasRange || isRange;
    }
    if (!bits.hasMatch()) {
      Member scalar;
      scalar.base = name;
      add(scalar);
      return;
    }
    const QString before = name.left(bits.capturedStart()).trimmed();
    const QString after = name.mid(bits.capturedEnd()).trimmed();
    for (const QString &range : bits.captured(1).split(QLatin1Char(',')))
      addRange(before, after, range);
  }

  void addRange(const QString &before, const QString &after, const QString &range) {
    // The form with two dots has no brackets in the names it stands for.
    const bool isScalars = range.contains(QLatin1String(".."));
    const QStringList numbers = range.split(isScalars ? QStringLiteral("..") : QStringLiteral(":"));
    if (numbers.size() > 3)
      throw NameFault{"its range has more than three numbers"};
    Member member;
    member.base = before + after;
    member.isVector = true;
    member.start = toNumber(numbers[0]);
    member.stop = numbers.size() > 1 ? toNumber(numbers[1]) : member.start;
    member.step = numbers.size() > 2 ? toNumber(numbers[2]) : 1;
    if (member.step < 1)
      throw NameFault{"the step of its range is 0"};
    const int direction = member.stop < member.start ? -1 : 1;
    const int steps = std::abs(member.stop - member.start) / member.step;
    member.stop = member.start + direction * steps * member.step;
    if (member.width() > kWidestName)
      throw NameFault{"it means more than 65536 bits"};
    if (!isScalars) {
      add(member);
      return;
    }
    for (int i = 0; i <= steps; ++i) {
      Member scalar;
      scalar.base = before + QString::number(member.start + direction * i * member.step) + after;
      add(scalar);
    }
  }

  void add(const Member &member) {
    if (member.isVector && member.base.isEmpty())
      throw NameFault{"a range has no name"};
    width_ += member.width();
    if (width_ > kWidestName)
      throw NameFault{"it means more than 65536 bits"};
    members_.push_back(member);
  }

  Members members_;
  qint64 width_ = 0;
};

QString toHostText(const Member &member) {
  QString text = member.repeat > 1 ? QString::number(member.repeat) + QLatin1Char('*') : QString();
  text += member.base;
  if (!member.isVector)
    return text;
  text += QLatin1Char('<') + QString::number(member.start);
  if (member.stop != member.start)
    text += QLatin1Char(':') + QString::number(member.stop);
  if (member.stop != member.start && member.step > 1)
    text += QLatin1Char(':') + QString::number(member.step);
  return text + QLatin1Char('>');
}

QString placeOfName(const QString &place, const QString &name) {
  constexpr int kLongestShown = 80;
  const QString shown = name.size() > kLongestShown ? name.left(kLongestShown) + QStringLiteral("...") : name;
  return QStringLiteral("%1, name \"%2\"").arg(place, shown);
}

} // namespace

std::optional<QString> XschemNames::netName(const QString &name, const QString &place) {
  try {
    QStringList parts;
    for (Member member : NameParser::parse(name)) {
      member.base = databaseName(originalNets_, member.base, place);
      parts.append(toHostText(member));
    }
    return parts.join(QLatin1Char(','));
  } catch (const NameFault &fault) {
    report_.problem(QStringLiteral("the name of a net cannot be expressed and is left out: ") +
                        QLatin1String(fault.reason),
                    placeOfName(place, name));
    return std::nullopt;
  }
}

void XschemNames::nameInstance(SchematicPlacement &placement, const QString &name, const QString &place) {
  QString base = name;
  try {
    const Members members = NameParser::parse(name);
    const Member &first = members.front();
    base = first.base;
    qint64 count = 0;
    for (const Member &member : members)
      count += member.width();
    const bool isPlain = members.size() == 1 && first.repeat == 1 && first.step == 1;
    placement.isVector = count > 1 || first.isVector;
    placement.start = isPlain ? first.start : 0;
    placement.stop = isPlain ? first.stop : static_cast<int>(count) - 1;
    if (!isPlain)
      report_.notice(QStringLiteral("an iterated placement that is no plain range counts from 0"),
                     placeOfName(place, name));
  } catch (const NameFault &fault) {
    report_.problem(QStringLiteral("the name of a placement cannot be expressed, it is placed once: ") +
                        QLatin1String(fault.reason),
                    placeOfName(place, name));
  }
  base = databaseName(originalInstances_, base.isEmpty() ? QStringLiteral("unnamed") : base, place);
  placement.name = base;
  while (!claim(placement))
    placement.name = QStringLiteral("%1_%2").arg(base).arg(++lastNumbers_[base] + 1);
  if (placement.name != base)
    report_.notice(QStringLiteral("a placement's name is taken already; a number is added"), placeOfName(place, name));
}

// Takes the name with its range, unless any of it is taken.
bool XschemNames::claim(const SchematicPlacement &placement) {
  if (!placement.isVector) {
    const bool isFree = !instances_.contains(placement.name);
    instances_.insert(placement.name);
    return isFree;
  }
  const auto [first, last] = std::minmax(placement.start, placement.stop);
  std::map<int, int> &ranges = ranges_[placement.name];
  const auto next = ranges.upper_bound(last);
  if (next != ranges.begin() && std::prev(next)->second >= first)
    return false;
  ranges.emplace(first, last);
  return true;
}

QString XschemNames::databaseName(QHash<QString, QString> &originals, const QString &name, const QString &place) {
  const QString latin1 = latin1Name(name, place, report_);
  QString result = latin1;
  for (int i = 0; i < result.size(); ++i) {
    if (QStringLiteral("/<>:*").contains(result[i]) || (i == 0 && result[i] == QLatin1Char('#')))
      result[i] = QLatin1Char('_');
  }
  while (originals.contains(result) && originals.value(result) != name)
    result += QLatin1Char('_');
  originals.insert(result, name);
  if (result != latin1)
    report_.notice(QStringLiteral("/ < > : * in a name and # before it become _"), placeOfName(place, name));
  return result;
}

bool isXschemBusName(const QString &name) {
  try {
    const Members members = NameParser::parse(name);
    return members.size() > 1 || members.front().width() > 1;
  } catch (const NameFault &) {
    return false;
  }
}
