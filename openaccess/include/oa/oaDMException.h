// The exceptions of the management-data layer; their numbers are in oaDMMsgIds.h.
#ifndef OADMEXCEPTION_H
#define OADMEXCEPTION_H

#include "oa/oaException.h"

namespace OpenAccess_4 {

class oaDMException : public oaException {
public:
  using oaException::oaException;
};

class oaDMError : public oaDMException {
public:
  using oaDMException::oaDMException;
};

} // namespace OpenAccess_4

#endif
