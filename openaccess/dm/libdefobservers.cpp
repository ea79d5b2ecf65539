#include "libdefobservers.h"

namespace OpenAccess_4 {

namespace kit {

LibDefObservers &LibDefObservers::instance() {
  // Never destroyed: an observer with static lifetime unregisters late.
  static LibDefObservers &observers = *new LibDefObservers;
  return observers;
}

void LibDefObservers::warn(oaLibDefList *list, const std::string &message, oaLibDefListWarningTypeEnum type) {
  const oaString text(message.c_str());
  tell([&](Observer &observer) { observer.onLoadWarnings(list, text, type); });
}

bool LibDefObservers::preOpen(oaLibDefList *list) {
  bool goOn = true;
  tell([&](Observer &observer) { goOn = observer.onPreOpenLibs(list) && goOn; });
  return goOn;
}

} // namespace kit

oaObserver<oaLibDefList>::oaObserver(oaUInt4 priority, oaBoolean enabled) : oaStdObserver(priority, enabled) {
  kit::LibDefObservers::instance().add(this);
}

oaObserver<oaLibDefList>::~oaObserver() { kit::LibDefObservers::instance().remove(this); }

oaBoolean oaObserver<oaLibDefList>::onPreOpenLibs(oaLibDefList *) { return true; }
void oaObserver<oaLibDefList>::onPostOpenLibs(oaLibDefList *) {}
oaBoolean oaObserver<oaLibDefList>::onLoadWarnings(oaLibDefList *, const oaString &, oaLibDefListWarningTypeEnum) {
  return true;
}
void oaObserver<oaLibDefList>::onPostCreate(oaLibDefList *) {}
void oaObserver<oaLibDefList>::onPreDestroy(oaLibDefList *) {}
void oaObserver<oaLibDefList>::onPreSave(oaLibDefList *) {}
void oaObserver<oaLibDefList>::onPostSave(oaLibDefList *) {}
void oaObserver<oaLibDefList>::onPreSaveAs(oaLibDefList *, const oaString &) {}
void oaObserver<oaLibDefList>::onPostSaveAs(oaLibDefList *, const oaString &) {}

} // namespace OpenAccess_4
