// symbol_table_test.cpp -- colliding texts kept apart, the symbol table's
// numbering, and texts that never move.
#include "foundations/symbol_table.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <vector>

namespace {

// "A", "Q", "1" and "a" share a bucket of the tape: all are kept apart, and
// the statistics count one bucket and the loose chain maximum (raised only
// past the longest chain walked, to one more than its length).
TEST(StringTapeTest, CollidingTextsAreKeptApart) {
  StringTape tape;
  tape.init(5041);
  STapeHashItem* a = tape.internal_add("A");
  EXPECT_EQ(tape.internal_add("A"), a);
  tape.internal_add("Q");
  tape.internal_add("1");
  EXPECT_EQ(tape.internal_find("Q")->number, 2);
  EXPECT_EQ(tape.internal_find("1")->number, 3);
  EXPECT_EQ(tape.internal_find("a"), nullptr);
  char buffer[256];
  FILE* f = fmemopen(buffer, sizeof buffer, "w");
  tape.print_statistics(f);
  fclose(f);
  EXPECT_STREQ(buffer,
               "hash size  :  5041\noccupied   :     1\ncoll max   :     4\nnb strings :     3\n");
}

// Symbols are dense from one. Texts fill several pages of the tape and the
// index several chunks of 1000: each text is found again, at the address
// first handed out, and reading far ahead is no fault.
TEST(SymbolTableTest, DenseNumbersAndTextsThatNeverMove) {
  SymbolTable table(1000, 5041);
  EXPECT_EQ(table.find("n.iop"), 0);
  EXPECT_EQ(table.add("%s.iop", "n"), 1);
  EXPECT_EQ(table.add("n.iop"), 1);
  EXPECT_STREQ(table[1], "n.iop");
  std::vector<const char*> first;
  for (int i = 2; i <= 2500; i++) first.push_back(table.text(table.add("%020d", i)));
  for (int i : {2, 999, 1000, 1001, 2500}) {
    EXPECT_EQ(table.text(i), first[i - 2]);
    EXPECT_EQ(table.find("%020d", i), i);
  }
  EXPECT_EQ(table.string_array().nb_chunks(), 3);
  SymbolTable fresh(1000, 5041);
  EXPECT_EQ(fresh.text(1001), nullptr);
  EXPECT_EQ(fresh.add("a"), 1);
}

}  // namespace
