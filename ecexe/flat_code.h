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

// The dense arrays an instruction reads and writes.
struct FlatCells {
  EvalValue* values;
  int* statuses;
  const uint32_t* wide;
};

// An item's rule applied to cells: the same interface as ItemView
// (eval_rules.h), so that one rule serves both.
class FlatView {
 public:
  FlatView(const FlatInstr& instr, const FlatCells& cells) : in(instr), c(cells) {}
  int nb() const { return static_cast<int>(in.nb); }
  const EvalValue& op(int k) const { return c.values[slot(k)]; }
  int st(int k) const { return c.statuses[slot(k)]; }
  EvalValue& value() { return c.values[in.dst]; }
  int& status() { return c.statuses[in.dst]; }

 private:
  uint32_t slot(int k) const { return in.nb <= 3 ? in.op[k] : c.wide[in.op[0] + k]; }
  const FlatInstr& in;
  const FlatCells& c;
};

// Computes a run of instructions of class `Item` with its rule.
template <class Item>
void run_flat(const FlatInstr* first, const FlatInstr* last, const FlatCells& cells) {
  for (const FlatInstr* in = first; in != last; in++) {
    FlatView view(*in, cells);
    Item::rule(view);
  }
}

#endif
