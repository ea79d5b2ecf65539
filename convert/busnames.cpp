#include "oaconvert.h"

using namespace oa;

namespace {

const QChar kViewSeparator = QLatin1Char('@');

// What a symbol's view is called in general; it is left out of device names.
QString usualSymbolView() { return QLatin1String("symbol"); }

int numberBetween(const QString &text, int open, int close) { return text.mid(open + 1, close - open - 1).toInt(); }

// Where the brackets and colons of a member stand, -1 where there is none. A search from a place that was not found
// looks at the last character alone: the ">" of a bit has to end the member, text may follow the ">" of a range.
struct Markers {
  explicit Markers(const QString &member)
      : open(member.indexOf(QLatin1Char('<'))), colon(member.indexOf(QLatin1Char(':'), open)),
        // Anywhere, also behind the ">".
        secondColon(member.indexOf(QLatin1Char(':'), colon + 1)), close(member.indexOf(QLatin1Char('>'), colon)) {}

  // A base in front is wanted: without one, the member is a scalar name that happens to begin with "<".
  bool isRange() const { return open > 0 && open < colon && colon < close; }
  bool isBit() const { return open > 0 && open < close; }

  const int open, colon, secondColon, close;
};

oaScalarName scalarOf(const QString &text) { return oaScalarName(oaConvert::ns, text.toUtf8().constData()); }

oaScalarName baseOf(const QString &member, const Markers &at) {
  return scalarOf(member.left(at.open) + member.mid(at.close + 1));
}

oaVectorName rangeOf(const QString &member, const Markers &at) {
  const oaUInt4 start = oaUInt4(numberBetween(member, at.open, at.colon));
  if (at.secondColon < 0) {
    return oaVectorName(baseOf(member, at), start, oaUInt4(numberBetween(member, at.colon, at.close)));
  }
  // The direction is that of start and stop, so the sign of the step says nothing.
  const int signedStep = numberBetween(member, at.secondColon, at.close);
  const oaUInt4 step = signedStep < 0 ? 0u - oaUInt4(signedStep) : oaUInt4(signedStep);
  const oaUInt4 stop = oaUInt4(numberBetween(member, at.colon, at.secondColon));
  return oaVectorName(baseOf(member, at), start, stop, step == 0 ? 1 : step);
}

void appendMember(oaBundleName &bundle, QString member) {
  oaUInt4 repeat = 1;
  const int star = member.indexOf(QLatin1Char('*'));
  if (star > 0 && member.left(star).toInt() > 0) {
    repeat = oaUInt4(member.left(star).toInt());
    member = member.mid(star + 1);
  }
  const Markers at(member);
  if (at.isRange()) {
    bundle.append(rangeOf(member, at), repeat);
  } else if (at.isBit()) {
    const oaUInt4 index = oaUInt4(numberBetween(member, at.open, at.close));
    bundle.append(oaVectorBitName(baseOf(member, at), index), repeat);
  } else {
    bundle.append(scalarOf(member), repeat);
  }
}

} // namespace

oaBundleName oaConvert::toBundleName(const QString &text) {
  oaBundleName bundle;
  const QStringList members = text.split(QLatin1Char(','));
  for (const QString &member : members) {
    if (!member.isEmpty()) {
      appendMember(bundle, member.trimmed());
    }
  }
  return bundle;
}

QString oaConvert::toDeviceName(const QString &cell, const QString &view) {
  return view == usualSymbolView() ? cell : view + kViewSeparator + cell;
}

// Without a separator indexOf() gives -1, and the text behind it is the whole.
QString oaConvert::toCellName(const QString &device) { return device.mid(device.indexOf(kViewSeparator) + 1); }

QString oaConvert::toViewName(const QString &device) {
  const int separator = device.indexOf(kViewSeparator);
  return separator < 0 ? usualSymbolView() : device.left(separator);
}
