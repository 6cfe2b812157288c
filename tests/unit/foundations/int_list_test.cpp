// int_list_test.cpp -- integer lists and the key lists built on them: the
// length every node keeps, however lists are joined, pushed, reversed or
// read back.
#include "foundations/int_list.h"

#include <gtest/gtest.h>

#include <vector>

#include "foundations/key_list.h"

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

TEST(IntListTest, LengthsFollowConcatenationPushAndReverse) {
  int a[] = {1, 2}, b[] = {3, 4, 5};
  IntList* first = new IntList(a, 2);
  EXPECT_EQ(first->concat(new IntList(b, 3)), first->next);  // the former last node
  IntList* empty = nullptr;
  IntList* node = append_list(empty, 9);
  EXPECT_EQ(empty, node);
  EXPECT_EQ(append_list(empty, 10), node);  // concat's former last node
  EXPECT_EQ(IntList::append(nullptr, empty), empty);
  EXPECT_EQ(IntList::append(first, empty), first);
  EXPECT_EQ(checked(first), (std::vector<int>{1, 2, 3, 4, 5, 9, 10}));

  IntList* list = nullptr;
  for (int v = 1; v <= 4; v++) list = IntList::push(list, v);
  EXPECT_EQ(checked(list), (std::vector<int>{4, 3, 2, 1}));
  EXPECT_EQ(checked(IntList::reverse(list)), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(IntList::reverse(nullptr), nullptr);
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

}  // namespace
