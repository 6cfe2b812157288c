// row_store_test.cpp -- rows keep what was written in them across blocks,
// whatever the width: narrow, or wider than a block.
#include "foundations/row_store.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(RowStoreTest, RowsKeepTheirBytesAcrossBlocks) {
  struct Case { size_t width, rows; } cases[] = {{11, 900000}, {size_t{3} << 20, 4}};
  for (const Case& c : cases) {
    RowStore store(c.width);
    // Each row is stamped with its number at its end; narrow rows fill
    // several blocks.
    for (size_t k = 0; k < c.rows; k++) memcpy(store.room_for(k) + c.width - sizeof k, &k, sizeof k);
    for (size_t k = 0; k < c.rows; k++) {
      size_t stamp;
      memcpy(&stamp, store.row(k) + c.width - sizeof k, sizeof k);
      ASSERT_EQ(stamp, k) << "width " << c.width;
    }
  }
}
