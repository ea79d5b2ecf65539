// The exceptions of the design layer; their numbers are in oaDesignMsgIds.h.
#ifndef OADESIGNEXCEPTION_H
#define OADESIGNEXCEPTION_H

#include "oa/oaException.h"

namespace OpenAccess_4 {

class oaDesignException : public oaException {
public:
  using oaException::oaException;
};

class oaDesignError : public oaDesignException {
public:
  using oaDesignException::oaDesignException;
};

} // namespace OpenAccess_4

#endif
