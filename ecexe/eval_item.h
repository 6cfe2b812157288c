// eval_item.h -- the evaluation item, one node of the graph that runs an ec
// program: a value, a status and the step key of the instant it was last
// computed. Invariant: an item is computed at most once per instant, because
// every reader applies the demand rule (mark first, then compute).
#ifndef ECEXE_EVAL_ITEM_H
#define ECEXE_EVAL_ITEM_H

#include <cstddef>
#include <cstdint>

#include "foundations/block_pool.h"

// The type of an item's result; the codes are those the adapter reports.
enum EvalItemType {
  EI_bool = 1,
  EI_int = 2,
  EI_double = 3,  // the ec type real
  EI_extern = 4,  // an abstract type: one word, only copied and compared
};

// Status flags. A status is an OR of flags; 0 means the value is defined.
enum EvalStatusFlag {
  EI_DEFINED = 0,
  EI_NIL = 1,
  EI_DIVBYZERO = 4,
};

// The storage behind an item's location: bool and int in `i` (bool 0 or 1),
// real in `d`, an extern value in `x`. All members start at the same
// address, which is what callers write inputs through and read outputs from.
union EvalValue {
  int32_t i;
  double d;
  uintptr_t x;
};

class EvalItem {
 public:
  // A fresh item: status nil, mark 0, auxiliary word cleared, `nb_operands`
  // null operands that the builder fills in afterwards.
  EvalItem(EvalItemType type, int nb_operands);
  EvalItem(const EvalItem&) = delete;
  EvalItem& operator=(const EvalItem&) = delete;
  // Items and their operand arrays come from the pool, one after the other
  // in the order they are built: an item lives as long as its evaluator,
  // that is until the end, and an instant then walks compact memory rather
  // than the whole heap. Deleting an item frees nothing.
  static void* operator new(size_t size) { return pool_allocate(size); }
  static void operator delete(void*) {}
  virtual ~EvalItem();

  // Restores the item's own initial state (memories, constants); called by
  // reset(). The base does nothing.
  virtual void local_reset();
  // Brings value and status up to date for instant `key`. Never called on an
  // item whose mark already equals `key`: callers use demand(). The base is
  // fatal.
  virtual void compute(unsigned key);
  // Memories only: demands, for instant `key`, every operand that rewrite()
  // reads. The base is fatal.
  virtual void compute_next(unsigned key);
  // Memories only: commits the memory for the next instant. The base is fatal.
  virtual void rewrite();
  // compute() without the demand: combines the operands as they stand,
  // which must all be computed for the instant already. Every class's
  // compute() demands its operands (a memory: none) and then combines, so
  // a caller that computes operands first can call this instead and save
  // the demand. The base is fatal.
  virtual void combine();
  // Non-zero when the item has no value at this instant because its clock
  // is false (only outputs can be). The base returns 0.
  virtual int is_bottom();
  // The symbol of the extern type's name for extern items; the base warns
  // and returns -1.
  virtual int extern_type_name();

  // Back to the state before the first instant: status nil, mark 0,
  // local_reset(), then the operands in order. Stops at items whose mark is
  // already 0, which also ends walks around cycles through memories.
  void reset();
  // Sets the mark of the item and of everything below it to `key`, stopping
  // at items already marked `key`.
  void reset_mark(unsigned key);

  // The demand rule: computes `item` for instant `key` unless it already
  // was. The mark is set before computing so that a cycle through a memory
  // terminates.
  static void demand(EvalItem* item, unsigned key) {
    if (item->mark == key) return;
    item->mark = key;
    item->compute(key);
  }

  EvalItem* operand(int k) const { return operands[k]; }
  bool is_defined() const { return status == EI_DEFINED; }
  bool is_true() const { return value.i != 0; }

  // The class-wide serial counter: incremented by every construction.
  static int counter;

  const int nb_operands;
  // Filled by the builder; every entry must be non-null before the first
  // instant. Cycles are allowed only through memory items.
  EvalItem** const operands;
  // Free for the builder: declared constants keep their name string here.
  uintptr_t aux;
  const EvalItemType type;
  EvalValue value;
  int status;
  const int number;
  // Step key of the instant last computed; 0 = not since construction/reset.
  uint32_t mark;

 protected:
  // Demands every operand for `key` and returns the OR of their statuses.
  int demand_operands(unsigned key);
  // The OR of the operands' statuses, as they stand.
  int operands_status() const {
    // Most items are binary: no loop for them.
    if (nb_operands == 2) return operands[0]->status | operands[1]->status;
    int s = EI_DEFINED;
    for (int k = 0; k < nb_operands; k++) s |= operands[k]->status;
    return s;
  }
  // The strict rule on operands as they stand: status := OR of theirs. True
  // when all are defined, i.e. when the caller must now compute the value;
  // otherwise the value keeps what it held.
  bool strict() {
    status = operands_status();
    return status == EI_DEFINED;
  }
  // Takes value and status from `from` (a defined item gives its value; a
  // nil or divbyzero one only its status).
  void copy_from(const EvalItem* from);
};

// Ends the process when a clock is not defined: a clock must be true or
// false at every instant its memory or output is evaluated.
void check_clock(const EvalItem* clock);

#endif
