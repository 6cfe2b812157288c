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
#include "ecexe/random_state.h"
#include "network/net_fixture.h"

namespace {

// The program of `text`, built; it must load. Never freed, as in the tool.
RPEcExe* load(const std::string& text) {
  RPEcExe* p = new RPEcExe();
  EXPECT_EQ(p->init(nettest::write_temp(text).c_str(), nettest::symbols()), 0) << text;
  return p;
}

// An output's or a local's value: "-" when absent, nil, div0, T/F for a
// bool, or the number.
std::string show(int status, const char* type, void* loc) {
  switch (status) {
    case RP_ABSENT: return "-";
    case RP_NIL: return "nil";
    case RP_DIVBYZERO: return "div0";
    default: break;
  }
  if (strcmp(type, "real") != 0)
    return strcmp(type, "int") ? (*static_cast<int*>(loc) ? "T" : "F") : std::to_string(*static_cast<int*>(loc));
  char text[32];
  snprintf(text, sizeof text, "%g", *static_cast<double*>(loc));
  return text;
}

std::string show_output(RPEcExe* p, int i) { return show(p->output_status(i), p->output_type(i), p->output_loc(i)); }

// Steps the program once per row: inputs separated by spaces (T/F for
// bools), or "reset". A row marked "c:" is driven as the panel's "continue
// step" does: the instant is ended even when it had problems. Each instant
// prints as its outputs, after "!n" when n problems were reported, then,
// with `locals`, " /" and the locals; instants are separated by " | ".
std::string run(RPEcExe* p, const std::vector<std::string>& rows, bool locals = false) {
  std::string trace;
  if (locals && p->nb_locals() > 0) p->local_status(0);  // computed from the first instant on
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
    if (!locals) continue;
    trace += " /";
    for (int i = 0; i < p->nb_locals(); i++)
      trace += " " + show(p->local_status(i), p->local_type(i), p->local_loc(i));
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
  ASSERT_EQ(p->nb_locals(), 2);
  EXPECT_STREQ(p->local_ident(1), "l");
  EXPECT_STREQ(p->local_type(1), "int");
  EXPECT_EQ(run(p, {"T 4 1.5", "F -1 0.25"}), "3 T | 0.5 F");
}

// Every local as it stands once its instant is complete, whether an output
// needs it, only a memory does, or nothing; absent where its clock is
// false; a name for another flow or a constant is a local too.
TEST(RPEcExeTest, LocalsAsTheInstantLeftThem) {
  struct Case { const char* program; std::vector<std::string> rows; const char* trace; } cases[] = {
      // v only under pre, w read by nothing, b, l and k other names, s and
      // x sampled on c; a reset starts again from the first instant.
      {"node p(a: int; c: bool) returns (o: int);\n"
       "var v, w, b, k, l, d: int; (s, x: int) when c;\n"
       "let v = a + 1; w = a * 2; b = a; k = 7; l = v; d = 10 div a; s = a when c; x = v when c;\n"
       "  o = 0 -> pre v; tel.\n",
       {"1 T", "2 F", "3 T", "0 T", "reset", "5 F"},
       "0 / 2 2 1 7 2 10 1 2 | 2 / 3 4 2 7 3 5 - - | 3 / 4 6 3 7 4 3 3 4 | 4 / 1 0 0 7 1 div0 0 1 | "
       "reset | 0 / 6 10 5 7 6 2 - -"},
      // A local whose clock is nil is nil, and the program goes on; m, read
      // by nothing, keeps counting the instants of c.
      {"node q(a: int; c: bool) returns (o: int);\n"
       "var pc: bool; (y: int) when pc; p, m: int;\n"
       "let pc = pre c; y = a when pc; p = pre a; m = 0 -> if c then pre m + 1 else pre m; o = a; tel.\n",
       {"1 T", "2 F", "3 T", "4 T"},
       "1 / nil nil nil 0 | 2 / T 2 1 0 | 3 / F - 2 1 | 4 / T 4 3 2"},
      // An abandoned instant shows what it computed and memorises nothing.
      {"node r(a: int) returns (o: int); var m: int; let m = 0 -> pre a; o = 10 div a; tel.\n",
       {"5", "0", "2"},
       "2 / 0 | !1 div0 / 5 | 5 / 5"},
  };
  for (const Case& c : cases) EXPECT_EQ(run(load(c.program), c.rows, true), c.trace) << c.program;
}

// Looking at locals moves no random draw: every call draws at every
// instant, whether anything reads it or not.
TEST(RPEcExeTest, LocalsChangeNoDraw) {
  const char* text =
      "function random_int(lo: int; hi: int) returns (r: int);\n"
      "node d(a: int) returns (o: int); var r: int;\n"
      "let r = random_int(0, 999); o = random_int(0, 1000) + a; tel.\n";
  RandomState start = save_random_state();
  std::vector<std::string> rows(20, "0");
  std::string without = run(load(text), rows);
  restore_random_state(start);
  std::string with = run(load(text), rows, true);
  for (size_t at; (at = with.find(" /")) != std::string::npos;) {
    size_t end = with.find(" |", at);
    with.erase(at, end == std::string::npos ? end : end - at);
  }
  EXPECT_EQ(with, without);
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
