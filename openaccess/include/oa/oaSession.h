#ifndef OASESSION_H
#define OASESSION_H

#include "oa/oaObject.h"

namespace OpenAccess_4 {

// The one session of this process: owner of libraries, library definitions and view types.
class oaSession : public oaSessionObject {
public:
  static oaSession *get();
};

} // namespace OpenAccess_4

#endif
