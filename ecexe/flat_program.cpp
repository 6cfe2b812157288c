// flat_program.cpp -- compiling schedules to runs of flat instructions and
// running them. Items with a rule never touch their own fields during an
// instant; the others are computed as the item graph computes them, with
// their operands' fields brought up to date from the cells first.
#include "ecexe/flat_program.h"

#include <algorithm>

#include "foundations/errors.h"

FlatPrograms::FlatPrograms(int first_item, int last_item)
    : first_item(first_item), cells(last_item - first_item + 1, -1) {
  owners.reserve(cells.size());
  ruled.reserve(cells.size());
  values.reserve(cells.size());
  statuses.reserve(cells.size());
}

void FlatPrograms::extend(int last_item) {
  if (last_item - first_item + 1 > static_cast<int>(cells.size())) cells.resize(last_item - first_item + 1, -1);
}

int FlatPrograms::cell_of(const EvalItem* item) const { return cells[item->number - first_item]; }

uint32_t FlatPrograms::add_cell(EvalItem* item, FlatKernel kernel) {
  int& cell = cells[item->number - first_item];
  if (cell < 0) {
    cell = static_cast<int>(owners.size());
    owners.push_back(item);
    ruled.push_back(kernel != nullptr);
    values.push_back(item->value);
    statuses.push_back(item->status);
  }
  return static_cast<uint32_t>(cell);
}

int FlatPrograms::compile(const std::vector<EvalItem*>& schedule, const std::vector<char>& memory) {
  Program p;
  p.code.reserve(schedule.size());
  p.items.reserve(schedule.size());
  for (EvalItem* item : schedule) {
    // Operands come first, so they have cells already. A memory reads its
    // operands only at the end of the instant, and they may come after it:
    // it has none here.
    bool is_memory = memory[item->number - first_item];
    FlatKernel kernel = item->flat_kernel();
    add_instr(p, add_cell(item, kernel), item, is_memory ? 0 : item->nb_operands, kernel);
  }
  programs.push_back(std::move(p));
  return static_cast<int>(programs.size()) - 1;
}

int FlatPrograms::compile_end(const std::vector<EvalItem*>& memories) {
  std::vector<FlatKernel> kernels;
  for (EvalItem* m : memories)
    if (std::find(kernels.begin(), kernels.end(), m->flat_end_kernel()) == kernels.end())
      kernels.push_back(m->flat_end_kernel());
  Program p;
  for (FlatKernel kernel : kernels)
    for (EvalItem* m : memories)
      if (m->flat_end_kernel() == kernel) add_instr(p, cell_of(m), m, m->nb_operands, kernel);
  programs.push_back(std::move(p));
  return static_cast<int>(programs.size()) - 1;
}

void FlatPrograms::add_instr(Program& p, int cell, EvalItem* item, uint32_t nb, FlatKernel kernel) {
  if (cell < 0) IError("FlatPrograms::add_instr : item %d has no cell", item->number);
  FlatInstr in{};
  in.dst = static_cast<uint32_t>(cell);
  in.nb = nb;
  if (nb > 3) in.op[0] = static_cast<uint32_t>(wide.size());
  for (uint32_t k = 0; k < nb; k++) {
    int cell = cell_of(item->operands[k]);
    if (cell < 0) IError("FlatPrograms::add_instr : operand %u of item %d has no cell", k, item->number);
    if (nb > 3)
      wide.push_back(static_cast<uint32_t>(cell));
    else
      in.op[k] = static_cast<uint32_t>(cell);
  }
  uint32_t at = static_cast<uint32_t>(p.code.size());
  p.code.push_back(in);
  p.items.push_back(item);
  if (!p.runs.empty() && p.runs.back().kernel == kernel)
    p.runs.back().last = at + 1;
  else
    p.runs.push_back(Run{kernel, at, at + 1});
}

void FlatPrograms::run(int program, unsigned key) {
  Program& p = programs[program];
  const FlatCells c{values.data(), statuses.data(), wide.data(), owners.data()};
  const FlatInstr* code = p.code.data();
  for (const Run& r : p.runs) {
    if (r.kernel)
      r.kernel(code + r.first, code + r.last, c);
    else
      run_items(p, r, key);
  }
  p.ran = true;
}

void FlatPrograms::run_items(const Program& p, const Run& r, unsigned key) {
  for (uint32_t i = r.first; i < r.last; i++) {
    EvalItem* item = p.items[i];
    const FlatInstr& in = p.code[i];
    for (uint32_t k = 0; k < in.nb; k++) settle(item->operands[k], key);
    item->mark = key;
    item->combine();
    values[in.dst] = item->value;
    statuses[in.dst] = item->status;
  }
}

void FlatPrograms::reset(int program) {
  Program& p = programs[program];
  for (EvalItem* item : p.items) {
    item->status = EI_NIL;
    item->mark = 0;
    item->local_reset();
    int cell = cell_of(item);
    values[cell] = item->value;
    statuses[cell] = item->status;
  }
  p.ran = false;
}

void FlatPrograms::refresh(EvalItem* item) {
  int cell = cell_of(item);
  if (cell < 0 || !ruled[cell]) return;
  item->value = values[cell];
  item->status = statuses[cell];
}

void FlatPrograms::settle(EvalItem* item, unsigned key) {
  refresh(item);
  item->mark = key;
}
