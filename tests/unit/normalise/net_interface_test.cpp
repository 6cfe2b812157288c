// net_interface_test.cpp -- the interface lists of a normalised ec program
// and the records its nodes carry.
#include <gtest/gtest.h>

#include "norm_fixture.h"
#include "normalise/net_interface.h"

namespace {

NetInterface* load(const std::string& text, int opt_a = 0) {
  NetInterface* ni = normtest::kept(new NetInterface());
  EXPECT_EQ(ni->init(nettest::write_temp(text).c_str(), normtest::symbols(), opt_a, 0), 0);
  return ni;
}

TEST(NetInterfaceTest, OutputsSharingANodeAreBothRecorded) {
  NetInterface* ni = load(
      "node n(a, b: bool) returns (x, y: bool; z: bool);\n"
      "let x = a and b; y = b and a; z = a; assert x; tel\n");
  ASSERT_EQ(ni->nb_inputs, 2);
  ASSERT_EQ(ni->nb_outputs, 3);
  EXPECT_EQ(ni->output_nodes[0], ni->output_nodes[1]);
  EXPECT_EQ(ni->output_idents[1], normtest::key("y"));
  NodeRecord* r = ni->record(ni->output_nodes[0]);
  ASSERT_NE(r, nullptr);
  // The newest entry is first: output 2 above output 1.
  ASSERT_NE(r->outputs, nullptr);
  EXPECT_EQ(r->outputs->number, 2);
  EXPECT_EQ(r->outputs->count, 2);
  ASSERT_NE(r->outputs->next, nullptr);
  EXPECT_EQ(r->outputs->next->number, 1);
  EXPECT_EQ(r->outputs->next->count, 1);
  EXPECT_EQ(r->assertion, 1);
  EXPECT_EQ(ni->assertion_nodes[0], ni->output_nodes[0]);
  // An output equal to an input is the input's leaf, recorded as both.
  EXPECT_EQ(ni->output_nodes[2], ni->input_nodes[0]);
  NodeRecord* ra = ni->record(ni->input_nodes[0]);
  EXPECT_EQ(ra->input, 1);
  EXPECT_EQ(ra->outputs->number, 3);
  EXPECT_EQ(ni->record(ni->input_nodes[1])->input, 2);
}

TEST(NetInterfaceTest, LeafLocalsGetNoNumber) {
  NetInterface* ni = load(
      "node n(i: int; c: bool) returns (o: int);\n"
      "var l, m: int; (s: int) when c;\n"
      "let l = i; m = l + 1; s = m when c; o = m + (current s); tel\n");
  // l is the input's leaf; m and s (listed by its sampled value) have items.
  ASSERT_EQ(ni->nb_locals, 2);
  EXPECT_EQ(ni->local_idents[0], normtest::key("m"));
  EXPECT_EQ(ni->local_idents[1], normtest::key("s"));
  EXPECT_EQ(ni->local_nodes[0]->nature, PLUS_n);
  // s samples m: its value node is m's node, which then lists both locals.
  EXPECT_EQ(ni->local_nodes[1], ni->local_nodes[0]);
  EXPECT_EQ(ni->local_nodes[0]->ident, normtest::key("m"));
  EXPECT_EQ(ni->record(ni->local_nodes[0])->locals->count, 2);
}

TEST(NetInterfaceTest, SyntaxErrorIsReported) {
  NetInterface* ni = normtest::kept(new NetInterface());
  ::testing::internal::CaptureStderr();
  int r = ni->init(nettest::write_temp("node n(a: bool) returns (o: bool); let o = ; tel\n").c_str(),
                   normtest::symbols(), 0, 0);
  std::string text = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(r, 1);
  EXPECT_NE(text.find("syntax errors...\n"), std::string::npos) << text;
}

TEST(NetInterfaceTest, OptionAKeepsEveryNode) {
  const char* text = "node n(a, b: bool) returns (x, y: bool);\nlet x = a and b; y = b and a; tel\n";
  EXPECT_EQ(load(text)->net->nb_classes, 1);
  NetInterface* ni = load(text, 1);
  EXPECT_EQ(ni->net->nb_classes, 2);
  EXPECT_NE(ni->output_nodes[0], ni->output_nodes[1]);
}

}  // namespace
