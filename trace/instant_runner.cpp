// instant_runner.cpp -- one instant of a program, answered by a policy.
#include "trace/instant_runner.h"

#include "ecexe/rp_exe.h"

InstantRunner::InstantRunner(const ProgramFlows& f, ProblemPolicy p)
    : flows(f), policy(p), split(f.program->allows_eval_outputs() != 0) {}

void InstantRunner::reset() { flows.program->reset_history(); }

void InstantRunner::run(const FlowValue* inputs, InstantRecord* record) {
  RPExe* program = flows.program;
  for (const Flow& f : flows.inputs) store_value(f.type, inputs[f.index], program->input_loc(f.index));
  record->problems.clear();
  record->dropped = false;

  if (!split) {
    // A compiled program computes the whole instant in one call; a failed
    // one has no outputs to show, and its memories cannot be given back.
    if (program->step() != 0) {
      record->inputs.assign(inputs, inputs + flows.inputs.size());
      record->dropped = true;
      record->problems.push_back({Problem::Step, 0, 0});
      record->output_status.assign(flows.outputs.size(), RP_ABSENT);
      record->assert_status.clear();
      record->local_status.assign(flows.locals.size(), RP_ABSENT);
      return;
    }
    capture_instant(flows, record);
    list_problems(record, policy == ProblemPolicy::Continue);
    return;
  }
  program->init_step();
  program->eval_outputs();
  // Locals are read before the memories move on, as they stood in the instant.
  capture_instant(flows, record);
  list_problems(record, policy == ProblemPolicy::Continue);
  if (record->problems.empty() || policy == ProblemPolicy::Continue) program->end_step();
  else record->dropped = true;
}

void capture_instant(const ProgramFlows& flows, InstantRecord* record) {
  RPExe* program = flows.program;
  record->inputs.resize(flows.inputs.size());
  for (const Flow& f : flows.inputs) record->inputs[f.index] = load_value(f.type, program->input_loc(f.index));
  record->assert_status.resize(flows.nb_assertions);
  for (int i = 0; i < flows.nb_assertions; i++) record->assert_status[i] = program->assert_status(i);
  size_t n = flows.outputs.size();
  record->output_status.resize(n);
  record->outputs.resize(n);
  for (const Flow& f : flows.outputs) {
    int status = program->output_status(f.index);
    record->output_status[f.index] = status;
    if (status == RP_DEFINED) record->outputs[f.index] = load_value(f.type, program->output_loc(f.index));
  }
  n = flows.locals.size();
  record->local_status.resize(n);
  record->locals.resize(n);
  for (size_t k = 0; k < n; k++) {
    const Flow& f = flows.locals[k];
    int status = program->local_status(f.index);
    record->local_status[k] = status;
    // A local without an item is absent, and must not be asked its location.
    if (status == RP_DEFINED) record->locals[k] = load_value(f.type, flows.local_location(k));
  }
}

void list_problems(InstantRecord* record, bool all) {
  record->problems.clear();
  for (size_t i = 0; i < record->assert_status.size(); i++) {
    int status = record->assert_status[i];
    if (!problem_word(status, true)) continue;
    record->problems.push_back({Problem::Assertion, static_cast<int>(i), status});
    if (!all) return;
  }
  for (size_t i = 0; i < record->output_status.size(); i++) {
    int status = record->output_status[i];
    if (!problem_word(status, false)) continue;
    record->problems.push_back({Problem::Output, static_cast<int>(i), status});
    if (!all) return;
  }
}
