#ifndef BLOCKWRITING_H
#define BLOCKWRITING_H

#include <oa/oaDesignDB.h>

// What the layout and the schematic writer do to a block alike.
namespace blockwriting {

template <typename Object> void destroyAll(const oa::oaBaseCollection &objects) {
  oa::oaIter<Object> iter(objects);
  while (Object *object = iter.getNext()) {
    object->destroy();
  }
}

// Terminals take their pins with them; the pins are named for kits that keep them.
inline void destroyConnectivity(oa::oaBlock *block) {
  destroyAll<oa::oaTerm>(block->getTerms());
  destroyAll<oa::oaPin>(block->getPins());
  destroyAll<oa::oaNet>(block->getNets());
}

// The kit takes no repeated points and no three in a line, hosts send them: what is refused is compressed and tried
// once more. `create(const oa::oaPointArray &)` may raise; its result is returned.
template <typename Create> auto createCompressed(oa::oaPointArray points, bool isClosed, Create create) {
  try {
    return create(points);
  } catch (const oa::oaException &) {
    if (!points.hasExtraPoints(isClosed)) {
      throw;
    }
  }
  points.compress(isClosed);
  return create(points);
}

} // namespace blockwriting

#endif
