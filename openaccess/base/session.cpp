#include "session.h"

#include "oa/oaSession.h"
#include "raise.h"

namespace OpenAccess_4 {

namespace kit {

SessionDatabase::SessionDatabase() : Database(DatabaseKind::session, oacSessionType) {}

SessionDatabase &SessionDatabase::instance() {
  requireInitialised();
  static SessionDatabase &session = *new SessionDatabase;
  return session;
}

} // namespace kit

oaSession *oaSession::get() {
  return static_cast<oaSession *>(static_cast<oaSessionObject *>(kit::SessionDatabase::instance().self()));
}

oaSession *oaSessionObject::getSession() const {
  kit::liveTable(this);
  return oaSession::get();
}

} // namespace OpenAccess_4
