// dro_load.h -- the reactive program of a compiled, dynamically loaded .dro.
// Every operation reads the descriptor exported by the shared object; the
// program owns all value storage. Loaded once, never closed.
#ifndef ECEXE_DRO_LOAD_H
#define ECEXE_DRO_LOAD_H

#include <cstddef>

#include "ecexe/dro_desc.h"
#include "ecexe/rp_exe.h"

static_assert(sizeof(void*) == 8, "the .dro interface is defined for 64-bit platforms");
static_assert(sizeof(DroVar) == 24, "a .dro variable record is 24 bytes");
static_assert(offsetof(DroDesc, nb_inputs) == 16 && offsetof(DroDesc, inputs) == 24 &&
                  offsetof(DroDesc, nb_outputs) == 32 && offsetof(DroDesc, outputs) == 40 &&
                  offsetof(DroDesc, step) == 48 && offsetof(DroDesc, reset) == 56 &&
                  offsetof(DroDesc, init) == 64,
              "the .dro descriptor layout is fixed");

// A compiled program: no assertions, no locals, only the single-call step;
// init_step, eval_outputs and end_step keep their fatal defaults.
class DROLoad : public RPExe {
 public:
  DROLoad() = default;
  ~DROLoad() override;

  // Opens the shared object at `path`, checks its descriptor's version, calls
  // its init (when not null) and then reset_history. Null on success;
  // otherwise the dynamic loader's own error text or "Bad DRO version,
  // expected 1.1, get <version>\n" (a static buffer, overwritten by the next
  // failed load); a descriptor without a step or reset function is refused
  // too. On failure the program must not be driven.
  const char* load(const char* path);

  const char* name() override;
  int nb_inputs() override;
  const char* input_ident(int i) override;
  const char* input_type(int i) override;
  int nb_outputs() override;
  const char* output_ident(int i) override;
  const char* output_type(int i) override;
  void* input_loc(int i) override;
  void* output_loc(int i) override;
  // The result of the program's step function.
  int step() override;
  // Always RP_DEFINED: a compiled program has no statuses.
  int output_status(int i) override;
  void reset_history() override;

 private:
  // Forgets the descriptor and records `message` as the error; returns it.
  const char* refuse(const char* message);

  void* handle = nullptr;        // of the shared object
  const char* error = nullptr;   // the last loader error, null when none
  DroDesc* desc = nullptr;       // null until loaded
};

#endif
