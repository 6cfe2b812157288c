// rp_ec_exe.cpp -- answering the reactive program interface from the
// evaluator of an ec file: names from the symbol table, locations from the
// items' value fields, statuses from the items' outcomes.
#include "ecexe/rp_ec_exe.h"

#include "ecexe/cfiles/ecexe.h"
#include "ecexe/eval_terminal.h"
#include "foundations/symbol_table.h"
#include "normalise/norm_net.h"

enum Outcome {
  ABSENT_OUTCOME = 0,
  UNDEFINED_OUTCOME,
  DIVBYZERO_OUTCOME,
  TRUE_OUTCOME,
  FALSE_OUTCOME,
  DEFINED_OUTCOME
};

int RPEcExe::init(const char* file, SymbolTable* table) {
  symbols = table;
  status_codes = new int[6]{RP_ABSENT, RP_NIL, RP_DIVBYZERO, RP_DEFINED, RP_FALSE, RP_DEFINED};
  exe = new EcExe();
  int failed = exe->init(file, table);
  if (failed) return failed;
  output_statuses = new int[exe->nb_outputs + 1]();
  assertion_statuses = new int[exe->nb_assertions + 1]();
  local_statuses = new int[exe->local_names.size() + 1];
  for (size_t i = 0; i < exe->local_names.size(); i++) local_statuses[i] = RP_NIL;
  return 0;
}

const char* RPEcExe::text(int symbol) { return symbols->text(symbol); }

const char* RPEcExe::type_name(Exp* node) { return text(exe->net->type(node)->name); }

// The value field of an item of a known type; null for anything else.
static void* location(EvalItem* item) {
  if (item->type < EI_bool || item->type > EI_extern) return nullptr;
  return &item->value;
}

const char* RPEcExe::name() { return text(exe->net->node_name); }
int RPEcExe::nb_inputs() { return exe->nb_inputs; }
int RPEcExe::nb_outputs() { return exe->nb_outputs; }
int RPEcExe::nb_assertions() { return exe->nb_assertions; }
int RPEcExe::nb_locals() { return static_cast<int>(exe->local_names.size()); }

const char* RPEcExe::input_ident(int i) { return text(exe->input_idents[i]); }
const char* RPEcExe::output_ident(int i) { return text(exe->output_idents[i]); }
const char* RPEcExe::local_ident(int i) { return text(exe->local_names[i]); }

const char* RPEcExe::input_type(int i) { return type_name(exe->input_nodes[i]); }
const char* RPEcExe::output_type(int i) { return type_name(exe->output_nodes[i]); }
const char* RPEcExe::local_type(int i) {
  return text(exe->net->get_ident_info(exe->local_names[i])->type->name);
}

void* RPEcExe::input_loc(int i) { return location(exe->input_items[i]); }
void* RPEcExe::output_loc(int i) { return location(exe->output_items[i]); }
void* RPEcExe::local_loc(int i) {
  want_locals();
  return location(exe->local_outputs[i]);
}

void RPEcExe::want_locals() {
  if (locals_wanted) return;
  locals_wanted = true;
  exe->build_locals();
  if (exe->in_step && exe->outputs_key == exe->step_key) compute_locals();
}

void RPEcExe::compute_locals() {
  exe->compute_locals(exe->step_key);
  for (size_t i = 0; i < exe->local_outputs.size(); i++)
    local_statuses[i] = status_codes[value_outcome(exe->local_outputs[i])];
}

int RPEcExe::output_status(int i) { return output_statuses[i]; }
int RPEcExe::assert_status(int i) { return assertion_statuses[i]; }
int RPEcExe::local_status(int i) {
  want_locals();
  return local_statuses[i];
}

int RPEcExe::allows_eval_outputs() { return 1; }

void RPEcExe::init_step() {
  exe->in_step = 1;
  exe->step_key++;
}

void RPEcExe::end_step() { exe->end_step(); }

void RPEcExe::reset_history() { exe->reset_history(); }

// The outcome of a present item's status.
static int status_outcome(int status) {
  if (status & EI_DIVBYZERO) return DIVBYZERO_OUTCOME;
  if (status != EI_DEFINED) return UNDEFINED_OUTCOME;
  return DEFINED_OUTCOME;
}

int RPEcExe::value_outcome(EvalItem* item) {
  if (item->is_bottom()) return ABSENT_OUTCOME;
  return status_outcome(item->status);
}

int RPEcExe::eval_outputs() {
  unsigned key = exe->step_key;
  int problems = 0;
  exe->compute_outputs(key);
  for (int i = 0; i < exe->nb_assertions; i++) {
    OutputItem* a = exe->assertion_items[i];
    EvalItem::demand(a, key);
    int outcome;
    if (a->is_bottom()) {
      outcome = ABSENT_OUTCOME;
    } else if (a->status != EI_DEFINED) {
      // A divbyzero assertion reports as undefined too.
      outcome = UNDEFINED_OUTCOME;
      problems++;
    } else if (a->is_true()) {
      outcome = TRUE_OUTCOME;
    } else {
      outcome = FALSE_OUTCOME;
      problems++;
    }
    assertion_statuses[i] = status_codes[outcome];
  }
  for (int i = 0; i < exe->nb_outputs; i++) {
    OutputItem* o = exe->output_items[i];
    EvalItem::demand(o, key);
    int outcome = value_outcome(o);
    if (outcome == UNDEFINED_OUTCOME || outcome == DIVBYZERO_OUTCOME) problems++;
    output_statuses[i] = status_codes[outcome];
  }
  if (locals_wanted) compute_locals();
  return problems;
}

int RPEcExe::step() {
  init_step();
  int problems = eval_outputs();
  if (problems) return problems;
  end_step();
  return 0;
}
