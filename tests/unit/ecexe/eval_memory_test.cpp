// eval_memory_test.cpp -- last and init across instants, outputs on clocks,
// cycles through memories, abandoned instants, resets and the fatal nil
// clock.
#include "ecexe/eval_memory.h"

#include <gtest/gtest.h>

#include <initializer_list>

#include "ecexe/eval_logic.h"
#include "eval_graph.h"

namespace {

// The end of instant `key` as the evaluator performs it: every
// compute_next, then every rewrite.
void end_instant(std::initializer_list<EvalItem*> memories, unsigned key) {
  for (EvalItem* m : memories) m->compute_next(key);
  for (EvalItem* m : memories) m->rewrite();
}

// n = 0 -> last n + inc, built as if init then 0 else last n + inc, with
// the cycle closed through the memory.
struct Counter {
  explicit Counter(EvalGraph& g) {
    inc = g.add(new CountingInput);
    init = g.make<INIT_bool_EI>({g.b(true)});
    last = g.add(new BLAST_int_EI);
    EvalItem* n = g.make<COND_int_EI>({init, g.i(0), g.make<PLUS_int_EI>({last, inc})});
    last->operands[0] = n;
    last->operands[1] = g.b(true);
    out = g.make<OUTPUT_int_EI>({n, g.b(true)});
  }
  // One instant with `inc` = v; returns the output's value.
  int32_t step(unsigned key, int32_t v, bool complete = true) {
    inc->value.i = v;
    eval(out, key);
    if (complete) end_instant({init, last}, key);
    return out->value.i;
  }
  CountingInput* inc;
  EvalItem* init;
  EvalItem* last;
  EvalItem* out;
};

}  // namespace

TEST(EvalMemoryTest, CounterThroughACycleAbandonAndReset) {
  EvalGraph g;
  Counter c(g);
  EXPECT_EQ(c.step(1, 1), 0);
  EXPECT_EQ(c.step(2, 5), 5);
  EXPECT_EQ(c.step(3, 2, false), 7);
  // Abandon instant 3: marks fall back to 2, memories were not rewritten.
  c.out->reset_mark(2);
  EXPECT_EQ(c.step(3, 3), 8);
  EXPECT_EQ(c.inc->computes, 4);
  EXPECT_EQ(c.step(4, 1), 9);

  c.out->reset();
  EXPECT_EQ(c.out->status, EI_NIL);
  EXPECT_EQ(c.last->mark, 0u);
  EXPECT_EQ(c.step(1, 4), 0);
  EXPECT_EQ(c.step(2, 4), 4);
}

TEST(EvalMemoryTest, LastFollowsItsClockAndCarriesStatuses) {
  EvalGraph g;
  auto* a = g.add(new INPUT_int_EI(1));
  auto* b = g.add(new INPUT_int_EI(2));
  auto* clock = g.add(new INPUT_bool_EI(3));
  auto* last = g.make<BLAST_int_EI>({g.make<DIV_int_EI>({a, b}), clock});
  struct Instant {
    int32_t a, b;
    bool clock;
    int status;  // of last at this instant
    int32_t value;
  } instants[] = {
      {5, 1, false, EI_NIL, 0},      // never memorised yet
      {7, 1, true, EI_NIL, 0},       // memorises 7 at the end
      {9, 1, false, EI_DEFINED, 7},  // clock false: 9 is not memorised
      {4, 0, true, EI_DEFINED, 7},   // memorises divbyzero
      {6, 2, true, EI_DIVBYZERO, 0},
      {1, 1, false, EI_DEFINED, 3},
  };
  unsigned key = 0;
  for (const Instant& i : instants) {
    a->value.i = i.a;
    b->value.i = i.b;
    clock->value.i = i.clock;
    eval(last, ++key);
    SCOPED_TRACE(key);
    EXPECT_EQ(last->status, i.status);
    if (i.status == EI_DEFINED) {
      EXPECT_EQ(last->value.i, i.value);
    }
    end_instant({last}, key);
  }
  last->reset();
  EXPECT_EQ(eval(last, 1)->status, EI_NIL);
}

TEST(EvalMemoryTest, InitIsTrueUntilTheEndOfItsClocksFirstInstant) {
  EvalGraph g;
  auto* clock = g.add(new INPUT_bool_EI(1));
  auto* init = g.make<INIT_bool_EI>({clock});
  const bool clocks[] = {false, false, true, true, false};
  const bool expected[] = {true, true, true, false, false};
  for (unsigned k = 0; k < 5; k++) {
    clock->value.i = clocks[k];
    eval(init, k + 1);
    EXPECT_EQ(init->is_true(), expected[k]) << "instant " << k + 1;
    EXPECT_EQ(init->status, EI_DEFINED);
    end_instant({init}, k + 1);
  }
  init->reset();
  EXPECT_TRUE(eval(init, 1)->is_true());

  // An instant at which nothing demanded the item is not its first one.
  auto* unread = g.make<INIT_bool_EI>({g.b(true)});
  end_instant({unread}, 1);
  EXPECT_TRUE(eval(unread, 2)->is_true());
  end_instant({unread}, 2);
  EXPECT_FALSE(eval(unread, 3)->is_true());
}

TEST(EvalMemoryTest, OutputOnAFalseClockIsAbsentAndHolds) {
  EvalGraph g;
  auto* x = g.add(new INPUT_int_EI(1));
  auto* clock = g.add(new INPUT_bool_EI(2));
  auto* out = g.make<OUTPUT_int_EI>({x, clock});
  const int instants[][4] = {{1, 1, 0, 1}, {2, 0, 1, 1}, {3, 1, 0, 3}};  // x, clock: absent, value
  for (unsigned k = 0; k < 3; k++) {
    x->value.i = instants[k][0];
    clock->value.i = instants[k][1];
    eval(out, k + 1);
    EXPECT_EQ(out->is_bottom(), instants[k][2]) << k;
    EXPECT_EQ(out->value.i, instants[k][3]) << k;
    EXPECT_EQ(out->status, EI_DEFINED);
  }
}

// Reset stops at items never computed; a computed declared constant comes
// back defined, an input nil.
TEST(EvalMemoryTest, ResetTouchesOnlyComputedItems) {
  EvalGraph g;
  EvalItem* declared = g.nil_int();
  auto* x = g.add(new INPUT_int_EI(1));
  auto* out = g.make<OUTPUT_int_EI>({g.make<PLUS_int_EI>({declared, x}), g.b(true)});
  out->reset();
  EXPECT_EQ(declared->status, EI_NIL);
  eval(out, 1);
  EXPECT_EQ(out->status, EI_NIL);
  EXPECT_EQ(x->status, EI_DEFINED);
  out->reset();
  EXPECT_EQ(declared->status, EI_DEFINED);
  EXPECT_EQ(x->status, EI_NIL);
  EXPECT_EQ(x->mark, 0u);
}

TEST(EvalMemoryDeathTest, UndefinedClockEndsTheProcess) {
  EvalGraph g;
  EvalItem* nil_clock = g.nil_bool();
  auto* out = g.make<OUTPUT_int_EI>({g.i(1), nil_clock});
  EXPECT_EXIT(eval(out), ::testing::ExitedWithCode(1), "^clock takes on nil\n$");

  auto* last = g.make<BLAST_int_EI>({g.i(1), nil_clock});
  last->compute_next(1);
  EXPECT_EXIT(last->rewrite(), ::testing::ExitedWithCode(1), "^clock takes on nil\n$");

  EvalItem* zero_clock = g.make<EQ_int_EI>({g.divbyzero_int(), g.i(0)});
  auto* init = g.make<INIT_bool_EI>({zero_clock});
  EXPECT_EXIT(init->compute_next(1), ::testing::ExitedWithCode(1), "^clock takes on nil\n$");
}
