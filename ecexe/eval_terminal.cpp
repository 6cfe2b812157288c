// eval_terminal.cpp -- compute() of constants, inputs and outputs.
// Only outputs look at a clock; constants and inputs have no operands.
#include "ecexe/eval_terminal.h"

void ConstItem::local_reset() { status = EI_DEFINED; }

void ConstItem::combine() {}

void InputItem::combine() { status = EI_DEFINED; }

void OutputItem::combine() {
  const EvalItem* clock = operand(1);
  if (shows_local && clock->status != EI_DEFINED) {
    absent = 0;
    status = clock->status;
    return;
  }
  check_clock(clock->status);
  if (!clock->is_true()) {
    absent = 1;
    return;
  }
  absent = 0;
  value = operand(0)->value;
  status = operand(0)->status;
}
