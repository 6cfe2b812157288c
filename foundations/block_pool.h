// block_pool.h -- memory for objects that live until the process ends. A
// program's network holds millions of small nodes and annotations that are
// never freed one by one: carving them out of large blocks, one after the
// other, costs a few instructions each instead of a general allocation, and
// no per-object header.
#ifndef FOUNDATIONS_BLOCK_POOL_H
#define FOUNDATIONS_BLOCK_POOL_H

#include <cstddef>

// `size` bytes aligned to 16, never given back.
void* pool_allocate(size_t size);

#endif
