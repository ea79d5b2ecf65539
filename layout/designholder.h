#ifndef DESIGNHOLDER_H
#define DESIGNHOLDER_H

#include <oa/oaDesignDB.h>

// One opened reference on a design, given back on every way out of a scope.
class DesignHolder {
public:
  explicit DesignHolder(oa::oaDesign *design = nullptr) : design_(design) {}
  ~DesignHolder() { close(); }
  DesignHolder(const DesignHolder &) = delete;
  DesignHolder &operator=(const DesignHolder &) = delete;

  oa::oaDesign *get() const { return design_; }

  // Gives back what it holds and takes over another reference.
  void reset(oa::oaDesign *design) {
    close();
    design_ = design;
  }

  // Gives the reference away: the caller closes the design from now on.
  oa::oaDesign *release() {
    oa::oaDesign *design = design_;
    design_ = nullptr;
    return design;
  }

  // A design that somebody else purged meanwhile needs no closing.
  void close() {
    oa::oaDesign *design = release();
    if (!design || !design->isValid()) {
      return;
    }
    try {
      design->close();
    } catch (const oa::oaException &) { // NOLINT(bugprone-empty-catch): nothing is left to be done with it
    }
  }

private:
  oa::oaDesign *design_;
};

#endif
