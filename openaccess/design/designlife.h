#ifndef OAKIT_DESIGNLIFE_H
#define OAKIT_DESIGNLIFE_H

// Designs may be closed by code that is not the kit's, in the middle of what the kit does with them: by evaluators of
// parametric cells and by observers. A design that goes is off the list of open designs and its handles are dead at
// once; its memory stays as long as foreign code runs or somebody has it pinned, and no longer than until the next
// design is opened after that. So whoever calls foreign code goes on safely, and asks isGone() where it matters.

#include "designdatabase.h"

namespace OpenAccess_4 {
namespace kit {

// Exists while an evaluator or an observer runs.
class ForeignCode {
public:
  ForeignCode() { ++running_; }
  ~ForeignCode() { --running_; }
  ForeignCode(const ForeignCode &) = delete;
  ForeignCode &operator=(const ForeignCode &) = delete;
  static bool isRunning() { return running_ != 0; }

private:
  static int running_;
};

// Keeps the memory of a design, but not the design open.
class PinnedDesign {
public:
  explicit PinnedDesign(DesignDatabase &design) : design_(&design) { design.pin(); }
  PinnedDesign(const PinnedDesign &other) : PinnedDesign(*other.design_) {}
  PinnedDesign &operator=(const PinnedDesign &) = delete;
  ~PinnedDesign() { design_->unpin(); }
  DesignDatabase &design() const { return *design_; }
  bool isGone() const { return design_->isGone(); }

private:
  DesignDatabase *design_;
};

// Keeps a design open against close(), though not against purge(): holds one reference of its count, which is new or
// was the caller's.
class KeptDesign {
public:
  enum class Reference { added, takenOver };
  explicit KeptDesign(DesignDatabase &design, Reference reference = Reference::added) : pin_(design) {
    if (reference == Reference::added) {
      design.addReference();
    }
  }
  KeptDesign(const KeptDesign &) = delete;
  KeptDesign &operator=(const KeptDesign &) = delete;
  ~KeptDesign() {
    if (!pin_.isGone()) {
      DesignDatabase::release(pin_.design());
    }
  }

private:
  PinnedDesign pin_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
