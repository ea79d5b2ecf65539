#include "oaconvert.h"

#include <cstdio>

using namespace oa;

namespace {

// Angles under this count as 0; all negative ones do.
const double kSmallestAngleDegrees = 1e-7;

const int kPresentationOfAlignment[] = {
    0, 4, 8,  // left: upper, centre, lower
    1, 5, 9,  // centre
    2, 6, 10, // right
};
const int kAlignmentCount = sizeof kPresentationOfAlignment / sizeof kPresentationOfAlignment[0];

struct ParsedOrientation {
  bool isMirrored;
  double angleDegrees;
};

ParsedOrientation parseOrientation(const QString &text) {
  ParsedOrientation parsed = {false, 0.0};
  int position = 0;
  while (position < text.size()) {
    const QChar character = text.at(position++);
    if (character == QLatin1Char('M')) {
      parsed.isMirrored = !parsed.isMirrored;
    } else if (character == QLatin1Char('R')) {
      const int start = position;
      while (position < text.size() && !text.at(position).isLetter()) {
        ++position;
      }
      parsed.angleDegrees += text.mid(start, position - start).toDouble();
    }
  }
  return parsed;
}

} // namespace

QString oaConvert::toTrans(const oaOrient &orient) {
  switch (static_cast<oaOrientEnum>(orient)) {
  case oacR0:
    return QLatin1String("");
  case oacR90:
    return QLatin1String("R270");
  case oacR180:
    return QLatin1String("R180");
  case oacR270:
    return QLatin1String("R90");
  case oacMY:
    return QLatin1String("R180M");
  case oacMYR90:
    return QLatin1String("R270M");
  case oacMX:
    return QLatin1String("M");
  case oacMXR90:
    return QLatin1String("R90M");
  }
  return QString();
}

oaOrient oaConvert::toOaOrient(const QString &text, bool *ok) {
  const ParsedOrientation parsed = parseOrientation(text.trimmed());
  if (ok) {
    *ok = true;
  }
  // The angles are compared exactly: 360 and 450 degrees are refused rather than reduced.
  if (parsed.angleDegrees < kSmallestAngleDegrees) {
    return parsed.isMirrored ? oacMX : oacR0;
  }
  if (parsed.angleDegrees == 90.0) {
    return parsed.isMirrored ? oacMYR90 : oacR90;
  }
  if (parsed.angleDegrees == 180.0) {
    return parsed.isMirrored ? oacMY : oacR180;
  }
  if (parsed.angleDegrees == 270.0) {
    return parsed.isMirrored ? oacMXR90 : oacR270;
  }
  if (debug) {
    std::printf("angle %f\n", parsed.angleDegrees);
  }
  if (ok) {
    *ok = false;
  }
  return oacR0;
}

oaOrient oaConvert::toOaOrient(int degrees) {
  if (degrees < 0) {
    degrees = (degrees % 360 + 360) % 360;
  } else if (degrees > 360) {
    degrees = (degrees - 1) % 360 + 1;
  }
  if (degrees < 45 || degrees > 315) {
    return oacR0;
  }
  if (degrees <= 135) {
    return oacR90;
  }
  return degrees <= 225 ? oacR180 : oacR270;
}

int oaConvert::toTextPresentation(const oaTextAlign &alignment) {
  const int value = static_cast<oaTextAlignEnum>(alignment);
  return value >= 0 && value < kAlignmentCount ? kPresentationOfAlignment[value] : -1;
}

oaTextAlign oaConvert::toOaTextAlign(int presentation) {
  for (int value = 0; value < kAlignmentCount; ++value) {
    if (kPresentationOfAlignment[value] == presentation) {
      return static_cast<oaTextAlignEnum>(value);
    }
  }
  return oacUpperLeftTextAlign;
}
