// State of the start-up of the kit, and the builds that take part.
#ifndef OPENACCESS_STARTUP_H
#define OPENACCESS_STARTUP_H

#include "oa/oaString.h"

namespace OpenAccess_4 {
namespace kit {

/// Major release, minor release and build number of this kit with points between them.
const oaString &kitBuildName();
/// What the application passed to oaBaseInitAppBuild; empty when it did not.
const oaString &appBuildName();

} // namespace kit
} // namespace OpenAccess_4

#endif
