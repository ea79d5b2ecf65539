#ifndef OAKIT_EVALUATIONLIMITS_H
#define OAKIT_EVALUATIONLIMITS_H

// What keeps parametric cells that place ever other variants of each other from being evaluated for ever. Evaluations
// are needed for the sake of others in two ways: an evaluator asks for the master of an instance, or for a box that
// depends on it; and the box of a sub master needs those that it places, after its own evaluation is over.

#include <cstdint>
#include <memory>
#include <string>

namespace OpenAccess_4 {
namespace kit {

class DesignDatabase;

// An evaluation of a variant of the super master is under way.
class Evaluation {
public:
  explicit Evaluation(const DesignDatabase *super);
  ~Evaluation();
  Evaluation(const Evaluation &) = delete;
  Evaluation &operator=(const Evaluation &) = delete;

  // Why no variant of the super master may be evaluated now; empty as long as there may be more.
  static std::string whyNoMore(const DesignDatabase *super);
  // Number of the outermost variant that is being evaluated, or of which the box is being found; 0 without any. What
  // was refused for the sake of one may be had for the sake of another.
  static std::uint64_t outermost();

private:
  const DesignDatabase *super_;
};

struct EvaluationsUnderWay;

// The box of a design is being found. That of a sub master counts like an evaluation under way. What other designs
// place is finite: the limits begin anew in each variant that they place, and are as they were when the box is known.
class BoxUnderWay {
public:
  explicit BoxUnderWay(const DesignDatabase &design);
  ~BoxUnderWay();
  BoxUnderWay(const BoxUnderWay &) = delete;
  BoxUnderWay &operator=(const BoxUnderWay &) = delete;

private:
  bool isCounted_;
  const DesignDatabase *super_ = nullptr;
  // Of a design that is no sub master: what it counts itself, and what is to go on afterwards.
  std::unique_ptr<EvaluationsUnderWay> own_;
  EvaluationsUnderWay *outer_ = nullptr;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
