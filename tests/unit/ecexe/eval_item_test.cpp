// eval_item_test.cpp -- the base-class fatal errors,
// the key source, function items and the predefined functions.
#include "ecexe/eval_item.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <set>

#include "ecexe/eval_func.h"
#include "network/key_source.h"
#include "eval_graph.h"

TEST(EvalItemDeathTest, BaseOperationsAreFatal) {
  EvalItem item(EI_bool, 0);
  EXPECT_EXIT(item.compute(1), ::testing::ExitedWithCode(1),
              "Error :\nEvalItem::compute is only virtual\n\n$");
  EXPECT_EXIT(item.compute_next(1), ::testing::ExitedWithCode(1),
              "Error :\nEvalItem::compute_next only virtual\n\n$");
  EXPECT_EXIT(item.rewrite(), ::testing::ExitedWithCode(1),
              "Error :\nEvalItem::rewrite only virtual\n\n$");
}

TEST(EvalItemTest, ExternTypeNameOnlyForExternItems) {
  EvalGraph g;
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(g.i(1)->extern_type_name(), -1);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "  Warning :\nEvalItem:extern_type_name: called on non extern type\n");
  EXPECT_EQ(g.add(new INPUT_extern_EI(3, 17))->extern_type_name(), 17);
  EXPECT_EQ(g.add(new OUTPUT_extern_EI(18))->extern_type_name(), 18);
}

// Run in a fresh process so that no earlier test has taken a key.
TEST(KeySourceDeathTest, FirstKeyIsOneThenStrictlyIncreasing) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        unsigned k1 = take_a_key();
        unsigned k2 = take_a_key();
        unsigned k3 = take_a_key();
        exit(k1 == 1 && k2 == 2 && k3 == 3 && current_key == 3 ? 0 : 2);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST(EvalFuncTest, PredefinedRealFunctionsByName) {
  struct Case { const char* name; double arg, expected; } cases[] = {
      {"cos", 0.5, std::cos(0.5)},     {"sin", 0.5, std::sin(0.5)},
      {"tan", 0.5, std::tan(0.5)},     {"acos", 0.5, std::acos(0.5)},
      {"asin", 0.5, std::asin(0.5)},   {"atan", 0.5, std::atan(0.5)},
      {"cosh", 0.5, std::cosh(0.5)},   {"sinh", 0.5, std::sinh(0.5)},
      {"tanh", 0.5, std::tanh(0.5)},   {"exp", 0.5, std::exp(0.5)},
      {"log", 0.5, std::log(0.5)},     {"log10", 0.5, std::log10(0.5)},
      {"sqrt", 2.0, std::sqrt(2.0)},   {"fabs", -2.5, 2.5},
      {"ceil", -2.5, -2.0},            {"floor", -2.5, -3.0},
  };
  EXPECT_EQ(nb_predefined_real_functions, 16);
  for (const Case& c : cases) {
    EvalGraph g;
    SCOPED_TRACE(c.name);
    UFUNC_double_EI::Function f = find_real_function(c.name);
    ASSERT_NE(f, nullptr);
    EXPECT_EQ(eval(g.make<UFUNC_double_EI>({g.d(c.arg)}, f))->value.d, c.expected);
  }
  EXPECT_EQ(find_real_function("pow"), nullptr);
  EXPECT_EQ(find_real_function("Cos"), nullptr);
}

TEST(EvalFuncTest, RandomFunctionsStayInRange) {
  std::set<long> seen;
  for (int k = 0; k < 2000; k++) seen.insert(random_int(-2, 2));
  EXPECT_EQ(seen, (std::set<long>{-2, -1, 0, 1, 2}));
  EXPECT_EQ(random_int(7, 7), 7);
  EXPECT_EQ(random_int(7, 6), 7);  // empty range: no division by zero
  std::set<int> bools;
  for (int k = 0; k < 200; k++) bools.insert(random_bool(5));
  EXPECT_EQ(bools, (std::set<int>{0, 1}));

  EvalGraph g;
  EvalItem* lo = g.i(-2147483647 - 1);
  EvalItem* hi = g.i(2147483647);
  for (int k = 0; k < 50; k++) {
    EvalItem* r = eval(g.make<BFUNC_int_EI>({lo, hi}, random_int));
    EXPECT_EQ(r->status, EI_DEFINED);
  }
}

TEST(EvalFuncTest, FunctionItemsAreStrict) {
  EvalGraph g;
  EXPECT_EQ(eval(g.make<BFUNC_int_EI>({g.i(1), g.nil_int()}, random_int))->status, EI_NIL);
  EXPECT_EQ(eval(g.make<UFUNC_bool_EI>({g.nil_bool()}, random_bool))->status, EI_NIL);
  auto pow2 = [](double a, double b) { return std::pow(a, b); };
  EvalItem* p = eval(g.make<BFUNC_double_EI>({g.d(2.0), g.d(10.0)}, +pow2));
  EXPECT_EQ(p->value.d, 1024.0);
  auto minus = [](long a, long b) { return a - b; };
  EvalItem* wrapped = eval(g.make<BFUNC_int_EI>({g.i(-2147483647 - 1), g.i(1)}, +minus));
  EXPECT_EQ(wrapped->value.i, 2147483647);
  auto many = [](int) { return 6; };
  EXPECT_EQ(eval(g.make<UFUNC_bool_EI>({g.b(false)}, +many))->value.i, 1);
}
