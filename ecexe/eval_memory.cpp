// eval_memory.cpp -- the two phases of the memory items through the items
// themselves. Nothing but memorise() changes a memory, so an abandoned
// instant (no rewrite) leaves every memory as it was.
#include "ecexe/eval_memory.h"

void BlastItem::local_reset() { memorised_status = EI_NIL; }

void BlastItem::combine() {
  ItemView view(this);
  recall(view);
}

void BlastItem::compute_next(unsigned key) {
  demand(operand(0), key);
  demand(operand(1), key);
}

void BlastItem::rewrite() {
  ItemView view(this);
  memorise(view);
}

void INIT_bool_EI::local_reset() { first_instant = 1; }

void INIT_bool_EI::combine() {
  ItemView view(this);
  recall(view);
}

void INIT_bool_EI::compute_next(unsigned key) {
  demand(operand(0), key);
  check_clock(operand(0)->status);
}

void INIT_bool_EI::rewrite() {
  ItemView view(this);
  memorise(view);
}
