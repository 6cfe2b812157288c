// net_test.cpp -- the network model: predefined declarations, types and
// annotation slots. Declarations read from ec text, and the operand lists
// the parser builds, are checked through the parser in ec_parse_test.cpp.
#include "network/net.h"

#include <gtest/gtest.h>

#include "net_fixture.h"

using namespace nettest;

namespace {

TEST(NetTest, InitDefinesPredefinedTypesAndConstants) {
  Net* net = fresh_net();
  EXPECT_EQ(net->get_bool_const(key("true")), net->true_exp);
  EXPECT_EQ(net->true_exp->clock, net->true_key);
  EXPECT_EQ(net->nil_exp->type, net->bool_type);
  EXPECT_EQ(info(net, "bottom")->mode, BOOL_CONST_ID);
  EXPECT_EQ(net->consts, nullptr) << "predefined constants are not listed";
  // One leaf per literal text, holding its value.
  Exp* seven = net->get_int_const(key("007"));
  EXPECT_EQ(net->get_int_const(key("007")), seven);
  EXPECT_EQ(info(net, "007")->value.int_value, 7);
  net->get_real_const(key("0.1"));
  EXPECT_EQ(info(net, "0.1")->value.real_value, 0.1f);
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

TEST(ExpTest, AnnotationSlotsStaySorted) {
  Exp& e = *make_exp(NOT_n, static_cast<Exp*>(nullptr));
  int five = 5, nine = 9;
  e.put_info(5, &five);
  e.put_info(9, &nine);
  e.put_int_info(7, 70);
  e.put_int_info(7, 71);  // replaces, adds no record
  std::vector<int> slots;
  for (ExpInfo* r = e.infos; r; r = r->next) slots.push_back(r->slot);
  EXPECT_EQ(slots, (std::vector<int>{9, 7, 5}));
  EXPECT_EQ(e.get_int_info(7), 71);
  EXPECT_EQ(e.get_ptr_info(9), &nine);
  EXPECT_EQ(e.get_ptr_info(5), &five);
  for (int absent : {1, 6, 10}) EXPECT_EQ(e.get_int_info(absent), 0) << absent;
}

}  // namespace
