// norm_print_test.cpp -- the ecprint tool on normalised networks: the text
// of a small program, expected as derived by hand, minimised and not.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <sys/wait.h>

#include "network/net_fixture.h"

namespace {

// Input a is also output z; x, y and the local l are one node once
// minimised; the memory of s reads its own sampled flow.
const char* kProgram =
    "node n(a, b: bool; (i: int) when a) returns (x, y, z: bool; (s: int) when a);\n"
    "var l: bool;\n"
    "let\n"
    "  l = a and b;\n"
    "  x = l;\n"
    "  y = a and b;\n"
    "  z = a;\n"
    "  s = 0 -> pre s + i;\n"
    "  assert not l;\n"
    "tel\n";

struct ToolRun { int status; std::string out; std::string err; };

ToolRun run_ecprint(const std::string& args) {
  std::string err_path = nettest::write_temp("") + ".err";
  std::string command = std::string(TAVIK_BINARY_DIR) + "/ecprint " + args + " 2>" + err_path;
  FILE* pipe = popen(command.c_str(), "r");
  EXPECT_NE(pipe, nullptr) << command;
  ToolRun run{-1, "", ""};
  if (!pipe) return run;
  char buffer[4096];
  for (size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) run.out.append(buffer, n);
  int raw = pclose(pipe);
  run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  run.err = testsupport::file_text(err_path);
  return run;
}

struct ToolCase {
  const char* options;
  const char* program;
  int status;
  const char* out;
  const char* err;
};

TEST(NormPrintTest, ToolPrintsTheNormalisedNetwork) {
  const char* bad = "node n(a: bool) returns (o: bool);\nlet o = ; tel\n";
  const ToolCase cases[] = {
      {"--norm", kProgram, 0,
       "node n\n"
       "   a on true : input 1 'a', output 3 'z'\n"
       "   b on true : input 2 'b'\n"
       "   i on a : input 3 'i'\n"
       "   #1 = AND_n(a, b) on true : output 1 'x', output 2 'y', local 1 'l'\n"
       "   #2 = IF_n(a, #3, nil) on true : output 4 's'\n"
       "   #3 = IF_n(#4, 0, #5) on a\n"
       "   #4 = INIT_n(a) on true\n"
       "   #5 = PLUS_n(#6, i) on a\n"
       "   #6 = LAST_n(#2) on true\n"
       "   #7 = NOT_n(#1) on true : assertion 1\n"
       "9 nodes, 7 classes\n",
       ""},
      // Unminimised, y keeps a node of its own and the memory reads a
      // second copy of s's sampled flow (only these lines are checked).
      {"-v --no-min", kProgram, 0,
       "   #2 = AND_n(a, b) on true : output 2 'y'\n"
       "   #7 = LAST_n(#8) on true\n   #8 = IF_n(a, #4, nil) on true\n"
       "   #9 = NOT_n(#1) on true : assertion 1\n9 nodes, 9 classes\n",
       "start normalisation ... done\nno network minimization (9 nodes)\n"},
      // A network without nodes: an output equal to a constant.
      {"-v --norm", "node n(a: bool) returns (o: int);\nlet o = 3; tel\n", 0,
       "node n\n   a on true : input 1 'a'\n   3 on true : output 1 'o'\n0 nodes, 0 classes\n",
       "start normalisation ... done\nstart minimal network generation . done (0 -> 0 nodes)\n"},
      // Implications swapped are not merged: the split takes a second pass,
      // announced by a second dot.
      {"-v --norm", "node n(a, b: bool) returns (x, y: bool);\nlet x = a => b; y = b => a; tel\n", 0,
       "node n\n   a on true : input 1 'a'\n   b on true : input 2 'b'\n"
       "   #1 = IMPL_n(a, b) on true : output 1 'x'\n   #2 = IMPL_n(b, a) on true : output 2 'y'\n"
       "2 nodes, 2 classes\n",
       "start normalisation ... done\nstart minimal network generation .. done (2 -> 2 nodes)\n"},
      {"--norm", bad, 1, "syntax error     - at line 2\n", "syntax errors...\n"},
      {"--normal", kProgram, 1, "", "usage: ecprint [-v] [--lex | --norm | --no-min] FILE.ec\n"},
  };
  for (const ToolCase& t : cases) {
    std::string args = std::string(t.options) + " " + nettest::write_temp(t.program);
    ToolRun run = run_ecprint(args);
    EXPECT_EQ(run.status, t.status) << args;
    if (strstr(t.options, "--no-min"))
      for (size_t from = 0, to; (to = std::string(t.out).find('\n', from)) != std::string::npos; from = to + 1)
        EXPECT_NE(run.out.find(std::string(t.out).substr(from, to + 1 - from)), std::string::npos) << run.out;
    else
      EXPECT_EQ(run.out, t.out) << args;
    EXPECT_EQ(run.err, t.err) << args;
  }
}

}  // namespace
