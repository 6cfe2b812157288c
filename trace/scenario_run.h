// scenario_run.h -- a scenario run without a window: every instant of the
// scenario is run by a policy, written to the traces asked for and
// compared with the expected values, as it comes, so that memory does not
// grow with the number of instants. The files are all checked before the
// first instant runs: a fault in any of them runs nothing.
#ifndef TRACE_SCENARIO_RUN_H
#define TRACE_SCENARIO_RUN_H

#include <csignal>
#include <memory>
#include <string>
#include <vector>

#include "trace/expectation.h"
#include "trace/instant_runner.h"
#include "trace/scenario.h"
#include "trace/trace_writer.h"

struct RunOptions {
  const char* scenario = nullptr;  // "-": standard input
  const char* csv_trace = nullptr;  // null: none; "-": standard output
  const char* vcd_trace = nullptr;
  const char* expected = nullptr;
  // A real literal is single precision, a relative error up to 6e-8:
  // values derived by hand from a program's literals pass by default.
  double tolerance = 1e-6;
  ProblemPolicy policy = ProblemPolicy::Continue;
  // When given, a run ends after the instant during which it became
  // nonzero (a signal handler sets it).
  const volatile sig_atomic_t* interrupt = nullptr;
};

class ScenarioRun {
 public:
  ScenarioRun(const ProgramFlows& flows, const RunOptions& options);
  ~ScenarioRun();

  // Checks the scenario and the expected values and opens the traces.
  // False with `error` set when something cannot be run.
  bool prepare(std::string* error);
  long nb_instants() const { return scenario.nb_instants(); }

  // Runs the scenario to its end, to its first problem under the Stop
  // policy, to the first write that fails (see write_fault) or to an
  // interruption (see interrupted). `progress`, when given, is called with the number of instants
  // done every 4,096 instants.
  void run(void (*progress)(long done, void* data) = nullptr, void* data = nullptr);
  // Closes the traces and finishes the comparison. False with `error` set
  // when a trace could not be written whole.
  bool finish(std::string* error);
  // Closes the traces, for a process about to end in the middle of the
  // run: they are put in place with the instants run so far.
  void close_traces();
  // Drops the traces: every file stays as it was before the run.
  void discard_traces() { traces.clear(); }

  long instants = 0;       // instants run
  long with_problems = 0;  // instants that had a run-time problem
  bool stopped = false;    // the Stop policy ended the run early
  bool interrupted = false;  // the interrupt flag ended the run early
  std::string write_fault;   // a trace could not be written: why (the run ended)
  std::string scenario_fault;  // the scenario changed under the run: its fault
  std::unique_ptr<Expectation> expectation;

 private:
  // True when the run must end after this instant: a trace could not be
  // written, or the interrupt flag is set.
  bool ended_early();

  const ProgramFlows& flows;
  RunOptions options;
  ScenarioReader scenario;
  InstantRunner runner;
  std::vector<std::unique_ptr<TraceWriter>> traces;
};

#endif
