#ifndef OAKIT_OBSERVERLIST_H
#define OAKIT_OBSERVERLIST_H

#include <algorithm>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

// Observers of one kind, in the order in which they are told: higher priorities first, among equals the older one.
template <typename Observer> class ObserverList {
public:
  void add(Observer *observer) {
    const auto place = std::find_if(observers_.begin(), observers_.end(), [observer](const Observer *other) {
      return other->getPriority() < observer->getPriority();
    });
    observers_.insert(place, observer);
  }
  void remove(Observer *observer) {
    observers_.erase(std::remove(observers_.begin(), observers_.end(), observer), observers_.end());
  }
  bool isEmpty() const { return observers_.empty(); }
  // Calls a member function of each enabled observer. Observers may come and go meanwhile.
  template <typename Call> void tell(Call call) {
    const std::vector<Observer *> now = observers_;
    for (Observer *observer : now) {
      const bool isThere = std::find(observers_.begin(), observers_.end(), observer) != observers_.end();
      if (isThere && observer->isEnabled()) {
        call(*observer);
      }
    }
  }

private:
  std::vector<Observer *> observers_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
