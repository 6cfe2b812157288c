// int_list_test.cpp -- lengths kept by concatenation, equality, printing.
#include "foundations/int_list.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(IntListTest, LengthsFollowConcatenation) {
  int a[] = {1, 2}, b[] = {3, 4, 5};
  IntList* first = new IntList(a, 2);
  IntList* second = new IntList(b, 3);
  EXPECT_EQ(first->concat(second), first->next);  // the former last node
  EXPECT_EQ(first->length, 5);
  EXPECT_EQ(first->next->length, 4);
  EXPECT_EQ(second->length, 3);

  IntList* empty = nullptr;
  IntList* node = append_list(empty, 9);
  EXPECT_EQ(empty, node);
  EXPECT_EQ(node->length, 1);
  EXPECT_EQ(append_list(empty, 10), node);  // concat's former last node
  EXPECT_EQ(empty->length, 2);
  EXPECT_EQ(IntList::append(nullptr, empty), empty);
  EXPECT_EQ(IntList::append(first, empty), first);
  EXPECT_EQ(first->length, 7);
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
  EXPECT_EQ(printed(1), "{ 1 }\n");
  EXPECT_EQ(printed(10), "{ 1, 2, 3, 4, 5, 6, 7, 8, 9, 10 }\n");
  EXPECT_EQ(printed(12), "{ 1, 2, 3, 4, 5, 6, 7, 8, 9, 10,\n11, 12 }\n");
  EXPECT_EQ(printed(21),
            "{ 1, 2, 3, 4, 5, 6, 7, 8, 9, 10,\n11, 12, 13, 14, 15, 16, 17, 18, 19, 20,\n21 }\n");
}

}  // namespace
