#ifndef OAKIT_TECHREFERENCES_H
#define OAKIT_TECHREFERENCES_H

// References between technologies. What a technology refers to, directly or through others, is its graph; a search goes
// through it depth first, the technology itself before all others. In a graph every layer, purpose and via definition
// has a name and number of its own, but a file may have been changed since it was referred to.

#include "collection.h"
#include "oa/oaTechObserver.h"
#include "observerlist.h"
#include "techdatabase.h"

#include <string>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

// The same thing twice in a graph, or units that contradict each other. `id` is 0 when there is no conflict.
struct TechConflict {
  oaUInt4 id = 0;
  std::string message;
};
TechConflict findConflict(const std::vector<TechDatabase *> &techs);

// All technologies that must not contradict `tech`: its graph, and the graphs of the open ones that reach it.
std::vector<TechDatabase *> techsInReach(TechDatabase &tech);

bool contains(const std::vector<TechDatabase *> &techs, const TechDatabase &tech);
// Adds those that are not there yet.
void addMissing(std::vector<TechDatabase *> &techs, const std::vector<TechDatabase *> &more);

// What `find(TechDatabase &)` answers first that is not NULL, over the graph or, with `isLocal`, the technology alone.
template <typename Find> auto findInGraph(TechDatabase &tech, bool isLocal, Find find) -> decltype(find(tech)) {
  auto *own = find(tech);
  if (own != nullptr || isLocal || !tech.hasReferences()) {
    return own;
  }
  for (TechDatabase *other : tech.graph()) {
    if (auto *found = find(*other)) {
      return found;
    }
  }
  return nullptr;
}

// The rows of one table of every technology in a graph. Reserved purposes come once.
class GraphRowsKind : public CollectionKind {
public:
  using TableOf = Table &(*)(TechDatabase &);
  explicit GraphRowsKind(TableOf tableOf) : tableOf_(tableOf) {}
  oaObject *next(const CollectionQuestion &question, oaUInt4 &position, oaUInt4 &hint) const override;

private:
  TableOf tableOf_;
};

// All observers of technologies.
class TechObservers : public ObserverList<oaObserver<oaTech>> {
public:
  static TechObservers &instance();
  void tellConflict(oaTech *tech, const TechConflict &conflict);
};

} // namespace kit
} // namespace OpenAccess_4

#endif
