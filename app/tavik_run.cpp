// tavik_run.cpp -- tavik-run, the simulator without a window: runs an ec
// or compiled program over a scenario file, writes the trace as CSV or as
// a value change dump, and compares it with expected values. It needs
// neither Tk nor a display. Exit status: 0 when every instant ran as
// expected (with --expect: as the expected values say, problems included;
// without: without a run-time problem), 1 when some did not (or a trace
// could not be written), 2 when nothing could be run, 128 + the signal
// when SIGINT, SIGTERM or SIGHUP ended the run.
#include <time.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "ecexe/dro_load.h"
#include "ecexe/rp_ec_exe.h"
#include "foundations/errors.h"
#include "foundations/file_identity.h"
#include "foundations/symbol_table.h"
#include "trace/scenario_run.h"

namespace {

const char kUsage[] =
    "usage: tavik-run PROGRAM.ec|PROGRAM.dro SCENARIO.csv [-o TRACE.csv] [--vcd TRACE.vcd]\n"
    "                 [--locals] [--expect EXPECTED.csv [--tolerance T]]\n"
    "                 [--on-problem continue|abort|stop] [--seed N]\n"
    "  '-' names standard input (the scenario) or standard output (a trace).\n"
    "  Without -o, --vcd or --expect, the CSV trace goes to standard output.\n";

// Nothing could be run: bad options, program or files.
enum { RUN_OK = 0, RUN_PROBLEMS = 1, RUN_NOTHING = 2 };

struct Options {
  const char* program = nullptr;
  RunOptions run;
  bool locals = false;
  bool seeded = false;
  unsigned seed = 0;
};

[[noreturn]] void refuse(const std::string& message) {
  fprintf(stderr, "tavik-run: %s\n%s", message.c_str(), kUsage);
  exit(RUN_NOTHING);
}

[[noreturn]] void fail(const std::string& message) {
  fprintf(stderr, "tavik-run: %s\n", message.c_str());
  exit(RUN_NOTHING);
}

// The word after option `argv[*k]`, which must be there.
const char* operand(int argc, char** argv, int* k) {
  if (*k + 1 >= argc) refuse(std::string("'") + argv[*k] + "' needs a value");
  return argv[++*k];
}

unsigned long parse_count(const char* option, const char* text) {
  char* stop;
  unsigned long n = strtoul(text, &stop, 10);
  if (*stop != '\0' || !isdigit(static_cast<unsigned char>(text[0])) || n > 0xffffffffUL)
    refuse(std::string(option) + " needs a number from 0 to 4294967295, not '" + text + "'");
  return n;
}

Options parse_options(int argc, char** argv) {
  Options o;
  const char* words[2] = {nullptr, nullptr};
  int nb_words = 0;
  for (int k = 1; k < argc; k++) {
    std::string a = argv[k];
    if (a == "-h" || a == "--help") {
      fputs(kUsage, stdout);
      exit(RUN_OK);
    } else if (a == "-o") {
      o.run.csv_trace = operand(argc, argv, &k);
    } else if (a == "--vcd") {
      o.run.vcd_trace = operand(argc, argv, &k);
    } else if (a == "--locals") {
      o.locals = true;
    } else if (a == "--expect") {
      o.run.expected = operand(argc, argv, &k);
    } else if (a == "--tolerance") {
      const char* text = operand(argc, argv, &k);
      char* stop;
      o.run.tolerance = strtod(text, &stop);
      if (*stop != '\0' || stop == text || !(o.run.tolerance >= 0))
        refuse(std::string("--tolerance needs a number of at least 0, not '") + text + "'");
    } else if (a == "--on-problem") {
      std::string policy = operand(argc, argv, &k);
      if (policy == "continue") o.run.policy = ProblemPolicy::Continue;
      else if (policy == "abort") o.run.policy = ProblemPolicy::Abort;
      else if (policy == "stop") o.run.policy = ProblemPolicy::Stop;
      else refuse("--on-problem is continue, abort or stop, not '" + policy + "'");
    } else if (a == "--seed") {
      o.seed = static_cast<unsigned>(parse_count("--seed", operand(argc, argv, &k)));
      o.seeded = true;
    } else if (a.size() > 1 && a[0] == '-') {
      refuse("unknown option '" + a + "'");
    } else if (nb_words == 2) {
      refuse("one program and one scenario, not also '" + a + "'");
    } else {
      words[nb_words++] = argv[k];
    }
  }
  if (nb_words < 2) refuse(nb_words == 0 ? "no program and no scenario given" : "no scenario given");
  o.program = words[0];
  o.run.scenario = words[1];
  if (!o.run.csv_trace && !o.run.vcd_trace && !o.run.expected) o.run.csv_trace = "-";
  int to_stdout = (o.run.csv_trace && strcmp(o.run.csv_trace, "-") == 0) +
                  (o.run.vcd_trace && strcmp(o.run.vcd_trace, "-") == 0);
  if (to_stdout > 1) refuse("only one trace can go to standard output");
  if (strcmp(o.run.scenario, "-") == 0 && o.run.expected && strcmp(o.run.expected, "-") == 0)
    refuse("the scenario and the expected values cannot both come from standard input");
  return o;
}

// True when the trace would be written over `input`, a file to read ("-":
// standard input).
bool overwrites(const char* trace, const char* input) {
  if (!trace || !input || strcmp(trace, "-") == 0) return false;
  return strcmp(input, "-") == 0 ? names_descriptor(trace, 0) : same_file(trace, input);
}

// A trace written over the scenario or the expected values would destroy
// them before they are read again; two traces in one file, each other.
void check_outputs(const Options& o) {
  if (o.run.csv_trace && o.run.vcd_trace && strcmp(o.run.csv_trace, "-") != 0 &&
      same_file(o.run.csv_trace, o.run.vcd_trace))
    refuse("the two traces cannot go to one file");
  for (const char* trace : {o.run.csv_trace, o.run.vcd_trace})
    for (const char* input : {o.program, o.run.scenario, o.run.expected})
      if (overwrites(trace, input))
        refuse(std::string("the trace '") + trace + "' would overwrite " +
               (strcmp(input, "-") == 0 ? std::string("standard input") : "'" + std::string(input) + "'"));
}

bool ends_with(const char* text, const char* tail) {
  size_t n = strlen(text), m = strlen(tail);
  return n >= m && strcmp(text + n - m, tail) == 0;
}

// The loaders report their own faults; a fatal one ends the process with
// the status of a run that could not start.
RPExe* load_program(const char* path) {
  if (ends_with(path, ".ec")) {
    RPEcExe* ec = new RPEcExe;
    if (ec->init(path, new SymbolTable(1000, 5041)) != 0) fail(std::string("cannot load '") + path + "'");
    return ec;
  }
  if (ends_with(path, ".dro")) {
    DROLoad* dro = new DROLoad;
    // The loader's own texts name the file, but for a wrong version.
    if (const char* error = dro->load(path))
      fail(strncmp(error, path, strlen(path)) == 0 ? std::string(error) : std::string(path) + ": " + error);
    return dro;
  }
  refuse(std::string("'") + path + "' is neither an ec program (.ec) nor a compiled one (.dro)");
}

double now() {
  timespec t;
  clock_gettime(CLOCK_MONOTONIC, &t);
  return t.tv_sec + t.tv_nsec * 1e-9;
}

// The progress bar, on a terminal only, once the run has lasted a second.
struct Progress {
  long total;
  double started;
  double shown = 0;
  bool drawn = false;
};

void show_progress(long done, void* data) {
  Progress* p = static_cast<Progress*>(data);
  double t = now();
  if (t - p->started < 1.0 || t - p->shown < 0.1 || p->total <= 0) return;
  p->shown = t;
  p->drawn = true;
  const int width = 40;
  int filled = static_cast<int>(width * done / p->total);
  fprintf(stderr, "\r[%.*s%*s] %3ld%% %ld/%ld instants", filled, "########################################",
          width - filled, "", 100 * done / p->total, done, p->total);
  fflush(stderr);
}

// "1 instant", "2 instants".
std::string count_of(long n, const char* thing) {
  return std::to_string(n) + " " + thing + (n == 1 ? "" : "s");
}

ScenarioRun* current_run = nullptr;

// A fatal fault in the middle of the run (a clock that takes on nil) ends
// the process: the traces are put in place with what they hold so far.
void keep_traces() {
  if (current_run) {
    current_run->close_traces();
    fprintf(stderr, "tavik-run: the run ended at instant %ld\n", current_run->instants + 1);
  }
}

volatile sig_atomic_t interrupt_signal = 0;

void note_signal(int signal) { interrupt_signal = signal; }

// SIGINT, SIGTERM and SIGHUP end the run after the instant in progress, so
// that the traces hold whole rows; a second one ends the process at once.
void catch_interrupts() {
  struct sigaction action = {};
  action.sa_handler = note_signal;
  action.sa_flags = SA_RESTART | SA_RESETHAND;
  sigemptyset(&action.sa_mask);
  for (int signal : {SIGINT, SIGTERM, SIGHUP}) sigaction(signal, &action, nullptr);
}

// Ends a run that a signal interrupted: its traces kept, exit 128 + signal.
[[noreturn]] void end_interrupted(ScenarioRun* run) {
  std::string fault;
  if (!run->finish(&fault)) fprintf(stderr, "tavik-run: %s\n", fault.c_str());
  fprintf(stderr, "tavik-run: interrupted after instant %ld\n", run->instants);
  exit(128 + interrupt_signal);
}

}  // namespace

int main(int argc, char** argv) {
  set_errors_tool_name("tavik-run");
  set_fatal_status(RUN_NOTHING);
  Options options = parse_options(argc, argv);
  check_outputs(options);
  RPExe* program = load_program(options.program);

  ProgramFlows flows(program, options.locals);
  std::string fault = flows.unsupported();
  if (!fault.empty()) fail(fault);
  options.run.interrupt = &interrupt_signal;
  ScenarioRun run(flows, options.run);
  if (!run.prepare(&fault)) {
    run.discard_traces();  // exit() runs no destructor: no temporary file is left
    fail(fault);
  }
  // Not before: a signal must end a wait for the scenario on a terminal.
  catch_interrupts();

  if (options.seeded) srandom(options.seed);
  Progress progress = {run.nb_instants(), now()};
  current_run = &run;
  set_fatal_hook(keep_traces);
  set_fatal_status(RUN_PROBLEMS);
  run.run(isatty(2) ? show_progress : nullptr, &progress);
  current_run = nullptr;
  if (progress.drawn) fprintf(stderr, "\r%*s\r", 80, "");
  if (run.interrupted) end_interrupted(&run);
  if (!run.write_fault.empty()) {
    // A run that could not be recorded whole changes none of its files.
    run.discard_traces();
    fprintf(stderr, "tavik-run: %s; the run stopped after instant %ld\n", run.write_fault.c_str(), run.instants);
    return RUN_PROBLEMS;
  }

  bool written = run.finish(&fault);
  if (!written) fprintf(stderr, "tavik-run: %s\n", fault.c_str());
  if (!run.scenario_fault.empty()) fprintf(stderr, "tavik-run: %s\n", run.scenario_fault.c_str());
  long differences = 0;
  if (run.expectation) {
    differences = run.expectation->differences;
    for (const std::string& line : run.expectation->first_differences) fprintf(stderr, "%s\n", line.c_str());
    long more = differences - static_cast<long>(run.expectation->first_differences.size());
    if (more > 0) fprintf(stderr, "... and %ld more\n", more);
  }
  if (!written) return RUN_PROBLEMS;
  if (!run.scenario_fault.empty()) return RUN_NOTHING;
  // Expected values decide alone: the problems they predict are no failure.
  if (run.expectation ? differences == 0 : run.with_problems == 0) return RUN_OK;
  fprintf(stderr, "tavik-run: %s%s, %ld with run-time problems, %s from the expected values\n",
          count_of(run.instants, "instant").c_str(), run.stopped ? " (stopped at the first problem)" : "",
          run.with_problems, count_of(differences, "difference").c_str());
  return RUN_PROBLEMS;
}
