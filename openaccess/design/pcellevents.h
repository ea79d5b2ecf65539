#ifndef OAKIT_PCELLEVENTS_H
#define OAKIT_PCELLEVENTS_H

// Calls into evaluators, and the observers that are told of them.

#include "oa/oaPcell.h"

#include <string>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

// All observers, in the order in which they are told.
class PcellObservers {
public:
  static PcellObservers &instance();

  void add(oaPcellObserver *observer);
  void remove(oaPcellObserver *observer);
  // Calls a member function of each enabled observer, which may come and go meanwhile. What they throw is dropped:
  // nobody could be told.
  template <typename Call> void tell(Call call) {
    const std::vector<oaPcellObserver *> now = observers_;
    for (oaPcellObserver *observer : now) {
      if (isThere(observer) && observer->isEnabled()) {
        try {
          call(*observer);
        } catch (...) { // NOLINT(bugprone-empty-catch): see above
        }
      }
    }
  }
  void tellError(oaDesign *design, const std::string &message, oaPcellErrorTypeEnum type);

private:
  bool isThere(const oaPcellObserver *observer) const;
  std::vector<oaPcellObserver *> observers_;
};

// What the exception that is being handled says. Only to be called in a handler.
std::string textOfException();

// Calls into an evaluator. What it throws is told to the observers, with `what` before its own text; false then.
template <typename Call>
bool callEvaluator(oaDesign *design, oaPcellErrorTypeEnum type, const std::string &what, Call call) {
  std::string message;
  try {
    call();
    return true;
  } catch (...) {
    message = textOfException();
  }
  PcellObservers::instance().tellError(design, what + ": " + message, type);
  return false;
}

} // namespace kit
} // namespace OpenAccess_4

#endif
