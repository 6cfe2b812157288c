// net_ctr_test.cpp -- the sharing constructor: one node per structure.
#include "network/net_ctr.h"

#include <gtest/gtest.h>

#include "net_fixture.h"

using namespace nettest;

namespace {

struct Ctr {
  Net* net;
  NetCtr* ctr;
  Exp* x;
  Exp* y;
  Exp* z;
};

// A network with int inputs x, y, z, a safe function f and an unsafe u.
Ctr make_ctr() {
  Net* net = parse_text(
      "function f(a: int) returns (r: int);\n"
      "unsafe function u(a: int) returns (r: int);\n"
      "node n(x, y, z: int) returns (o: int); let o = x; tel");
  return Ctr{net, kept(new NetCtr(net)), info(net, "x")->ref, info(net, "y")->ref, info(net, "z")->ref};
}

TEST(NetCtrTest, EqualSubtermsShareOneNode) {
  Ctr c = make_ctr();
  NetCtr& k = *c.ctr;
  EXPECT_EQ(k(PRE_n, c.x), k(PRE_n, c.x));
  EXPECT_NE(k(PRE_n, c.x), k(CURRENT_n, c.x));
  Exp* a = k(IF_n, k(GT_n, c.x, c.y), k(PLUS_n, c.x, k(1)), c.z);
  Exp* b = k(IF_n, k(GT_n, c.x, c.y), k(PLUS_n, c.x, k(1)), c.z);
  EXPECT_EQ(a, b);
  EXPECT_NE(a, k(IF_n, k(GT_n, c.x, c.y), c.z, k(PLUS_n, c.x, k(1))));
  EXPECT_EQ(k(PROJ_n, c.x, 2), k(PROJ_n, c.x, 2));
  EXPECT_NE(k(PROJ_n, c.x, 2), k(PROJ_n, c.x, 1));
  // Literals are the network's one leaf per text.
  EXPECT_EQ(k(7), c.net->get_int_const(key("7")));
  EXPECT_EQ(k(1.5f), c.net->get_real_const(key("1.500000")));
}

TEST(NetCtrTest, OnlyTheSevenCommutativeNaturesMatchSwapped) {
  Ctr c = make_ctr();
  NetCtr& k = *c.ctr;
  for (ExpNature n : {AND_n, OR_n, XOR_n, EQUAL_n, NEQ_n, PLUS_n, TIMES_n}) {
    Exp* ab = k(n, c.x, c.y);
    EXPECT_EQ(k(n, c.y, c.x), ab) << nodekey(n);
    EXPECT_EQ(ab->operands[0], c.x) << "the first order is kept";
  }
  for (ExpNature n : {IMPL_n, MINUS_n, SLASH_n, LT_n, GTE_n, ARROW_n, WHEN_n, POWER_n, DIV_n}) {
    EXPECT_NE(k(n, c.y, c.x), k(n, c.x, c.y)) << nodekey(n);
    EXPECT_EQ(k(n, c.y, c.x), k(n, c.y, c.x)) << nodekey(n);
  }
  Exp* ops[] = {c.x, c.y};
  Exp* swapped[] = {c.y, c.x};
  EXPECT_NE(k(NOR_n, 2, ops), k(NOR_n, 2, swapped));
  EXPECT_NE(k(NOR_n, 2, ops), k(DIESE_n, 2, ops));
}

TEST(NetCtrTest, UnsafeCallsAreNeverShared) {
  Ctr c = make_ctr();
  NetCtr& k = *c.ctr;
  EXPECT_EQ(k(CALL_n, c.x, key("f")), k(CALL_n, c.x, key("f")));
  EXPECT_NE(kept(k(CALL_n, c.x, key("u"))), kept(k(CALL_n, c.x, key("u"))));
}

TEST(NetCtrTest, NegationSimplifies) {
  Ctr c = make_ctr();
  NetCtr& k = *c.ctr;
  Net* net = c.net;
  EXPECT_EQ(k.neg(net->true_exp), net->false_exp);
  EXPECT_EQ(k.neg(net->false_exp), net->true_exp);
  EXPECT_EQ(k.neg(net->nil_exp), net->nil_exp);
  Exp* nb = k.neg(net->bottom_exp);
  EXPECT_EQ(nb->nature, NOT_n);
  EXPECT_EQ(k.neg(nb), net->bottom_exp);
  Exp* e = k(AND_n, c.x, c.y);
  EXPECT_EQ(k.neg(k.neg(e)), e);
  EXPECT_EQ(k.neg(e), k(NOT_n, e));
}

// Terms are merged by operand and sorted, zero coefficients dropped, and
// the caller's arrays receive the canonical terms.
TEST(NetCtrTest, LinearCombinationsAreCanonical) {
  Ctr c = make_ctr();
  NetCtr& k = *c.ctr;
  Exp* ops[] = {c.x, c.y, c.x};
  Fract coefs[] = {Fract(1), Fract(2), Fract(-1)};
  Exp* r = k(RCL_n, 3, ops, coefs, Fract(1, 2));
  ASSERT_EQ(r->arity, 1);
  EXPECT_EQ(r->operands[0], c.y);
  EXPECT_EQ(r->coefs[0], Fract(2));
  EXPECT_EQ(ops[0], c.y);

  Exp* ops2[] = {c.z, c.y, c.x, c.z};
  Fract coefs2[] = {Fract(1, 3), Fract(2), Fract(5), Fract(2, 3)};
  Exp* ops3[] = {c.x, c.z, c.y};
  Fract coefs3[] = {Fract(5), Fract(1), Fract(2)};
  Exp* s = k(RCL_n, 4, ops2, coefs2, Fract(0));
  EXPECT_EQ(k(RCL_n, 3, ops3, coefs3, Fract(0)), s);
  EXPECT_NE(k(RCL_n, 3, ops3, coefs3, Fract(1)), s) << "constant terms differ";

  Exp* iops[] = {c.y, c.x, c.y};
  int icoefs[] = {3, 4, -3};
  Exp* cancelled = k(ICL_n, 3, iops, icoefs, 7);
  ASSERT_EQ(cancelled->arity, 1);
  EXPECT_EQ(cancelled->int_coefs[0], 4);
  Exp* none[] = {c.x, c.x};
  int opposite[] = {2, -2};
  Exp* constant = k(ICL_n, 2, none, opposite, 5);
  EXPECT_EQ(constant->arity, 0);
  EXPECT_NE(k(ICL_n, 2, none, opposite, 6), constant);
}

// Tuples differing only in their first operands share a hash code, yet
// stay distinct nodes, each found again.
TEST(NetCtrTest, LongTuplesHashOnTheirLastSixteenOperands) {
  Ctr c = make_ctr();
  NetCtr& k = *c.ctr;
  Exp* ops[20];
  Exp* other[20];
  Exp* leaves[] = {c.x, c.y, c.z};
  for (int i = 0; i < 20; i++) ops[i] = other[i] = leaves[i % 3];
  for (int i = 0; i < 4; i++) other[i] = k(PRE_n, leaves[i % 3]);
  EXPECT_EQ(NetCtr::tuple_hash_code(20, ops), NetCtr::tuple_hash_code(20, other));
  Exp* t1 = k(TUPLE_n, 20, ops);
  Exp* t2 = k(TUPLE_n, 20, other);
  EXPECT_NE(t1, t2);
  EXPECT_EQ(k(TUPLE_n, 20, ops), t1);
  EXPECT_EQ(k(TUPLE_n, 20, other), t2);
  other[19] = c.x == ops[19] ? c.y : c.x;
  EXPECT_NE(NetCtr::tuple_hash_code(20, ops), NetCtr::tuple_hash_code(20, other));
}

TEST(NetCtrDeathTest, InternalErrors) {
  Ctr c = make_ctr();
  NetCtr& k = *c.ctr;
  Exp* box = kept(k.getabox());
  Exp model(NOT_n, c.x);
  k.update(box, &model);
  EXPECT_EXIT(k.update(box, &model), ::testing::ExitedWithCode(1),
              "Sorry, Internal Error :\nfile 'netctr':\nbuild_net : NetCtr::update : already updated expression\n");
  EXPECT_EXIT(k.put_in_hash_tab(c.x), ::testing::ExitedWithCode(1),
              "file 'netctr' :\nNetCtr::put_in_hash_tab : unexpected 'INPUT_n' expression");
  Exp* ops[] = {c.x};
  Fract f[] = {Fract(1)};
  int i[] = {1};
  EXPECT_EXIT(k(ICL_n, 1, ops, f, Fract(0)), ::testing::ExitedWithCode(1), "NetCtr::operator\\(\\) RCL_n was expected");
  EXPECT_EXIT(k(RCL_n, 1, ops, i, 0), ::testing::ExitedWithCode(1), "NetCtr::operator\\(\\) ICL_n was expected");
}

}  // namespace
