// net_interface_test.cpp -- the locals of a normalised ec program and the
// natures left in the networks of every ec program of the source tree.
// The records of inputs, outputs and assertions show in the ecprint output
// checked in norm_print_test.cpp.
#include <gtest/gtest.h>
#include <glob.h>

#include <cstring>
#include <map>

#include "norm_fixture.h"
#include "normalise/net_interface.h"

namespace {

NetInterface* load(const std::string& text) {
  NetInterface* ni = normtest::kept(new NetInterface());
  EXPECT_EQ(ni->init(nettest::write_temp(text).c_str(), normtest::symbols(), 0, 0), 0);
  return ni;
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

TEST(NetInterfaceDeathTest, TheLoadChecksTheProgramBeforeNormalising) {
  // A cycle within an instant, which the evaluator could not order; a cycle
  // of renamings, which the normaliser reports in its own words.
  const char* cases[][2] = {
      {"let o = o + 1; tel", ":1: 'o' depends on itself within an instant: o -> o"},
      {"var l: int; let o = l; l = o; tel", "NormNet::through_ref : '"},
  };
  for (const auto& c : cases) {
    std::string path = nettest::write_temp(std::string("node n(i: int) returns (o: int); ") + c[0] + "\n");
    EXPECT_EXIT(NetInterface(path.c_str(), normtest::symbols()), ::testing::ExitedWithCode(1),
                testsupport::literal(c[1]));
  }
}

TEST(NetInterfaceDeathTest, ConstructorEndsTheProcessOnASyntaxError) {
  std::string path = nettest::write_temp("node n(a: bool) returns (o: bool); let o = ; tel\n");
  EXPECT_EXIT(NetInterface(path.c_str(), normtest::symbols()), ::testing::ExitedWithCode(1),
              "^syntax errors\\.\\.\\.\n$");
}

// The ec programs of the source tree, found when the test runs so that new
// ones are checked too.
std::vector<std::string> ec_programs() {
  std::vector<std::string> paths;
  for (const char* dir : {"/tests/ec/", "/examples/"}) {
    std::string pattern = std::string(TAVIK_SOURCE_DIR) + dir + "*.ec";
    glob_t found;
    if (glob(pattern.c_str(), 0, nullptr, &found) == 0)
      paths.insert(paths.end(), found.gl_pathv, found.gl_pathv + found.gl_pathc);
    globfree(&found);
  }
  return paths;
}

// The natures the evaluator has no item for, among the nodes reached from
// the interface; a tuple counts only where it is not a call's argument.
std::set<std::string> refused_natures(const NetInterface* ni) {
  static const std::set<ExpNature> refused = {
      ERROR_n, ECREF_n, MODELREF_n, PRE_n, CURRENT_n, ARROW_n, WHEN_n, POWER_n,
      EXACTONE, RCL_n, ICL_n, PROJ_n};
  std::set<std::string> names;
  std::vector<Exp*> stack(ni->output_nodes, ni->output_nodes + ni->nb_outputs);
  stack.insert(stack.end(), ni->assertion_nodes, ni->assertion_nodes + ni->nb_assertions);
  stack.insert(stack.end(), ni->local_nodes, ni->local_nodes + ni->nb_locals);
  for (Exp* e : stack)
    if (e->nature == TUPLE_n) names.insert("TUPLE_n");
  std::set<Exp*> seen;
  while (!stack.empty()) {
    Exp* e = stack.back();
    stack.pop_back();
    if (!seen.insert(e).second) continue;
    if (refused.count(e->nature)) names.insert(nodekey(e->nature));
    for (int i = 0; i < e->arity; i++) {
      if (e->operands[i]->nature == TUPLE_n && e->nature != CALL_n) names.insert("TUPLE_n");
      stack.push_back(e->operands[i]);
    }
  }
  return names;
}

TEST(NetInterfaceTest, ProgramsOfTheTreeNormaliseToEvaluableNatures) {
  // Power, exactly-one and tuple projection have no normal form of their
  // own and the evaluator refuses them; these two files use every operator
  // of the language on purpose.
  const std::map<std::string, std::set<std::string>> kept = {
      {"/tests/ec/decls.ec", {"PROJ_n"}},
      {"/tests/ec/exprs.ec", {"EXACTONE", "POWER_n"}},
  };
  std::vector<std::string> paths = ec_programs();
  ASSERT_GE(paths.size(), 5u);
  for (const std::string& path : paths) {
    NetInterface* ni = normtest::kept(new NetInterface(path.c_str(), normtest::symbols()));
    auto expected = kept.find(path.substr(strlen(TAVIK_SOURCE_DIR)));
    std::set<std::string> allowed = expected == kept.end() ? std::set<std::string>() : expected->second;
    EXPECT_EQ(refused_natures(ni), allowed) << path;
    EXPECT_GT(ni->nb_outputs, 0) << path;
  }
}

}  // namespace
