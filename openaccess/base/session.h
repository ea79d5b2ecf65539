#ifndef OAKIT_SESSION_H
#define OAKIT_SESSION_H

#include "database.h"

namespace OpenAccess_4 {
namespace kit {

// The objects of the session, which have no file: the session object itself here, and in tables that the layers above
// add, libraries, view types and library definitions. Rows carry a kind only; what else belongs to them lies beside the
// tables in ordinary containers.
class SessionDatabase : public Database {
public:
  // Lives until the process ends.
  static SessionDatabase &instance();
  std::string label() const override { return "session"; }

private:
  SessionDatabase();
};

// Ids of the tables that the layers add to the session.
enum SessionTableId : std::uint16_t {
  kLibraryTable = 10,
  kViewTypeTable = 11,
  kLibDefListTable = 12,
  kLibDefListMemberTable = 13,
};

} // namespace kit
} // namespace OpenAccess_4

#endif
