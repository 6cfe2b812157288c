// net_ctr_test.cpp -- the sharing constructor: one node per structure.
// Linear combinations are never built from ec text and are not tested.
#include "network/net_ctr.h"

#include <gtest/gtest.h>

#include "net_fixture.h"

using namespace nettest;

namespace {

struct Ctr { Net* net; NetCtr* ctr; Exp* x; Exp* y; Exp* z; };

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
  // Calls of an unsafe function are never shared.
  EXPECT_EQ(k(CALL_n, c.x, key("f")), k(CALL_n, c.x, key("f")));
  EXPECT_NE(kept(k(CALL_n, c.x, key("u"))), kept(k(CALL_n, c.x, key("u"))));
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

TEST(NetCtrTest, NegationSimplifies) {
  Ctr c = make_ctr();
  NetCtr& k = *c.ctr;
  Net* net = c.net;
  EXPECT_EQ(k.neg(net->true_exp), net->false_exp);
  EXPECT_EQ(k.neg(net->false_exp), net->true_exp);
  EXPECT_EQ(k.neg(net->nil_exp), net->nil_exp);
  for (Exp* e : {net->bottom_exp, k(AND_n, c.x, c.y)}) {
    EXPECT_EQ(k.neg(e), k(NOT_n, e));
    EXPECT_EQ(k.neg(k.neg(e)), e);
  }
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
}

}  // namespace
