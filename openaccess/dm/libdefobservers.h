#ifndef OAKIT_LIBDEFOBSERVERS_H
#define OAKIT_LIBDEFOBSERVERS_H

#include "oa/oaLibDefListObserver.h"
#include "observerlist.h"

#include <string>

namespace OpenAccess_4 {
namespace kit {

// All observers of library definition lists.
class LibDefObservers : public ObserverList<oaObserver<oaLibDefList>> {
public:
  using Observer = oaObserver<oaLibDefList>;
  static LibDefObservers &instance();

  void warn(oaLibDefList *list, const std::string &message, oaLibDefListWarningTypeEnum type);
  // False when one of them answered false.
  bool preOpen(oaLibDefList *list);
};

} // namespace kit
} // namespace OpenAccess_4

#endif
