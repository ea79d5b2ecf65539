#ifndef OAKIT_LIBDEFOBSERVERS_H
#define OAKIT_LIBDEFOBSERVERS_H

#include "oa/oaLibDefListObserver.h"

#include <string>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

// All observers of library definition lists, in the order in which they are told.
class LibDefObservers {
public:
  using Observer = oaObserver<oaLibDefList>;
  static LibDefObservers &instance();

  void add(Observer *observer);
  void remove(Observer *observer);
  void warn(oaLibDefList *list, const std::string &message, oaLibDefListWarningTypeEnum type);
  // False when one of them answered false.
  bool preOpen(oaLibDefList *list);
  // Calls a member function of each enabled observer. Observers may come and go meanwhile.
  template <typename Call> void tell(Call call) {
    const std::vector<Observer *> now = observers_;
    for (Observer *observer : now) {
      if (isThere(observer) && observer->isEnabled()) {
        call(*observer);
      }
    }
  }

private:
  bool isThere(const Observer *observer) const;
  std::vector<Observer *> observers_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
