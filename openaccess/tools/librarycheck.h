#ifndef OAKIT_LIBRARYCHECK_H
#define OAKIT_LIBRARYCHECK_H

#include "findings.h"

#include <cstdint>
#include <functional>
#include <string>

namespace OpenAccess_4 {
namespace kit {
namespace check {

// What was looked at.
struct Totals {
  std::uint64_t cells = 0;
  std::uint64_t views = 0;
  std::uint64_t databases = 0;        // designs, technologies, management data that were checked
  std::uint64_t otherFiles = 0;       // primary files that are no databases, such as texts
  std::uint64_t bytes = 0;            // of the databases
  std::uint64_t mastersElsewhere = 0; // instance headers whose masters are in other libraries
};

struct CheckOptions {
  // What the library is called in its designs; empty: like its directory.
  std::string libraryName;
  // Called with the file that is looked at next.
  std::function<void(const std::string &file, const Totals &)> progress;
};

// A whole library: `.oalib`, technology, management data, cells, views, designs. Never changes anything, takes no lock
// and does not read lib.defs. Others may write to the library meanwhile: what they replace is checked as it was or as
// it is, whole.
void checkLibrary(const std::string &directory, const CheckOptions &options, Findings &findings, Totals &totals);

// One database file: a design, a technology or management data. Masters of a design are looked for when the file lies
// in a library.
void checkFile(const std::string &path, const CheckOptions &options, Findings &findings, Totals &totals);

} // namespace check
} // namespace kit
} // namespace OpenAccess_4

#endif
