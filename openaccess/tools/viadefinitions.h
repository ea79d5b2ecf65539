#ifndef OAKIT_VIADEFINITIONS_H
#define OAKIT_VIADEFINITIONS_H

#include "designcheck.h"

#include <optional>
#include <set>
#include <string>

namespace OpenAccess_4 {
namespace kit {
namespace check {

// The via definitions of a library's technology, read when the first is asked for.
class ViaDefinitions {
public:
  // An empty directory stands for an unknown library: every definition is elsewhere then.
  explicit ViaDefinitions(std::string directory) : directory_(std::move(directory)) {}

  // `elsewhere` as well when the technology is another library's, refers to others, or cannot be read.
  MasterState find(const std::string &name);

private:
  struct Known {
    bool isWhole = false; // a definition that is not among the names is nowhere
    std::set<std::string> names;
  };
  Known read() const;
  bool isAttached() const;

  std::string directory_;
  std::optional<Known> known_;
};

} // namespace check
} // namespace kit
} // namespace OpenAccess_4

#endif
