#include "oa/oaDesignDB.h"

namespace OpenAccess_4 {

void oaDesignInit(oaUInt4 apiMajorRev, oaUInt4 apiMinorRev, oaUInt4 dataModelRev) {
  oaTechInit(apiMajorRev, apiMinorRev, dataModelRev);
}

} // namespace OpenAccess_4
