// eval_logic.cpp -- compute() of the boolean, comparison and selection
// items. The three-valued rules look at statuses only after every operand
// has been demanded, so that what a rule ignores is still computed.
#include "ecexe/eval_logic.h"

namespace {

const EvalItem* left(const EvalItem* item) { return item->operand(0); }
const EvalItem* right(const EvalItem* item) { return item->operand(1); }

// A defined operand holding `truth`: the operand that decides AND (false),
// OR (true) or either side of IMPL.
bool holds(const EvalItem* operand, bool truth) {
  return operand->is_defined() && operand->is_true() == truth;
}

}  // namespace

void EQ_bool_EI::combine() {
  if (!strict()) return;
  value.i = left(this)->is_true() == right(this)->is_true();
}

void EQ_int_EI::combine() {
  if (!strict()) return;
  value.i = left(this)->value.i == right(this)->value.i;
}

void EQ_double_EI::combine() {
  if (!strict()) return;
  value.i = left(this)->value.d == right(this)->value.d;
}

void EQ_extern_EI::combine() {
  if (!strict()) return;
  value.i = left(this)->value.x == right(this)->value.x;
}

void NE_bool_EI::combine() {
  if (!strict()) return;
  value.i = left(this)->is_true() != right(this)->is_true();
}

void NE_int_EI::combine() {
  if (!strict()) return;
  value.i = left(this)->value.i != right(this)->value.i;
}

void NE_double_EI::combine() {
  if (!strict()) return;
  value.i = left(this)->value.d != right(this)->value.d;
}

void NE_extern_EI::combine() {
  if (!strict()) return;
  value.i = left(this)->value.x != right(this)->value.x;
}

void AND_bool_EI::combine() {
  int s = operands_status();
  if (holds(left(this), false) || holds(right(this), false)) {
    value.i = 0;
    status = EI_DEFINED;
    return;
  }
  status = s;
  if (s == EI_DEFINED) value.i = 1;
}

void OR_bool_EI::combine() {
  int s = operands_status();
  if (holds(left(this), true) || holds(right(this), true)) {
    value.i = 1;
    status = EI_DEFINED;
    return;
  }
  status = s;
  if (s == EI_DEFINED) value.i = 0;
}

void IMPL_bool_EI::combine() {
  int s = operands_status();
  if (holds(left(this), false) || holds(right(this), true)) {
    value.i = 1;
    status = EI_DEFINED;
    return;
  }
  status = s;
  if (s == EI_DEFINED) value.i = 0;
}

void NOT_bool_EI::combine() {
  if (!strict()) return;
  value.i = !left(this)->is_true();
}

namespace {

// The number of true operands of `item`, all of them defined.
int count_true(const EvalItem* item) {
  int count = 0;
  for (int k = 0; k < item->nb_operands; k++) count += item->operand(k)->is_true();
  return count;
}

}  // namespace

void DIESE_bool_EI::combine() {
  if (!strict()) return;
  value.i = count_true(this) <= 1;
}

void NOR_bool_EI::combine() {
  if (!strict()) return;
  value.i = count_true(this) == 0;
}

void CondItem::combine() {
  const EvalItem* cond = operand(0);
  if (!cond->is_defined()) {
    status = cond->status;
    return;
  }
  copy_from(cond->is_true() ? operand(1) : operand(2));
}
