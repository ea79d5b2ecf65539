// What a call raised, for tables of illegal input.
#ifndef TESTS_BASE_RAISED_H
#define TESTS_BASE_RAISED_H

#include "oa/oaException.h"

constexpr OpenAccess_4::oaUInt4 kNothingRaised = 0xfffffffe;

// The message id of the exception, or kNothingRaised.
template <class Call> OpenAccess_4::oaUInt4 raisedBy(Call call) {
  try {
    call();
  } catch (const OpenAccess_4::oaException &exception) {
    return exception.getMsgId();
  }
  return kNothingRaised;
}

#endif
