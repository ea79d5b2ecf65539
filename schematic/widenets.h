#ifndef WIDENETS_H
#define WIDENETS_H

#include <oa/oaDesignDB.h>

// Whether a block may have nets of several bits. Without any, neither wires nor connections have to be asked for
// theirs, which most schematics save a good part of their reading time by.
inline bool mayHaveWideNets(const oa::oaBlock *block) {
  return !block->getBusNetDefs().isEmpty() || !block->getNets(oacNetIterBundle).isEmpty();
}

#endif
