// scenario_run.cpp -- running a scenario into traces and comparisons.
#include "trace/scenario_run.h"

#include "trace/vcd_writer.h"

ScenarioRun::ScenarioRun(const ProgramFlows& f, const RunOptions& o)
    : flows(f), options(o), scenario(f, o.scenario), runner(f, o.policy) {}

ScenarioRun::~ScenarioRun() = default;

bool ScenarioRun::prepare(std::string* error) {
  if (!scenario.check(error)) return false;
  if (options.expected) {
    expectation = std::make_unique<Expectation>(flows, options.expected, options.tolerance);
    if (!expectation->check(error)) return false;
  }
  if (options.csv_trace) traces.push_back(std::make_unique<CsvTraceWriter>(flows, options.csv_trace));
  if (options.vcd_trace) traces.push_back(std::make_unique<VcdTraceWriter>(flows, options.vcd_trace));
  for (auto& trace : traces)
    if (!trace->open(error)) return false;
  return true;
}

bool ScenarioRun::ended_early() {
  for (auto& trace : traces)
    if (trace->failed(&write_fault)) return true;
  interrupted = options.interrupt && *options.interrupt;
  return interrupted;
}

void ScenarioRun::run(void (*progress)(long, void*), void* data) {
  InstantRecord record;
  bool after_reset = false;
  for (;;) {
    ScenarioReader::Event event = scenario.next();
    if (event == ScenarioReader::End) return;
    if (event == ScenarioReader::Bad) {
      scenario_fault = scenario.error();
      return;
    }
    if (event == ScenarioReader::Reset) {
      runner.reset();
      for (auto& trace : traces) trace->reset();
      after_reset = true;
      continue;
    }
    runner.run(scenario.values(), &record);
    record.step = ++instants;
    record.after_reset = after_reset;
    after_reset = false;
    if (!record.problems.empty()) with_problems++;
    for (auto& trace : traces) trace->instant(record);
    if (expectation) expectation->compare(record);
    if (progress && instants % 4096 == 0) progress(instants, data);
    if (ended_early()) return;
    if (!record.problems.empty() && options.policy == ProblemPolicy::Stop) {
      stopped = true;
      return;
    }
  }
}

bool ScenarioRun::finish(std::string* error) {
  // A stopped run that expected more instants differs by those it did not
  // run; one that a signal or a write error ended is not compared.
  if (expectation && !interrupted && write_fault.empty()) expectation->finish(instants);
  bool ok = true;
  for (auto& trace : traces) {
    std::string fault;
    if (!trace->close(&fault) && ok) {
      *error = fault;
      ok = false;
    }
  }
  return ok;
}

void ScenarioRun::close_traces() {
  std::string ignored;
  for (auto& trace : traces) trace->close(&ignored);
}
