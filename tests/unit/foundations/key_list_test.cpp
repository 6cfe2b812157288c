// key_list_test.cpp -- keys read back in order with exact lengths, however
// appends, prepends and reads interleave; lists built backwards and reversed.
#include "foundations/key_list.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// Values in order, after checking that every node's length is exact.
std::vector<int> checked(IntList* list) {
  std::vector<int> values;
  int expected = list ? list->length : 0;
  for (IntList* node = list; node; node = node->next) {
    EXPECT_EQ(node->length, expected--) << "at value " << node->value;
    values.push_back(node->value);
  }
  EXPECT_EQ(expected, 0);
  return values;
}

TEST(KeyListTest, InterleavedAdditionsAndReads) {
  KeyList keys;
  EXPECT_EQ(keys.list(), nullptr);
  keys.append(1);
  keys.append(2);
  EXPECT_EQ(checked(keys.list()), (std::vector<int>{1, 2}));
  keys.prepend(0);
  keys.append(3);
  EXPECT_EQ(keys.length(), 4);
  EXPECT_EQ(checked(keys.list()), (std::vector<int>{0, 1, 2, 3}));
  keys.clear();
  keys.prepend(7);
  EXPECT_EQ(checked(keys.list()), (std::vector<int>{7}));
}

TEST(KeyListTest, PushedListsReverseIntoPushOrder) {
  IntList* list = nullptr;
  for (int v = 1; v <= 4; v++) list = IntList::push(list, v);
  EXPECT_EQ(checked(list), (std::vector<int>{4, 3, 2, 1}));
  EXPECT_EQ(checked(IntList::reverse(list)), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(IntList::reverse(nullptr), nullptr);
}

}  // namespace
