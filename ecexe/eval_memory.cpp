// eval_memory.cpp -- the two phases of the memory items: compute() reads
// the memorised state during an instant, rewrite() replaces it once the
// instant is over. Nothing else changes a memory, so an abandoned instant
// (no rewrite) leaves every memory as it was.
#include "ecexe/eval_memory.h"

void BlastItem::local_reset() { memorised_status = EI_NIL; }

void BlastItem::combine() {
  status = memorised_status;
  if (memorised_status == EI_DEFINED) value = memorised_value;
}

void BlastItem::compute_next(unsigned key) {
  demand(operand(0), key);
  demand(operand(1), key);
}

void BlastItem::rewrite() {
  const EvalItem* clock = operand(1);
  check_clock(clock);
  if (!clock->is_true()) return;
  const EvalItem* expr = operand(0);
  memorised_status = expr->status;
  if (expr->is_defined()) memorised_value = expr->value;
}

void INIT_bool_EI::local_reset() { first_instant = 1; }

void INIT_bool_EI::combine() {
  value.i = first_instant;
  status = EI_DEFINED;
}

void INIT_bool_EI::compute_next(unsigned key) {
  demand(operand(0), key);
  check_clock(operand(0));
}

void INIT_bool_EI::rewrite() {
  if (is_true()) first_instant = !operand(0)->is_true();
}
