#ifndef HEADERMAP_H
#define HEADERMAP_H

#include <cstdint>
#include <vector>

#include <oa/oaDesignDB.h>

struct Master;

// A master as the instances or vias of one block refer to it.
struct Placed {
  Master *master;
  // The master is the block's own cell or one that contains it.
  bool isRecursive;
};

// What a block's headers lead to. It is asked once for each instance, so it is a plain open hash on the header's
// address.
class HeaderMap {
public:
  // Null for a header that was not inserted. The pointer holds until the next insertion.
  const Placed *find(const oa::oaObject *header) const {
    if (slots_.empty()) {
      return nullptr;
    }
    const Slot &slot = slots_[slotOf(header)];
    return slot.header ? &slot.placed : nullptr;
  }

  // `header` must be new and not null.
  const Placed &insert(const oa::oaObject *header, const Placed &placed) {
    if (2 * ++count_ > slots_.size()) {
      grow();
    }
    Slot &slot = slots_[slotOf(header)];
    slot = {header, placed};
    return slot.placed;
  }

private:
  struct Slot {
    const oa::oaObject *header;
    Placed placed;
  };

  // Where the header is, or the free slot where it belongs. Half of the slots are free.
  size_t slotOf(const oa::oaObject *header) const {
    const size_t mask = slots_.size() - 1;
    // Multiplicative hashing after Knuth; neighbouring headers differ in the low bits only.
    size_t index = size_t((reinterpret_cast<std::uintptr_t>(header) * 0x9e3779b97f4a7c15u) >> 32) & mask;
    while (slots_[index].header && slots_[index].header != header) {
      index = (index + 1) & mask;
    }
    return index;
  }

  void grow() {
    std::vector<Slot> old(slots_.empty() ? 16 : 2 * slots_.size(), Slot{nullptr, {nullptr, false}});
    old.swap(slots_);
    for (const Slot &slot : old) {
      if (slot.header) {
        slots_[slotOf(slot.header)] = slot;
      }
    }
  }

  std::vector<Slot> slots_;
  size_t count_ = 0;
};

#endif
