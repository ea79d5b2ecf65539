// How every layer of the kit raises its exceptions. A message says which object or file, what is wrong, what was found.
#ifndef OPENACCESS_RAISE_H
#define OPENACCESS_RAISE_H

#include <string>

#include "oa/oaBaseMsgIds.h"
#include "oa/oaDesignMsgIds.h"
#include "oa/oaDMMsgIds.h"
#include "oa/oaTechMsgIds.h"
#include "oa/oaTypes.h"

namespace OpenAccess_4 {
namespace kit {

/// oaError.
[[noreturn]] void raiseBase(oaUInt4 id, const std::string &message);
/// oaDMError, oaTechError, oaDesignError.
[[noreturn]] void raiseDM(oaUInt4 id, const std::string &message);
[[noreturn]] void raiseTech(oaUInt4 id, const std::string &message);
[[noreturn]] void raiseDesign(oaUInt4 id, const std::string &message);
/// oaOSError with the id oacOSError; the system's text for `errorNumber` (errno) is added to the message.
[[noreturn]] void raiseOS(int errorNumber, const std::string &message);
/// oaMemoryError with the id oacOSError.
[[noreturn]] void raiseMemory(const std::string &message);

/// Raises oacOpenAccessNotInitialized before the first oaBaseInit.
void requireInitialised();

} // namespace kit

using kit::raiseBase;
using kit::raiseDesign;
using kit::raiseDM;
using kit::raiseTech;

} // namespace OpenAccess_4

#endif
