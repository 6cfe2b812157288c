// net_check_test.cpp -- the refusals of check_program, one per kind of
// error with its exact message, and its acceptance of every well-formed
// program: random ones that mix every operator, clock and memory.
#include "network/net_check.h"

#include <sys/stat.h>

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "network/net_fixture.h"

namespace {

using nettest::parse_text;
using testsupport::literal;

// Five lines, so that the first equation is on line 6.
const char kHeader[] =
    "function sqrt(x: real) returns (y: real); function g(x: real) returns (a: int; b: int; c: int);\n"
    "node t(i: int; r: real; f, c: bool; (d: bool) when c)\n"
    "returns (y: int);\n"
    "var x: bool; z: real; (yc: int) when c; u, v: int; n, b: int;\n"
    "let\n";

void expect_program_refused(const std::string& program, const std::string& message) {
  std::string path = nettest::write_temp(program);
  Net* net = nettest::parse_file(path);
  EXPECT_EXIT(check_program(net, path.c_str()), ::testing::ExitedWithCode(1),
              literal(" Error :\n" + path + ":" + message + "\n"))
      << program;
}

void expect_refused(const std::string& body, const std::string& message) {
  expect_program_refused(kHeader + body + "\ntel\n", message);
}

TEST(NetCheckDeathTest, EachKindOfErrorIsRefusedWithItsLineVariableAndReason) {
  const struct {
    const char* body;
    const char* message;
  } cases[] = {
      {"y = i + f;", "6: 'y' = i + f: '+' needs int or real operands, f is bool"},
      {"x = not i;", "6: 'x' = not i: 'not' needs a bool operand, i is int"},
      {"y = - f;", "6: 'y' = - f: '-' needs an int or real operand, f is bool"},
      {"x = i < r;", "6: 'x' = i < r: '<' needs operands of one type, i is int, r is real"},
      {"y = if f then i else r;", "6: 'y' = if f then i else r: 'if' needs operands of one type, i is int, r is real"},
      {"y = if i then i else 0;", "6: 'y' = if i then i else 0: 'if' needs a bool condition, i is int"},
      {"y = i when i;", "6: 'y' = i when i: the clock of 'when' must be bool, i is int"},
      {"z = sqrt(r, r);", "6: 'z' = sqrt(r, r): 'sqrt' needs 1 argument, not 2"},
      {"z = sqrt(i);", "6: 'z' = sqrt(i): argument 1 of 'sqrt' must be real, i is int"},
      {"y = int i;", "6: 'y' = int i: 'int' needs a real operand, i is int"},
      {"(u, v) = g(r);", "6: (u, v) = g(r): g(r) gives 3 values for 2 variables"},
      {"y = f;", "6: 'y' = f: 'y' is int, f is bool"},
      {"y = (i when c) + i;", "6: 'y' = (i when c) + i: '+' needs operands on one clock, i when c is on c, i on the base clock"},
      {"yc = i when d;", "6: 'yc' = i when d: 'when d' needs a flow on the clock of d, i is on the base clock"},
      {"y = current i;", "6: 'y' = current i: 'current' needs a flow on a slower clock, i is on the base clock"},
      {"y = 1 + (i when c);", "6: 'y' = 1 + (i when c): 'y' is on the base clock, 1 + (i when c) on c"},
      {"y = 1;\n\ny = 2;", "8: 'y' is defined twice, first at line 6"},
      {"i = 1;", "6: 'i' is an input: no equation may define it"},
  };
  for (const auto& c : cases) expect_refused(c.body, c.message);
}

TEST(NetCheckDeathTest, DeclarationsAreRefusedAtTheirLine) {
  const struct {
    const char* program;
    const char* message;
  } cases[] = {
      {"node t(i: int)\nreturns (i: int);\nlet tel\n", "2: 'i' is declared twice"},
      {"node t(i: int)\nreturns ((y: int) when i);\nlet tel\n", "2: 'y' is on clock 'i', which is int, not bool"},
      {"node t(i: int)\nreturns (y: int);\nvar (k: bool) when k2; (k2: bool) when k;\nlet tel\n",
       "3: the clock of 'k' depends on itself: k when k2 when k"},
  };
  for (const auto& c : cases) expect_program_refused(c.program, c.message);
}

TEST(NetCheckDeathTest, AFileWithoutANodeIsRefused) {
  for (const char* text : {"", "-- a comment\n(* and another *)\n"}) {
    std::string path = nettest::write_temp(text);
    EXPECT_EXIT(check_program(nettest::parse_file(path), path.c_str()), ::testing::ExitedWithCode(1),
                literal(" Error :\n" + path + ": no node in the file\n"));
  }
  std::string dir = ::testing::TempDir() + "net_check_dir.ec";
  mkdir(dir.c_str(), 0700);
  EXPECT_EXIT(check_program(nettest::parse_file(dir), dir.c_str()), ::testing::ExitedWithCode(1),
              literal(" Error :\n" + dir + ": is a directory, not an ec file\n"));
}

TEST(NetCheckDeathTest, ACycleWithinAnInstantIsRefusedInOrder) {
  expect_refused("n = n + 1;", "6: 'n' depends on itself within an instant: n -> n");
  expect_refused("y = 0;\nu = b + 1;\nb = u + i;", "7: 'u' depends on itself within an instant: u -> b -> u");
  // A clock is read at the same instant as the flows on it.
  expect_refused("yc = n when c;\nn = current yc;", "6: 'yc' depends on itself within an instant: yc -> n -> yc");
}

TEST(NetCheckTest, CyclesThroughAMemoryAndRenamingCyclesPass) {
  // The renaming cycle is the normaliser's to report, as it always has.
  for (const char* body : {"n = 0 -> pre n + 1;", "n = i -> pre (n + b); b = n + 1;",
                           "yc = current (pre yc) when c;", "u = v; v = u;"}) {
    std::string path = nettest::write_temp(kHeader + std::string(body) + "\ntel\n");
    check_program(nettest::parse_file(path), path.c_str());
  }
}

// Random programs that are well typed and well clocked by construction:
// every flow has a type and one of the clocks base, c (on base) and d (on
// c), and each operator is given operands that fit it.
class RandomProgram {
 public:
  explicit RandomProgram(unsigned seed) : rng(seed) {}

  std::string text() {
    std::string body;
    std::string locals;
    for (int k = 0; k < 12; k++) {
      int t = pick(3), clk = pick(3);
      std::string name = "l" + std::to_string(k);
      locals += (clk ? "(" : "") + name + ": " + kTypes[t] + (clk ? std::string(") when ") + kClocks[clk] : "") + "; ";
      std::string e = expr(t, clk, 3);
      // A variable may read itself through a memory.
      if (chance(3)) e = "if " + expr(0, clk, 1) + " then " + e + " else (" + literal_of(t) + " -> pre " + name + ")";
      flows[t][clk].push_back(name);
      body += name + " = " + e + ";\n";
    }
    body += "o = false -> pre o or " + expr(0, 0, 2) + ";\n(p, q) = pair(" + expr(1, 0, 2) + ", " + expr(2, 0, 2) + ");\n";
    body += "assert " + expr(0, 1, 2) + ";\n";
    return "type T = (red, green);\nfunction pair(x: int; y: real) returns (a: bool; b: int);\n"
           "node rnd(b0: bool; i0: int; r0: real; c: bool; (d: bool) when c; (ic: int) when c; "
           "(rd: real) when d)\nreturns (o: bool; p: bool; q: int);\nvar " + locals + "\nlet\n" + body + "tel\n";
  }

 private:
  int pick(int n) { return static_cast<int>(rng() % n); }
  bool chance(int in) { return pick(in) == 0; }
  std::string literal_of(int t) {
    const char* const kLiterals[3][2] = {{"true", "false"}, {"0", "7"}, {"0.5", "2.0"}};
    return kLiterals[t][pick(2)];
  }
  std::string leaf(int t, int clk) {
    const std::vector<std::string>& names = flows[t][clk];
    if (names.empty() || chance(4)) return literal_of(t);
    return names[pick(static_cast<int>(names.size()))];
  }
  std::string both(int t, int clk, int depth, const char* op) {
    return "(" + expr(t, clk, depth) + " " + op + " " + expr(t, clk, depth) + ")";
  }

  std::string expr(int t, int clk, int depth) {
    if (depth == 0) return leaf(t, clk);
    depth--;
    switch (pick(8)) {
      case 0: return leaf(t, clk);
      case 1: return "(if " + expr(0, clk, depth) + " then " + expr(t, clk, depth) + " else " + expr(t, clk, depth) + ")";
      case 2: return "pre " + leaf(t, clk);
      case 3: return both(t, clk, depth, "->");
      case 4:  // a flow sampled on the next clock and brought back, or sampled from the one below
        if (clk < 2 && chance(2))
          return "current (" + expr(t, clk, depth) + " when " + kClocks[clk + 1] + ")";
        if (clk > 0) return "(" + expr(t, clk - 1, depth) + " when " + kClocks[clk] + ")";
        return leaf(t, clk);
      default: break;
    }
    if (t == 0) {
      const char* const kLogic[] = {"and", "or", "xor", "=>", "="};
      if (chance(3)) return both(1 + pick(2), clk, depth, chance(2) ? "<=" : "<>");
      if (chance(4)) return "#(" + expr(0, clk, depth) + ", " + expr(0, clk, depth) + ")";
      if (chance(4)) return "not " + expr(0, clk, depth);
      return both(0, clk, depth, kLogic[pick(5)]);
    }
    if (chance(4)) return t == 1 ? "int (" + expr(2, clk, depth) + ")" : "real (" + expr(1, clk, depth) + ")";
    if (t == 1 && chance(4)) return both(1, clk, depth, chance(2) ? "div" : "mod");
    if (t == 2 && chance(4)) return both(2, clk, depth, "/");
    const char* const kArith[] = {"+", "-", "*"};
    return chance(5) ? "- " + expr(t, clk, depth) : both(t, clk, depth, kArith[pick(3)]);
  }

  const char* const kTypes[3] = {"bool", "int", "real"};
  const char* const kClocks[3] = {"base", "c", "d"};
  std::mt19937 rng;
  // Inputs first, by type and clock; locals join as they are declared.
  std::vector<std::string> flows[3][3] = {{{"b0", "c"}, {"d"}, {}}, {{"i0"}, {"ic"}, {}}, {{"r0"}, {}, {"rd"}}};
};

TEST(NetCheckDeathTest, RandomWellFormedProgramsAreAllAccepted) {
  std::vector<std::string> paths;
  for (unsigned seed = 1; seed <= 300; seed++) paths.push_back(nettest::write_temp(RandomProgram(seed).text()));
  // In a child: a refusal ends it with the program's file and the reason.
  EXPECT_EXIT(
      {
        for (const std::string& p : paths) {
          int parsed = 1;
          Net* net = nettest::parse_file(p, &parsed);
          if (parsed != 0) exit(2);
          check_program(net, p.c_str());
        }
        fprintf(stderr, "all accepted\n");
        exit(0);
      },
      ::testing::ExitedWithCode(0), "all accepted");
}

}  // namespace
