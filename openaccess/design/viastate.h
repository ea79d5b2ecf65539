#ifndef OAKIT_VIASTATE_H
#define OAKIT_VIASTATE_H

#include "oa/oaBox.h"
#include "table.h"
#include "viaparamtable.h"

#include <unordered_map>
#include <vector>

namespace OpenAccess_4 {

class oaViaDef;

namespace kit {

class DesignDatabase;

// What a header was bound to, and what that was made from: a definition may change while designs are open.
struct BoundVia {
  DesignDatabase *master = nullptr;               // holds one reference of the master's count
  oaViaDef *definition = nullptr;                 // a handle, which may be dead by now
  ViaParamValues params{};                        // of a standard definition
  Row lib = kNoRow, cell = kNoRow, view = kNoRow; // texts in the technology, of a custom definition
};

// What is derived from the vias of a design.
struct ViaState {
  NameIndex headersByKey; // see viaheader.cpp
  OwnerIndex viasOfHeader, subHeadersOfHeader;
  // Union of the boxes of all vias, and the masters' boxes (by header row) it was made from.
  bool isBoxKnown = false;
  oaBox box;
  std::vector<oaBox> masterBoxes;

  void clear() {
    headersByKey.clear();
    viasOfHeader.clear();
    subHeadersOfHeader.clear();
    isBoxKnown = false;
    masterBoxes.clear();
  }
};

} // namespace kit
} // namespace OpenAccess_4

#endif
