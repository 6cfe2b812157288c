// flat_program_test.cpp -- the flat code against the item graph. The
// evaluator computes instants in dense cells; the items can still compute
// them by demand, each through its own fields. Two copies of a program, one
// stepped through the reactive program interface and one by demanding its
// items, must agree on every output, assertion and local at every instant,
// whatever mix of completed, abandoned and memory-only instants and resets
// drives them.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "ecexe/cfiles/ecexe.h"
#include "ecexe/eval_terminal.h"
#include "ecexe/rp_ec_exe.h"
#include "network/net_fixture.h"

namespace {

// Steps an evaluator the way the item graph alone does: demand the tops,
// then every memory's compute_next before every memory's rewrite.
class ItemDriver {
 public:
  explicit ItemDriver(EcExe* exe) : exe(exe) {}
  void open() { key++; }
  void eval() {
    for (int i = 0; i < exe->nb_assertions; i++) EvalItem::demand(exe->assertion_items[i], key);
    for (int i = 0; i < exe->nb_outputs; i++) EvalItem::demand(exe->output_items[i], key);
    for (OutputItem* l : exe->local_outputs) EvalItem::demand(l, key);
  }
  void end() {
    for (ItemEntry* m = exe->memory_list; m; m = m->next) m->item->compute_next(key);
    for (ItemEntry* m = exe->memory_list; m; m = m->next) m->item->rewrite();
  }
  void reset() {
    exe->reset_history();
    key = 0;
  }

 private:
  EcExe* exe;
  unsigned key = 0;
};

// Value and status of an item as a comparable text; `absent` for an output
// whose clock is false.
std::string show(EvalItem* item) {
  if (item->is_bottom()) return "absent";
  if (item->status != EI_DEFINED) return "status " + std::to_string(item->status);
  switch (item->type) {
    case EI_double: {
      char text[40];
      snprintf(text, sizeof text, "%a", item->value.d);
      return text;
    }
    case EI_extern: return std::to_string(item->value.x);
    default: return std::to_string(item->value.i);
  }
}

// Everything both copies show: outputs, assertions, then locals.
std::string observe(EcExe* exe) {
  std::string seen;
  for (int i = 0; i < exe->nb_outputs; i++) seen += "o" + std::to_string(i) + "=" + show(exe->output_items[i]) + " ";
  for (int i = 0; i < exe->nb_assertions; i++)
    seen += "a" + std::to_string(i) + "=" + show(exe->assertion_items[i]) + " ";
  for (size_t i = 0; i < exe->local_outputs.size(); i++)
    seen += "l" + std::to_string(i) + "=" + show(exe->local_outputs[i]) + " ";
  return seen;
}

// Random inputs, the same for both copies; small ints and reals with
// zeros, so that divisions by zero happen.
void write_inputs(EcExe* a, EcExe* b, std::mt19937& random) {
  for (int i = 0; i < a->nb_inputs; i++) {
    EvalValue v;
    v.x = 0;
    switch (a->input_items[i]->type) {
      case EI_bool: v.i = random() % 2; break;
      case EI_int: v.i = static_cast<int32_t>(random() % 7) - 3; break;
      case EI_double: v.d = (static_cast<int>(random() % 5) - 2) * 0.5; break;
      default: v.x = random() % 3; break;
    }
    a->input_items[i]->value = v;
    b->input_items[i]->value = v;
  }
}

void compare(const std::string& program, unsigned seed, int instants) {
  std::string path = nettest::write_temp(program);
  RPEcExe flat;
  ASSERT_EQ(flat.init(path.c_str(), nettest::symbols()), 0) << program;
  EcExe items;
  ASSERT_EQ(items.init(path.c_str(), nettest::symbols()), 0);
  ItemDriver driver(&items);
  items.build_locals();
  if (flat.nb_locals() > 0) flat.local_status(0);  // the locals computed from now on
  std::mt19937 random(seed);
  for (int t = 0; t < instants; t++) {
    int mode = random() % 20;
    SCOPED_TRACE("instant " + std::to_string(t) + ", mode " + std::to_string(mode) + "\n" + program);
    if (mode == 0) {  // back to the first instant
      flat.reset_history();
      driver.reset();
      continue;
    }
    write_inputs(flat.exe, &items, random);
    flat.init_step();
    driver.open();
    if (mode == 1) {  // an instant whose outputs nobody asked for
      flat.end_step();
      driver.end();
      ASSERT_EQ(observe(flat.exe), observe(&items));
      continue;
    }
    flat.eval_outputs();
    driver.eval();
    ASSERT_EQ(observe(flat.exe), observe(&items));
    if (mode == 2) continue;  // abandoned: the memories stay as they were
    flat.end_step();
    driver.end();
    ASSERT_EQ(observe(flat.exe), observe(&items));
  }
}

TEST(FlatProgram, AgreesWithTheItemsOnHandWrittenPrograms) {
  const char* programs[] = {
      // nil from pre, division and modulo by an input, three-valued logic
      // on nil operands, a nil condition, a false or nil assertion
      "node p(a, b: bool; x, y: int; r, s: real) returns (q, m: int; z: real; l: bool; k: int);\n"
      "let q = x div y + pre x; m = (pre y) mod x; z = r / s - (0.5 -> pre z);\n"
      "  l = (a and pre b) or (pre a => b) or not (pre l);\n"
      "  k = if pre a then x * y else - y;\n"
      "  assert x <> y or pre a;\ntel.\n",
      // wide # and nor, comparisons of every type, conversions
      "node w(a, b, c, d, e: bool; x: int; r: real) returns (o1, o2, o3: bool; o4: int; o5: real);\n"
      "let o1 = #(a, b, c, d, e); o2 = nor(a, b, c, d, pre e);\n"
      "  o3 = ((a = b) <> (x >= 0)) = (((r < 0.5) <> (r <= real x)) = ((x > 1) <> (pre r = r)));\n"
      "  o4 = int (r * 3.0) + (if o3 then x else - x);\n"
      "  o5 = if o1 then r else real x / 2.0;\ntel.\n",
      // sub-clocks: outputs absent when their clock is false, a memory on
      // a clock, current of a sampled flow
      "node c(c: bool; x: int) returns (y: int; (v: int) when c; (w: int) when c);\n"
      "var n: int;\n"
      "let n = 0 -> pre n + x; v = n when c; w = (0 when c) -> pre w + (x when c);\n"
      "  y = current v + current w;\ntel.\n",
      // memories of memories, a flow defined through its own memory, and
      // a local that only a memory reads, computed at the end of instants
      "node m(x: int; b: bool) returns (y, z: int; t: bool);\nvar u: int;\n"
      "let y = pre pre x; z = 0 -> pre z + pre y + pre u; t = true -> not pre t and b;\n"
      "  u = x * 3 - 1;\ntel.\n",
      // an abstract type and declared constants, nil until a reset
      "type T;\nconst k: int; w: T;\n"
      "node e(a, b: T; c: bool; x: int) returns (s: bool; t: T; y: int);\n"
      "let s = a = b or a <> w; t = if c then a else (w -> pre b); y = x + k;\ntel.\n",
  };
  unsigned seed = 1;
  for (const char* program : programs) compare(program, seed++, 300);
}

TEST(FlatProgram, AgreesWithTheItemsOnTheExamples) {
  for (const char* name : {"counter", "edge", "faults", "stopwatch", "thermostat", "watchdog"}) {
    compare(testsupport::file_text(std::string(TAVIK_SOURCE_DIR) + "/examples/" + name + ".ec"), 7, 200);
  }
}

}  // namespace
