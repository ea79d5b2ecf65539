#include "evaluationlimits.h"

#include "designdatabase.h"
#include "supermaster.h"

#include <map>
#include <set>

namespace OpenAccess_4 {
namespace kit {

namespace {

// As many variants of one super master may be under way, each for the sake of the next.
constexpr int kMostWithinEachOther = 64;
// As many evaluators may run within each other, whatever they draw: each needs its part of the stack.
constexpr int kMostEvaluatorsRunning = 256;
// As many variants may be evaluated for the sake of one, not counting those that it places or asks for itself. All of
// them stay open as long as the one does.
constexpr int kMostForOne = 10000;

} // namespace

struct EvaluationsUnderWay {
  std::uint64_t number = 0; // of the outermost
  int nested = 0;
  int belowFirst = 0; // evaluations so far, but for those that the outermost one needs directly
  std::map<const DesignDatabase *, int> nestedOf; // by super master
  // Super masters of which there were too many within each other; only compared.
  std::set<const DesignDatabase *> endless;

  void begin(const DesignDatabase *super) {
    static std::uint64_t lastNumber = 0;
    if (nested++ == 0) {
      number = ++lastNumber;
      belowFirst = 0;
      nestedOf.clear();
      endless.clear();
    }
    ++nestedOf[super];
  }
  void end(const DesignDatabase *super) {
    --nested;
    --nestedOf[super];
  }
  int countOf(const DesignDatabase *super) const {
    const auto found = nestedOf.find(super);
    return found == nestedOf.end() ? 0 : found->second;
  }
};

namespace {

EvaluationsUnderWay outermostUnderWay;
EvaluationsUnderWay *underWay = &outermostUnderWay;
int evaluatorsRunning = 0;

} // namespace

Evaluation::Evaluation(const DesignDatabase *super) : super_(super) {
  if (underWay->nested > 1) {
    ++underWay->belowFirst;
  }
  underWay->begin(super);
  ++evaluatorsRunning;
}

Evaluation::~Evaluation() {
  --evaluatorsRunning;
  underWay->end(super_);
}

std::string Evaluation::whyNoMore(const DesignDatabase *super) {
  if (evaluatorsRunning >= kMostEvaluatorsRunning) {
    return std::to_string(evaluatorsRunning) + " evaluations are under way already, each for the sake of the next";
  }
  const int within = underWay->countOf(super);
  if (within >= kMostWithinEachOther) {
    underWay->endless.insert(super);
    return std::to_string(within) + " evaluations of the cell are under way already, each for the sake of the next";
  }
  if (within != 0 && underWay->endless.count(super) != 0) { // two in each would be 2 to the power of 64
    return std::to_string(kMostWithinEachOther) +
           " evaluations of the cell, each for the sake of the next, were not enough";
  }
  return underWay->nested > 1 && underWay->belowFirst >= kMostForOne
             ? std::to_string(underWay->belowFirst) + " evaluations were needed already for the sake of one"
             : std::string();
}

std::uint64_t Evaluation::outermost() { return underWay->nested == 0 ? 0 : underWay->number; }

BoxUnderWay::BoxUnderWay(const DesignDatabase &design) : isCounted_(design.subState != nullptr) {
  if (isCounted_) {
    super_ = design.subState->super;
    underWay->begin(super_);
  } else if (underWay->nested != 0) {
    own_ = std::make_unique<EvaluationsUnderWay>();
    outer_ = underWay;
    underWay = own_.get();
  }
}

BoxUnderWay::~BoxUnderWay() {
  if (isCounted_) {
    underWay->end(super_);
  } else if (outer_ != nullptr) {
    underWay = outer_;
  }
}

} // namespace kit
} // namespace OpenAccess_4
