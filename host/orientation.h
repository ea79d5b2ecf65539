#ifndef ORIENTATION_H
#define ORIENTATION_H

#include <QPoint>
#include <QString>

#include <optional>

// One of the eight orthogonal orientations: mirror about the x axis (y changes sign) first, when mirrored, then so many
// quarter turns counter-clockwise. GDSII describes its references and texts the same way.
//
// The plug-in has two text forms that disagree on the quarter turns: the text it sends while reading is not the text
// that it takes when it writes. Both forms are kept here, and nowhere else.
class Orientation {
public:
  constexpr Orientation() = default;
  // `quarterTurns` may be any number, negative ones included.
  constexpr Orientation(bool mirrored, int quarterTurns)
      : mirrored_(mirrored), quarterTurns_(static_cast<signed char>(((quarterTurns % 4) + 4) % 4)) {}

  constexpr bool isMirrored() const { return mirrored_; }
  // 0 to 3.
  constexpr int quarterTurns() const { return quarterTurns_; }

  // The text of the reading signals ("", "R90", "R180", "R270", "M", "R90M", "R180M", "R270M"); nothing for any other
  // text.
  static std::optional<Orientation> fromSignalText(const QString &text);
  // The text that the writing operations turn into this orientation.
  QString toWriterText() const;

  // The image of a point under the orientation about the origin. The caller's coordinates must leave room for a change
  // of sign.
  constexpr QPoint map(const QPoint &point) const {
    const int x = point.x();
    const int y = mirrored_ ? -point.y() : point.y();
    switch (quarterTurns_) {
    case 1:
      return QPoint(-y, x);
    case 2:
      return QPoint(-x, -y);
    case 3:
      return QPoint(y, -x);
    default:
      return QPoint(x, y);
    }
  }
  // This orientation followed by `next`.
  constexpr Orientation then(Orientation next) const {
    return Orientation(mirrored_ != next.mirrored_,
                       (next.mirrored_ ? -quarterTurns_ : quarterTurns_) + next.quarterTurns_);
  }
  constexpr bool operator==(Orientation other) const {
    return mirrored_ == other.mirrored_ && quarterTurns_ == other.quarterTurns_;
  }
  constexpr bool operator!=(Orientation other) const { return !(*this == other); }

private:
  bool mirrored_ = false;
  signed char quarterTurns_ = 0;
};

#endif
