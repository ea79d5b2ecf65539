// The exceptions of the technology layer; their numbers are in oaTechMsgIds.h.
#ifndef OATECHEXCEPTION_H
#define OATECHEXCEPTION_H

#include "oa/oaException.h"

namespace OpenAccess_4 {

class oaTechException : public oaException {
public:
  using oaException::oaException;
};

class oaTechError : public oaTechException {
public:
  using oaTechException::oaTechException;
};

} // namespace OpenAccess_4

#endif
