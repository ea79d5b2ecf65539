#ifndef OAKIT_LIBRARYTEXT_H
#define OAKIT_LIBRARYTEXT_H

#include "findings.h"

#include <string>

namespace OpenAccess_4 {
namespace kit {
namespace check {

// Checks the file `.oalib` more strictly than the kit reads it: what the kit passes over or takes for a default is
// told.
void checkLibraryText(const std::string &path, FileReport &report);

} // namespace check
} // namespace kit
} // namespace OpenAccess_4

#endif
