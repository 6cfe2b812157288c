// eval_item.cpp -- the machinery common to every evaluation item: the
// demand rule, the history reset walks and the base-class fatal errors.
// Subclasses only combine operand values; nothing here knows an operator.
#include "ecexe/eval_item.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "foundations/errors.h"

int EvalItem::counter = 0;

// A null operand array of n entries (at least one), from the pool.
static EvalItem** new_operands(int n) {
  size_t count = n > 0 ? n : 1;
  EvalItem** operands = static_cast<EvalItem**>(pool_allocate(count * sizeof(EvalItem*)));
  for (size_t k = 0; k < count; k++) operands[k] = nullptr;
  return operands;
}

EvalItem::EvalItem(EvalItemType type, int nb_operands)
    : nb_operands(nb_operands),
      operands(new_operands(nb_operands)),
      aux(0),
      type(type),
      status(EI_NIL),
      number(++counter),
      mark(0) {
  // Not part of the contract, but an item read before its first instant
  // then shows a stable zero instead of heap garbage.
  value.x = 0;
}

EvalItem::~EvalItem() = default;

void EvalItem::local_reset() {}

void EvalItem::compute(unsigned) { Error("EvalItem::compute is only virtual\n"); }

void EvalItem::combine() { Error("EvalItem::combine is only virtual\n"); }

FlatKernel EvalItem::flat_kernel() const { return nullptr; }

FlatKernel EvalItem::flat_end_kernel() const { return nullptr; }

void EvalItem::compute_next(unsigned) { Error("EvalItem::compute_next only virtual\n"); }

void EvalItem::rewrite() { Error("EvalItem::rewrite only virtual\n"); }

int EvalItem::is_bottom() { return 0; }

int EvalItem::extern_type_name() {
  Warning("EvalItem:extern_type_name: called on non extern type");
  return -1;
}

// Both walks keep their own stack: a graph may chain as many items as the
// program has equations.
void EvalItem::reset() {
  std::vector<EvalItem*> stack{this};
  while (!stack.empty()) {
    EvalItem* item = stack.back();
    stack.pop_back();
    if (item->mark == 0) continue;
    item->status = EI_NIL;
    item->mark = 0;
    item->local_reset();
    for (int k = item->nb_operands - 1; k >= 0; k--) stack.push_back(item->operands[k]);
  }
}

void EvalItem::reset_mark(unsigned key) {
  std::vector<EvalItem*> stack{this};
  while (!stack.empty()) {
    EvalItem* item = stack.back();
    stack.pop_back();
    if (item->mark == key) continue;
    item->mark = key;
    for (int k = item->nb_operands - 1; k >= 0; k--) stack.push_back(item->operands[k]);
  }
}

int EvalItem::demand_operands(unsigned key) {
  int s = EI_DEFINED;
  for (int k = 0; k < nb_operands; k++) {
    demand(operands[k], key);
    s |= operands[k]->status;
  }
  return s;
}

void check_clock(int status) {
  if (status == EI_DEFINED) return;
  fputs("clock takes on nil\n", stderr);
  FatalExit();
}
