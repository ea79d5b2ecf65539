#ifndef OAKIT_PCELLEVENTS_H
#define OAKIT_PCELLEVENTS_H

// Calls into evaluators, and the observers that are told of them.

#include "designlife.h"
#include "oa/oaPcell.h"
#include "observerlist.h"

#include <string>

namespace OpenAccess_4 {
namespace kit {

class PcellObservers : public ObserverList<oaPcellObserver> {
public:
  static PcellObservers &instance();

  // Calls a member function of each enabled observer. What they throw is dropped: nobody could be told.
  template <typename Call> void tell(Call call) {
    const ForeignCode running;
    ObserverList::tell([&](oaPcellObserver &observer) {
      try {
        call(observer);
      } catch (...) { // NOLINT(bugprone-empty-catch): see above
      }
    });
  }
  void tellError(oaDesign *design, const std::string &message, oaPcellErrorTypeEnum type);
};

// What the exception that is being handled says. Only to be called in a handler.
std::string textOfException();

// Calls into an evaluator. What it throws is told to the observers, with `what` before its own text; false then.
template <typename Call>
bool callEvaluator(oaDesign *design, oaPcellErrorTypeEnum type, const std::string &what, Call call) {
  std::string message;
  try {
    const ForeignCode running;
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
