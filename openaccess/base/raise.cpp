#include "raise.h"

#include <cstring>

#include "oa/oaDesignException.h"
#include "oa/oaDMException.h"
#include "oa/oaException.h"
#include "oa/oaTechException.h"
#include "startup.h"

namespace OpenAccess_4 {

namespace {
thread_local int lastOSError = 0;

oaString textOf(const std::string &message) { return oaString(message.c_str()); }
} // namespace

oaException::~oaException() = default;

oaUInt8 oaException::getLastOSError() { return static_cast<oaUInt8>(lastOSError); }

oaCompatibilityError::oaCompatibilityError(oaUInt4 msgId, const oaString &message, const oaString &databaseName,
                                           oaUInt4 appDataModelRev, oaUInt4 databaseDataModelRev)
    : oaException(msgId, message), appBuildName_(kit::appBuildName()), kitBuildName_(kit::kitBuildName()),
      databaseName_(databaseName), appDataModelRev_(appDataModelRev), databaseDataModelRev_(databaseDataModelRev) {}

IException::~IException() = default;

namespace kit {

void raiseBase(oaUInt4 id, const std::string &message) { throw oaError(id, textOf(message)); }

void raiseDM(oaUInt4 id, const std::string &message) { throw oaDMError(id, textOf(message)); }

void raiseTech(oaUInt4 id, const std::string &message) { throw oaTechError(id, textOf(message)); }

void raiseDesign(oaUInt4 id, const std::string &message) { throw oaDesignError(id, textOf(message)); }

void raiseOS(int errorNumber, const std::string &message) {
  lastOSError = errorNumber;
  throw oaOSError(oacOSError, textOf(message + ": " + std::strerror(errorNumber)));
}

void raiseMemory(const std::string &message) { throw oaMemoryError(oacOSError, textOf(message)); }

} // namespace kit

} // namespace OpenAccess_4
