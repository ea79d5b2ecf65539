#ifndef OAKIT_VIAVALUES_H
#define OAKIT_VIAVALUES_H

// Parameters of standard vias: which values are a via's own, and which come from its definition.
//
// A cut pattern has no flag of its own. It counts as the via's when the via has own rows or columns, or when it leaves
// out cuts that the definition has; it holds for as long as there are as many rows and columns as it was made for.

#include "oa/oaViaParam.h"

#include <string>

namespace OpenAccess_4 {
namespace kit {

// Most cuts of one via; beyond that a file is wrong, or a client.
constexpr std::uint64_t kMaxViaCuts = 1000000;
inline std::uint64_t cutCount(const oaViaParam &params) {
  return std::uint64_t(params.getCutRows()) * params.getCutColumns();
}

// What a via with the values `own` has: those that are flagged as default come from the definition and stay flagged.
oaViaParam effectiveViaParam(const oaViaParam &own, const oaViaParam &definition);
// The same without what does not matter: values that are flagged as default are those of a new object. `definition` may
// be NULL.
oaViaParam ownViaParam(const oaViaParam &params, const oaViaParam *definition);
// Equal for parameters that are equal, flags included; different for different ones. Raises oacNotYetSupported when a
// pattern covers more than kMaxViaCuts.
std::string viaParamKey(const oaViaParam &params);

} // namespace kit
} // namespace OpenAccess_4

#endif
