// local_status_test.cpp -- locals report the statuses their items had when
// the outputs were last evaluated, whether the outputs need them or only
// the memories do, and keep reporting them after a reset; their locations
// hold their current values.
#include <gtest/gtest.h>

#include <string>

#include "ecexe/rp_ec_exe.h"
#include "network/net_fixture.h"

namespace {

// `seen` is needed by the output; `later` only by a memory, so it is
// computed at the end of each instant, after the statuses were read.
RPEcExe* load_program() {
  const std::string text =
      "node l(a: int) returns (o: int);\nvar seen, later: int;\n"
      "let seen = a + 1; later = a * 2; o = seen + (0 -> pre later); tel\n";
  RPEcExe* p = new RPEcExe();
  EXPECT_EQ(p->init(nettest::write_temp(text).c_str(), nettest::symbols()), 0);
  return p;
}

TEST(LocalStatusTest, StatusesAsTheLastEvaluationLeftThemAndLocationsThatFollow) {
  RPEcExe* p = load_program();
  ASSERT_EQ(p->nb_locals(), 2);
  const int* seen = static_cast<int*>(p->local_loc(0));
  const int* later = static_cast<int*>(p->local_loc(1));
  int* a = static_cast<int*>(p->input_loc(0));
  *a = 3;
  p->init_step();
  ASSERT_EQ(p->eval_outputs(), 0);
  EXPECT_EQ(p->local_status(0), RP_DEFINED);
  EXPECT_EQ(p->local_status(1), RP_NIL);  // not computed yet
  p->end_step();
  EXPECT_EQ(p->local_status(1), RP_NIL);  // still as the evaluation left it
  EXPECT_EQ(*static_cast<int*>(p->local_loc(1)), 6);
  ASSERT_EQ(p->step(), 0);
  EXPECT_EQ(p->local_status(1), RP_DEFINED);
  p->reset_history();
  EXPECT_EQ(p->local_status(0), RP_DEFINED);
  EXPECT_EQ(p->local_status(1), RP_DEFINED);
  for (int v : {3, -4, 10}) {
    *a = v;
    ASSERT_EQ(p->step(), 0);
    EXPECT_EQ(*seen, v + 1);
    EXPECT_EQ(*later, 2 * v);
  }
}

}  // namespace
