// dro_load_test.cpp -- loading compiled programs and driving them through
// the reactive program interface, with the loader's refusals.
#include "ecexe/dro_load.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::string example(const char* stem) {
  return std::string(TAVIK_BINARY_DIR) + "/examples/" + stem + ".dro";
}

std::string test_program(const char* stem) {
  return std::string(TAVIK_BINARY_DIR) + "/tests/dro/" + stem + ".dro";
}

// Loads a program that must load; the object lives to the end of the process
// like the session's, since a shared object is never closed.
DROLoad* load_ok(const std::string& path) {
  static auto* loaded = new std::vector<DROLoad*>;  // reachable, never freed
  DROLoad* program = new DROLoad;
  loaded->push_back(program);
  const char* error = program->load(path.c_str());
  EXPECT_EQ(error, nullptr) << path << ": " << (error ? error : "");
  return program;
}

int& int_at(void* loc) { return *static_cast<int*>(loc); }
double& real_at(void* loc) { return *static_cast<double*>(loc); }

struct Signature {
  const char* stem;
  const char* name;
  const char* inputs;   // "ident:type" joined by blanks
  const char* outputs;
};

std::string inputs_of(RPExe* p) {
  std::string s;
  for (int i = 0; i < p->nb_inputs(); i++)
    s += std::string(i ? " " : "") + p->input_ident(i) + ":" + p->input_type(i);
  return s;
}

std::string outputs_of(RPExe* p) {
  std::string s;
  for (int i = 0; i < p->nb_outputs(); i++)
    s += std::string(i ? " " : "") + p->output_ident(i) + ":" + p->output_type(i);
  return s;
}

}  // namespace

TEST(DROLoadTest, ExamplesListTheirInterface) {
  const Signature table[] = {
      {"counter", "counter", "reset:bool incr:int", "count:int"},
      {"filter", "filter", "x:real k:real", "y:real settled:bool"},
      {"ballot", "ballot",
       "v0:bool v1:bool v2:bool v3:bool v4:bool v5:bool v6:bool v7:bool v8:bool v9:bool "
       "quorum:int",
       "yes:int passed:bool rounds:int"},
  };
  for (const Signature& s : table) {
    SCOPED_TRACE(s.stem);
    RPExe* p = load_ok(example(s.stem));
    EXPECT_STREQ(p->name(), s.name);
    EXPECT_EQ(inputs_of(p), s.inputs);
    EXPECT_EQ(outputs_of(p), s.outputs);
    // Distinct storage for every variable.
    for (int i = 0; i < p->nb_inputs(); i++) {
      ASSERT_NE(p->input_loc(i), nullptr);
      for (int j = 0; j < p->nb_outputs(); j++) EXPECT_NE(p->input_loc(i), p->output_loc(j));
    }
    // A compiled program has no assertions, no locals and no split protocol.
    EXPECT_EQ(p->nb_assertions(), 0);
    EXPECT_EQ(p->nb_locals(), 0);
    EXPECT_EQ(p->local_status(0), RP_NIL);
    EXPECT_EQ(p->local_loc(0), nullptr);
    EXPECT_EQ(p->allows_eval_outputs(), 0);
  }
}

TEST(DROLoadTest, CounterStepsAndResets) {
  RPExe* p = load_ok(example("counter"));
  int& reset = int_at(p->input_loc(0));
  int& incr = int_at(p->input_loc(1));
  const int& count = int_at(p->output_loc(0));
  const int incrs[] = {3, 4, -2};
  const int expected[] = {3, 7, 5};
  for (int i = 0; i < 3; i++) {
    incr = incrs[i];
    ASSERT_EQ(p->step(), 0);
    EXPECT_EQ(count, expected[i]);
    EXPECT_EQ(p->output_status(0), RP_DEFINED);
  }
  reset = 1;
  ASSERT_EQ(p->step(), 0);
  EXPECT_EQ(count, 0);
  reset = 0;
  incr = 5;
  ASSERT_EQ(p->step(), 0);
  EXPECT_EQ(count, 5);
  p->reset_history();
  incr = 2;
  ASSERT_EQ(p->step(), 0);
  EXPECT_EQ(count, 2) << "reset_history must forget the earlier count";
}

TEST(DROLoadTest, FilterSmoothsRealsFromItsInitialGain) {
  RPExe* p = load_ok(example("filter"));
  double& x = real_at(p->input_loc(0));
  EXPECT_DOUBLE_EQ(real_at(p->input_loc(1)), 0.5) << "init sets the gain";
  const double& y = real_at(p->output_loc(0));
  x = 4.0;
  ASSERT_EQ(p->step(), 0);
  EXPECT_DOUBLE_EQ(y, 4.0);
  x = 0.0;
  ASSERT_EQ(p->step(), 0);
  EXPECT_DOUBLE_EQ(y, 2.0);
  EXPECT_EQ(int_at(p->output_loc(1)), 0);
  ASSERT_EQ(p->step(), 0);
  EXPECT_DOUBLE_EQ(y, 1.0);
}

TEST(DROLoadTest, BallotCountsElevenInputs) {
  RPExe* p = load_ok(example("ballot"));
  ASSERT_EQ(p->nb_inputs(), 11);
  for (int i = 0; i < 10; i++) int_at(p->input_loc(i)) = i % 3 == 0;  // v0 v3 v6 v9
  int_at(p->input_loc(10)) = 4;
  ASSERT_EQ(p->step(), 0);
  EXPECT_EQ(int_at(p->output_loc(0)), 4);
  EXPECT_EQ(int_at(p->output_loc(1)), 1);
  int_at(p->input_loc(9)) = 0;
  ASSERT_EQ(p->step(), 0);
  EXPECT_EQ(int_at(p->output_loc(1)), 0);
  EXPECT_EQ(int_at(p->output_loc(2)), 1);
}

TEST(DROLoadTest, LoadCallsInitThenOneReset) {
  RPExe* probe = load_ok(test_program("probe"));
  EXPECT_EQ(int_at(probe->output_loc(1)), 1);  // inits
  EXPECT_EQ(int_at(probe->output_loc(2)), 1);  // resets
  probe->reset_history();
  EXPECT_EQ(int_at(probe->output_loc(2)), 2);

  RPExe* no_init = load_ok(test_program("null_init"));
  EXPECT_STREQ(no_init->name(), "null_init");
  EXPECT_EQ(no_init->nb_inputs(), 0);
  EXPECT_EQ(int_at(no_init->output_loc(0)), 1);
}

TEST(DROLoadTest, FailingStepPassesItsResultOn) {
  RPExe* p = load_ok(test_program("failing_step"));
  ASSERT_EQ(p->step(), 0);
  int_at(p->input_loc(0)) = 1;
  EXPECT_EQ(p->step(), 7);
  EXPECT_EQ(int_at(p->output_loc(0)), 1);
}

TEST(DROLoadTest, RefusalsGiveTheLoaderText) {
  struct Case {
    std::string path;
    std::string expected;  // the whole text, or a part of the loader's own
    bool whole;
  };
  const Case table[] = {
      {test_program("version_1_10"), "Bad DRO version, expected 1.1, get 1.10\n", true},
      {test_program("version_1_1a"), "Bad DRO version, expected 1.1, get 1.1a\n", true},
      {test_program("no_desc"), "undefined symbol: dro_desc", false},
      {test_program("absent"), "absent.dro: cannot open shared object file", false},
  };
  for (const Case& c : table) {
    SCOPED_TRACE(c.path);
    DROLoad program;
    const char* error = program.load(c.path.c_str());
    ASSERT_NE(error, nullptr);
    if (c.whole)
      EXPECT_EQ(std::string(error), c.expected);
    else
      EXPECT_NE(std::string(error).find(c.expected), std::string::npos) << error;
  }
}

using DROLoadDeathTest = ::testing::Test;

TEST(DROLoadDeathTest, SplitProtocolIsRefused) {
  DROLoad* p = load_ok(example("counter"));
  EXPECT_EXIT(p->init_step(), ::testing::ExitedWithCode(1),
              "^RPExe::init_step\\(\\) not available for this instance$");
  EXPECT_EXIT(p->end_step(), ::testing::ExitedWithCode(1),
              "^RPExe::end_step\\(\\) not available for this instance$");
  EXPECT_EXIT(p->eval_outputs(), ::testing::ExitedWithCode(1), "^RPExe only virtual$");
  EXPECT_EXIT(p->assert_status(0), ::testing::ExitedWithCode(1), "^RPExe only virtual$");
}
