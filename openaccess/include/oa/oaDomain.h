// The domains that an object of a design may belong to.
#ifndef OADOMAIN_H
#define OADOMAIN_H

#include "oa/oaEnumWrapper.h"

namespace OpenAccess_4 {

enum oaDomainEnum {
  oacNoDomain = 0,
  oacBlockDomain = 1,
  oacOccDomain = 2,
  oacModDomain = 3,
  oacFutureDomain = UINT_MAX
};

/// Text names: none, block, occurrence, module, future.
OA_ENUM_WRAPPER(oaDomain);

} // namespace OpenAccess_4

#endif
