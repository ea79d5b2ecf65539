#ifndef VARIANTLIMITS_H
#define VARIANTLIMITS_H

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <oa/oaDesignDB.h>

// Keeps a walk from following parametric cells for ever: evaluators may place variants of their own cell with ever
// other parameters, or so many variants of each other that nobody would see the end. What stored cells place is finite,
// and so is what a variant in a stored cell places itself: both are always allowed. What the variants inside that one
// place is counted.
class VariantLimits {
public:
  enum Verdict {
    kAllowed,
    kTooDeep, // variants of the super master contain each other too often; none of them gets any further ones
    kTooMany  // inside one variant in a stored cell
  };

  // What became of a variant that was about to be evaluated.
  struct Answer {
    Verdict verdict;
    // The same was not answered before, so it has to be told.
    bool isNew;
  };

  // A variant of `super`, or, when that is null, a stored cell goes on the stack of the cells that are being sent.
  void begin(const oa::oaDesign *super);
  // The last one comes off it.
  void end();

  // Whether the cell that went on the stack last may have one more variant of the super master.
  Answer ask(const oa::oaDesign *super);
  // The super master of the variant in a stored cell for whose sake that cell is there; null for a stored cell.
  const oa::oaDesign *root() const;
  // How many were evaluated inside that one, but for those that it places itself.
  int evaluations() const;

  // As many variants of one super master may contain each other; the embedded kit has the same limit for those that are
  // evaluated for the sake of each other.
  static const int kMostWithinEachOther = 64;
  // As many variants may be evaluated inside one in a stored cell, not counting those that it places itself.
  static const int kMostForOne = 30000;
  // The same for further variants of a super master of which one needed more than that: a layout with a thousand of
  // them comes to its end, too.
  static const int kMostAfterwards = 1000;

private:
  struct Level {
    const oa::oaDesign *super;
    // Level of the variant in a stored cell that this one is there for; -1 for a stored cell.
    int root;
    // Of a root: variants that were evaluated inside it, but for those that it places itself.
    int evaluations;
    int mostEvaluations;
    bool isUsedUp;
  };

  int rootLevel() const { return levels_.empty() ? -1 : levels_.back().root; }

  std::vector<Level> levels_;
  std::unordered_map<const oa::oaDesign *, int> variantsBeingSent_;
  // Super masters of which too many contained each other.
  std::unordered_set<const oa::oaDesign *> endless_;
  // Super masters of roots in which there were too many.
  std::unordered_set<const oa::oaDesign *> needTooMany_;
};

#endif
