// locals_test.cpp -- every local of generated programs, as traces show them,
// against a second evaluation of the same flows: the program rewritten with
// each local declared an output. The generated equations are joined by
// locals of every other kind a program may have: names of another local or
// of an input, a constant, a sample on a sub-clock, a memory read by
// nothing, a `pre` that is nil at first and a division that may divide by
// zero. Both forms are run through the trace layer with the same inputs,
// a reset half-way, and must agree on every local at every instant.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <random>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "ecexe/rp_ec_exe.h"
#include "foundations/symbol_table.h"
#include "trace/instant_runner.h"
#include "trace/program_flows.h"
#include "tests/unit/test_support.h"

namespace {

const int kPrograms = 300;
const int kInstants = 24;

// The generated program of `seed` with the extra locals, as a program with
// locals (`with_locals`) or with every local an output (`as_outputs`).
struct Variants {
  std::string with_locals;
  std::string as_outputs;
  int nb_locals = 0;
};

Variants variants(const std::string& generated, unsigned seed) {
  std::mt19937 rng(seed);
  size_t var_at = generated.find("\nvar\n"), let_at = generated.find("\nlet\n");
  size_t tel_at = generated.rfind("tel.");
  std::string declarations = generated.substr(var_at + 5, let_at + 1 - (var_at + 5));
  std::string equations = generated.substr(let_at + 5, tel_at - (let_at + 5));

  // The base-clock locals by type, the sub-clocks, the first input.
  std::vector<std::string> by_type[3], clocks;
  const char* const types[] = {"bool", "int", "real"};
  std::regex base(R"(^  (\w+): (bool|int|real);$)");
  std::istringstream lines(declarations);
  for (std::string line; std::getline(lines, line);) {
    std::smatch m;
    if (!std::regex_match(line, m, base)) continue;
    for (int t = 0; t < 3; t++)
      if (m[2] == types[t]) by_type[t].push_back(m[1]);
    if (m[1].str().compare(0, 2, "ck") == 0) clocks.push_back(m[1]);
  }
  std::smatch input;
  std::regex_search(generated, input, std::regex(R"(\((\w+): (bool|int|real))"));
  auto pick = [&](const std::vector<std::string>& from) { return from[rng() % from.size()]; };

  std::string extra_decls, extra_eqs;
  auto add = [&](const std::string& decl, const std::string& eq) {
    extra_decls += "  " + decl + ";\n";
    extra_eqs += "  " + eq + ";\n";
  };
  add("x_in: " + input[2].str(), "x_in = " + input[1].str());
  add("x_const: int", "x_const = 42");
  for (int t = 0; t < 3; t++) {
    if (by_type[t].empty()) continue;
    std::string ty = types[t], n = std::to_string(t);
    add("x_alias" + n + ": " + ty, "x_alias" + n + " = " + pick(by_type[t]));
    add("x_pre" + n + ": " + ty, "x_pre" + n + " = pre " + pick(by_type[t]));
    if (!clocks.empty()) {
      std::string ck = pick(clocks);
      add("(x_when" + n + ": " + ty + ") when " + ck, "x_when" + n + " = " + pick(by_type[t]) + " when " + ck);
    }
  }
  if (!by_type[1].empty()) {
    add("x_sum: int", "x_sum = 0 -> pre x_sum + " + pick(by_type[1]));
    add("x_div: int", "x_div = 100 div " + pick(by_type[1]));
    if (!clocks.empty()) {
      std::string ck = pick(clocks);
      add("(x_count: int) when " + ck,
          "x_count = (0 when " + ck + ") -> pre x_count + (" + pick(by_type[1]) + " when " + ck + ")");
    }
  }

  Variants v;
  std::string all_decls = declarations + extra_decls;
  std::string head = generated.substr(0, var_at);
  std::string body = "let\n" + equations + extra_eqs + "tel.\n";
  v.with_locals = head + "\nvar\n" + all_decls + body;
  // Every declaration moves to the outputs' list.
  std::string outputs;
  std::istringstream decls(all_decls);
  for (std::string line; std::getline(decls, line); v.nb_locals++)
    outputs += "; " + line.substr(2, line.size() - 3);
  size_t close = head.rfind(");");
  v.as_outputs = head.substr(0, close) + outputs + ");\n" + body;
  return v;
}

RPExe* load(const std::string& text) {
  RPEcExe* p = new RPEcExe();  // never freed, as in the tool
  std::string path = testsupport::write_temp(text, ".ec");
  EXPECT_EQ(p->init(path.c_str(), new SymbolTable(1000, 5041)), 0) << text;
  unlink(path.c_str());
  return p;
}

// A cell of a trace: the value's text, nil, divbyzero, or empty when absent.
std::string cell(FlowType type, FlowValue v, int status) {
  char text[kValueTextMax];
  return std::string(text, format_cell(type, v, status, text));
}

// Random inputs: small ints (zero often, so that divisions fail), bools,
// reals of either sign.
FlowValue random_input(FlowType type, std::mt19937& rng) {
  FlowValue v;
  if (type == FlowType::Real) v.d = static_cast<int>(rng() % 41 - 20) * 0.25;
  else if (type == FlowType::Bool) v.i = static_cast<int32_t>(rng() % 2);
  else v.i = static_cast<int32_t>(rng() % 7) - 3;
  return v;
}

TEST(LocalsTest, EveryLocalAsTracedMatchesItsOwnOutput) {
  std::string name = "locals_" + std::to_string(getpid());
  int absent = 0, undefined = 0, cells = 0;
  for (int seed = 1; seed <= kPrograms; seed++) {
    std::string command = std::string(GEN_PROGRAM) + " 30 " + std::to_string(seed) + " " + ::testing::TempDir() +
                          " --name " + name + " --inputs 3 --outputs 2 > /dev/null";
    ASSERT_EQ(system(command.c_str()), 0) << command;
    Variants v = variants(testsupport::file_text(::testing::TempDir() + name + ".ec"), seed);
    SCOPED_TRACE("seed " + std::to_string(seed) + ":\n" + v.with_locals);
    ProgramFlows a(load(v.with_locals), true), b(load(v.as_outputs), false);
    ASSERT_EQ(static_cast<int>(a.locals.size()), v.nb_locals);
    InstantRunner run_a(a, ProblemPolicy::Continue), run_b(b, ProblemPolicy::Continue);
    std::mt19937 rng(seed);
    InstantRecord ra, rb;
    for (int t = 0; t < kInstants; t++) {
      if (t == kInstants / 2) {
        run_a.reset();
        run_b.reset();
      }
      std::vector<FlowValue> inputs;
      for (const Flow& f : a.inputs) inputs.push_back(random_input(f.type, rng));
      run_a.run(inputs.data(), &ra);
      run_b.run(inputs.data(), &rb);
      for (size_t k = 0; k < a.locals.size(); k++) {
        const Flow& f = a.locals[k];
        FlowKind kind;
        int at;
        ASSERT_TRUE(b.find(f.name, &kind, &at) && kind == FlowKind::Output) << f.name;
        ASSERT_EQ(cell(f.type, ra.locals[k], ra.local_status[k]), cell(f.type, rb.outputs[at], rb.output_status[at]))
            << "local " << f.name << " at instant " << t + 1;
        absent += ra.local_status[k] == RP_ABSENT;
        undefined += ra.local_status[k] == RP_NIL || ra.local_status[k] == RP_DIVBYZERO;
        cells++;
      }
    }
  }
  unlink((::testing::TempDir() + name + ".ec").c_str());
  unlink((::testing::TempDir() + name + ".c").c_str());
  // The programs reach every kind of cell.
  EXPECT_GT(absent, cells / 100);
  EXPECT_GT(undefined, cells / 100);
}

}  // namespace
