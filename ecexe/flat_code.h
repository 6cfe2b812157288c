// flat_code.h -- an instant's work as a flat list of instructions over
// dense arrays: the values and statuses of the items a schedule computes
// sit side by side in two arrays, one cell per item, and an instruction
// names the cell it writes and the cells of its operands. Consecutive
// instructions of one class form a run, computed by one call of that
// class's kernel. Items keep their own fields for everything else; the
// cells are the current values only of items whose class has a rule.
#ifndef ECEXE_FLAT_CODE_H
#define ECEXE_FLAT_CODE_H

#include <cstdint>

#include "ecexe/eval_item.h"

// One item to compute: the cell it writes and those of its operands. Up to
// three operands are listed in place; more are in the program's `wide`
// array from index op[0] on.
struct FlatInstr {
  uint32_t dst;
  uint32_t nb;
  uint32_t op[3];
};

// The dense arrays an instruction reads and writes, and the item of each
// cell, for the classes that keep state of their own (memories).
struct FlatCells {
  EvalValue* values;
  int* statuses;
  const uint32_t* wide;
  EvalItem* const* owners;
};

// An item's rule applied to cells: the same interface as ItemView
// (eval_rules.h), so that one rule serves both. `Arity` is the number of
// operands when the class fixes it, -1 when each item has its own. The
// view keeps copies of what it reads, which tells the compiler that
// writing a cell changes neither the instruction nor the arrays' places.
template <int Arity>
class FlatView {
 public:
  FlatView(const FlatInstr& instr, const FlatCells& cells)
      : in(instr), values(cells.values), statuses(cells.statuses), wide(cells.wide) {}
  int nb() const { return Arity >= 0 ? Arity : static_cast<int>(in.nb); }
  const EvalValue& op(int k) const { return values[slot(k)]; }
  int st(int k) const { return statuses[slot(k)]; }
  EvalValue& value() { return values[in.dst]; }
  int& status() { return statuses[in.dst]; }

 private:
  uint32_t slot(int k) const {
    if (Arity >= 0 && Arity <= 3) return in.op[k];
    return in.nb <= 3 ? in.op[k] : wide[in.op[0] + k];
  }
  const FlatInstr in;
  EvalValue* const values;
  int* const statuses;
  const uint32_t* const wide;
};

// Computes a run of instructions of class `Item` with its rule.
template <class Item>
inline void run_flat(const FlatInstr* first, const FlatInstr* last, const FlatCells& cells) {
  for (const FlatInstr* in = first; in != last; in++) {
    FlatView<Item::arity> view(*in, cells);
    Item::rule(view);
  }
}

// A run of memories of class `Item` taking their values from their
// memorised state, at the start of an instant.
template <class Item>
inline void recall_flat(const FlatInstr* first, const FlatInstr* last, const FlatCells& cells) {
  for (const FlatInstr* in = first; in != last; in++) {
    FlatView<0> view(*in, cells);
    static_cast<Item*>(cells.owners[in->dst])->recall(view);
  }
}

// A run of memories of class `Item` memorising their operands, at the end
// of an instant.
template <class Item>
inline void memorise_flat(const FlatInstr* first, const FlatInstr* last, const FlatCells& cells) {
  for (const FlatInstr* in = first; in != last; in++) {
    FlatView<Item::end_arity> view(*in, cells);
    static_cast<Item*>(cells.owners[in->dst])->memorise(view);
  }
}

#endif
