// ecexe.cpp -- building the item graph of an ec program from its normalised
// network, and the end, abandonment and reset of its instants. A node is
// marked with its item before its operands are translated, so a cycle
// through a memory finds the item already there instead of recursing.
#include "ecexe/cfiles/ecexe.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "ecexe/eval_arith.h"
#include "ecexe/eval_func.h"
#include "ecexe/eval_logic.h"
#include "ecexe/eval_memory.h"
#include "ecexe/eval_terminal.h"
#include "ecexe/flat_program.h"
#include "foundations/deep_stack.h"
#include "foundations/errors.h"
#include "foundations/int_list.h"
#include "foundations/pty_stream.h"
#include "foundations/symbol_table.h"
#include "normalise/norm_net.h"

EcExe::EcExe() = default;

EcExe::EcExe(const char* file, SymbolTable* symbols) {
  if (init(file, symbols) != 0) FatalExit();
}

int EcExe::init(const char* file, SymbolTable* symbols) {
  // Every pass of the load recurses along the program's chains of
  // definitions, as deep as they go.
  int result = 1;
  run_on_deep_stack([&] {
    if (NetInterface::init(file, symbols, 0, 0) == 0) result = init_exe();
  });
  return result;
}

static ItemEntry* push_entry(ItemEntry* list, EvalItem* item) {
  return new ItemEntry{item, list, list ? list->index + 1 : 1};
}

void EcExe::split(Exp* flow, Exp** value, Exp** clock) {
  if (flow->nature == IF_n && flow->operands[2] == net->nil_exp) {
    *value = flow->operands[1];
    *clock = flow->operands[0];
  } else {
    *value = flow;
    *clock = net->true_exp;
  }
}

OutputItem* EcExe::new_output_item(EcType* type) {
  if (type == net->bool_type) return new OUTPUT_bool_EI();
  if (type == net->int_type) return new OUTPUT_int_EI();
  if (type == net->real_type) return new OUTPUT_double_EI();
  return new OUTPUT_extern_EI(type->name);
}

OutputItem* EcExe::sampled_item(Exp* flow, EcType* type) {
  Exp *value, *clock;
  split(flow, &value, &clock);
  EvalItem* v = exp_to_eval_item(value);
  if (!v) return nullptr;
  EvalItem* c = exp_to_eval_item(clock);
  if (!c) return nullptr;
  OutputItem* o = new_output_item(type);
  o->operands[0] = v;
  o->operands[1] = c;
  return o;
}

int EcExe::init_exe() {
  // The locals' nodes are looked up before any item is built: the lookup
  // reads the nodes' marks, which building items overwrites.
  std::vector<Exp*> local_flows;
  for (IntList* l = net->locals.list(); l; l = l->next) {
    local_names.push_back(l->value);
    local_flows.push_back(net->norm(l->value));
  }
  exe_key = take_a_key();
  first_item = EvalItem::counter + 1;
  input_items = new EvalItem*[nb_inputs + 1];
  for (int i = 0; i < nb_inputs; i++) {
    input_items[i] = exp_to_eval_item(input_nodes[i]);
    if (!input_items[i]) return 1;
  }
  memory_list = nullptr;
  constant_list = nullptr;

  output_items = new OutputItem*[nb_outputs + 1];
  for (int i = 0; i < nb_outputs; i++) {
    output_items[i] = sampled_item(output_nodes[i], net->get_ident_info(output_idents[i])->type);
    if (!output_items[i]) return 1;
  }

  assertion_items = new OutputItem*[nb_assertions + 1];
  for (int i = 0; i < nb_assertions; i++) {
    Exp *value, *clock;
    split(assertion_nodes[i], &value, &clock);
    if (net->type(value) != net->bool_type) {
      fprintf(stderr, "Assertions must be boolean expressions");
      return 1;
    }
    assertion_items[i] = sampled_item(assertion_nodes[i], net->bool_type);
    if (!assertion_items[i]) return 1;
  }

  // Every local's value and clock, whatever its definition: each equation
  // of the program then has its items, and every call of a random function
  // among them. The items that sample them wait until they are asked for.
  for (Exp* flow : local_flows) {
    Exp *value, *clock;
    split(flow, &value, &clock);
    local_values.push_back(exp_to_eval_item(value));
    local_clocks.push_back(exp_to_eval_item(clock));
    if (!local_values.back() || !local_clocks.back()) return 1;
  }

  nb_memories = memory_list ? memory_list->index : 0;
  memories = new EvalItem*[nb_memories + 1];
  for (ItemEntry* m = memory_list; m; m = m->next) memories[m->index - 1] = m->item;
  build_schedules();
  return 0;
}

namespace {

// Lists items in the order the demand rule computes them: an item after
// every operand its compute() demands. A memory's compute() demands
// nothing, so it closes the cycles that pass through it. Items are known by
// their serial numbers, which those of one evaluator share a range of.
//
// The walk also records what grouping needs of each item it meets (its
// operands' slots and its kernel) in dense arrays, so that grouping, a
// second pass over a large program, reads no item but its number.
class Scheduler {
 public:
  Scheduler(ItemEntry* memories, int first, int last)
      : first(first),
        state(last - first + 1, kUnseen),
        memory(last - first + 1, 0),
        operands_at(last - first + 1, 0),
        nb_operands(last - first + 1, 0),
        kernel(last - first + 1, nullptr) {
    for (ItemEntry* m = memories; m; m = m->next) memory[slot(m->item)] = 1;
  }

  // Adds what demanding `root` would compute, unless already listed.
  void demand(EvalItem* root, std::vector<EvalItem*>& out) {
    if (state[slot(root)] != kUnseen) return;
    meet(root);
    std::vector<std::pair<EvalItem*, int>> stack{{root, 0}};
    while (!stack.empty()) {
      EvalItem* item = stack.back().first;
      int& k = stack.back().second;
      if (memory[slot(item)] || k == item->nb_operands) {
        out.push_back(item);
        state[slot(item)] = kListed;
        stack.pop_back();
        continue;
      }
      EvalItem* operand = item->operands[k];
      operand_slots[operands_at[slot(item)] + k++] = slot(operand);
      if (state[slot(operand)] == kUnseen) {
        meet(operand);
        stack.push_back({operand, 0});
      }
    }
  }

  // What the end of an instant needs: each memory, newest first, which
  // memorises from its own cell (one that no output reads, in an equation
  // only a local shows, still keeps its state up to date), then its
  // operands in order.
  void demand_memories(ItemEntry* list, std::vector<EvalItem*>& out) {
    for (ItemEntry* m = list; m; m = m->next) {
      demand(m->item, out);
      for (int k = 0; k < m->item->nb_operands; k++) demand(m->item->operands[k], out);
    }
  }

  // Which items are memories, by serial number - first.
  const std::vector<char>& memories() const { return memory; }

  // Reorders a schedule into runs of items computed by one kernel, as few
  // as the dependencies allow, so that a run costs one call and the
  // processor is not asked to guess which code each item needs: list
  // scheduling that always takes every ready item of the kernel that has
  // the most. Operands still come before their users.
  void group(std::vector<EvalItem*>& schedule) {
    size_t n = schedule.size();
    std::vector<int> slots(n);
    std::vector<int> position(state.size(), -1);
    for (size_t i = 0; i < n; i++) {
      slots[i] = slot(schedule[i]);
      position[slots[i]] = static_cast<int>(i);
    }
    // The users of each item in this schedule, and how many operands each
    // user still waits for. A memory waits for nothing.
    std::vector<std::pair<int, int>> edges;  // (operand, user)
    edges.reserve(2 * n);
    for (size_t i = 0; i < n; i++) {
      int s = slots[i];
      if (memory[s]) continue;
      for (int k = operands_at[s]; k < operands_at[s] + nb_operands[s]; k++) {
        int from = position[operand_slots[k]];
        if (from >= 0) edges.push_back({from, static_cast<int>(i)});
      }
    }
    std::vector<int> waits(n, 0), first_user(n + 1, 0), users(edges.size());
    for (const auto& e : edges) {
      first_user[e.first + 1]++;
      waits[e.second]++;
    }
    for (size_t i = 0; i < n; i++) first_user[i + 1] += first_user[i];
    std::vector<int> next_user(first_user.begin(), first_user.end() - 1);
    for (const auto& e : edges) users[next_user[e.first]++] = e.second;

    std::vector<FlatKernel> kernels;
    std::vector<int> kind(n);
    for (size_t i = 0; i < n; i++) {
      FlatKernel k = kernel[slots[i]];
      auto at = std::find(kernels.begin(), kernels.end(), k);
      kind[i] = static_cast<int>(at - kernels.begin());
      if (at == kernels.end()) kernels.push_back(k);
    }
    std::vector<std::vector<int>> ready(kernels.size());
    for (size_t i = 0; i < n; i++)
      if (waits[i] == 0) ready[kind[i]].push_back(static_cast<int>(i));

    std::vector<EvalItem*> grouped;
    grouped.reserve(n);
    std::vector<int> run;
    while (grouped.size() < n) {
      size_t best = 0;
      for (size_t k = 1; k < ready.size(); k++)
        if (ready[k].size() > ready[best].size()) best = k;
      // Nothing ready with items left: they wait on one another through no
      // memory, which the load refuses before the items are built.
      if (ready.empty() || ready[best].empty()) IError("Scheduler::group : a cycle without a memory");
      run.swap(ready[best]);
      for (int i : run) {
        grouped.push_back(schedule[i]);
        for (int u = first_user[i]; u < first_user[i + 1]; u++)
          if (--waits[users[u]] == 0) ready[kind[users[u]]].push_back(users[u]);
      }
      run.clear();
    }
    schedule.swap(grouped);
  }

 private:
  static constexpr int kUnseen = -2;
  static constexpr int kPending = -1;  // on the way down, not listed yet
  static constexpr int kListed = 0;

  int slot(const EvalItem* item) const { return item->number - first; }

  // The walk reaches `item` for the first time: room for its operands'
  // slots (a memory's are not walked), and its kernel.
  void meet(EvalItem* item) {
    int s = slot(item);
    state[s] = kPending;
    kernel[s] = item->flat_kernel();
    if (memory[s]) return;
    operands_at[s] = static_cast<int>(operand_slots.size());
    nb_operands[s] = item->nb_operands;
    operand_slots.resize(operand_slots.size() + item->nb_operands);
  }

  int first;
  std::vector<int> state;    // kUnseen, kPending or kListed
  std::vector<char> memory;  // whether an item is a memory
  // The operands of the item in slot s met by the walk:
  // operand_slots[operands_at[s] .. + nb_operands[s]).
  std::vector<int> operands_at, nb_operands, operand_slots;
  std::vector<FlatKernel> kernel;  // by slot
};

}  // namespace

void EcExe::build_schedules() {
  Scheduler scheduler(memory_list, first_item, EvalItem::counter);
  for (int i = 0; i < nb_assertions; i++) scheduler.demand(assertion_items[i], output_schedule);
  for (int i = 0; i < nb_outputs; i++) scheduler.demand(output_items[i], output_schedule);
  for (EvalItem* r : random_items) scheduler.demand(r, output_schedule);
  scheduler.demand_memories(memory_list, memory_schedule);
  // Random functions draw in the order items are computed: only without
  // them is any order that computes operands first the same.
  if (!draws_random) {
    scheduler.group(output_schedule);
    scheduler.group(memory_schedule);
  }
  flat = new FlatPrograms(first_item, EvalItem::counter);
  outputs_program = flat->compile(output_schedule, scheduler.memories());
  memory_program = flat->compile(memory_schedule, scheduler.memories());
  std::vector<EvalItem*> newest_first;
  for (ItemEntry* m = memory_list; m; m = m->next) newest_first.push_back(m->item);
  end_program = flat->compile_end(newest_first);
}

// What the memories need, computed from scratch: an instant whose outputs
// were not computed.
int EcExe::memory_alone() {
  if (memory_alone_program >= 0) return memory_alone_program;
  Scheduler scheduler(memory_list, first_item, EvalItem::counter);
  std::vector<EvalItem*> schedule;
  for (EvalItem* r : random_items) scheduler.demand(r, schedule);
  scheduler.demand_memories(memory_list, schedule);
  if (!draws_random) scheduler.group(schedule);
  memory_alone_program = flat->compile(schedule, scheduler.memories());
  return memory_alone_program;
}

void EcExe::build_locals() {
  if (locals_program >= 0) return;
  for (size_t i = 0; i < local_names.size(); i++) {
    OutputItem* o = new_output_item(net->get_ident_info(local_names[i])->type);
    o->operands[0] = local_values[i];
    o->operands[1] = local_clocks[i];
    o->shows_local = true;
    local_outputs.push_back(o);
  }
  flat->extend(EvalItem::counter);
  build_locals_programs();
}

// The locals' program computes what the outputs' program left; the end of
// an instant that ran both then computes only what neither did. No random
// call is left to either: the outputs' program draws them all.
void EcExe::build_locals_programs() {
  Scheduler scheduler(memory_list, first_item, EvalItem::counter);
  std::vector<EvalItem*> computed, locals, memory;
  for (int i = 0; i < nb_assertions; i++) scheduler.demand(assertion_items[i], computed);
  for (int i = 0; i < nb_outputs; i++) scheduler.demand(output_items[i], computed);
  for (EvalItem* r : random_items) scheduler.demand(r, computed);
  for (OutputItem* l : local_outputs) scheduler.demand(l, locals);
  scheduler.demand_memories(memory_list, memory);
  scheduler.group(locals);
  scheduler.group(memory);
  locals_program = flat->compile(locals, scheduler.memories());
  memory_after_locals_program = flat->compile(memory, scheduler.memories());
}

void EcExe::compute_outputs(unsigned key) {
  flat->run(outputs_program, key);
  outputs_key = key;
}

void EcExe::compute_locals(unsigned key) {
  build_locals();
  flat->run(locals_program, key);
  locals_key = key;
}

EvalItem* EcExe::exp_to_eval_item(Exp* e) {
  if (static_cast<unsigned>(e->mark) == exe_key)
    return static_cast<EvalItem*>(e->get_ptr_info(static_cast<int>(exe_key)));
  if (e->nature < 0 || e->nature >= NB_EXP_NATURES) {
    fprintf(stderr, "unexpected operator: %d\n", static_cast<int>(e->nature));
    return nullptr;
  }
  EvalItem* item = new_item(e);
  if (!item) return nullptr;
  e->mark = static_cast<int>(exe_key);
  e->put_info(static_cast<int>(exe_key), item);
  if (!fill_operands(e, item)) return nullptr;
  return item;
}

bool EcExe::fill_operands(Exp* e, EvalItem* item) {
  Exp* ops[2];
  Exp** from = e->operands;
  int count = e->arity;
  if (e->nature == LAST_n) {
    split(e->operands[0], &ops[0], &ops[1]);
    from = ops;
    count = 2;
  } else if (e->nature == CALL_n && e->operands[0]->nature == TUPLE_n) {
    from = e->operands[0]->operands;
    count = e->operands[0]->arity;
  }
  if (count != item->nb_operands)
    IError("EcExe::exp_to_eval_item : %s has %d operands, its item %d", nodekey(e->nature),
           count, item->nb_operands);
  for (int k = 0; k < count; k++) {
    item->operands[k] = exp_to_eval_item(from[k]);
    if (!item->operands[k]) return false;
  }
  return true;
}

// One item class per value type; the extern class takes the type's name.
template <class B, class I, class D, class X>
static EvalItem* by_type(Net* net, EcType* t) {
  if (t == net->bool_type) return new B();
  if (t == net->int_type) return new I();
  if (t == net->real_type) return new D();
  return new X(t->name);
}

template <class I, class D>
static EvalItem* int_or_double(Net* net, EcType* t) {
  if (t == net->int_type) return new I();
  return new D();
}

EvalItem* EcExe::new_item(Exp* e) {
  Exp** op = e->operands;
  switch (e->nature) {
    case CONST_n:
      return new_const_item(e);
    case INPUT_n: {
      EcType* t = net->type(e);
      if (t == net->bool_type) return new INPUT_bool_EI(e->ident);
      if (t == net->int_type) return new INPUT_int_EI(e->ident);
      if (t == net->real_type) return new INPUT_double_EI(e->ident);
      return new INPUT_extern_EI(e->ident, t->name);
    }
    case NOT_n:
      return new NOT_bool_EI();
    case UMINUS_n:
      return int_or_double<UMINUS_int_EI, UMINUS_double_EI>(net, net->type(e));
    case LAST_n: {
      EvalItem* m = by_type<BLAST_bool_EI, BLAST_int_EI, BLAST_double_EI, BLAST_extern_EI>(
          net, net->type(e));
      memory_list = push_entry(memory_list, m);
      return m;
    }
    case INIT_n: {
      EvalItem* m = new INIT_bool_EI();
      memory_list = push_entry(memory_list, m);
      return m;
    }
    case AND_n:
      return new AND_bool_EI();
    case OR_n:
      return new OR_bool_EI();
    case IMPL_n:
      return new IMPL_bool_EI();
    case XOR_n:
      return new NE_bool_EI();
    case EQUAL_n:
      return by_type<EQ_bool_EI, EQ_int_EI, EQ_double_EI, EQ_extern_EI>(net, net->type(op[1]));
    case NEQ_n:
      return by_type<NE_bool_EI, NE_int_EI, NE_double_EI, NE_extern_EI>(net, net->type(op[1]));
    case GTE_n:
      return int_or_double<GE_int_EI, GE_double_EI>(net, net->type(op[0]));
    case GT_n:
      return int_or_double<GT_int_EI, GT_double_EI>(net, net->type(op[0]));
    case LTE_n:
      return int_or_double<LE_int_EI, LE_double_EI>(net, net->type(op[0]));
    case LT_n:
      return int_or_double<LT_int_EI, LT_double_EI>(net, net->type(op[0]));
    case PLUS_n:
      return int_or_double<PLUS_int_EI, PLUS_double_EI>(net, net->type(e));
    case MINUS_n:
      return int_or_double<MINUS_int_EI, MINUS_double_EI>(net, net->type(e));
    case TIMES_n:
      return int_or_double<TIMES_int_EI, TIMES_double_EI>(net, net->type(e));
    case DIV_n:
      return new DIV_int_EI();
    case MOD_n:
      return new MOD_int_EI();
    case SLASH_n:
      return int_or_double<DIV_int_EI, DIV_double_EI>(net, net->type(e));
    case IF_n:
      return by_type<COND_bool_EI, COND_int_EI, COND_double_EI, COND_extern_EI>(
          net, net->type(op[1]));
    case NOR_n:
      return new NOR_bool_EI(e->arity);
    case DIESE_n:
      return new DIESE_bool_EI(e->arity);
    case CALL_n:
      return new_call_item(e);
    default:
      fprintf(stderr, "unexpected operator: %s\n", nodekey(e->nature));
      return nullptr;
  }
}

// A declared constant's item: its value is not known here.
static EvalItem* new_declared_const(Net* net, EcType* t) {
  if (t == net->bool_type) return new CONST_bool_EI(false);
  if (t == net->int_type) return new CONST_int_EI(0);
  if (t == net->real_type) return new CONST_double_EI(0.0);
  return new CONST_extern_EI(t->name, 0);
}

EvalItem* EcExe::new_const_item(Exp* e) {
  if (e == net->true_exp) return new CONST_bool_EI(true);
  if (e == net->false_exp) return new CONST_bool_EI(false);
  IdentInfo* info = net->get_ident_info(e->ident);
  const char* name = net->symbols->text(e->ident);
  switch (info ? info->mode : INPUT_ID) {
    case INT_CONST_ID:
      return new CONST_int_EI(static_cast<int32_t>(info->value.int_value));
    case REAL_CONST_ID:
      // Real literals carry single precision only, by design.
      return new CONST_double_EI(static_cast<double>(info->value.real_value));
    case CONST_ID: {
      EvalItem* c = new_declared_const(net, info->type);
      // Its value is the host's business: nil until a reset defines it.
      c->status = EI_NIL;
      c->aux = reinterpret_cast<uintptr_t>(name);
      constant_list = push_entry(constant_list, c);
      return c;
    }
    default:
      fprintf(stderr, "unexpected constant '%s'\n", name);
      return nullptr;
  }
}

EvalItem* EcExe::new_call_item(Exp* e) {
  const char* name = net->symbols->text(e->param);
  Exp* arg = e->operands[0];
  EcType* in = net->type(arg);
  EcType* out = net->type(e);
  if (arg->nature == TUPLE_n && arg->arity == 2 && net->type(arg->operands[0]) == net->int_type &&
      net->type(arg->operands[1]) == net->int_type && out == net->int_type &&
      strcmp(name, "random_int") == 0) {
    draws_random = true;
    random_items.push_back(new BFUNC_int_EI(random_int));
    return random_items.back();
  }
  if (in == net->real_type && out == net->int_type && strcmp(name, "real2int") == 0)
    return new REAL2INT_int_EI();
  if (in == net->int_type && out == net->real_type && strcmp(name, "int2real") == 0)
    return new INT2REAL_double_EI();
  if (in == net->real_type && out == net->real_type) {
    UFUNC_double_EI::Function f = find_real_function(name);
    if (f) return new UFUNC_double_EI(f);
  }
  if (in == net->bool_type && out == net->bool_type && strcmp(name, "random_bool") == 0) {
    draws_random = true;
    random_items.push_back(new UFUNC_bool_EI(random_bool));
    return random_items.back();
  }
  fprintf(stderr, "Unsupported function :\n");
  PtyStream* err = new PtyStream(stderr, 80, nullptr);
  print_func_decl(e->param, err);
  err->flush();
  Error("%s", "");
}

void EcExe::end_step() {
  int program = memory_program;
  if (outputs_key != step_key) program = memory_alone();
  else if (locals_key == step_key) program = memory_after_locals_program;
  flat->run(program, step_key);
  flat->run(end_program, step_key);
  in_step = 0;
}

int EcExe::abort_step() {
  if (!in_step) return 1;
  step_key--;
  for (int i = 0; i < nb_assertions; i++) assertion_items[i]->reset_mark(step_key);
  for (int i = 0; i < nb_outputs; i++) output_items[i]->reset_mark(step_key);
  if (locals_key > step_key)
    for (OutputItem* l : local_outputs) l->reset_mark(step_key);
  // The instant run again with the same key computes all over again.
  outputs_key = locals_key = 0;
  in_step = 0;
  return 0;
}

void EcExe::reset_history() {
  for (int i = 0; i < nb_assertions; i++) assertion_items[i]->reset();
  for (int i = 0; i < nb_outputs; i++) output_items[i]->reset();
  for (OutputItem* l : local_outputs) l->reset();
  // The walks above stop at items computed in cells only, whose marks
  // never moved: those of every program that ran are reset here.
  for (int p : {outputs_program, memory_program, memory_alone_program, locals_program,
                memory_after_locals_program})
    if (p >= 0 && flat->ran(p)) flat->reset(p);
  step_key = 0;
  // Keys start again from 1: an instant of the new history must not pass
  // for one whose outputs or locals were computed.
  outputs_key = locals_key = 0;
}
