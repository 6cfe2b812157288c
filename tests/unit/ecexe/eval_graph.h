// eval_graph.h -- hand-built item graphs for the item tests: a pool that
// owns the items, leaves of every status, and one-call operator nodes.
#ifndef TESTS_UNIT_ECEXE_EVAL_GRAPH_H
#define TESTS_UNIT_ECEXE_EVAL_GRAPH_H

#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

#include "ecexe/eval_arith.h"
#include "ecexe/eval_item.h"
#include "ecexe/eval_terminal.h"

// An int input that counts its computations, to observe the demand rule.
class CountingInput : public INPUT_int_EI {
 public:
  CountingInput() : INPUT_int_EI(0) {}
  void compute(unsigned key) override {
    computes++;
    INPUT_int_EI::compute(key);
  }
  int computes = 0;
};

class EvalGraph {
 public:
  // Adopts `item` and fills its operands in order.
  template <class Item>
  Item* add(Item* item, std::initializer_list<EvalItem*> operands = {}) {
    items.emplace_back(item);
    int k = 0;
    for (EvalItem* o : operands) item->operands[k++] = o;
    return item;
  }
  template <class Item, class... Args>
  Item* make(std::initializer_list<EvalItem*> operands, Args&&... args) {
    return add(new Item(std::forward<Args>(args)...), operands);
  }

  EvalItem* b(bool v) { return add(new CONST_bool_EI(v)); }
  EvalItem* i(int32_t v) { return add(new CONST_int_EI(v)); }
  EvalItem* d(double v) { return add(new CONST_double_EI(v)); }
  // A leaf that stays nil: a declared constant before any reset.
  EvalItem* nil_bool() { return undefined(add(new CONST_bool_EI(false))); }
  EvalItem* nil_int() { return undefined(add(new CONST_int_EI(0))); }
  // An int leaf whose status is divbyzero: 1 div 0.
  EvalItem* divbyzero_int() { return make<DIV_int_EI>({i(1), i(0)}); }

  std::vector<std::unique_ptr<EvalItem>> items;

 private:
  static EvalItem* undefined(EvalItem* leaf) {
    leaf->status = EI_NIL;
    return leaf;
  }
};

// Demands `item` for instant `key` and returns it.
inline EvalItem* eval(EvalItem* item, unsigned key = 1) {
  EvalItem::demand(item, key);
  return item;
}

#endif
