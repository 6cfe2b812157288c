// bench_program.cpp -- measures one generated program, one question per
// process so that figures do not disturb each other:
//
//   bench_program load PROGRAM.ec
//     loads the program through the evaluator's own steps, timing each, and
//     prints "parse= normalise= minimise= representatives= interface=
//     items= total=" in milliseconds and "maxrss_kb=", the peak resident
//     memory of a process that did nothing but load;
//   bench_program step PROGRAM.ec PROGRAM.dro SECONDS
//     loads both forms, checks that they agree on a few instants, then
//     times step() of each over random inputs for about SECONDS each and
//     prints "ec_ns= dro_ns= ratio= ec_steps= dro_steps= agree=";
//   bench_program scenario PROGRAM.ec INSTANTS OUT.csv
//     writes a scenario of INSTANTS random instants for the program's
//     inputs (reals with three decimals, as a sensor's log would have them);
//   bench_program runner TAVIK-RUN PROGRAM.ec SCENARIO.csv TRACE.csv
//     runs "TAVIK-RUN PROGRAM.ec SCENARIO.csv -o TRACE.csv" and prints
//     "run_ms= run_maxrss_kb= run_status=", its wall time and peak memory.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <vector>

#include "ecexe/cfiles/ecexe.h"
#include "ecexe/dro_load.h"
#include "ecexe/rp_ec_exe.h"
#include "foundations/symbol_table.h"
#include "normalise/norm_net.h"

namespace {

using Clock = std::chrono::steady_clock;

double ms_since(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

long max_rss_kb() {
  struct rusage usage;
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

// The load as RPEcExe::init does it (EcExe::init: NetInterface::init, then
// the items), with NormNet::build() taken apart into its three phases.
int load(const char* file) {
  SymbolTable* symbols = new SymbolTable(1000, 5041);
  EcExe* exe = new EcExe();
  Clock::time_point start = Clock::now();
  exe->create_net(symbols, 0, 0);
  Clock::time_point t = Clock::now();
  if (exe->parse(file, symbols) != 0) return 1;
  double parse = ms_since(t);
  t = Clock::now();
  exe->net->normalise();
  double normalise = ms_since(t);
  t = Clock::now();
  exe->net->minimize();
  double minimise = ms_since(t);
  t = Clock::now();
  exe->net->build_representatives();
  double representatives = ms_since(t);
  t = Clock::now();
  exe->list_interface();
  double interface = ms_since(t);
  t = Clock::now();
  if (exe->init_exe() != 0) return 1;
  double items = ms_since(t);
  double total = ms_since(start);
  printf("parse=%.1f normalise=%.1f minimise=%.1f representatives=%.1f interface=%.1f items=%.1f total=%.1f "
         "maxrss_kb=%ld classes=%d\n",
         parse, normalise, minimise, representatives, interface, items, total, max_rss_kb(),
         exe->net->nb_classes);
  return 0;
}

// Input values drawn once, so that the timed loops only copy them.
struct InputTable {
  std::vector<int32_t> ints;
  std::vector<double> reals;
};

InputTable draw_inputs(RPExe* p, int rows) {
  std::mt19937 rng(2024);
  InputTable t;
  for (int r = 0; r < rows; r++)
    for (int i = 0; i < p->nb_inputs(); i++) {
      const char* type = p->input_type(i);
      if (strcmp(type, "bool") == 0) t.ints.push_back(rng() % 3 != 0);
      else if (strcmp(type, "int") == 0) t.ints.push_back(static_cast<int32_t>(rng() % 2001) - 1000);
      else t.reals.push_back(std::uniform_real_distribution<double>(-100.0, 100.0)(rng));
    }
  return t;
}

// Locations and their kinds, looked up once.
struct InputSlots {
  std::vector<int32_t*> ints;
  std::vector<double*> reals;
};

InputSlots slots_of(RPExe* p) {
  InputSlots s;
  for (int i = 0; i < p->nb_inputs(); i++) {
    if (strcmp(p->input_type(i), "real") == 0) s.reals.push_back(static_cast<double*>(p->input_loc(i)));
    else s.ints.push_back(static_cast<int32_t*>(p->input_loc(i)));
  }
  return s;
}

void write_row(const InputSlots& s, const InputTable& t, int row) {
  size_t ni = s.ints.size(), nr = s.reals.size();
  for (size_t i = 0; i < ni; i++) *s.ints[i] = t.ints[row * ni + i];
  for (size_t i = 0; i < nr; i++) *s.reals[i] = t.reals[row * nr + i];
}

bool same_outputs(RPExe* a, RPExe* b) {
  for (int i = 0; i < a->nb_outputs(); i++) {
    size_t size = strcmp(a->output_type(i), "real") == 0 ? sizeof(double) : sizeof(int32_t);
    if (memcmp(a->output_loc(i), b->output_loc(i), size) != 0) return false;
  }
  return true;
}

const int kRows = 64;

// Steps p over the input table until `seconds` have passed (at least 10
// steps); the mean time of one step with its input copy, in nanoseconds.
double time_steps(RPExe* p, const InputTable& table, double seconds, long* steps, int* failures) {
  InputSlots slots = slots_of(p);
  *steps = 0;
  Clock::time_point start = Clock::now();
  double limit_ms = seconds * 1000.0;
  for (;;) {
    for (int batch = 0; batch < 10; batch++) {
      write_row(slots, table, static_cast<int>(*steps % kRows));
      if (p->step() != 0) ++*failures;
      ++*steps;
    }
    if (ms_since(start) >= limit_ms) break;
  }
  return ms_since(start) * 1e6 / static_cast<double>(*steps);
}

int step(const char* ec_file, const char* dro_file, double seconds) {
  RPEcExe* ec = new RPEcExe();
  if (ec->init(ec_file, new SymbolTable(1000, 5041)) != 0) return 1;
  DROLoad* dro = new DROLoad();
  if (const char* error = dro->load(dro_file)) {
    fprintf(stderr, "bench_program : %s\n", error);
    return 1;
  }
  InputTable table = draw_inputs(ec, kRows);
  InputSlots ec_slots = slots_of(ec), dro_slots = slots_of(dro);
  bool agree = ec->nb_outputs() == dro->nb_outputs();
  for (int r = 0; agree && r < 20; r++) {
    write_row(ec_slots, table, r);
    write_row(dro_slots, table, r);
    agree = ec->step() == 0 && dro->step() == 0 && same_outputs(ec, dro);
  }
  ec->reset_history();
  dro->reset_history();
  long ec_steps = 0, dro_steps = 0;
  int failures = 0;
  double ec_ns = time_steps(ec, table, seconds, &ec_steps, &failures);
  double dro_ns = time_steps(dro, table, seconds, &dro_steps, &failures);
  printf("ec_ns=%.0f dro_ns=%.0f ratio=%.2f ec_steps=%ld dro_steps=%ld agree=%d failures=%d\n", ec_ns, dro_ns,
         ec_ns / dro_ns, ec_steps, dro_steps, agree ? 1 : 0, failures);
  return 0;
}

int scenario(const char* ec_file, long instants, const char* out) {
  RPEcExe* ec = new RPEcExe();
  if (ec->init(ec_file, new SymbolTable(1000, 5041)) != 0) return 1;
  FILE* f = fopen(out, "w");
  if (!f) return 1;
  for (int i = 0; i < ec->nb_inputs(); i++) fprintf(f, "%s%s", i ? "," : "", ec->input_ident(i));
  fputc('\n', f);
  std::mt19937 rng(2024);
  for (long r = 0; r < instants; r++)
    for (int i = 0; i < ec->nb_inputs(); i++) {
      const char* type = ec->input_type(i);
      const char* end = i + 1 < ec->nb_inputs() ? "," : "\n";
      if (strcmp(type, "bool") == 0) fprintf(f, "%d%s", rng() % 3 != 0, end);
      else if (strcmp(type, "int") == 0) fprintf(f, "%d%s", static_cast<int>(rng() % 2001) - 1000, end);
      else fprintf(f, "%.3f%s", std::uniform_real_distribution<double>(-100.0, 100.0)(rng), end);
    }
  return fclose(f) == 0 ? 0 : 1;
}

int runner(const char* tavik_run, const char* ec_file, const char* scenario_file, const char* trace) {
  Clock::time_point start = Clock::now();
  pid_t child = fork();
  if (child == 0) {
    execl(tavik_run, tavik_run, ec_file, scenario_file, "-o", trace, static_cast<char*>(nullptr));
    _exit(127);
  }
  int status;
  struct rusage usage;
  if (child < 0 || wait4(child, &status, 0, &usage) != child) return 1;
  printf("run_ms=%.1f run_maxrss_kb=%ld run_status=%d\n", ms_since(start), usage.ru_maxrss,
         WIFEXITED(status) ? WEXITSTATUS(status) : -1);
  return 0;
}

int usage() {
  fprintf(stderr,
          "usage: bench_program load PROGRAM.ec\n"
          "       bench_program step PROGRAM.ec PROGRAM.dro SECONDS\n"
          "       bench_program scenario PROGRAM.ec INSTANTS OUT.csv\n"
          "       bench_program runner TAVIK-RUN PROGRAM.ec SCENARIO.csv TRACE.csv\n");
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && strcmp(argv[1], "load") == 0) return load(argv[2]);
  if (argc == 5 && strcmp(argv[1], "step") == 0) {
    double seconds = atof(argv[4]);
    if (seconds <= 0) return usage();
    return step(argv[2], argv[3], seconds);
  }
  if (argc == 5 && strcmp(argv[1], "scenario") == 0) return scenario(argv[2], atol(argv[3]), argv[4]);
  if (argc == 6 && strcmp(argv[1], "runner") == 0) return runner(argv[2], argv[3], argv[4], argv[5]);
  return usage();
}
