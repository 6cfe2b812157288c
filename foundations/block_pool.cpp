// block_pool.cpp -- a bump allocator over 1 MB blocks.
#include "foundations/block_pool.h"

#include <sys/mman.h>

#include <new>

void* pool_allocate(size_t size) {
  static const size_t kBlock = size_t{1} << 20;
  static char* next = nullptr;
  static size_t room = 0;
  size = (size + 15) & ~size_t{15};
  if (size > room) {
    // A larger object gets a block of its own; the rest of the current one
    // is abandoned, which costs at most one object's size a block.
    size_t block = size > kBlock ? size : kBlock;
    // Mapped with its pages at once: one call instead of a fault a page,
    // and the pool fills every page of a block anyway.
    void* mapped = mmap(nullptr, block, PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE, -1, 0);
    next = mapped == MAP_FAILED ? static_cast<char*>(::operator new(block))
                                : static_cast<char*>(mapped);
    room = block;
  }
  void* p = next;
  next += size;
  room -= size;
  return p;
}
