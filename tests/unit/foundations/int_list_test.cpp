// int_list_test.cpp -- integer lists and the key lists built on them: the
// length every node keeps, however lists are joined, pushed, reversed or
// read back, and the printed form.
#include "foundations/int_list.h"

#include <gtest/gtest.h>

#include <string>
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

TEST(IntListTest, LengthsFollowConcatenation) {
  int a[] = {1, 2}, b[] = {3, 4, 5};
  IntList* first = new IntList(a, 2);
  IntList* second = new IntList(b, 3);
  EXPECT_EQ(first->concat(second), first->next);  // the former last node
  EXPECT_EQ(checked(first), (std::vector<int>{1, 2, 3, 4, 5}));

  IntList* empty = nullptr;
  IntList* node = append_list(empty, 9);
  EXPECT_EQ(empty, node);
  EXPECT_EQ(append_list(empty, 10), node);  // concat's former last node
  EXPECT_EQ(IntList::append(nullptr, empty), empty);
  EXPECT_EQ(IntList::append(first, empty), first);
  EXPECT_EQ(checked(first), (std::vector<int>{1, 2, 3, 4, 5, 9, 10}));
}

TEST(IntListTest, PushedListsReverseIntoPushOrder) {
  IntList* list = nullptr;
  for (int v = 1; v <= 4; v++) list = IntList::push(list, v);
  EXPECT_EQ(checked(list), (std::vector<int>{4, 3, 2, 1}));
  EXPECT_EQ(checked(IntList::reverse(list)), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(IntList::reverse(nullptr), nullptr);
}

TEST(IntListTest, EqualityNeedsSameLengthsAndValues) {
  int a[] = {1, 2, 3}, b[] = {1, 2, 3}, c[] = {1, 2, 4};
  IntList x(a, 3), y(b, 3), z(c, 3), shorter(a, 2);
  EXPECT_TRUE(x == y);
  EXPECT_FALSE(x == z);
  EXPECT_FALSE(x == shorter);
  EXPECT_FALSE(*x.next == x);
}

std::string printed(int n) {
  int values[25];
  for (int i = 0; i < n; i++) values[i] = i + 1;
  IntList list(values, n);
  testing::internal::CaptureStdout();
  list.print();
  return testing::internal::GetCapturedStdout();
}

TEST(IntListTest, PrintsTenValuesALine) {
  EXPECT_EQ(printed(10), "{ 1, 2, 3, 4, 5, 6, 7, 8, 9, 10 }\n");
  EXPECT_EQ(printed(21),
            "{ 1, 2, 3, 4, 5, 6, 7, 8, 9, 10,\n11, 12, 13, 14, 15, 16, 17, 18, 19, 20,\n21 }\n");
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
