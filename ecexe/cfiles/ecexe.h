// ecexe.h -- the evaluator of an ec program: its normalised network turned
// into a graph of evaluation items, driven one instant at a time. Invariant:
// one item per network node (the node's mark under the exe key says it has
// one), so a node shared by several flows is computed once an instant.
#ifndef ECEXE_CFILES_ECEXE_H
#define ECEXE_CFILES_ECEXE_H

#include <vector>

#include "ecexe/eval_item.h"
#include "normalise/net_interface.h"

class FlatPrograms;
class OutputItem;
class SymbolTable;

// A list of items, newest first; an entry's index is 1 + the index of the
// entry below it, so the head's index is the length.
struct ItemEntry {
  EvalItem* item;
  ItemEntry* next;
  int index;
};

class EcExe : public NetInterface {
 public:
  // An empty evaluator, to be given a program by init().
  EcExe();
  // Reads, normalises and builds the program; any failure ends the process
  // with status 1.
  EcExe(const char* file, SymbolTable* symbols);

  // The network interface of `file`, then its items; 0 on success, 1 after
  // a failure already reported on standard error.
  int init(const char* file, SymbolTable* symbols);
  // Builds the items of the inputs, outputs, assertions and locals and,
  // through them, of every node they depend on. 0 on success, 1 on failure.
  int init_exe();
  // The item of node e, built on first request together with its operands;
  // null when e or one of its operands cannot be evaluated.
  EvalItem* exp_to_eval_item(Exp* e);

  // Computes, for instant `key`, what the assertions and outputs need, in
  // the order demanding them would (assertions, then outputs), then every
  // call of a random function that they did not need: every call draws at
  // every instant, so that what else is computed never moves a draw.
  void compute_outputs(unsigned key);
  // Builds, once, the items that sample the locals (local_outputs) and the
  // programs that compute them: a program whose locals nobody looks at
  // never pays for them.
  void build_locals();
  // Computes every local for instant `key`, after compute_outputs(key):
  // what the outputs did not need is computed here. Calls build_locals().
  void compute_locals(unsigned key);
  // Commits every memory for the next instant and closes the instant.
  void end_step();
  // Abandons the open instant: the next one reuses its step key, so every
  // item is computed again from the untouched memories. 1 when no instant
  // is open.
  int abort_step();
  // Back to the first instant: every item reset, step key 0.
  void reset_history();

  unsigned exe_key = 0;
  // Every declared local, in declaration order: its name, the items of its
  // value and its clock, and (after build_locals()) an item that samples
  // the value on the clock as an output's does, so that it is absent where
  // its clock is false. A local that only names another flow or a
  // constant has them too.
  std::vector<int> local_names;
  std::vector<EvalItem*> local_values, local_clocks;
  std::vector<OutputItem*> local_outputs;
  EvalItem** input_items = nullptr;   // nb_inputs entries
  OutputItem** output_items = nullptr;  // nb_outputs entries
  OutputItem** assertion_items = nullptr;  // nb_assertions entries
  ItemEntry* memory_list = nullptr;
  ItemEntry* constant_list = nullptr;
  EvalItem** memories = nullptr;  // the memory list in creation order
  int nb_memories = 0;
  unsigned step_key = 0;  // 0 before the first instant and after a reset
  int in_step = 0;        // 1 between the opening of an instant and its end

  // The items an instant computes, operands first: what the assertions,
  // outputs and random calls need, then the memories and what they read at
  // the end of an instant that the outputs did not need. Each is computed once, as demanding the tops
  // would, but without recursion however deep the graph. With random
  // functions the order is that of demand, in which they draw; without
  // them, items computed by one kernel are brought together (any order
  // with operands first then computes the same).
  std::vector<EvalItem*> output_schedule;
  std::vector<EvalItem*> memory_schedule;
  // The schedules compiled to flat code, and the program that computes
  // what the memories need when the outputs were not computed (built on
  // first use): numbers of programs in `flat`.
  FlatPrograms* flat = nullptr;
  int outputs_program = -1;
  int memory_program = -1;
  int memory_alone_program = -1;
  int end_program = -1;  // what the memories memorise
  unsigned outputs_key = 0;  // the instant compute_outputs() last ran for
  // What the locals need beyond the outputs, and then what the memories
  // need beyond both (built on first use of compute_locals()).
  int locals_program = -1;
  int memory_after_locals_program = -1;
  unsigned locals_key = 0;  // the instant compute_locals() last ran for
  bool draws_random = false;  // some item calls random_int or random_bool
  std::vector<EvalItem*> random_items;  // the calls of random functions
  int first_item = 0;         // serial number of the first item built

 private:
  // The value node and the clock node of a flow sampled on a clock: an
  // IF_n whose else-operand is nil stands for "then-operand when condition";
  // anything else is always present.
  void split(Exp* flow, Exp** value, Exp** clock);
  // The item of a node's nature, without operands; null (after a message)
  // when the evaluator has none.
  EvalItem* new_item(Exp* e);
  EvalItem* new_const_item(Exp* e);
  EvalItem* new_call_item(Exp* e);
  // Translates e's operands into item's operand array.
  bool fill_operands(Exp* e, EvalItem* item);
  OutputItem* new_output_item(EcType* type);
  // The item of `flow` sampled on its clock, of type `type`; null when an
  // item of the flow cannot be built.
  OutputItem* sampled_item(Exp* flow, EcType* type);
  void build_schedules();
  void build_locals_programs();
  int memory_alone();
};

#endif
