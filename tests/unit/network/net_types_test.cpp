// net_types_test.cpp -- types and clocks of nodes, and their refusals.
#include <gtest/gtest.h>

#include "net_fixture.h"

using namespace nettest;

namespace {

const char* kProgram =
    "type T;\n"
    "function pair(a: int) returns (p: int; q: real);\n"
    "function tee(a: int) returns (t: T);\n"
    "node n(c: bool; (d: bool) when c; i: int; (s: int) when d; r: real)\n"
    "  returns (o: int);\n"
    "let o = i; tel\n";

struct Fixture { Net* net; Exp* c; Exp* d; Exp* i; Exp* s; Exp* r; };

Fixture make() {
  Net* net = parse_text(kProgram);
  return Fixture{net, info(net, "c")->ref, info(net, "d")->ref, info(net, "i")->ref,
                 info(net, "s")->ref, info(net, "r")->ref};
}

TEST(NetTypesTest, TypesByNature) {
  Fixture f = make();
  Net* net = f.net;
  EXPECT_EQ(net->type(make_exp(LT_n, f.i, f.i)), net->bool_type);
  EXPECT_EQ(net->type(make_exp(PLUS_n, f.r, f.i)), net->real_type) << "first operand decides";
  EXPECT_EQ(net->type(make_exp(IF_n, f.c, f.i, f.r)), net->int_type) << "then-branch decides";
  EXPECT_EQ(net->type(make_exp(CALL_n, f.i, key("tee"))), net->define_type(key("T")));
  Exp* one[] = {f.r};
  EXPECT_EQ(net->type(make_exp(TUPLE_n, 1, one)), net->real_type) << "no one-component tuple";
  Exp* two[] = {f.i, f.c};
  EcType* pair_type = net->type(make_exp(TUPLE_n, 2, two));
  ASSERT_TRUE(pair_type->is_tuple);
  EXPECT_EQ(keys_of(pair_type->components), (std::vector<int>{key("int"), key("bool")}));
  Exp* call = make_exp(CALL_n, f.i, key("pair"));
  EXPECT_EQ(net->type(make_exp(PROJ_n, call, 2)), net->real_type);
  EXPECT_EQ(net->type(make_exp(PROJ_n, call, 1)), net->int_type);
  EXPECT_EQ(net->type(make_exp(NOR_n, 2, two)), net->bool_type);
}

TEST(NetTypesTest, Clocks) {
  Fixture f = make();
  Net* net = f.net;
  EXPECT_EQ(net->clock(make_exp(WHEN_n, f.i, net->true_exp)), net->true_key);
  EXPECT_EQ(net->clock(make_exp(CURRENT_n, make_exp(WHEN_n, f.i, f.c))), net->true_key);
  // current brings s (on d, itself on c) back to c, not to the base clock.
  EXPECT_EQ(net->clock(make_exp(CURRENT_n, f.s)), key("c"));
  EXPECT_EQ(net->clock(make_exp(PLUS_n, f.s, f.i)), key("d")) << "first operand decides";
  EXPECT_EQ(net->clock(make_exp(PRE_n, make_exp(WHEN_n, f.s, f.d))), key("d"));
}

TEST(NetTypesDeathTest, Failures) {
  Fixture f = make();
  Net* net = f.net;
  Exp* unnamed = make_exp(WHEN_n, f.i, make_exp(AND_n, f.c, f.c));
  EXPECT_EXIT(net->clock(unnamed), ::testing::ExitedWithCode(1),
              " Error :\nThe clock operand of 'when' operator must be named\n");
  Exp* loop = make_exp(NOT_n, f.c);
  loop->operands[0] = make_exp(AND_n, loop, f.c);
  EXPECT_EXIT(net->type(loop), ::testing::ExitedWithCode(1), "Sorry, Internal Error :\nNet::type : infinite loop");
  EXPECT_EXIT(net->type(make_exp(PROJ_n, f.i, 1)), ::testing::ExitedWithCode(1),
              "file net\n EcType::member\\(\\) called on non tuple type\n");
  Exp* box = make_exp(ERROR_n, 0, static_cast<Exp**>(nullptr));
  EXPECT_EXIT(net->type(box), ::testing::ExitedWithCode(1), "file net_types:\nNet::type 'ERROR_n' is not implemented\n");
  EXPECT_EXIT(net->clock(box), ::testing::ExitedWithCode(1), "file net_types:\nNet::clock 'ERROR_n' is not implemented\n");
  EXPECT_EXIT(f.i->projection_order(), ::testing::ExitedWithCode(1),
              "file 'net':\nExp::projection_order called on 'INPUT_n' operator");
}

}  // namespace
