// rp_ec_exe.h -- the reactive program of an ec file: the evaluator behind
// the interface the simulator drives. Statuses are those left by the last
// eval_outputs(); a failed instant is abandoned by not ending it, so the
// memories keep the state of the last completed instant.
#ifndef ECEXE_RP_EC_EXE_H
#define ECEXE_RP_EC_EXE_H

#include <vector>

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
  int nb_locals() override;
  const char* local_ident(int i) override;
  const char* local_type(int i) override;
  // Must not be asked for a local without an item. From then on the
  // location follows the local's value at every instant.
  void* local_loc(int i) override;
  int local_status(int i) override;
  int allows_eval_outputs() override;
  // Computes assertions, then outputs, then reads the locals' statuses.
  // Problems: an assertion not true, an output nil or divbyzero.
  int eval_outputs() override;
  void init_step() override;
  void end_step() override;

  EcExe* exe = nullptr;  // owned, never freed: the program lives as long as the process
  SymbolTable* symbols = nullptr;
  int* output_statuses = nullptr;
  int* assertion_statuses = nullptr;
  int* local_statuses = nullptr;
  // By outcome: absent, undefined, divbyzero, assertion true, assertion
  // false, defined.
  int* status_codes = nullptr;

 private:
  // A local's status is what its item held at the last eval_outputs(). The
  // items the outputs need keep that status until the next instant's
  // outputs are computed or the history is reset, so those locals are read
  // only when asked for (most programs have a local per equation, and
  // reading them all would cost each instant more than computing them):
  // `held` lists them, true in `pending` until their statuses are copied.
  // The others, whose items the end of the instant may compute again, are
  // read by eval_outputs() itself.
  void settle_locals();
  // Most items are computed in the evaluator's cells, not in their own
  // fields: the locals whose location was handed out have their items
  // brought up to date whenever an instant computes, or a reset clears.
  void refresh_located();
  std::vector<int> located_locals;
  std::vector<char> located;
  // The status code of local i, its item brought up to date first.
  int local_code(int i);
  // The status code of a local's item (null: none) as it stands.
  int item_code(EvalItem* item);
  std::vector<int> held_locals;
  std::vector<int> read_locals;
  std::vector<char> held;
  bool pending = false;

  const char* text(int symbol);
  const char* type_name(Exp* node);
  // The outcome of a computed output or local: absent, undefined,
  // divbyzero or defined.
  static int value_outcome(EvalItem* item);
};

#endif
