// instant_runner.h -- runs a program one instant at a time as the window's
// Step does, but answers the run-time problems by a policy fixed in
// advance instead of asking the user.
#ifndef TRACE_INSTANT_RUNNER_H
#define TRACE_INSTANT_RUNNER_H

#include "trace/instant.h"
#include "trace/program_flows.h"

// What to do when an instant has a run-time problem.
enum class ProblemPolicy {
  Continue,  // complete the instant anyway, as "continue step" does
  Abort,     // abandon it, as "abort step" does: the memories stay as they were
  Stop       // abandon it and run no more
};

class InstantRunner {
 public:
  InstantRunner(const ProgramFlows& flows, ProblemPolicy policy);

  // Gives the program `inputs` (one value per input, in order), runs one
  // instant and fills `record` (its step number and reset mark excepted).
  void run(const FlowValue* inputs, InstantRecord* record);
  // Puts the program back to its first instant.
  void reset();

 private:
  void read_outputs(InstantRecord* record);
  void read_locals(InstantRecord* record);
  void note_problems(InstantRecord* record);

  const ProgramFlows& flows;
  ProblemPolicy policy;
  bool split;  // the program offers init_step / eval_outputs / end_step
};

#endif
