// eval_arith_test.cpp -- int arithmetic with 32-bit wrapping, division and
// modulo signs and zero divisors, orderings, conversions and real literals.
#include "ecexe/eval_arith.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "eval_graph.h"

namespace {

template <class Item>
EvalItem* binary(EvalGraph& g, int32_t a, int32_t b) {
  return eval(g.make<Item>({g.i(a), g.i(b)}));
}

}  // namespace

TEST(EvalArithTest, IntOperatorsWrapAndTruncateTowardZero) {
  struct Case {
    const char* what;
    EvalItem* (*op)(EvalGraph&, int32_t, int32_t);
    int32_t a, b, expected;
  } cases[] = {
      {"max + 1", binary<PLUS_int_EI>, INT_MAX, 1, INT_MIN},
      {"min - 1", binary<MINUS_int_EI>, INT_MIN, 1, INT_MAX},
      {"65536 * 65536", binary<TIMES_int_EI>, 65536, 65536, 0},
      {"65537 * 65537", binary<TIMES_int_EI>, 65537, 65537, 131073},
      {"-7 div 2", binary<DIV_int_EI>, -7, 2, -3},
      {"7 div -2", binary<DIV_int_EI>, 7, -2, -3},
      {"-7 mod 2", binary<MOD_int_EI>, -7, 2, -1},
      {"7 mod -2", binary<MOD_int_EI>, 7, -2, 1},
      {"min div -1", binary<DIV_int_EI>, INT_MIN, -1, INT_MIN},
      {"min mod -1", binary<MOD_int_EI>, INT_MIN, -1, 0},
      {"-1 < 1", binary<LT_int_EI>, -1, 1, 1},
      {"min <= max", binary<LE_int_EI>, INT_MIN, INT_MAX, 1},
      {"1 > -1", binary<GT_int_EI>, 1, -1, 1},
      {"-2 >= -1", binary<GE_int_EI>, -2, -1, 0},
  };
  for (const Case& c : cases) {
    EvalGraph g;
    EvalItem* r = c.op(g, c.a, c.b);
    SCOPED_TRACE(c.what);
    EXPECT_EQ(r->status, EI_DEFINED);
    EXPECT_EQ(r->value.i, c.expected);
  }
  EvalGraph g;
  EXPECT_EQ(eval(g.make<UMINUS_int_EI>({g.i(INT_MIN)}))->value.i, INT_MIN);
}

TEST(EvalArithTest, ZeroDivisorIsDivbyzeroOnlyWhenOperandsAreDefined) {
  EvalGraph g;
  EXPECT_EQ(binary<DIV_int_EI>(g, 3, 0)->status, EI_DIVBYZERO);
  EXPECT_EQ(binary<MOD_int_EI>(g, 3, 0)->status, EI_DIVBYZERO);
  EXPECT_EQ(eval(g.make<DIV_int_EI>({g.nil_int(), g.i(0)}))->status, EI_NIL);
  EXPECT_EQ(eval(g.make<MOD_int_EI>({g.nil_int(), g.i(0)}))->status, EI_NIL);
  EXPECT_EQ(eval(g.make<DIV_double_EI>({g.d(1.0), g.d(-0.0)}))->status, EI_DIVBYZERO);
  EXPECT_EQ(eval(g.make<DIV_double_EI>({g.d(-1.0), g.d(4.0)}))->value.d, -0.25);
  // Statuses of strict operands combine: divbyzero + nil carries both.
  EXPECT_EQ(eval(g.make<PLUS_int_EI>({g.divbyzero_int(), g.nil_int()}))->status,
            EI_NIL | EI_DIVBYZERO);
}

TEST(EvalArithTest, RealOperatorsAndConversions) {
  EvalGraph g;
  EvalItem* nan = g.d(std::nan(""));
  EXPECT_FALSE(eval(g.make<LT_double_EI>({nan, g.d(1.0)}))->is_true());
  EXPECT_FALSE(eval(g.make<GE_double_EI>({nan, nan}))->is_true());
  EXPECT_TRUE(eval(g.make<LE_double_EI>({g.d(-0.0), g.d(0.0)}))->is_true());
  EXPECT_EQ(eval(g.make<UMINUS_double_EI>({g.d(2.5)}))->value.d, -2.5);
  EXPECT_EQ(eval(g.make<INT2REAL_double_EI>({g.i(INT_MAX)}))->value.d, 2147483647.0);

  struct Case { double r; int32_t expected; } truncations[] = {
      {2.7, 2}, {-2.7, -2}, {2147483647.9, INT_MAX}, {-2147483648.9, INT_MIN},
      {2147483648.0, INT_MIN}, {1e10, INT_MIN}, {-1e10, INT_MIN}, {std::nan(""), INT_MIN},
  };
  for (const Case& c : truncations) {
    SCOPED_TRACE(c.r);
    EXPECT_EQ(eval(g.make<REAL2INT_int_EI>({g.d(c.r)}))->value.i, c.expected);
  }
}

// A real literal reaches its item as the single-precision value of its
// text, widened; the items must not round it again.
TEST(EvalArithTest, RealLiteralKeepsSinglePrecisionValue) {
  EvalGraph g;
  EvalItem* tenth = g.d(0.1f);
  EvalItem* sum = eval(g.make<PLUS_double_EI>({tenth, g.d(0.0)}));
  EXPECT_EQ(sum->value.d, 0.10000000149011612);
  EXPECT_NE(sum->value.d, 0.1);
  EvalItem* product = eval(g.make<TIMES_double_EI>({tenth, g.d(10.0)}));
  EXPECT_EQ(product->value.d, 1.0000000149011612);
}
