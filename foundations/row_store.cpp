// row_store.cpp -- blocks of rows mapped 2 MB-aligned, advised into huge
// pages and populated in one call.
#include "foundations/row_store.h"

#include <sys/mman.h>

#include <cstdint>
#include <new>

namespace {

constexpr size_t kHugePage = size_t{2} << 20;

}  // namespace

RowStore::RowStore(size_t w) : width(w > 0 ? w : 1) {
  size_t bytes = width > kHugePage ? width : kHugePage;
  block_bytes = (bytes + kHugePage - 1) / kHugePage * kHugePage;
  per_block = block_bytes / width;
}

RowStore::~RowStore() {
  for (uint8_t* block : blocks) munmap(block, block_bytes);
}

void RowStore::add_block() {
  // Mapped a huge page larger, then trimmed to a huge page's alignment, the
  // only place where the system can back it with huge pages.
  size_t mapped = block_bytes + kHugePage;
  void* p = mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (p == MAP_FAILED) throw std::bad_alloc();
  uintptr_t start = reinterpret_cast<uintptr_t>(p);
  uintptr_t aligned = (start + kHugePage - 1) & ~(kHugePage - 1);
  if (aligned > start) munmap(p, aligned - start);
  size_t tail = start + mapped - (aligned + block_bytes);
  if (tail > 0) munmap(reinterpret_cast<void*>(aligned + block_bytes), tail);
  void* block = reinterpret_cast<void*>(aligned);
  madvise(block, block_bytes, MADV_HUGEPAGE);
#ifdef MADV_POPULATE_WRITE
  madvise(block, block_bytes, MADV_POPULATE_WRITE);
#endif
  blocks.push_back(static_cast<uint8_t*>(block));
}
