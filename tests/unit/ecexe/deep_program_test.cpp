// deep_program_test.cpp -- a program whose definitions chain further than a
// process stack could follow by recursion loads, steps and resets, with the
// values its meaning gives.
#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>
#include <string>

#include "ecexe/rp_ec_exe.h"
#include "network/net_fixture.h"

namespace {

// v0 = a; v(k) = v(k-1) + 1, one chain of n definitions, with a memory at
// its far end: o = v(n-1), m = 0 -> pre o.
std::string chain(int n) {
  std::string text = "node chain(a: int) returns (o, m: int);\nvar ";
  for (int k = 0; k < n; k++) text += "v" + std::to_string(k) + ": int; ";
  text += "\nlet\n  v0 = a;\n";
  for (int k = 1; k < n; k++)
    text += "  v" + std::to_string(k) + " = v" + std::to_string(k - 1) + " + 1;\n";
  text += "  o = v" + std::to_string(n - 1) + ";\n  m = 0 -> pre o;\ntel\n";
  return text;
}

// Runs `body` on a thread with a 256 KB stack, so that a chain of a few
// thousand links is already too deep to follow by recursion.
void on_small_stack(const std::function<void()>& body) {
  pthread_attr_t attr;
  pthread_attr_init(&attr);
  pthread_attr_setstacksize(&attr, 256 * 1024);
  pthread_t thread;
  auto run = [](void* arg) -> void* {
    (*static_cast<const std::function<void()>*>(arg))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attr, run, const_cast<std::function<void()>*>(&body)), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attr);
}

TEST(DeepProgramTest, LongChainLoadsStepsAndResets) {
  on_small_stack([] {
    const int n = 20000;
    RPEcExe* p = new RPEcExe();
    ASSERT_EQ(p->init(nettest::write_temp(chain(n)).c_str(), nettest::symbols()), 0);
    int* a = static_cast<int*>(p->input_loc(0));
    int* o = static_cast<int*>(p->output_loc(0));
    int* m = static_cast<int*>(p->output_loc(1));
    *a = 5;
    ASSERT_EQ(p->step(), 0);
    EXPECT_EQ(*o, 5 + n - 1);
    EXPECT_EQ(*m, 0);
    *a = 7;
    ASSERT_EQ(p->step(), 0);
    EXPECT_EQ(*o, 7 + n - 1);
    EXPECT_EQ(*m, 5 + n - 1);
    p->reset_history();
    ASSERT_EQ(p->step(), 0);
    EXPECT_EQ(*m, 0);
  });
}

}  // namespace
