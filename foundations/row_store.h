// row_store.h -- rows of bytes of one fixed width, appended for as long as
// a session lasts. Rows live in large blocks that are never moved: growing
// a single array would copy everything recorded at each doubling, and touch
// each new page one fault at a time, which costs more than the recording
// itself on a virtual machine. A block is asked of the system with its
// pages at once, in huge pages where the system has them.
#ifndef FOUNDATIONS_ROW_STORE_H
#define FOUNDATIONS_ROW_STORE_H

#include <cstddef>
#include <cstdint>
#include <vector>

class RowStore {
 public:
  explicit RowStore(size_t width);
  ~RowStore();
  RowStore(const RowStore&) = delete;
  RowStore& operator=(const RowStore&) = delete;

  // Row k, which must have been made room for.
  uint8_t* row(size_t k) const { return blocks[k / per_block] + (k % per_block) * width; }
  // Row k, making room for it first; k is at most one past the last row
  // made room for. Throws std::bad_alloc when the system has no memory.
  uint8_t* room_for(size_t k) {
    if (k / per_block >= blocks.size()) add_block();
    return row(k);
  }

 private:
  void add_block();

  size_t width;
  size_t per_block;    // rows in a block
  size_t block_bytes;  // a whole number of huge pages
  std::vector<uint8_t*> blocks;
};

#endif
