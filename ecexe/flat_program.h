// flat_program.h -- an evaluator's schedules compiled to flat code
// (flat_code.h). Each scheduled item gets a cell; an item whose class has a
// rule is computed in its cell only, so that an instant reads and writes
// two compact arrays instead of the items spread over memory. The other
// items (inputs, constants, memories, outputs, functions) are computed
// through their own fields as before: their operands' cells are first
// copied into the operand items, and the result is copied into the item's
// cell. Invariant: for an item with a rule, the cell holds the current
// value and status and the item's fields are stale until refresh().
#ifndef ECEXE_FLAT_PROGRAM_H
#define ECEXE_FLAT_PROGRAM_H

#include <cstdint>
#include <vector>

#include "ecexe/flat_code.h"

class FlatPrograms {
 public:
  // Cells for items numbered first_item to last_item at most.
  FlatPrograms(int first_item, int last_item);

  // Room for the cells of items numbered up to last_item, built since.
  void extend(int last_item);
  // Compiles a schedule (operands before their users) into a new program,
  // giving a cell to every item that has none; returns its number.
  // `memory` tells, by item number - first_item, which items are memories.
  int compile(const std::vector<EvalItem*>& schedule, const std::vector<char>& memory);
  // Compiles the end of an instant for `memories`, whose operands all have
  // cells: each memorises what its operands hold. Memories of one class
  // are grouped, as no memory reads what another memorises.
  int compile_end(const std::vector<EvalItem*>& memories);
  // Computes every item of a program for instant `key`, in order.
  void run(int program, unsigned key);
  // Whether a program ran since construction or its last reset().
  bool ran(int program) const { return programs[program].ran; }
  // Back to the state before the first instant for a program's items:
  // status nil, mark 0, then local_reset(), each item's cell following.
  void reset(int program);

  // Brings the fields of an item with a rule up to date from its cell;
  // does nothing for the others, whose fields are always current.
  void refresh(EvalItem* item);

 private:
  struct Run {
    FlatKernel kernel;  // null: computed through the items
    uint32_t first, last;
  };
  struct Program {
    std::vector<FlatInstr> code;
    std::vector<Run> runs;
    std::vector<EvalItem*> items;
    bool ran = false;
  };

  int cell_of(const EvalItem* item) const;
  // The cell of `item`, made if it has none; `kernel` is its class's.
  uint32_t add_cell(EvalItem* item, FlatKernel kernel);
  // Appends the instruction of `item`, whose cell is `cell`, with its first
  // `nb` operands, computed by `kernel`.
  void add_instr(Program& p, int cell, EvalItem* item, uint32_t nb, FlatKernel kernel);
  // refresh(), and marks the item as computed for `key`: an operand of an
  // item computed through its fields.
  void settle(EvalItem* item, unsigned key);
  // Computes items [first, last) of `program` through their own fields.
  void run_items(const Program& program, const Run& run, unsigned key);

  int first_item;
  std::vector<int> cells;  // by item number - first_item; -1: no cell
  std::vector<EvalItem*> owners;  // by cell
  std::vector<char> ruled;        // by cell: the cell is the truth
  std::vector<EvalValue> values;
  std::vector<int> statuses;
  std::vector<uint32_t> wide;
  std::vector<Program> programs;
};

#endif
