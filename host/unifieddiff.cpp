#include "unifieddiff.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

using Line = std::string_view; // without its line feed
using Lines = std::vector<Line>;
using Number = int; // equal lines have equal numbers

Lines splitLines(const QByteArray &text) {
  Lines lines;
  const std::string_view all(text.constData(), static_cast<std::size_t>(text.size()));
  for (std::size_t begin = 0; begin < all.size();) {
    const std::size_t end = std::min(all.find('\n', begin), all.size());
    lines.push_back(all.substr(begin, end - begin));
    begin = end + 1;
  }
  return lines;
}

// Finds which lines of two sequences have no partner in the other. Parts still to be compared stand on a stack; the
// middle of a shortest way through such a part is found by walking from both its corners, and cuts it in two.
class LineMatcher {
public:
  LineMatcher(const std::vector<Number> &before, const std::vector<Number> &after, std::vector<bool> &removed,
              std::vector<bool> &added)
      : before_(before), after_(after), removed_(removed), added_(added), forward_(before.size() + after.size() + 3),
        backward_(forward_.size()), origin_(static_cast<int>(after.size()) + 1),
        costLimit_(std::max(kLeastCostLimit, static_cast<int>(std::sqrt(double(forward_.size()))))) {}

  void run() {
    parts_.push_back({0, static_cast<int>(before_.size()), 0, static_cast<int>(after_.size())});
    while (!parts_.empty()) {
      const Part part = parts_.back();
      parts_.pop_back();
      compare(part);
    }
  }

private:
  // Lines [left, right) of the first text against [top, bottom) of the second.
  struct Part {
    int left, right, top, bottom;
  };
  // A place that a way through a part passes.
  struct Place {
    int x, y;
  };
  static constexpr int kLeastCostLimit = 1024;

  void compare(Part part) {
    while (part.left < part.right && part.top < part.bottom && isMatch(part.left, part.top)) {
      ++part.left;
      ++part.top;
    }
    while (part.left < part.right && part.top < part.bottom && isMatch(part.right - 1, part.bottom - 1)) {
      --part.right;
      --part.bottom;
    }
    if (part.left == part.right) {
      std::fill(added_.begin() + part.top, added_.begin() + part.bottom, true);
    } else if (part.top == part.bottom) {
      std::fill(removed_.begin() + part.left, removed_.begin() + part.right, true);
    } else {
      const Place middle = findMiddle(part);
      parts_.push_back({middle.x, part.right, middle.y, part.bottom});
      parts_.push_back({part.left, middle.x, part.top, middle.y});
    }
  }

  bool isMatch(int x, int y) const {
    return before_[static_cast<std::size_t>(x)] == after_[static_cast<std::size_t>(y)];
  }

  // The furthest x on the diagonal x - y, of the walk from the upper left; the nearest, of the walk from the lower
  // right.
  int &forward(int diagonal) { return forward_[static_cast<std::size_t>(diagonal + origin_)]; }
  int &backward(int diagonal) { return backward_[static_cast<std::size_t>(diagonal + origin_)]; }

  // The diagonals that a walk has reached.
  struct Reach {
    int low, high;
  };

  // Each walk reaches one diagonal more on both sides with each step, and stays inside the part.
  static Reach widened(Reach reach, Reach limits, std::vector<int> &walk, int origin, int unreached) {
    const auto at = [&walk, origin](int diagonal) -> int & {
      return walk[static_cast<std::size_t>(diagonal + origin)];
    };
    if (reach.low > limits.low) {
      --reach.low;
      at(reach.low - 1) = unreached;
    } else {
      ++reach.low;
    }
    if (reach.high < limits.high) {
      ++reach.high;
      at(reach.high + 1) = unreached;
    } else {
      --reach.high;
    }
    return reach;
  }

  // Neither side of the part is empty, and its first lines differ, as its last ones do.
  Place findMiddle(const Part &part) {
    const Reach limits{part.left - part.bottom, part.right - part.top};
    const int start = part.left - part.top;
    const int end = part.right - part.bottom;
    const bool meetsForward = ((start - end) & 1) != 0;
    Reach ahead{start, start};
    Reach back{end, end};
    forward(start) = part.left;
    backward(end) = part.right;
    for (int cost = 1;; ++cost) {
      ahead = widened(ahead, limits, forward_, origin_, -1);
      for (int d = ahead.high; d >= ahead.low; d -= 2) {
        const int x = walkForward(part, d);
        if (meetsForward && back.low <= d && d <= back.high && backward(d) <= x)
          return {x, x - d};
      }
      back = widened(back, limits, backward_, origin_, std::numeric_limits<int>::max());
      for (int d = back.high; d >= back.low; d -= 2) {
        const int x = walkBackward(part, d);
        if (!meetsForward && ahead.low <= d && d <= ahead.high && x <= forward(d))
          return {x, x - d};
      }
      if (cost >= costLimit_)
        return furthest(part, ahead, back);
    }
  }

  int walkForward(const Part &part, int d) {
    const int below = forward(d - 1);
    const int above = forward(d + 1);
    int x = below < above ? above : below + 1;
    while (x < part.right && x - d < part.bottom && isMatch(x, x - d))
      ++x;
    return forward(d) = x;
  }

  int walkBackward(const Part &part, int d) {
    const int below = backward(d - 1);
    const int above = backward(d + 1);
    int x = below < above ? below : above - 1;
    while (x > part.left && x - d > part.top && isMatch(x - 1, x - d - 1))
      --x;
    return backward(d) = x;
  }

  // The walks have not met and it gets expensive: the place at which one of them has come furthest lies on a way that
  // is good, if not the shortest.
  Place furthest(const Part &part, Reach ahead, Reach back) {
    Place best{part.left, part.top};
    int bestDone = 0;
    const auto consider = [&](int x, int y, int done) {
      if (x >= part.left && x <= part.right && y >= part.top && y <= part.bottom && done > bestDone) {
        best = {x, y};
        bestDone = done;
      }
    };
    for (int d = ahead.high; d >= ahead.low; d -= 2) {
      const int x = forward(d);
      consider(x, x - d, x - part.left + (x - d - part.top));
    }
    for (int d = back.high; d >= back.low; d -= 2) {
      const int x = backward(d);
      consider(x, x - d, part.right - x + (part.bottom - (x - d)));
    }
    return best;
  }

  const std::vector<Number> &before_;
  const std::vector<Number> &after_;
  std::vector<bool> &removed_;
  std::vector<bool> &added_;
  std::vector<int> forward_;
  std::vector<int> backward_;
  const int origin_; // place of diagonal 0
  const int costLimit_;
  std::vector<Part> parts_;
};

// Lines that the other text has nowhere are taken out beforehand: a text that has been replaced as a whole costs
// nothing, and only the others are numbered and compared.
class Comparison {
public:
  Comparison(const Lines &before, const Lines &after) : removed_(before.size()), added_(after.size()) {
    std::unordered_map<Line, Occurrence> occurrences;
    occurrences.reserve(before.size() + after.size());
    for (const Line &line : before)
      occurrences[line].isBefore = true;
    for (const Line &line : after)
      occurrences[line].isAfter = true;
    Number next = 0;
    for (auto &occurrence : occurrences)
      occurrence.second.number = next++;
    const Sequence first = shared(before, occurrences, removed_);
    const Sequence second = shared(after, occurrences, added_);
    std::vector<bool> removed(first.numbers.size());
    std::vector<bool> added(second.numbers.size());
    LineMatcher(first.numbers, second.numbers, removed, added).run();
    mark(first, removed, removed_);
    mark(second, added, added_);
  }

  // One entry a line.
  const std::vector<bool> &removed() const { return removed_; }
  const std::vector<bool> &added() const { return added_; }

private:
  struct Occurrence {
    bool isBefore = false;
    bool isAfter = false;
    Number number = 0;
  };
  // The lines of a text that the other has too, with their places.
  struct Sequence {
    std::vector<Number> numbers;
    std::vector<std::size_t> places;
  };

  static Sequence shared(const Lines &lines, const std::unordered_map<Line, Occurrence> &occurrences,
                         std::vector<bool> &changed) {
    Sequence sequence;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const Occurrence &occurrence = occurrences.at(lines[i]);
      if (occurrence.isBefore && occurrence.isAfter) {
        sequence.numbers.push_back(occurrence.number);
        sequence.places.push_back(i);
      } else {
        changed[i] = true;
      }
    }
    return sequence;
  }

  static void mark(const Sequence &sequence, const std::vector<bool> &found, std::vector<bool> &changed) {
    for (std::size_t i = 0; i < found.size(); ++i) {
      if (found[i])
        changed[sequence.places[i]] = true;
    }
  }

  std::vector<bool> removed_;
  std::vector<bool> added_;
};

// Lines [beforeBegin, beforeEnd) have become [afterBegin, afterEnd).
struct Edit {
  std::size_t beforeBegin, beforeEnd, afterBegin, afterEnd;
};

std::vector<Edit> editsOf(const Comparison &comparison) {
  const std::vector<bool> &removed = comparison.removed();
  const std::vector<bool> &added = comparison.added();
  std::vector<Edit> edits;
  std::size_t x = 0;
  std::size_t y = 0;
  while (x < removed.size() || y < added.size()) {
    Edit edit{x, x, y, y};
    while (x < removed.size() && removed[x])
      edit.beforeEnd = ++x;
    while (y < added.size() && added[y])
      edit.afterEnd = ++y;
    if (edit.beforeBegin < edit.beforeEnd || edit.afterBegin < edit.afterEnd) {
      edits.push_back(edit);
    } else {
      ++x;
      ++y;
    }
  }
  return edits;
}

class HunkWriter {
public:
  HunkWriter(const Lines &before, const Lines &after, bool isBeforeEnded, bool isAfterEnded)
      : before_(before), after_(after), isBeforeEnded_(isBeforeEnded), isAfterEnded_(isAfterEnded) {}

  QByteArray write(const std::vector<Edit> &edits) {
    for (std::size_t first = 0; first < edits.size();) {
      std::size_t last = first;
      while (last + 1 < edits.size() && edits[last + 1].beforeBegin - edits[last].beforeEnd <= 2 * kContext)
        ++last;
      writeHunk(edits, first, last);
      first = last + 1;
    }
    return out_;
  }

private:
  static constexpr std::size_t kContext = 3;

  void writeHunk(const std::vector<Edit> &edits, std::size_t first, std::size_t last) {
    const std::size_t lead = std::min(kContext, edits[first].beforeBegin);
    const std::size_t tail = std::min(kContext, before_.size() - edits[last].beforeEnd);
    const std::size_t begin = edits[first].beforeBegin - lead;
    out_ += "@@ -" + range(begin, edits[last].beforeEnd + tail) + " +" +
            range(edits[first].afterBegin - lead, edits[last].afterEnd + tail) + " @@" + heading(begin) + '\n';
    std::size_t x = begin;
    for (std::size_t i = first; i <= last; ++i) {
      for (; x < edits[i].beforeBegin; ++x)
        writeBefore(' ', x);
      for (; x < edits[i].beforeEnd; ++x)
        writeBefore('-', x);
      for (std::size_t y = edits[i].afterBegin; y < edits[i].afterEnd; ++y)
        writeLine('+', after_[y], y + 1 < after_.size() || isAfterEnded_);
    }
    for (std::size_t end = x + tail; x < end; ++x)
      writeBefore(' ', x);
  }

  // Lines are counted from 1; an empty range is named by the line before it.
  static QByteArray range(std::size_t begin, std::size_t end) {
    const std::size_t count = end - begin;
    const QByteArray start = QByteArray::number(static_cast<qulonglong>(count == 0 ? begin : begin + 1));
    return count == 1 ? start : start + ',' + QByteArray::number(static_cast<qulonglong>(count));
  }

  // Hunks come in ascending order, so each line is looked at once.
  QByteArray heading(std::size_t begin) {
    for (; scanned_ < begin; ++scanned_) {
      const Line line = before_[scanned_];
      if (!line.empty() && line.front() != ' ')
        heading_ = line;
    }
    constexpr std::size_t kLongestHeading = 60;
    const Line shown = heading_.substr(0, kLongestHeading);
    return shown.empty() ? QByteArray() : ' ' + QByteArray(shown.data(), static_cast<int>(shown.size()));
  }

  void writeBefore(char mark, std::size_t x) { writeLine(mark, before_[x], x + 1 < before_.size() || isBeforeEnded_); }

  void writeLine(char mark, Line line, bool isEnded) {
    out_ += mark;
    out_.append(line.data(), static_cast<int>(line.size()));
    out_ += isEnded ? "\n" : "\n\\ No newline at end of file\n";
  }

  const Lines &before_;
  const Lines &after_;
  const bool isBeforeEnded_;
  const bool isAfterEnded_;
  QByteArray out_;
  std::size_t scanned_ = 0;
  Line heading_;
};

} // namespace

QByteArray unifiedDiff(const DiffText &before, const DiffText &after) {
  if (before.lines == after.lines)
    return {};
  const QByteArray head = "--- " + before.name + "\n+++ " + after.name + '\n';
  Lines beforeLines = splitLines(before.lines);
  Lines afterLines = splitLines(after.lines);
  const bool isBeforeEnded = before.lines.endsWith('\n');
  const bool isAfterEnded = after.lines.endsWith('\n');
  std::vector<Edit> edits = editsOf(Comparison(beforeLines, afterLines));
  if (edits.empty()) // only the end of the last line differs
    edits.push_back({beforeLines.size() - 1, beforeLines.size(), afterLines.size() - 1, afterLines.size()});
  return head + HunkWriter(beforeLines, afterLines, isBeforeEnded, isAfterEnded).write(edits);
}
