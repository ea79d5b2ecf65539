#ifndef VARIANTLIMITS_H
#define VARIANTLIMITS_H

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <oa/oaDesignDB.h>

// Keeps a walk from following parametric cells for ever: evaluators may place variants of their own cell with ever
// other parameters, or so many variants of each other that nobody would see the end. What stored cells place is finite
// and always allowed; only what variants place is limited.
class VariantLimits {
public:
  enum Verdict {
    kAllowed,
    kTooDeep, // variants of the super master contain each other too often; none of them gets any further ones
    kTooMany  // for the sake of one variant in a stored cell
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
  // How many were evaluated because of that one.
  int evaluations() const;

  // As many variants of one super master may contain each other; the embedded kit has the same limit for evaluations
  // within each other.
  static const int kMostWithinEachOther = 64;
  // As many variants may be evaluated because of one in a stored cell. Each time that is used up, the next such variant
  // has half as many: a layout with a thousand of them comes to its end, too.
  static const int kMostForOne = 10000;

private:
  struct Level {
    const oa::oaDesign *super;
    // Level of the variant in a stored cell that this one is there for; -1 for a stored cell.
    int root;
    // Of a root: variants that were evaluated because of it.
    int evaluations;
    bool isUsedUp;
  };

  int rootLevel() const { return levels_.empty() ? -1 : levels_.back().root; }

  std::vector<Level> levels_;
  std::unordered_map<const oa::oaDesign *, int> variantsBeingSent_;
  std::unordered_set<const oa::oaDesign *> endless_;
  int mostForOne_ = kMostForOne;
};

#endif
