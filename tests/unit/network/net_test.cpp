// net_test.cpp -- the network model: predefined declarations and types. Declarations read from ec text, and the operand lists
// the parser builds, are checked through the parser in ec_parse_test.cpp.
#include "network/net.h"

#include <gtest/gtest.h>

#include "net_fixture.h"

using namespace nettest;

namespace {

TEST(NetTest, PredefinedConstantsAndOneLeafPerLiteral) {
  Net* net = fresh_net();
  EXPECT_EQ(net->get_bool_const(key("true")), net->true_exp);
  EXPECT_EQ(net->consts, nullptr) << "predefined constants are not listed";
  Exp* seven = net->get_int_const(key("007"));
  EXPECT_EQ(net->get_int_const(key("007")), seven);
  EXPECT_EQ(info(net, "007")->value.int_value, 7);
}

TEST(NetTest, TypesAreFoundByIdentity) {
  Net* net = fresh_net();
  IntList one(key("int"));
  EXPECT_EQ(net->define_type(&one), net->int_type);
  int names[] = {key("int"), key("real"), key("int")};
  EcType* t = net->define_type(names, 3);
  EXPECT_TRUE(t->is_tuple);
  IntList* list = new IntList(names, 3);
  EXPECT_EQ(net->define_type(list), t);
  FreeIntList(list);
  EXPECT_NE(net->define_type(names, 2), t);
  EcType* u = net->add_usr_type(key("U"));
  EXPECT_EQ(u->number, 1);
  EXPECT_EQ(net->define_type(key("U")), u);
}

}  // namespace
