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

struct FlatInstr;
struct FlatCells;
using FlatKernel = void (*)(const FlatInstr* first, const FlatInstr* last, const FlatCells& cells);

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
  // Non-zero when the item has no value at this instant because its clock
  // is false (only outputs can be). The base returns 0.
  virtual int is_bottom();
  // The symbol of the extern type's name for extern items; the base warns
  // and returns -1.
  virtual int extern_type_name();

  // The operations below come after the ones above in the virtual table,
  // so that those keep their places.

  // compute() without the demand: combines the operands as they stand,
  // which must all be computed for the instant already. Every class's
  // compute() demands its operands (a memory: none) and then combines, so
  // a caller that computes operands first can call this instead and save
  // the demand. The base is fatal.
  virtual void combine();
  // The kernel that computes items of this class in dense cells
  // (flat_code.h), or null for a class whose computation needs the item
  // itself (its own state, a clock check, a function): those are computed
  // through their items. The base returns null.
  virtual FlatKernel flat_kernel() const;
  // Memories only: the kernel that ends an instant for memories of this
  // class in cells, as compute_next() and rewrite() do through the items.
  // The base returns null.
  virtual FlatKernel flat_end_kernel() const;

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
};

// Ends the process when a clock's status is not defined: a clock must be
// true or false at every instant its memory or output is evaluated.
void check_clock(int status);

#endif
