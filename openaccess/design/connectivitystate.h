#ifndef OAKIT_CONNECTIVITYSTATE_H
#define OAKIT_CONNECTIVITYSTATE_H

#include "oa/oaBox.h"
#include "ownerruns.h"
#include "table.h"

#include <unordered_map>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

// Look-ups of the nets, terminals or instances of a design that have several bits; see multibit.h.
struct BitsIndexes {
  NameIndex defsByName;
  OwnerIndex objectsOfDef; // definition -> its ranges and bits
  OwnerIndex ownersOf;     // bit or member -> ranges and bundles that it belongs to, each once

  void clear() {
    defsByName.clear();
    objectsOfDef.clear();
    ownersOf.clear();
  }
};

// What is derived from the instances of a design. DesignDatabase::contentsChanged() calls clear().
struct ConnectivityState {
  NameIndex instHeadersByKey; // see instheader.cpp
  OwnerIndex subHeadersOfInstHeader;
  // Explicit connections of each instance, among which implicit ones may stand. Only while nobody needs all of them:
  // see DesignDatabase::instTermsOfInst.
  OwnerRuns instTermRuns;
  bool mayHaveInstTermRuns = true;
  OwnerIndex instTermsByName; // hash of instance and terminal name -> connections; see connections.h
  // Union of the boxes of all instances, and the masters' boxes (by header row) it was made from.
  bool isRefBoxKnown = false;
  oaBox refBox;
  std::vector<oaBox> masterBoxes;
  // Header -> DesignDatabase::boxGeneration() when its master was last looked for, for the sake of its box.
  std::unordered_map<Row, std::uint64_t> triedToBindAt;

  void clear() {
    triedToBindAt.clear();
    instHeadersByKey.clear();
    subHeadersOfInstHeader.clear();
    instTermRuns.clear();
    mayHaveInstTermRuns = true;
    instTermsByName.clear();
    isRefBoxKnown = false;
    masterBoxes.clear();
  }
};

} // namespace kit
} // namespace OpenAccess_4

#endif
