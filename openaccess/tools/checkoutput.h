#ifndef OAKIT_CHECKOUTPUT_H
#define OAKIT_CHECKOUTPUT_H

#include "findings.h"
#include "librarycheck.h"

#include <ostream>
#include <string>
#include <vector>

namespace OpenAccess_4 {
namespace kit {
namespace check {

// A text as a JSON string. Bytes that are no UTF-8, which names in hostile files may hold, become U+FFFD.
std::string jsonString(std::string_view text);
std::string jsonOf(const Finding &finding);

// "12 cells, 14 views, 15 databases, 3.2 MB: no damage, 1 warning"
std::string summaryOf(const Findings &findings, const Totals &totals);
// {"paths": [...], "findings": [...], "summary": {...}}
void writeJson(std::ostream &out, const std::vector<std::string> &paths, const std::vector<Finding> &listed,
               const Findings &findings, const Totals &totals);

} // namespace check
} // namespace kit
} // namespace OpenAccess_4

#endif
