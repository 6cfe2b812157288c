// norm_minimize_test.cpp -- classes found by minimisation, the shared
// representatives built from them, and the boolean optimisation's report.
// The minimisation's progress messages are checked through ecprint.
#include <gtest/gtest.h>

#include "foundations/errors.h"
#include "norm_fixture.h"

using normtest::key;
using normtest::norm_term;
using normtest::parse_norm;

namespace {

const char* kHeader =
    "unsafe function u(a: int) returns (r: int);\n"
    "function f(a: int) returns (r: int);\n"
    "node n(a, b, c: bool; i: int)\n";

NormNet* built(const std::string& body, int mode = 0) {
  NormNet* net = parse_norm(std::string(kHeader) + body, mode);
  net->build();
  return net;
}

struct ClassCase { const char* body; int nodes; int classes; };

TEST(NormMinimizeTest, ClassCountsDerivedByHand) {
  const ClassCase cases[] = {
      // Commutative operands in either order are one class.
      {"returns (x, y: bool);\nlet x = a and b; y = b and a; tel\n", 2, 1},
      // Not commutative: two classes.
      {"returns (x, y: bool);\nlet x = a => b; y = b => a; tel\n", 2, 2},
      // Same nature and operands on different clocks: never merged (the
      // IF node that samples x is a third class).
      {"returns ((x: bool) when c; y: bool);\nlet x = a and b; y = a and b; tel\n", 3, 3},
      // Two calls of an unsafe function stay apart; safe calls merge.
      {"returns (x, y: int);\nlet x = u(i); y = u(i); tel\n", 2, 2},
      {"returns (x, y: int);\nlet x = f(i); y = f(i); tel\n", 2, 1},
      // Recursion through pre: x and y are the same counter; z differs only
      // by its step. One INIT node; IF, PLUS, LAST each for {x, y} and {z}.
      {"returns (x, y, z: int);\n"
       "let x = 0 -> pre x + 1; y = 0 -> pre y + 1; z = 0 -> pre z + 2; tel\n",
       10, 7},
      // A network without nodes.
      {"returns (x: int);\nlet x = i; tel\n", 0, 0},
  };
  for (const ClassCase& t : cases) {
    NormNet* net = built(t.body);
    EXPECT_EQ(net->nb_nodes, t.nodes) << t.body;
    EXPECT_EQ(net->nb_classes, t.classes) << t.body;
    // Every node ends in the class its mark names, the classes cover the
    // node list, and there is one representative per class.
    int members = 0;
    for (int c = 1; c <= net->nb_classes; c++)
      for (NormNet::NodeEntry* e = net->class_members(c); e; e = e->next, members++)
        EXPECT_EQ(e->exp->mark, c) << t.body;
    EXPECT_EQ(members, t.nodes) << t.body;
    EXPECT_EQ(static_cast<int>(net->representatives.size()), t.classes) << t.body;
  }
}

// Merged variables share one representative, which is in the sharing
// table (building the same node again finds it) and whose memory reads the
// representative itself, not a reference to a variable.
TEST(NormMinimizeTest, RepresentativesAreSharedAndFormTheMemoryCycle) {
  NormNet* net = built("returns (x, y: bool);\nlet x = a and b; y = b and a; tel\n");
  Exp* x = net->norm(key("x"));
  EXPECT_EQ(x, net->norm(key("y")));
  EXPECT_EQ(x, net->representative(1));
  EXPECT_EQ((*net->ctr)(AND_n, x->operands[1], x->operands[0]), x);

  net = built("returns (x, y: int);\nlet x = 0 -> pre x + 1; y = 0 -> pre y + 1; tel\n");
  x = net->norm(key("x"));
  EXPECT_EQ(x, net->norm(key("y")));
  EXPECT_EQ(norm_term(net, "x"), "IF(INIT(true),0,PLUS(LAST(@),1))");
  Exp* last = x->operands[2]->operands[0];
  ASSERT_EQ(last->nature, LAST_n);
  EXPECT_EQ(last->operands[0], x);
}

TEST(NormMinimizeTest, BoolOptimisationReportsNodeCounts) {
  NormNet* net = parse_norm(std::string(kHeader) +
                            "returns (x: bool);\nlet x = if a then true else b; tel\n");
  net->bool_optimise = 1;
  set_verbose_mode(1);
  ::testing::internal::CaptureStderr();
  net->build();
  std::string text = ::testing::internal::GetCapturedStderr();
  set_verbose_mode(0);
  EXPECT_NE(text.find("Bool optimization : 2 -> 1 nodes\n"), std::string::npos) << text;
  EXPECT_EQ(norm_term(net, "x"), "OR(a,b)");
}

TEST(NormMinimizeDeathTest, UnknownOptionModeIsFatal) {
  NormNet* net = parse_norm(std::string(kHeader) + "returns (x: int);\nlet x = i; tel\n", 4);
  EXPECT_EXIT(net->build(), ::testing::ExitedWithCode(1), "Error :\nunknown option\n");
}

}  // namespace
