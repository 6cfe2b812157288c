// rp_ec_exe_test.cpp -- whole ec programs built by the evaluator and stepped
// through the reactive program interface, compared with traces worked out
// by hand from the language's meaning.
#include "ecexe/rp_ec_exe.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "ecexe/cfiles/ecexe.h"
#include "ecexe/eval_terminal.h"
#include "network/net_fixture.h"

namespace {

// The program of `text`, built; it must load. Never freed, as in the tool.
RPEcExe* load(const std::string& text) {
  RPEcExe* p = new RPEcExe();
  EXPECT_EQ(p->init(nettest::write_temp(text).c_str(), nettest::symbols()), 0) << text;
  return p;
}

std::string show_output(RPEcExe* p, int i) {
  switch (p->output_status(i)) {
    case RP_ABSENT: return "-";
    case RP_NIL: return "nil";
    case RP_DIVBYZERO: return "div0";
    default: break;
  }
  void* loc = p->output_loc(i);
  if (strcmp(p->output_type(i), "real") != 0)
    return strcmp(p->output_type(i), "int") ? (*static_cast<int*>(loc) ? "T" : "F")
                                            : std::to_string(*static_cast<int*>(loc));
  char text[32];
  snprintf(text, sizeof text, "%g", *static_cast<double*>(loc));
  return text;
}

// Steps the program once per row: inputs separated by spaces (T/F for
// bools), or "reset". A row marked "c:" is driven as the panel's "continue
// step" does: the instant is ended even when it had problems. Each instant
// prints as its outputs, after "!n" when n problems were reported;
// instants are separated by " | ".
std::string run(RPEcExe* p, const std::vector<std::string>& rows) {
  std::string trace;
  for (const std::string& row : rows) {
    if (!trace.empty()) trace += " | ";
    if (row == "reset") {
      p->reset_history();
      trace += "reset";
      continue;
    }
    bool force = row.compare(0, 2, "c:") == 0;
    std::istringstream in(force ? row.substr(2) : row);
    std::string v;
    for (int i = 0; in >> v; i++) {
      void* loc = p->input_loc(i);
      if (strcmp(p->input_type(i), "real") == 0) *static_cast<double*>(loc) = std::stod(v);
      else *static_cast<int*>(loc) = v == "T" ? 1 : v == "F" ? 0 : std::stoi(v);
    }
    int problems;
    if (force) {
      p->init_step();
      problems = p->eval_outputs();
      p->end_step();
    } else {
      problems = p->step();
    }
    if (problems) trace += "!" + std::to_string(problems) + " ";
    for (int i = 0; i < p->nb_outputs(); i++) trace += (i ? " " : "") + show_output(p, i);
  }
  return trace;
}

}  // namespace

TEST(RPEcExeTest, InterfaceAndLocals) {
  RPEcExe* p = load(
      "node io(b: bool; n: int; r: real) returns (x: real; y: bool);\n"
      "var k: int; l: int;\n"
      "let k = n + 1; l = n; x = r * 2.0; y = b and k > 0; assert b or not b; tel.\n");
  EXPECT_STREQ(p->name(), "io");
  ASSERT_EQ(p->nb_inputs(), 3);
  EXPECT_STREQ(p->input_ident(1), "n");
  EXPECT_STREQ(p->input_type(2), "real");
  EXPECT_STREQ(p->output_type(1), "bool");
  EXPECT_EQ(p->nb_assertions(), 1);
  // l is only a name for the input n: no item, so no local of its own.
  ASSERT_EQ(p->nb_locals(), 1);
  EXPECT_STREQ(p->local_ident(0), "k");
  EXPECT_EQ(run(p, {"T 4 1.5", "F -1 0.25"}), "3 T | 0.5 F");
  EXPECT_EQ(*static_cast<int*>(p->local_loc(0)), 0);
}

TEST(RPEcExeTest, ProgramsFollowHandTraces) {
  struct Case { const char* program; std::vector<std::string> rows; const char* trace; } cases[] = {
      // A counter with reset: -> picks the first instant, pre the last.
      {"node c(tick, reset: bool) returns (n: int);\n"
       "let n = (if tick then 1 else 0) -> if reset then 0 else pre n + (if tick then 1 else 0);"
       " tel.\n",
       {"T F", "T F", "F F", "T T", "T F", "reset", "F F"},
       "1 | 2 | 2 | 0 | 1 | reset | 0"},
      // A sum on clock c, -> taking c's own first instant; current holds it
      // between, and the sampled output is absent where c is false. After a
      // reset -> waits for c's first instant again, and current has nothing
      // to hold until then.
      {"node s(c: bool; x: int) returns (y: int; (v: int) when c);\n"
       "var (w: int) when c;\n"
       "let w = (x when c) -> pre w + (x when c); y = current w; v = w; tel.\n",
       {"F 9", "T 1", "F 5", "T 2", "T 4", "reset", "F 5", "T 4", "F 0", "T 1"},
       "!1 nil - | 1 1 | 1 - | 3 3 | 7 7 | reset | !1 nil - | 4 4 | 4 - | 5 5"},
      // A constant takes the clock of the flow beside it, first operand or
      // not: both sums are on c, current holds them while c is false, and
      // the assertion is not checked then.
      {"node s(c: bool; x: int) returns (y, z: int);\n"
       "let y = current (1 + (x when c)); z = current (if true then (x when c) else 0);"
       " assert 0 < (x when c); tel.\n",
       {"T 1", "F -5", "T 2"},
       "2 1 | 2 1 | 3 2"},
      // A clock on a clock: m runs where c and d are both true, and two
      // currents bring it back to the base clock.
      {"node k(c, d: bool) returns (n: int);\n"
       "var (a: bool) when c; (m: int) when a;\n"
       "let a = d when c; m = (1 when a) -> pre m + (1 when a); n = current (current m); tel.\n",
       {"T F", "T T", "F T", "T F", "T T", "F F"},
       "!1 nil | 1 | 1 | 1 | 2 | 2"},
      // pre of pre: the nil of the first instant travels one instant on.
      {"node p(x: int) returns (y: int);\nlet y = pre (pre x); tel.\n",
       {"c:1", "c:2", "3", "4"},
       "!1 nil | !1 nil | 1 | 2"},
      // Two equal counters may share their memory; a third that starts
      // elsewhere must keep its own.
      {"node a(x: int) returns (y, z, w: int);\n"
       "let y = 0 -> pre y + 1; z = 0 -> pre z + 1; w = 1 -> pre w + 1; tel.\n",
       {"0", "0", "0"},
       "0 0 1 | 1 1 2 | 2 2 3"},
      // One input sampled on two clocks: each output is absent on its own.
      // An assertion on a clock is only checked where its clock is true.
      {"node a(c, d: bool; x: int) returns (y: int; (u: int) when c; (v: int) when d);\n"
       "let y = x; u = x when c; v = x when d; assert (x > 0) when c; tel.\n",
       {"F T -1", "T F -1", "T T 3"},
       "-1 - -1 | !1 -1 -1 - | 3 3 3"},
      // Memories in a cycle: a two-state toggle through two pres.
      {"node t(go: bool) returns (a, b: bool);\n"
       "let a = true -> if go then pre b else pre a; b = false -> if go then pre a else pre b;"
       " tel.\n",
       {"F", "T", "T", "F", "T"},
       "T F | F T | T F | T F | F T"},
      // Nil at the first instant, and the three-valued operators around it.
      {"node n(x: bool) returns (p: bool; q, r, s, t: bool; u: int);\n"
       "let p = pre x; q = false and pre x; r = pre x or true; s = pre x => true;"
       " t = false => pre x; u = if pre x then 1 else 2; tel.\n",
       {"c:T", "F"},
       "!2 nil F T T T nil | T F T T T 1"},
      // Division: a zero divisor is reported; nil divided by zero stays nil;
      // div truncates towards zero and mod follows it.
      {"node d(x, y: int) returns (q, m, z: int);\n"
       "let q = x div y; m = x mod y; z = pre x div 0; tel.\n",
       {"c:7 2", "c:-7 2", "1 0"},
       "!1 3 1 nil | !1 -3 -1 div0 | !3 div0 div0 div0"},
      // A failed instant is dropped: the sum of x = 3 is lost and the next
      // instant adds to 1 again.
      {"node a(x: int) returns (s: int);\nlet s = x -> pre s + x; assert x <> 3; tel.\n",
       {"1", "3", "2", "reset", "5"},
       "1 | !1 4 | 3 | reset | 5"},
      // A failed first instant of a slower clock: its w is dropped, so
      // current has nothing to hold and the next instant of c is c's first.
      {"node a(c: bool; x: int) returns (y: int);\nvar (w: int) when c;\n"
       "let w = (x when c) -> pre w + (x when c); y = current w; assert x <> 3; tel.\n",
       {"T 3", "F 1", "T 2", "T 3", "T 1"},
       "!1 3 | !1 nil | 2 | !1 5 | 3"},
  };
  for (const Case& c : cases) EXPECT_EQ(run(load(c.program), c.rows), c.trace) << c.program;
}

TEST(RPEcExeTest, StatusesSharingAndRealLiterals) {
  RPEcExe* p = load(
      "node s(c, a, b: bool; x: int) returns ((y: int) when c; u, v: bool; r: real);\n"
      "let y = x when c; u = a and b; v = b and a; r = 0.1; assert (x div 0) = 1; tel.\n");
  // The assertion divides by zero: reported as nil. The absent output is
  // no problem of its own.
  EXPECT_EQ(run(p, {"F T F 1"}), "!1 - F F 0.1");
  EXPECT_EQ(p->assert_status(0), RP_NIL);
  EXPECT_EQ(p->output_status(0), RP_ABSENT);
  EXPECT_EQ(p->exe->output_items[1]->operand(0), p->exe->output_items[2]->operand(0));
  // Real literals are kept in single precision.
  EXPECT_EQ(*static_cast<double*>(p->output_loc(3)), 0.10000000149011612);
}
