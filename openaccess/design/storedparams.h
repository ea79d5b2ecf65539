#ifndef OAKIT_STOREDPARAMS_H
#define OAKIT_STOREDPARAMS_H

// Parameters of parametric cells as they are stored: a text of the design for each list, the defaults of a super master
// or what a header of instances or vias was given. A parameter is its name, a byte for its type (oaParamTypeEnum) and
// its value: 8 bytes, floats as doubles; or a string; or the type and the bytes of an application value. Names, strings
// and bytes are preceded by their length in 4 bytes, numbers have their lowest byte first.

#include "column.h"
#include "oa/oaParam.h"

#include <string>

namespace OpenAccess_4 {
namespace kit {

class DesignDatabase;

std::string storedParams(const oaParamArray &params);
// The parameters in a text of the design; none for kNoString. Raises oacCorruptedDatabase.
void loadParams(const DesignDatabase &design, Row text, oaParamArray &params);

// The same text for arrays with the same parameters in whatever order, and another for every other array.
std::string paramKey(const oaParamArray &params);
// "w=2, l=0.18": for messages; long lists are cut short.
std::string paramText(const oaParamArray &params);

} // namespace kit
} // namespace OpenAccess_4

#endif
