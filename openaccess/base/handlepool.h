#ifndef OAKIT_HANDLEPOOL_H
#define OAKIT_HANDLEPOOL_H

#include "table.h"

#include <deque>

namespace OpenAccess_4 {
namespace kit {

// Memory for handles. It is never returned to the system, so that a stale pointer of a client always points at a
// handle: a dead one, or, long after, another object. Blocks are handed out again in the order in which they came back,
// and only when plenty are waiting.
class HandlePool {
public:
  // Lives until the process ends, also beyond static destruction.
  static HandlePool &instance();
  HandleBlock *take();
  // Makes all handles of the block dead; only the first `used` were ever given out.
  void giveBack(HandleBlock *block, Row used);

private:
  static constexpr std::size_t kChunkBlocks = 128;    // 2 MiB at a time, so that the system can use large pages
  static constexpr std::size_t kWaitingBlocks = 2048; // 32 MiB of dead handles before the first is used again
  HandleBlock *next_ = nullptr;
  HandleBlock *chunkEnd_ = nullptr;
  std::deque<HandleBlock *> returned_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
