// expectation_test.cpp -- expected values against one instant built by
// hand: how reals match (tolerance, NaN, infinities) and which run-time
// problems the file predicts.
#include "trace/expectation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "ecexe/rp_ec_exe.h"
#include "ecexe/rp_exe.h"
#include "foundations/symbol_table.h"
#include "test_support.h"
#include "trace/scenario_run.h"

namespace {

using testsupport::kept;
using testsupport::write_temp;

const ProgramFlows& flows() {
  static ProgramFlows* f = nullptr;
  if (!f) {
    RPEcExe* p = kept(new RPEcExe);
    std::string ec = write_temp(
        "node p(x: real) returns (y: real; n: int);\nlet\n  y = x;\n  n = pre 1;\n  assert x > 0.0;\ntel.\n", ".ec");
    EXPECT_EQ(p->init(ec.c_str(), kept(new SymbolTable(1000, 5041))), 0);
    f = kept(new ProgramFlows(p, false));
  }
  return *f;
}

// The differences the one-row file `text` finds in the instant where y is
// `y` and n has status `n_status` (value 1 when defined), with `problems`.
std::string differences(const std::string& text, double y, int n_status, std::vector<Problem> problems = {},
                        double tolerance = RunOptions().tolerance) {
  std::string path = write_temp(text, ".csv");
  Expectation e(flows(), path.c_str(), tolerance);
  std::string error;
  if (!e.check(&error)) return error;
  InstantRecord r;
  r.step = 1;
  r.inputs = {FlowValue{}};
  r.outputs.resize(2);
  r.outputs[0].d = y;
  r.outputs[1].i = 1;
  r.output_status = {RP_DEFINED, static_cast<int8_t>(n_status)};
  r.problems = problems;
  e.compare(r);
  std::string all;
  for (const std::string& line : e.first_differences) all += line + "\n";
  return all;
}

TEST(ExpectationTest, RealsMatchWithinTheToleranceNaNAnyNaNAnInfinityOnlyItself) {
  const double inf = INFINITY, nan = std::nan("");
  struct Row {
    const char* cell;
    double got;
    double tolerance;
    bool matches;
  } rows[] = {
      // 0.1 is single precision in a program: 0.1 * 20 is not 2 in double.
      {"2.0", static_cast<double>(0.1f) * 20, RunOptions().tolerance, true},
      {"2.0", 2.000003, RunOptions().tolerance, false},
      {"2.0000000298023224", static_cast<double>(0.1f) * 20, 0, true},
      {"NaN", nan, 0, true},
      {"-NaN", nan, 0, true},
      {"NaN", 1.0, inf, false},
      {"1.0", nan, inf, false},
      {"Inf", inf, 0, true},
      {"Inf", 1e308, RunOptions().tolerance, false},
      {"-Inf", inf, inf, false},
      {"5", inf, inf, false},
  };
  for (const Row& row : rows) {
    std::string found = differences(std::string("y\n") + row.cell + "\n", row.got, RP_DEFINED, {}, row.tolerance);
    std::string want = "instant 1: y expected " + std::string(row.cell) + ", got ";
    EXPECT_EQ(found.substr(0, row.matches ? std::string::npos : want.size()), row.matches ? "" : want)
        << row.cell << " against " << row.got;
  }
}

TEST(ExpectationTest, AProblemPassesOnlyWhereTheFilePredictsIt) {
  const Problem nil_n = {Problem::Output, 1, RP_NIL}, false_assert = {Problem::Assertion, 0, RP_FALSE};
  struct Row {
    const char* text;
    int n_status;
    std::vector<Problem> problems;
    const char* differences;
  } rows[] = {
      {"y,n\n1,nil\n", RP_NIL, {nil_n}, ""},
      {"y,n,problems\n1,,2th output raised nil\n", RP_NIL, {nil_n}, ""},
      {"y,n,problems\n1,,1th assert raised false; 2th output raised nil\n", RP_NIL, {false_assert, nil_n}, ""},
      {"y,n\n1,\n", RP_NIL, {nil_n}, "instant 1: 2th output raised nil, not in the expected values\n"},
      // A wrong status is one difference, not also an unexpected problem.
      {"y,n\n1,divbyzero\n", RP_NIL, {nil_n}, "instant 1: n expected divbyzero, got nil\n"},
      {"y,n\n1,nil\n", RP_NIL, {false_assert, nil_n},
       "instant 1: 1th assert raised false, not in the expected values\n"},
      {"step,y,problems\n1,1,\n", RP_DEFINED, {false_assert},
       "instant 1: problems expected none, got 1th assert raised false\n"},
      {"y,problems\n1,1th assert raised false\n", RP_DEFINED, {},
       "instant 1: problems expected 1th assert raised false, got none\n"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(differences(row.text, 1.0, row.n_status, row.problems), row.differences) << row.text;
}

}  // namespace
