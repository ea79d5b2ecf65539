#include "handlepool.h"

#include "raise.h"

#include <cstring>
#include <sys/mman.h>

namespace OpenAccess_4 {
namespace kit {

HandlePool &HandlePool::instance() {
  static HandlePool *pool = new HandlePool;
  return *pool;
}

HandleBlock *HandlePool::take() {
  static_assert(sizeof(HandleBlock) == HandleBlock::kHandles * 16, "a handle is two words");
  if (returned_.size() > kWaitingBlocks) {
    HandleBlock *block = returned_.front();
    returned_.pop_front();
    return block;
  }
  if (next_ == chunkEnd_) {
    const std::size_t bytes = kChunkBlocks * sizeof(HandleBlock);
    // Twice the room, so that a chunk can begin at a multiple of its size; the rest is given back at once.
    char *room =
        static_cast<char *>(::mmap(nullptr, 2 * bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    if (room == MAP_FAILED) {
      raiseMemory("no memory for object handles");
    }
    const std::size_t skipped = (bytes - reinterpret_cast<std::uintptr_t>(room) % bytes) % bytes;
    if (skipped != 0) {
      ::munmap(room, skipped);
    }
    ::munmap(room + skipped + bytes, bytes - skipped);
    ::madvise(room + skipped, bytes, MADV_HUGEPAGE);
    // Memory of the system is zero, which is what a dead handle looks like.
    next_ = reinterpret_cast<HandleBlock *>(room + skipped);
    chunkEnd_ = next_ + kChunkBlocks;
  }
  return next_++;
}

void HandlePool::giveBack(HandleBlock *block, Row used) {
  std::memset(static_cast<void *>(block->handles), 0, std::size_t(used) * sizeof block->handles[0]);
  returned_.push_back(block);
}

} // namespace kit
} // namespace OpenAccess_4
