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

// Reads what the instant the program just computed gave into `record`: the
// inputs at their locations, the statuses of the assertions, the values
// and statuses of the outputs and of the listed locals. The step number,
// reset mark and problems are left as they are.
void capture_instant(const ProgramFlows& flows, InstantRecord* record);
// Lists in `record` the problems its statuses show, in the order of the
// window's dialogs (assertions, then outputs); only the first when `all`
// is false, as a window whose user aborts at the first dialog shows them.
void list_problems(InstantRecord* record, bool all);

class InstantRunner {
 public:
  InstantRunner(const ProgramFlows& flows, ProblemPolicy policy);

  // Gives the program `inputs` (one value per input, in order), runs one
  // instant and fills `record` (its step number and reset mark excepted).
  void run(const FlowValue* inputs, InstantRecord* record);
  // Puts the program back to its first instant.
  void reset();

 private:
  const ProgramFlows& flows;
  ProblemPolicy policy;
  bool split;  // the program offers init_step / eval_outputs / end_step
};

#endif
