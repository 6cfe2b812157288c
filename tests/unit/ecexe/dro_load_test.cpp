// dro_load_test.cpp -- loading compiled programs and driving them through
// the reactive program interface, with the loader's refusals. The examples'
// own behaviour is stepped in a real session (session.test).
#include "ecexe/dro_load.h"

#include <gtest/gtest.h>

#include <string>

#include "test_support.h"

namespace {

std::string dro(const char* dir, const char* stem) {
  return std::string(TAVIK_BINARY_DIR) + dir + stem + ".dro";
}

// Loads a program that must load; the object lives to the end of the process
// like the session's, since a shared object is never closed.
DROLoad* load_ok(const std::string& path) {
  DROLoad* program = testsupport::kept(new DROLoad);
  const char* error = program->load(path.c_str());
  EXPECT_EQ(error, nullptr) << path << ": " << (error ? error : "");
  return program;
}

int& int_at(void* loc) { return *static_cast<int*>(loc); }

}  // namespace

TEST(DROLoadTest, ExamplesListTheirInterface) {
  const struct {
    const char* stem;
    const char* signature;  // name(inputs) outputs
  } table[] = {
      {"counter", "counter(reset:bool incr:int) count:int"},
      {"filter", "filter(x:real k:real) y:real settled:bool"},
  };
  for (const auto& s : table) {
    RPExe* p = load_ok(dro("/examples/", s.stem));
    std::string text = std::string(p->name()) + "(";
    for (int i = 0; i < p->nb_inputs(); i++)
      text += std::string(i ? " " : "") + p->input_ident(i) + ":" + p->input_type(i);
    text += ")";
    for (int i = 0; i < p->nb_outputs(); i++) {
      text += std::string(" ") + p->output_ident(i) + ":" + p->output_type(i);
      for (int j = 0; j < p->nb_inputs(); j++) EXPECT_NE(p->input_loc(j), p->output_loc(i));
    }
    EXPECT_EQ(text, s.signature);
    // A compiled program has no assertions, no locals and no split protocol.
    EXPECT_EQ(p->nb_assertions() + p->nb_locals() + p->allows_eval_outputs(), 0);
    EXPECT_EQ(p->local_loc(0), nullptr);
  }
}

TEST(DROLoadTest, LoadCallsInitThenOneResetAndStepsPassTheirResult) {
  RPExe* probe = load_ok(dro("/tests/dro/", "probe"));
  EXPECT_EQ(int_at(probe->output_loc(1)), 1);  // inits
  EXPECT_EQ(int_at(probe->output_loc(2)), 1);  // resets
  probe->reset_history();
  EXPECT_EQ(int_at(probe->output_loc(2)), 2);

  RPExe* no_init = load_ok(dro("/tests/dro/", "null_init"));
  EXPECT_EQ(no_init->nb_inputs(), 0);
  EXPECT_EQ(int_at(no_init->output_loc(0)), 1);

  RPExe* failing = load_ok(dro("/tests/dro/", "failing_step"));
  ASSERT_EQ(failing->step(), 0);
  int_at(failing->input_loc(0)) = 1;
  EXPECT_EQ(failing->step(), 7);
}

TEST(DROLoadTest, RefusalsGiveTheLoaderText) {
  const struct {
    const char* stem;
    std::string expected;  // the whole text, or a part of the loader's own
    bool whole;
  } table[] = {
      {"version_1_10", "Bad DRO version, expected 1.1, get 1.10\n", true},
      {"version_1_1a", "Bad DRO version, expected 1.1, get 1.1a\n", true},
      {"no_desc", "undefined symbol: dro_desc", false},
      {"absent", "absent.dro: cannot open shared object file", false},
  };
  for (const auto& c : table) {
    DROLoad program;
    const char* error = program.load(dro("/tests/dro/", c.stem).c_str());
    ASSERT_NE(error, nullptr) << c.stem;
    if (c.whole)
      EXPECT_EQ(std::string(error), c.expected);
    else
      EXPECT_NE(std::string(error).find(c.expected), std::string::npos) << error;
  }
}

TEST(DROLoadDeathTest, SplitProtocolIsRefused) {
  DROLoad* p = load_ok(dro("/examples/", "counter"));
  EXPECT_EXIT(p->init_step(), ::testing::ExitedWithCode(1),
              "^RPExe::init_step\\(\\) not available for this instance$");
  EXPECT_EXIT(p->end_step(), ::testing::ExitedWithCode(1),
              "^RPExe::end_step\\(\\) not available for this instance$");
  EXPECT_EXIT(p->eval_outputs(), ::testing::ExitedWithCode(1), "^RPExe only virtual$");
}
