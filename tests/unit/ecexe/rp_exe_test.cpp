// rp_exe_test.cpp -- the defaults of the abstract reactive program: what a
// bare implementation answers and which calls end the process.
#include "ecexe/rp_exe.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

// Overrides nothing: every answer is the base class's.
class BareProgram : public RPExe {};

}  // namespace

TEST(RPExeTest, OptionalPartsDefaultToNothing) {
  BareProgram p;
  EXPECT_EQ(p.nb_assertions(), 0);
  EXPECT_EQ(p.nb_locals(), 0);
  EXPECT_EQ(p.local_ident(0), nullptr);
  EXPECT_EQ(p.local_type(0), nullptr);
  EXPECT_EQ(p.local_loc(0), nullptr);
  EXPECT_EQ(p.local_status(0), RP_NIL);
  EXPECT_EQ(p.allows_eval_outputs(), 0);
}

TEST(RPExeDeathTest, RequiredOperationsAreFatal) {
  BareProgram p;
  const std::function<void()> calls[] = {
      [&] { p.name(); },          [&] { p.nb_inputs(); },        [&] { p.input_ident(0); },
      [&] { p.input_type(0); },   [&] { p.nb_outputs(); },       [&] { p.output_ident(0); },
      [&] { p.output_type(0); },  [&] { p.input_loc(0); },       [&] { p.output_loc(0); },
      [&] { p.step(); },          [&] { p.output_status(0); },   [&] { p.reset_history(); },
      [&] { p.assert_status(0); }, [&] { p.eval_outputs(); },
  };
  for (const auto& call : calls)
    EXPECT_EXIT(call(), ::testing::ExitedWithCode(1), "^RPExe only virtual$");
}
