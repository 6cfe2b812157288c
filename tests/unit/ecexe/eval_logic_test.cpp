// eval_logic_test.cpp -- three-valued logic, selection, # and nor, the
// comparisons, and the demand rule on shared operands.
#include "ecexe/eval_logic.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "eval_graph.h"

namespace {

// A bool leaf by letter: T true, F false, N nil, Z divbyzero.
EvalItem* bool_leaf(EvalGraph& g, char c) {
  switch (c) {
    case 'T': return g.b(true);
    case 'F': return g.b(false);
    case 'N': return g.nil_bool();
    default: return g.make<EQ_int_EI>({g.divbyzero_int(), g.i(1)});
  }
}

// The letter of a computed bool item: T, F, N, Z, or B for nil|divbyzero.
char outcome(const EvalItem* item) {
  switch (item->status) {
    case EI_DEFINED: return item->is_true() ? 'T' : 'F';
    case EI_NIL: return 'N';
    case EI_DIVBYZERO: return 'Z';
    case EI_NIL | EI_DIVBYZERO: return 'B';
    default: return '?';
  }
}

template <class Item>
std::string binary_grid() {
  const char letters[] = "TFNZ";
  std::string grid;
  for (int a = 0; a < 4; a++) {
    for (int b = 0; b < 4; b++) {
      EvalGraph g;
      grid += outcome(eval(g.make<Item>({bool_leaf(g, letters[a]), bool_leaf(g, letters[b])})));
    }
    if (a < 3) grid += ' ';
  }
  return grid;
}

}  // namespace

// Rows: the left operand T, F, N, Z; columns: the right operand likewise.
TEST(EvalLogicTest, ThreeValuedBinaryOperators) {
  EXPECT_EQ(binary_grid<AND_bool_EI>(), "TFNZ FFFF NFNB ZFBZ");
  EXPECT_EQ(binary_grid<OR_bool_EI>(), "TTTT TFNZ TNNB TZBZ");
  EXPECT_EQ(binary_grid<IMPL_bool_EI>(), "TFNZ TTTT TNNB TZBZ");
  EXPECT_EQ(binary_grid<NE_bool_EI>(), "FTNZ TFNZ NNNB ZZBZ");
  EXPECT_EQ(binary_grid<EQ_bool_EI>(), "TFNZ FTNZ NNNB ZZBZ");
}

TEST(EvalLogicTest, DecidedOperatorsStillComputeEveryOperand) {
  EvalGraph g;
  EvalItem* ignored = g.make<PLUS_int_EI>({g.i(1), g.i(2)});
  EvalItem* unused_branch = g.make<EQ_int_EI>({ignored, g.i(3)});
  EvalItem* conj = g.make<AND_bool_EI>({g.b(false), unused_branch});
  eval(conj, 7);
  EXPECT_EQ(outcome(conj), 'F');
  EXPECT_EQ(ignored->mark, 7u);
  EXPECT_EQ(ignored->value.i, 3);

  EvalItem* other = g.make<MINUS_int_EI>({g.i(1), g.i(2)});
  EvalItem* cond = g.make<COND_int_EI>({g.b(true), g.i(5), other});
  eval(cond, 7);
  EXPECT_EQ(other->mark, 7u);
  EXPECT_EQ(other->value.i, -1);
}

TEST(EvalLogicTest, ConditionalSelectsOneBranchStatus) {
  struct Case {
    char cond, then_kind, else_kind;  // I: the int 1 (then) or 2 (else)
    int status, value;
  } cases[] = {
      {'N', 'I', 'I', EI_NIL, 0},       {'Z', 'I', 'I', EI_DIVBYZERO, 0},
      {'T', 'I', 'N', EI_DEFINED, 1},   {'F', 'N', 'I', EI_DEFINED, 2},
      {'T', 'Z', 'I', EI_DIVBYZERO, 0}, {'F', 'I', 'N', EI_NIL, 0},
  };
  for (const Case& c : cases) {
    EvalGraph g;
    auto branch = [&g](char kind, int v) {
      return kind == 'I' ? g.i(v) : kind == 'N' ? g.nil_int() : g.divbyzero_int();
    };
    EvalItem* cond = g.make<COND_int_EI>(
        {bool_leaf(g, c.cond), branch(c.then_kind, 1), branch(c.else_kind, 2)});
    eval(cond);
    SCOPED_TRACE(std::string("if ") + c.cond + " then " + c.then_kind + " else " + c.else_kind);
    EXPECT_EQ(cond->status, c.status);
    if (c.status == EI_DEFINED) {
      EXPECT_EQ(cond->value.i, c.value);
    }
  }
}

TEST(EvalLogicTest, DieseAndNorCountTrueOperandsWithoutAbsorbingNil) {
  struct Case { const char* operands; char diese, nor; } cases[] = {
      {"", 'T', 'T'},    {"F", 'T', 'T'},   {"T", 'T', 'F'},    {"TFF", 'T', 'F'},
      {"TTF", 'F', 'F'}, {"FFF", 'T', 'T'}, {"NTT", 'N', 'N'},  {"TTN", 'N', 'N'},
      {"FZ", 'Z', 'Z'},  {"NZT", 'B', 'B'},
  };
  for (const Case& c : cases) {
    EvalGraph g;
    std::string ops = c.operands;
    auto* diese = g.add(new DIESE_bool_EI(ops.size()));
    auto* nor = g.add(new NOR_bool_EI(ops.size()));
    for (size_t k = 0; k < ops.size(); k++) {
      EvalItem* leaf = bool_leaf(g, ops[k]);
      diese->operands[k] = leaf;
      nor->operands[k] = leaf;
    }
    SCOPED_TRACE(ops);
    EXPECT_EQ(outcome(eval(diese)), c.diese);
    EXPECT_EQ(outcome(eval(nor)), c.nor);
  }
}

TEST(EvalLogicTest, RealAndExternEquality) {
  EvalGraph g;
  EvalItem* nan = g.d(std::nan(""));
  EXPECT_EQ(outcome(eval(g.make<EQ_double_EI>({nan, nan}))), 'F');
  EXPECT_EQ(outcome(eval(g.make<NE_double_EI>({nan, nan}))), 'T');
  EXPECT_EQ(outcome(eval(g.make<EQ_double_EI>({g.d(0.0), g.d(-0.0)}))), 'T');

  auto word = [&g](uintptr_t w) { return g.add(new CONST_extern_EI(42, w)); };
  auto* same = g.make<EQ_extern_EI>({word(0xdead0000beef), word(0xdead0000beef)}, 42);
  auto* differ = g.make<NE_extern_EI>({word(0xdead0000beef), word(0xbeef)}, 42);
  EXPECT_EQ(outcome(eval(same)), 'T');
  EXPECT_EQ(outcome(eval(differ)), 'T');
  EXPECT_EQ(same->extern_type_name(), 42);
}

TEST(EvalLogicTest, SharedOperandIsComputedOncePerInstant) {
  EvalGraph g;
  auto* x = g.add(new CountingInput);
  EvalItem* left = g.make<PLUS_int_EI>({x, g.i(1)});
  EvalItem* right = g.make<TIMES_int_EI>({x, x});
  EvalItem* top = g.make<MINUS_int_EI>({left, right});
  x->value.i = 3;
  EXPECT_EQ(eval(top, 1)->value.i, (3 + 1) - 3 * 3);
  EXPECT_EQ(x->computes, 1);
  x->value.i = -2;
  EXPECT_EQ(eval(top, 2)->value.i, (-2 + 1) - (-2) * (-2));
  EXPECT_EQ(x->computes, 2);
}
