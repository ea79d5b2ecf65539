#ifndef NETSTEST_H
#define NETSTEST_H

#include "temporarylibrary.h"

namespace connectivitytest {

inline oaName native(const char *text) { return oaName(oaNativeNS(), text); }

// A cell that is being written.
class Nets : public TemporaryLibrary {
protected:
  Nets() : design_(open("cell", 'w')), block_(oaBlock::create(design_)) {}
  ~Nets() override { design_->purge(); }

  oaScalarNet *net(const std::string &name) { return oaScalarNet::create(block_, scalar(name)); }
  // Saves and opens again for reading.
  void reopen() {
    design_->save();
    design_->close();
    design_ = open("cell", 'r');
    block_ = design_->getTopBlock();
  }

  oaDesign *design_;
  oaBlock *block_;
};

} // namespace connectivitytest

#endif
