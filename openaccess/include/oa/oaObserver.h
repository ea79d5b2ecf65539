#ifndef OAOBSERVER_H
#define OAOBSERVER_H

#include "oa/oaTypes.h"

namespace OpenAccess_4 {

// What all observers have in common. An observer is registered as long as it exists.
class oaStdObserver {
public:
  oaStdObserver(const oaStdObserver &) = delete;
  oaStdObserver &operator=(const oaStdObserver &) = delete;
  virtual ~oaStdObserver() = default;

  // Higher priorities are told first; among equals, the older observer.
  oaUInt4 getPriority() const { return priority_; }
  oaBoolean isEnabled() const { return isEnabled_; }
  // A disabled observer is told nothing.
  void enable(oaBoolean on = true) { isEnabled_ = on; }

protected:
  oaStdObserver(oaUInt4 priority, oaBoolean enabled) : priority_(priority), isEnabled_(enabled) {}

private:
  oaUInt4 priority_;
  oaBoolean isEnabled_;
};

// What observers of other events than those of one class of objects have in common.
class oaBaseObserver : public oaStdObserver {
protected:
  using oaStdObserver::oaStdObserver;
};

// Observer of the objects of class T. Specialised for each class that can be observed.
template <class T> class oaObserver;

} // namespace OpenAccess_4

#endif
