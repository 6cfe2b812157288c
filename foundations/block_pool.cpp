// block_pool.cpp -- a bump allocator over 1 MB blocks, each kept in a list
// that is never freed, so that everything in the blocks stays reachable.
#include "foundations/block_pool.h"

#include <sys/mman.h>

#include <new>
#include <vector>

namespace {

// A leak checker only follows references found in heap blocks and globals:
// under one, the blocks come from the heap; otherwise they are mapped with
// their pages at once, one call instead of a fault a page (the pool fills
// every page of a block anyway).
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kMapped = false;
#else
constexpr bool kMapped = true;
#endif

char* new_block(size_t size) {
  static std::vector<char*>* blocks = new std::vector<char*>();
  void* block = MAP_FAILED;
  if (kMapped)
    block = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE,
                 -1, 0);
  if (block == MAP_FAILED) block = ::operator new(size);
  blocks->push_back(static_cast<char*>(block));
  return blocks->back();
}

}  // namespace

void* pool_allocate(size_t size) {
  static const size_t kBlock = size_t{1} << 20;
  static char* next = nullptr;
  static size_t room = 0;
  size = (size + 15) & ~size_t{15};
  if (size > room) {
    // A larger object gets a block of its own; the rest of the current one
    // is abandoned, which costs at most one object's size a block.
    size_t block = size > kBlock ? size : kBlock;
    next = new_block(block);
    room = block;
  }
  void* p = next;
  next += size;
  room -= size;
  return p;
}
