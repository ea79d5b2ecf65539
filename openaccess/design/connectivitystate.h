#ifndef OAKIT_CONNECTIVITYSTATE_H
#define OAKIT_CONNECTIVITYSTATE_H

#include "oa/oaBox.h"
#include "table.h"

#include <vector>

namespace OpenAccess_4 {
namespace kit {

// What is derived from the instances of a design. DesignDatabase::contentsChanged() calls clear().
struct ConnectivityState {
  NameIndex instHeadersByMaster; // "lib\ncell\nview"
  // Union of the boxes of all instances, and the masters' boxes (by header row) it was made from.
  bool isRefBoxKnown = false;
  oaBox refBox;
  std::vector<oaBox> masterBoxes;

  void clear() {
    instHeadersByMaster.clear();
    isRefBoxKnown = false;
    masterBoxes.clear();
  }
};

} // namespace kit
} // namespace OpenAccess_4

#endif
