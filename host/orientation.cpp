#include "orientation.h"

namespace {

struct SignalText {
  const char *text;
  Orientation orientation;
};

// Plain turns arrive counted clockwise, turns after a mirror counter-clockwise.
constexpr SignalText kSignalTexts[] = {
    {"", Orientation(false, 0)},     {"R270", Orientation(false, 1)}, {"R180", Orientation(false, 2)},
    {"R90", Orientation(false, 3)},  {"M", Orientation(true, 0)},     {"R90M", Orientation(true, 1)},
    {"R180M", Orientation(true, 2)}, {"R270M", Orientation(true, 3)},
};

// What the writing operations parse: plain turns counter-clockwise, and after a mirror clockwise.
constexpr const char *kWriterTexts[2][4] = {{"", "R90", "R180", "R270"}, {"M", "R270M", "R180M", "R90M"}};

} // namespace

std::optional<Orientation> Orientation::fromSignalText(const QString &text) {
  for (const SignalText &known : kSignalTexts) {
    if (text == QLatin1String(known.text))
      return known.orientation;
  }
  return std::nullopt;
}

QString Orientation::toWriterText() const { return QLatin1String(kWriterTexts[mirrored_ ? 1 : 0][quarterTurns_]); }
