#ifndef OATECHOBSERVER_H
#define OATECHOBSERVER_H

#include "oa/oaObserver.h"
#include "oa/oaString.h"

namespace OpenAccess_4 {

class oaTech;

// Is told what is wrong among technologies that refer to each other.
template <> class oaObserver<oaTech> : public oaStdObserver {
public:
  explicit oaObserver(oaUInt4 priority, oaBoolean enabled = true);
  ~oaObserver() override;

  // A technology that `tech` refers to was opened and has something under a name or number that another one in reach
  // uses too, or other units. `msgId` is the number that an exception for that would carry. Both stay as they are, and
  // the one that is met first is found.
  virtual void onConflict(oaTech *tech, oaUInt4 msgId, const oaString &msg);
};

} // namespace OpenAccess_4

#endif
