// scenario_fuzz.cpp -- fuzz target: a scenario for a program with a bool, an
// int and a real input, checked whole, then run to a CSV and a VCD trace.
#include "ecexe/rp_ec_exe.h"
#include "foundations/symbol_table.h"
#include "fuzz/fuzz_support.h"
#include "trace/scenario_run.h"

namespace {

const char kProgram[] =
    "node p(b: bool; n: int; x: real) returns (y: real; m: int);\n"
    "var k: int;\nlet\n  k = n div 3;\n  m = 0 -> pre k + n;\n  y = if b then x / 2.0 else pre x;\n"
    "  assert n >= -5;\ntel.\n";

ProgramFlows* flows() {
  static ProgramFlows* f = nullptr;
  if (!f) {
    std::string path = fuzzing::as_file(reinterpret_cast<const uint8_t*>(kProgram), sizeof kProgram - 1, ".ec");
    RPEcExe* program = new RPEcExe;
    if (program->init(path.c_str(), new SymbolTable(1000, 5041)) != 0) abort();
    f = new ProgramFlows(program, true);
  }
  return f;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzzing::init();
  std::string path = fuzzing::as_file(data, size, ".csv");
  RunOptions options;
  options.scenario = path.c_str();
  options.csv_trace = "/dev/null";
  options.vcd_trace = "/dev/null";
  options.expected = path.c_str();  // a scenario is also a file of expected values
  options.policy = size % 2 ? ProblemPolicy::Abort : ProblemPolicy::Continue;
  fuzzing::guarded([&] {
    flows()->program->reset_history();
    ScenarioRun run(*flows(), options);
    std::string error;
    // Long repeats are legitimate but slow: the target runs short scenarios.
    if (!run.prepare(&error) || run.nb_instants() > 10000) return;
    run.run();
    run.finish(&error);
  });
  return 0;
}
