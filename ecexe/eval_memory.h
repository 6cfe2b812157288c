// eval_memory.h -- the memory items, which carry values across instants:
// `last` (BLAST) and the first-instant flag (INIT) behind `->`. An instant
// computes them from their memorised state (recall); at its end the
// evaluator calls compute_next on every memory and only then rewrite on
// every memory (memorise), so all memories read the values of the instant
// that is ending. recall and memorise are written over views of cells
// (eval_rules.h), for the items and for the flat code alike.
#ifndef ECEXE_EVAL_MEMORY_H
#define ECEXE_EVAL_MEMORY_H

#include "ecexe/eval_rules.h"

// Operands 0 the expression, 1 its clock. Yields the expression's value at
// the last instant its clock was true, or nil before the clock was ever
// true (and again after a reset); a nil or divbyzero value is carried
// forward as its status.
class BlastItem : public EvalItem {
 public:
  void local_reset() override;
  void compute(unsigned) override { combine(); }
  void combine() override;
  // Demands the expression, then the clock.
  void compute_next(unsigned key) override;
  void rewrite() override;
  FlatKernel flat_kernel() const override { return &recall_flat<BlastItem>; }
  FlatKernel flat_end_kernel() const override { return &memorise_flat<BlastItem>; }
  static constexpr int end_arity = 2;

  // The memorised status and, when that is defined, the memorised value.
  template <class V>
  void recall(V& c) const {
    c.status() = memorised_status;
    if (memorised_status == EI_DEFINED) c.value() = memorised_value;
  }
  // Memorises the expression when the clock is true; a clock that is not
  // defined ends the process ("clock takes on nil").
  template <class V>
  void memorise(const V& c) {
    check_clock(c.st(1));
    if (c.op(1).i == 0) return;
    memorised_status = c.st(0);
    if (c.st(0) == EI_DEFINED) memorised_value = c.op(0);
  }

  int memorised_status;
  EvalValue memorised_value;

 protected:
  explicit BlastItem(EvalItemType type) : EvalItem(type, 2), memorised_status(EI_NIL) {
    memorised_value.x = 0;
  }
};

class BLAST_bool_EI : public BlastItem {
 public:
  BLAST_bool_EI() : BlastItem(EI_bool) {}
};

class BLAST_int_EI : public BlastItem {
 public:
  BLAST_int_EI() : BlastItem(EI_int) {}
};

class BLAST_double_EI : public BlastItem {
 public:
  BLAST_double_EI() : BlastItem(EI_double) {}
};

class BLAST_extern_EI : public BlastItem {
 public:
  explicit BLAST_extern_EI(int type_name) : BlastItem(EI_extern), type_name(type_name) {}
  int extern_type_name() override { return type_name; }
  const int type_name;
};

// Operand 0: a clock. True, and always defined, until the end of the first
// instant at which the clock is true (counting only instants at which this
// item was computed); false from then on until a reset.
class INIT_bool_EI : public EvalItem {
 public:
  INIT_bool_EI() : EvalItem(EI_bool, 1), first_instant(1) {}
  void local_reset() override;
  void compute(unsigned) override { combine(); }
  void combine() override;
  // Demands the clock; a clock that is not defined ends the process.
  void compute_next(unsigned key) override;
  void rewrite() override;
  FlatKernel flat_kernel() const override { return &recall_flat<INIT_bool_EI>; }
  FlatKernel flat_end_kernel() const override { return &memorise_flat<INIT_bool_EI>; }
  static constexpr int end_arity = 1;

  template <class V>
  void recall(V& c) const {
    c.value().i = first_instant;
    c.status() = EI_DEFINED;
  }
  // Lowers the flag when the item was last computed true and the clock is
  // true now; a clock that is not defined ends the process.
  template <class V>
  void memorise(V& c) {
    check_clock(c.st(0));
    if (c.value().i) first_instant = c.op(0).i == 0;
  }

  int first_instant;
};

#endif
