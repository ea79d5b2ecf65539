#include "variantlimits.h"

using namespace oa;

void VariantLimits::begin(const oaDesign *super) {
  int root = -1;
  if (super) {
    root = rootLevel() < 0 ? int(levels_.size()) : rootLevel();
    ++variantsBeingSent_[super];
  }
  levels_.push_back({super, root, 0, needTooMany_.count(super) == 0 ? kMostForOne : kMostAfterwards, false});
}

void VariantLimits::end() {
  if (const oaDesign *super = levels_.back().super) {
    --variantsBeingSent_[super];
  }
  levels_.pop_back();
}

VariantLimits::Answer VariantLimits::ask(const oaDesign *super) {
  if (rootLevel() < 0) {
    return {kAllowed, false};
  }
  const auto found = variantsBeingSent_.find(super);
  const int within = found == variantsBeingSent_.end() ? 0 : found->second;
  if (within > 0 && endless_.count(super) != 0) {
    return {kTooDeep, false};
  }
  if (within >= kMostWithinEachOther) {
    endless_.insert(super);
    return {kTooDeep, true};
  }
  if (rootLevel() + 1 == int(levels_.size())) {
    return {kAllowed, false}; // one evaluation placed them, so they have an end
  }
  Level &root = levels_[size_t(rootLevel())];
  if (root.isUsedUp) {
    return {kTooMany, false};
  }
  if (root.evaluations >= root.mostEvaluations) {
    root.isUsedUp = true;
    needTooMany_.insert(root.super);
    return {kTooMany, true};
  }
  ++root.evaluations;
  return {kAllowed, false};
}

const oaDesign *VariantLimits::root() const {
  const int level = rootLevel();
  return level < 0 ? nullptr : levels_[size_t(level)].super;
}

int VariantLimits::evaluations() const {
  const int level = rootLevel();
  return level < 0 ? 0 : levels_[size_t(level)].evaluations;
}
