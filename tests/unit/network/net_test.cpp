// net_test.cpp -- the network model: predefined declarations, types,
// records, annotation slots and operand lists.
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
  EXPECT_EQ(net->bool_type->number, 0);
  EXPECT_EQ(net->usr_types, nullptr);
  EXPECT_EQ(net->consts, nullptr) << "predefined constants are not listed";
  EXPECT_EQ(net->node_name, 0);
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
  EXPECT_EQ(net->add_usr_type(key("V"))->number, 2);
}

TEST(NetTest, EnumerationsAndConstants) {
  Net* net = fresh_net();
  int values[] = {key("a"), key("b"), key("c")};
  IntList* list = new IntList(values, 3);
  EcType* t = net->add_usr_type(key("E"), list);
  FreeIntList(list);
  ASSERT_EQ(t->enum_count, 3);
  for (int ordinal = 0; ordinal < 3; ordinal++) {
    IdentInfo* v = t->enum_values[ordinal];
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v->index, ordinal);
    EXPECT_EQ(v->mode, ENUM_CONST_ID);
    EXPECT_EQ(v->ref->nature, CONST_n);
    EXPECT_EQ(v->ref->type, t);
    EXPECT_EQ(v->ref->clock, net->true_key);
  }
  net->add_usr_const(key("k"), t, key("a"));
  EXPECT_EQ(info(net, "k")->value.position, 3);
  EXPECT_EQ(keys_of(t->consts), std::vector<int>{key("k")});
  EXPECT_EQ(net->nb_consts, 4);
}

TEST(NetTest, VariablesAndAssertions) {
  Net* net = fresh_net();
  net->add_input(key("i"), net->int_type, net->true_key);
  net->add_output(key("o1"), net->int_type, net->true_key, 0);
  net->add_output(key("o2"), net->int_type, net->true_key, 1);
  net->add_local(key("l"), net->bool_type, key("i"));
  EXPECT_EQ(keys_of(net->outputs.list()), (std::vector<int>{key("o2"), key("o1")}));
  EXPECT_EQ(info(net, "o2")->index, 1);
  EXPECT_EQ(info(net, "o1")->def, nullptr);
  EXPECT_EQ(info(net, "o1")->ref->nature, ECREF_n);
  EXPECT_EQ(info(net, "i")->def, info(net, "i")->ref);
  EXPECT_EQ(info(net, "l")->ref->clock, key("i"));
  Exp* a0 = make_exp(GT_n, info(net, "i")->ref, net->get_int_const(key("0")));
  Exp* a1 = make_exp(NOT_n, info(net, "l")->ref);
  net->add_assertion(a0);
  net->add_assertion(a1);
  EXPECT_EQ(keys_of(net->asserts.list()), (std::vector<int>{key("__assert_0"), key("__assert_1")}));
  EXPECT_EQ(info(net, "__assert_1")->clock, key("i"));
  EXPECT_EQ(a1->clock, key("i"));
  EXPECT_EQ(a1->type, net->bool_type);
  EXPECT_EQ(info(net, "__assert_0")->ref, nullptr);
}

TEST(NetTest, SymbolInfoArrayGrowsByChunks) {
  SymbolInfoArray a(200, 0);
  EXPECT_EQ(a.size(), 0);
  a[5];
  EXPECT_EQ(a.size(), 6);
  IdentInfo far(INPUT_ID, 450, nullptr, 1);
  a[450] = &far;
  EXPECT_EQ(a.size(), 451);
  EXPECT_EQ(a[450], &far);
  EXPECT_EQ(a[250], nullptr);
  EXPECT_EQ(a.size(), 451);
  FuncInfo f(0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  Net* net = fresh_net();
  (*net->idents)[key("fn")] = &f;
  EXPECT_EQ(net->get_ident_info(key("fn")), nullptr) << "a function is no identifier";
  EXPECT_EQ(net->get_func_info(key("fn")), &f);
}

TEST(ExpTest, AnnotationSlotsStaySorted) {
  Exp& e = *make_exp(NOT_n, static_cast<Exp*>(nullptr));
  int five = 5, nine = 9;
  e.put_info(5, &five);
  e.put_info(9, &nine);
  e.put_int_info(7, 70);
  std::vector<int> slots;
  for (ExpInfo* r = e.infos; r; r = r->next) slots.push_back(r->slot);
  EXPECT_EQ(slots, (std::vector<int>{9, 7, 5}));
  e.put_int_info(7, 71);
  EXPECT_EQ(e.get_int_info(7), 71);
  EXPECT_EQ(e.get_ptr_info(9), &nine);
  EXPECT_EQ(e.get_ptr_info(5), &five);
  EXPECT_EQ(e.get_int_info(6), 0);
  EXPECT_EQ(e.get_int_info(10), 0);
  EXPECT_EQ(e.get_int_info(1), 0);
  int count = 0;
  for (ExpInfo* r = e.infos; r; r = r->next) count++;
  EXPECT_EQ(count, 3);
}

TEST(ExpTest, ListsRepairedAfterConcatenation) {
  Exp* leaves[5];
  for (Exp*& l : leaves) l = make_exp(INPUT_n, 1, nullptr, 1);
  ExpList* a = new ExpList(leaves[0]);
  ExpList* b = new ExpList(leaves[1]);
  b->next = new ExpList(leaves[2]);
  b->last = b->next;
  b->length = 2;
  ExpList* c = new ExpList(leaves[3]);
  c->next = new ExpList(leaves[4]);  // stale: c still believes it is alone
  a->next = b;                         // joined by hand, a is stale too
  Exp* node = make_exp(TUPLE_n, a);
  ASSERT_EQ(node->arity, 3);
  b->last->next = c;
  a->uplast();
  EXPECT_EQ(a->length, 5);
  EXPECT_EQ(a->last, c->next);
  Exp* all = make_exp(DIESE_n, a);
  ASSERT_EQ(all->arity, 5);
  for (int i = 0; i < 5; i++) EXPECT_EQ(all->operands[i], leaves[i]);
  EXPECT_EQ((make_exp(NOR_n, static_cast<ExpList*>(nullptr)))->arity, 0);
  FreeExpList(a);
}

TEST(ExpTest, NatureKeys) {
  EXPECT_STREQ(nodekey(EXACTONE), "EXACTONE");
  EXPECT_STREQ(opkey(EXACTONE), "&");
  EXPECT_STREQ(nodekey(CALL_n), "CALL_n");
  EXPECT_EQ(CALL_n, 38);
  EXPECT_EQ(IF_n, 30);
  EXPECT_STREQ(opkey(POWER_n), "**");
  EXPECT_STREQ(opkey(MOD_n), "mod");
  unsigned k1 = take_a_key();
  EXPECT_EQ(take_a_key(), k1 + 1);
}

}  // namespace
