// symbol_table_test.cpp -- the string tape's colliding texts and their
// statistics, the symbol table's numbering, and texts that never move.
#include "foundations/symbol_table.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// "A", "Q", "1" and "a" share a bucket: all are kept apart, and the loose
// chain statistic rises only past the longest chain walked so far.
TEST(StringTapeTest, CollidingTextsAndTheirStatistics) {
  StringTape tape;
  tape.init(5041);
  STapeHashItem* a = tape.internal_add("A");
  EXPECT_EQ(tape.internal_add("A"), a);
  tape.internal_add("Q");
  tape.internal_add("1");
  EXPECT_EQ(tape.internal_find("Q")->number, 2);
  EXPECT_EQ(tape.internal_find("a"), nullptr);
  char buffer[256];
  FILE* f = fmemopen(buffer, sizeof buffer, "w");
  tape.print_statistics(f);
  fclose(f);
  EXPECT_STREQ(buffer,
               "hash size  :  5041\noccupied   :     1\ncoll max   :     4\nnb strings :     3\n");
}

TEST(SymbolTableTest, SymbolsAreDenseFromOne) {
  SymbolTable table(1000, 5041);
  EXPECT_EQ(table.find("n.iop"), 0);
  EXPECT_EQ(table.add("%s.iop", "n"), 1);
  EXPECT_EQ(table.add("n.iop"), 1);
  EXPECT_EQ(table.add("x"), 2);
  EXPECT_EQ(table.find("%c", 'x'), 2);
  EXPECT_STREQ(table[1], "n.iop");

  int id = -7;
  EXPECT_EQ(table.find_then_get(&id, "nothing"), 0);
  EXPECT_EQ(id, -7);
  EXPECT_EQ(table.find_then_get(&id, "x"), 1);
  EXPECT_EQ(id, 2);
  EXPECT_EQ(table.find_then_add(&id, "y%d", 1), 0);
  EXPECT_EQ(id, 3);
  EXPECT_EQ(table.find_then_add(&id, "y1"), 1);
  EXPECT_EQ(id, 3);
}

TEST(SymbolTableTest, IterationFollowsSymbolOrder) {
  SymbolTable table(2, 7);
  for (const char* t : {"c", "a", "b", "a"}) table.add("%s", t);
  table.init_iterate();
  EXPECT_STREQ(table.iterate(), "c");
  EXPECT_STREQ(table.iterate(), "a");
  EXPECT_STREQ(table.iterate(), "b");
  EXPECT_EQ(table.iterate(), nullptr);
  testing::internal::CaptureStdout();
  table.print();
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "symbol[  1]= \"c\"\nsymbol[  2]= \"a\"\nsymbol[  3]= \"b\"\n");
}

// The index is a list of chunks of 1000 entries: texts are found across
// chunk boundaries, and reading far ahead is no fault.
// Texts fill several pages of the tape and the index several chunks: each
// text is found again, at the address first handed out.
TEST(SymbolTableTest, TextsNeverMoveAcrossPagesAndChunks) {
  SymbolTable table(1000, 5041);
  std::vector<const char*> first;
  for (int i = 1; i <= 2500; i++) first.push_back(table.text(table.add("%020d", i)));
  for (int i : {1, 999, 1000, 1001, 2500}) {
    EXPECT_EQ(table.text(i), first[i - 1]);
    EXPECT_EQ(table.find("%020d", i), i);
  }
  EXPECT_EQ(table.string_array().nb_chunks(), 3);
  SymbolTable fresh(1000, 5041);
  EXPECT_EQ(fresh.text(1001), nullptr) << "reading far ahead is no fault";
  EXPECT_EQ(fresh.add("a"), 1);
}

}  // namespace
