// rp_ec_exe.h -- the reactive program of an ec file: the evaluator behind
// the interface the simulator drives. Statuses are those left by the last
// eval_outputs(); a failed instant is abandoned by not ending it, so the
// memories keep the state of the last completed instant. Locals cost
// nothing until one is asked for; from then on every instant computes them
// all, as they stand once the instant is complete.
#ifndef ECEXE_RP_EC_EXE_H
#define ECEXE_RP_EC_EXE_H

#include "ecexe/rp_exe.h"

class EcExe;
class EvalItem;
class Exp;
class SymbolTable;

class RPEcExe : public RPExe {
 public:
  RPEcExe() = default;
  RPEcExe(const RPEcExe&) = delete;
  RPEcExe& operator=(const RPEcExe&) = delete;

  // Reads and builds the program of `file` over `symbols` (kept, not
  // owned). 0 on success, otherwise the evaluator's failure value, its
  // reasons already written to standard error.
  int init(const char* file, SymbolTable* symbols);

  const char* name() override;
  int nb_inputs() override;
  const char* input_ident(int i) override;
  const char* input_type(int i) override;
  int nb_outputs() override;
  const char* output_ident(int i) override;
  const char* output_type(int i) override;
  void* input_loc(int i) override;
  void* output_loc(int i) override;
  // init_step, eval_outputs, then end_step unless a problem was counted:
  // the number of problems.
  int step() override;
  int output_status(int i) override;
  void reset_history() override;
  int nb_assertions() override;
  int assert_status(int i) override;
  // Every declared local, in declaration order.
  int nb_locals() override;
  const char* local_ident(int i) override;
  const char* local_type(int i) override;
  // The location of local i: it holds the local's value at the last
  // instant the local was present. Asking for a location or a status
  // starts the computing of the locals, from the open instant on.
  void* local_loc(int i) override;
  // As the last eval_outputs() left it; absent where the local's clock
  // was false.
  int local_status(int i) override;
  int allows_eval_outputs() override;
  // Computes assertions, then outputs, then (once asked for) the locals.
  // Problems: an assertion not true, an output nil or divbyzero.
  int eval_outputs() override;
  void init_step() override;
  void end_step() override;

  EcExe* exe = nullptr;  // owned, never freed: the program lives as long as the process
  SymbolTable* symbols = nullptr;
  int* output_statuses = nullptr;
  int* assertion_statuses = nullptr;
  int* local_statuses = nullptr;
  bool locals_wanted = false;  // some local was asked for
  // By outcome: absent, undefined, divbyzero, assertion true, assertion
  // false, defined.
  int* status_codes = nullptr;

 private:
  // Computes the locals of the open instant, whose outputs are computed,
  // and reads their statuses.
  void compute_locals();
  // Starts computing the locals at every instant.
  void want_locals();

  const char* text(int symbol);
  const char* type_name(Exp* node);
  // The outcome of a computed output or local: absent, undefined,
  // divbyzero or defined.
  static int value_outcome(EvalItem* item);
};

#endif
