// gen_program.cpp -- writes a synthetic ec program of about N equations and
// its compiled twin in C, both deterministic from a seed:
//
//   gen_program N SEED OUT_DIR [--inputs I] [--outputs O] [--name NAME]
//
// writes OUT_DIR/NAME.ec and OUT_DIR/NAME.c (NAME defaults to g<N>_<SEED>)
// and prints one line "name=... equations=... inputs=... outputs=...
// memories=... clocks=... assertions=... depth=...".
//
// The two forms compute the same outputs on every instant: each ec equation
// has one C statement beside it, ints wrap in 32 bits, real literals carry
// single precision as the evaluator keeps them, nothing is ever nil (every
// `pre` sits under `->`, every sub-clock is true at the first instant) and
// nothing divides by zero (divisors are nonzero literals). Real operators
// are averages and contractions, so reals stay finite along long chains.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

enum Ty { BOOL_T = 0, INT_T = 1, REAL_T = 2 };
const char* const kTypeNames[] = {"bool", "int", "real"};
const char* const kCTypes[] = {"int32_t", "int32_t", "double"};

// A flow that later equations may read: an input, a base-clock local, or a
// sub-clock local seen through `current`.
struct Flow {
  std::string ec;    // its text as an operand in the ec file
  std::string c;     // its text as an operand in C
  std::string name;  // the variable (for `pre`); empty when pre is not allowed
  Ty ty;
  int depth;  // longest chain of combinational dependencies down to an input
};

// Real literals whose single-precision value is what both forms compute with.
const char* const kContractions[] = {"0.5", "0.25", "0.75", "0.1", "0.3"};

class Generator {
 public:
  Generator(int n, unsigned seed, int inputs, int outputs)
      : target_(n), rng_(seed), nb_inputs_(inputs), nb_outputs_(outputs) {}

  void run();
  bool write(const std::string& dir, const std::string& name) const;
  void print_summary(const std::string& name) const;

 private:
  int pick(int n) { return static_cast<int>(rng_() % static_cast<unsigned>(n)); }
  bool chance(int percent) { return pick(100) < percent; }

  // An operand of type t: from the unused flows (so that nothing is dead),
  // the recent ones (long chains) or any earlier one (far dependencies).
  Flow operand(Ty t);
  // An operand that is a variable, so that `pre` may read it.
  Flow named_operand(Ty t);
  Flow operand_besides(Ty t, const Flow& a);
  std::string memory_of(const Flow& f);

  void add_input(int k);
  // Declares the local `name`, defines it in both forms and makes it a flow.
  void define(const std::string& name, Ty t, const std::string& ec, const std::string& c,
              int depth, bool usable = true);
  // name = if c then a else b, over flows of type t.
  void conditional(const std::string& name, Ty t);
  void bool_equation(const std::string& name);
  void int_equation(const std::string& name);
  void real_equation(const std::string& name);
  void clock_equation();
  void clocked_equation();
  void assertion();
  void tail();
  int wanted(int t) const;
  int unused_total() const;

  const int target_;
  std::mt19937 rng_;
  const int nb_inputs_;
  const int nb_outputs_;

  std::vector<Flow> flows_[3];
  std::vector<Flow> unused_[3];
  std::vector<std::string> input_decls_, output_decls_, local_decls_;
  std::vector<std::string> ec_statements_, c_statements_;
  std::vector<std::string> c_globals_, c_inputs_, c_outputs_;
  std::vector<std::string> memories_;  // variables read by `pre`
  std::vector<std::string> clocks_;
  std::vector<int> output_types_;
  int equations_ = 0;
  int assertions_ = 0;
  int max_depth_ = 0;
  int next_local_ = 0;
  bool from_unused_ = false;  // whether the last operand was taken from the unused flows
};

Flow Generator::operand(Ty t) {
  std::vector<Flow>& unused = unused_[t];
  if (!unused.empty() && chance(40)) {
    int k = pick(static_cast<int>(unused.size()));
    Flow f = unused[k];
    unused[k] = unused.back();
    unused.pop_back();
    from_unused_ = true;
    return f;
  }
  from_unused_ = false;
  const std::vector<Flow>& all = flows_[t];
  int n = static_cast<int>(all.size());
  if (chance(55)) return all[n - 1 - pick(n < 12 ? n : 12)];
  return all[pick(n)];
}

// Reading a variable through `pre` does not count as its use.
Flow Generator::named_operand(Ty t) {
  const std::vector<Flow>& all = flows_[t];
  for (;;) {
    const Flow& f = all[pick(static_cast<int>(all.size()))];
    if (!f.name.empty()) return f;
  }
}

// The C name of the memory of a variable, declared once.
std::string Generator::memory_of(const Flow& f) {
  std::string m = "m_" + f.name;
  for (const std::string& known : memories_)
    if (known == f.name) return m;
  memories_.push_back(f.name);
  c_globals_.push_back(std::string("static ") + kCTypes[f.ty] + " " + m + ";");
  return m;
}

void Generator::add_input(int k) {
  Ty t = static_cast<Ty>(k % 3);
  std::string name = "i" + std::to_string(k);
  input_decls_.push_back(name + ": " + kTypeNames[t]);
  c_globals_.push_back(std::string("static ") + kCTypes[t] + " " + name + ";");
  c_inputs_.push_back("{\"" + name + "\", \"" + kTypeNames[t] + "\", &" + name + "}");
  Flow f{name, name, name, t, 0};
  flows_[t].push_back(f);
  unused_[t].push_back(f);
}

void Generator::define(const std::string& name, Ty t, const std::string& ec, const std::string& c,
                       int depth, bool usable) {
  local_decls_.push_back(name + ": " + kTypeNames[t]);
  c_globals_.push_back(std::string("static ") + kCTypes[t] + " " + name + ";");
  ec_statements_.push_back(name + " = " + ec + ";");
  c_statements_.push_back(name + " = " + c + ";");
  equations_++;
  if (depth > max_depth_) max_depth_ = depth;
  if (!usable) return;
  Flow f{name, name, name, t, depth};
  flows_[t].push_back(f);
  unused_[t].push_back(f);
}

static int deeper(const Flow& a, const Flow& b) { return (a.depth > b.depth ? a.depth : b.depth) + 1; }
static int deeper(const Flow& a, const Flow& b, const Flow& c) { return deeper(a, b) > c.depth + 1 ? deeper(a, b) : c.depth + 1; }

// A second operand, another variable than `a` when the program has one:
// x < x and its kin are constants that both forms would fold.
Flow Generator::operand_besides(Ty t, const Flow& a) {
  for (int tries = 0; tries < 8; tries++) {
    Flow b = operand(t);
    if (b.c != a.c) return b;
    if (from_unused_) unused_[t].push_back(b);
  }
  return operand(t);
}

// Each case takes exactly the operands it reads, so that a flow taken from
// the unused ones is always read.
void Generator::conditional(const std::string& name, Ty t) {
  Flow c = operand(BOOL_T), a = operand(t), b = operand_besides(t, a);
  define(name, t, "(if " + c.ec + " then " + a.ec + " else " + b.ec + ")",
         "(" + c.c + " ? " + a.c + " : " + b.c + ")", deeper(a, b, c));
}

void Generator::bool_equation(const std::string& name) {
  switch (pick(10)) {
    case 0: case 1: case 3: case 4: {
      static const char* const ec_ops[] = {" and ", " or ", "", " xor ", " => "};
      static const char* const c_ops[] = {" && ", " || ", "", " != ", " || "};
      int k = pick(5);
      if (k == 2) k = 0;
      Flow a = operand(BOOL_T), b = operand_besides(BOOL_T, a);
      define(name, BOOL_T, "(" + a.ec + ec_ops[k] + b.ec + ")",
             std::string("(") + (k == 4 ? "!" : "") + a.c + c_ops[k] + b.c + ")", deeper(a, b));
      break;
    }
    case 2: {
      Flow a = operand(BOOL_T);
      define(name, BOOL_T, "(not " + a.ec + ")", "(!" + a.c + ")", a.depth + 1);
      break;
    }
    case 5: {
      static const char* const ec_ops[] = {"<", "<=", "=", "<>", ">", ">="};
      static const char* const c_ops[] = {"<", "<=", "==", "!=", ">", ">="};
      Flow x = operand(INT_T), y = operand_besides(INT_T, x);
      int k = pick(6);
      define(name, BOOL_T, "(" + x.ec + " " + ec_ops[k] + " " + y.ec + ")",
             "(" + x.c + " " + c_ops[k] + " " + y.c + ")", deeper(x, y));
      break;
    }
    case 6: {
      Flow x = operand(REAL_T), y = operand_besides(REAL_T, x);
      bool less = chance(50);
      define(name, BOOL_T, "(" + x.ec + (less ? " < " : " >= ") + y.ec + ")",
             "(" + x.c + (less ? " < " : " >= ") + y.c + ")", deeper(x, y));
      break;
    }
    case 7: {
      conditional(name, BOOL_T);
      break;
    }
    case 8: {
      Flow p = named_operand(BOOL_T), a = operand(BOOL_T);
      define(name, BOOL_T, "(true -> (pre " + p.ec + " xor " + a.ec + "))",
             "(first ? 1 : (" + memory_of(p) + " != " + a.c + "))", a.depth + 1);
      break;
    }
    default: {
      Flow a = operand(BOOL_T), b = operand_besides(BOOL_T, a);
      if (chance(50)) {
        Flow c = operand(BOOL_T);
        define(name, BOOL_T, "#(" + a.ec + ", " + b.ec + ", " + c.ec + ")",
               "((" + a.c + " + " + b.c + " + " + c.c + ") <= 1)", deeper(a, b, c));
      } else {
        define(name, BOOL_T, "nor(" + a.ec + ", " + b.ec + ")", "(!" + a.c + " && !" + b.c + ")", deeper(a, b));
      }
    }
  }
}

void Generator::int_equation(const std::string& name) {
  std::string k = std::to_string(2 + pick(8));
  switch (pick(10)) {
    case 0: case 1: case 2: {
      static const char* const ec_ops[] = {" + ", " - ", " * "};
      static const char* const c_ops[] = {"ADD(", "SUB(", "MUL("};
      int o = pick(3);
      Flow a = operand(INT_T), b = operand_besides(INT_T, a);
      define(name, INT_T, "(" + a.ec + ec_ops[o] + b.ec + ")", c_ops[o] + a.c + ", " + b.c + ")", deeper(a, b));
      break;
    }
    case 3: {
      Flow a = operand(INT_T);
      define(name, INT_T, "(" + a.ec + " div " + k + ")", "(" + a.c + " / " + k + ")", a.depth + 1);
      break;
    }
    case 4: {
      Flow a = operand(INT_T);
      define(name, INT_T, "(" + a.ec + " mod " + k + ")", "(" + a.c + " % " + k + ")", a.depth + 1);
      break;
    }
    case 5: {
      Flow a = operand(INT_T);
      define(name, INT_T, "(- " + a.ec + ")", "NEG(" + a.c + ")", a.depth + 1);
      break;
    }
    case 6: {
      conditional(name, INT_T);
      break;
    }
    case 7: {
      Flow p = named_operand(INT_T), a = operand(INT_T);
      define(name, INT_T, "(" + k + " -> (pre " + p.ec + " + " + a.ec + "))",
             "(first ? " + k + " : ADD(" + memory_of(p) + ", " + a.c + "))", a.depth + 1);
      break;
    }
    case 8: {
      Flow r = operand(REAL_T);
      define(name, INT_T, "(int " + r.ec + ")", "real2int(" + r.c + ")", r.depth + 1);
      break;
    }
    default: {
      Flow a = operand(INT_T);
      define(name, INT_T, "(" + a.ec + " + " + k + "7)", "ADD(" + a.c + ", " + k + "7)", a.depth + 1);
    }
  }
}

void Generator::real_equation(const std::string& name) {
  std::string k = kContractions[pick(5)];
  std::string ck = "(double)" + k + "f";
  switch (pick(7)) {
    case 0: case 1: {
      const char* op = pick(2) ? " + " : " - ";
      Flow a = operand(REAL_T), b = operand_besides(REAL_T, a);
      define(name, REAL_T, "((" + a.ec + op + b.ec + ") * " + k + ")", "((" + a.c + op + b.c + ") * " + ck + ")",
             deeper(a, b) + 1);
      break;
    }
    case 2: {
      Flow a = operand(REAL_T);
      define(name, REAL_T, "(" + a.ec + " / 3.0)", "(" + a.c + " / (double)3.0f)", a.depth + 1);
      break;
    }
    case 3: {
      Flow i = operand(INT_T);
      define(name, REAL_T, "((real " + i.ec + ") * " + k + ")", "((double)" + i.c + " * " + ck + ")", i.depth + 2);
      break;
    }
    case 4: {
      conditional(name, REAL_T);
      break;
    }
    case 5: {
      Flow p = named_operand(REAL_T), a = operand(REAL_T);
      define(name, REAL_T, "(0.0 -> ((pre " + p.ec + " * 0.5) + (" + a.ec + " * " + k + ")))",
             "(first ? 0.0 : ((" + memory_of(p) + " * (double)0.5f) + (" + a.c + " * " + ck + ")))", a.depth + 2);
      break;
    }
    default: {
      Flow a = operand(REAL_T);
      define(name, REAL_T, "(- " + a.ec + ")", "(-" + a.c + ")", a.depth + 1);
    }
  }
}

// A sub-clock: a base-clock bool local, true at the first instant.
void Generator::clock_equation() {
  std::string name = "ck" + std::to_string(clocks_.size());
  Flow a = operand(BOOL_T), b = operand_besides(BOOL_T, a);
  define(name, BOOL_T, "(true -> (" + a.ec + " or " + b.ec + "))", "(first ? 1 : (" + a.c + " || " + b.c + "))",
         deeper(a, b), false);
  c_globals_.push_back("static int init_" + name + " = 1;");
  clocks_.push_back(name);
}

// A local on a sub-clock, accumulating the clock's instants; later
// equations read it through `current`, which holds it between them.
void Generator::clocked_equation() {
  const std::string& ck = clocks_[pick(static_cast<int>(clocks_.size()))];
  Ty t = static_cast<Ty>(pick(3));
  std::string name = "s" + std::to_string(next_local_++);
  Flow x = operand(t), y = operand_besides(t, x);
  std::string xw = "(" + x.ec + " when " + ck + ")", yw = "(" + y.ec + " when " + ck + ")";
  std::string ec, c;
  switch (t) {
    case BOOL_T:
      ec = xw + " -> (pre " + name + " xor " + yw + ")";
      c = "(init_" + ck + " ? " + x.c + " : (" + name + " != " + y.c + "))";
      break;
    case INT_T:
      ec = xw + " -> (pre " + name + " + " + yw + ")";
      c = "(init_" + ck + " ? " + x.c + " : ADD(" + name + ", " + y.c + "))";
      break;
    case REAL_T:
      ec = xw + " -> ((pre " + name + " * 0.5) + " + yw + ")";
      c = "(init_" + ck + " ? " + x.c + " : ((" + name + " * (double)0.5f) + " + y.c + "))";
      break;
  }
  local_decls_.push_back("(" + name + ": " + kTypeNames[t] + ") when " + ck);
  c_globals_.push_back(std::string("static ") + kCTypes[t] + " " + name + ";");
  ec_statements_.push_back(name + " = " + ec + ";");
  c_statements_.push_back("if (" + ck + ") " + name + " = " + c + ";");
  equations_++;
  Flow f{"(current " + name + ")", name, "", t, deeper(x, y)};
  flows_[t].push_back(f);
  unused_[t].push_back(f);
}

// Assertions that hold on every value: truncating division and its
// remainder rebuild the dividend, a remainder is smaller than its divisor.
void Generator::assertion() {
  Flow x = operand(INT_T);
  std::string k = std::to_string(2 + pick(8));
  if (chance(50))
    ec_statements_.push_back("assert (((" + x.ec + " div " + k + ") * " + k + ") + (" + x.ec + " mod " + k +
                             ")) = " + x.ec + ";");
  else
    ec_statements_.push_back("assert ((" + x.ec + " mod " + k + ") < " + k + ") and ((" + x.ec + " mod " + k +
                             ") > -" + k + ");");
  assertions_++;
}

// Unused flows of type t that the outputs will read (at least one, so that
// a type without outputs still ends in one flow, which the outputs ignore).
int Generator::wanted(int t) const {
  int n = 0;
  for (int ty : output_types_) n += ty == t;
  return n > 0 ? n : 1;
}

// The equations still needed to fold the unused flows, two at a time.
int Generator::unused_total() const {
  int n = 0;
  for (int t = 0; t < 3; t++) {
    int extra = static_cast<int>(unused_[t].size()) - wanted(t);
    if (extra > 0) n += extra;
  }
  return n;
}

// Folds the flows nobody reads into as many as there are outputs of their
// type, so that every equation is live, then defines the outputs. Folding
// three flows at once where the budget is short makes the count exact.
void Generator::tail() {
  for (int t = 0; t < 3; t++) {
    while (static_cast<int>(unused_[t].size()) > wanted(t)) {
      bool three = unused_total() > target_ - equations_ - nb_outputs_ &&
                   static_cast<int>(unused_[t].size()) >= wanted(t) + 2;
      Flow a = unused_[t].back();
      unused_[t].pop_back();
      Flow b = unused_[t].back();
      unused_[t].pop_back();
      if (three) {
        Flow c = unused_[t].back();
        unused_[t].pop_back();
        b = Flow{"(" + b.ec + (t == BOOL_T ? " xor " : " + ") + c.ec + ")",
                 t == BOOL_T ? "(" + b.c + " != " + c.c + ")"
                             : t == INT_T ? "ADD(" + b.c + ", " + c.c + ")" : "(" + b.c + " + " + c.c + ")",
                 "", static_cast<Ty>(t), deeper(b, c)};
      }
      std::string name = "v" + std::to_string(next_local_++);
      if (t == BOOL_T)
        define(name, BOOL_T, "(" + a.ec + " xor " + b.ec + ")", "(" + a.c + " != " + b.c + ")", deeper(a, b));
      else if (t == INT_T)
        define(name, INT_T, "(" + a.ec + " + " + b.ec + ")", "ADD(" + a.c + ", " + b.c + ")", deeper(a, b));
      else
        define(name, REAL_T, "((" + a.ec + " + " + b.ec + ") * 0.5)", "((" + a.c + " + " + b.c + ") * (double)0.5f)",
               deeper(a, b) + 1);
    }
  }
  for (int k = 0; k < nb_outputs_; k++) {
    Ty t = static_cast<Ty>(output_types_[k]);
    Flow f;
    if (!unused_[t].empty()) {
      f = unused_[t].back();
      unused_[t].pop_back();
    } else {
      f = flows_[t][pick(static_cast<int>(flows_[t].size()))];
    }
    std::string name = "o" + std::to_string(k);
    output_decls_.push_back(name + ": " + kTypeNames[t]);
    c_globals_.push_back(std::string("static ") + kCTypes[t] + " " + name + ";");
    c_outputs_.push_back("{\"" + name + "\", \"" + kTypeNames[t] + "\", &" + name + "}");
    ec_statements_.push_back(name + " = " + f.ec + ";");
    c_statements_.push_back(name + " = " + f.c + ";");
    equations_++;
  }
}

void Generator::run() {
  for (int k = 0; k < nb_inputs_; k++) add_input(k);
  for (int k = 0; k < nb_outputs_; k++) output_types_.push_back((k + 1) % 3);
  // A few sub-clocks, each carrying a few percent of the equations.
  int nb_clocks = target_ < 200 ? 1 : target_ < 5000 ? 2 : 4;
  int nb_assertions = target_ < 200 ? 2 : 5;
  int clock_every = target_ / (nb_clocks + 1);
  int assert_every = target_ / (nb_assertions + 2);  // all before the folding tail
  for (int i = 1;; i++) {
    if (target_ - equations_ - nb_outputs_ <= unused_total()) break;
    if (static_cast<int>(clocks_.size()) < nb_clocks && i % clock_every == clock_every / 2) {
      clock_equation();
      continue;
    }
    if (assertions_ < nb_assertions && assert_every > 0 && i % assert_every == 0) assertion();
    if (!clocks_.empty() && chance(3)) {
      clocked_equation();
      continue;
    }
    std::string name = "v" + std::to_string(next_local_++);
    switch (pick(3)) {
      case 0: bool_equation(name); break;
      case 1: int_equation(name); break;
      default: real_equation(name); break;
    }
  }
  tail();
}

// The C helpers: wrapping int arithmetic and the evaluator's real-to-int
// conversion (out of range or NaN gives INT32_MIN).
const char* const kCPrelude =
    "#include <stdint.h>\n"
    "#include \"ecexe/dro_desc.h\"\n\n"
    "#define ADD(a, b) ((int32_t)((uint32_t)(a) + (uint32_t)(b)))\n"
    "#define SUB(a, b) ((int32_t)((uint32_t)(a) - (uint32_t)(b)))\n"
    "#define MUL(a, b) ((int32_t)((uint32_t)(a) * (uint32_t)(b)))\n"
    "#define NEG(a) ((int32_t)(0u - (uint32_t)(a)))\n\n"
    "static int32_t real2int(double r) {\n"
    "  if (!(r > -2147483649.0 && r < 2147483648.0)) return INT32_MIN;\n"
    "  return (int32_t)r;\n"
    "}\n\n"
    "static int first = 1;\n";

// Statements per C function: gcc is slow on very long functions.
const int kStatementsPerPart = 250;

bool Generator::write(const std::string& dir, const std::string& name) const {
  std::string ec_path = dir + "/" + name + ".ec", c_path = dir + "/" + name + ".c";
  FILE* ec = fopen(ec_path.c_str(), "w");
  if (!ec) {
    fprintf(stderr, "gen_program : can't write '%s'\n", ec_path.c_str());
    return false;
  }
  FILE* c = fopen(c_path.c_str(), "w");
  if (!c) {
    fprintf(stderr, "gen_program : can't write '%s'\n", c_path.c_str());
    fclose(ec);
    return false;
  }
  fprintf(ec, "-- generated by gen_program: %d equations\nnode %s(", equations_, name.c_str());
  for (size_t k = 0; k < input_decls_.size(); k++) fprintf(ec, "%s%s", k ? "; " : "", input_decls_[k].c_str());
  fprintf(ec, ")\n  returns (");
  for (size_t k = 0; k < output_decls_.size(); k++) fprintf(ec, "%s%s", k ? "; " : "", output_decls_[k].c_str());
  fprintf(ec, ");\nvar\n");
  for (const std::string& d : local_decls_) fprintf(ec, "  %s;\n", d.c_str());
  fprintf(ec, "let\n");
  for (const std::string& s : ec_statements_) fprintf(ec, "  %s\n", s.c_str());
  fprintf(ec, "tel.\n");

  fprintf(c, "/* generated by gen_program: the compiled twin of %s.ec */\n%s", name.c_str(), kCPrelude);
  for (const std::string& g : c_globals_) fprintf(c, "%s\n", g.c_str());
  int parts = 0;
  for (size_t k = 0; k < c_statements_.size(); k++) {
    if (k % kStatementsPerPart == 0) {
      if (k) fprintf(c, "}\n");
      fprintf(c, "\nstatic void part%d(void) {\n", parts++);
    }
    fprintf(c, "  %s\n", c_statements_[k].c_str());
  }
  if (parts) fprintf(c, "}\n");
  fprintf(c, "\nstatic int %s_step(void) {\n", name.c_str());
  for (int k = 0; k < parts; k++) fprintf(c, "  part%d();\n", k);
  for (const std::string& m : memories_) fprintf(c, "  m_%s = %s;\n", m.c_str(), m.c_str());
  for (const std::string& clock : clocks_) fprintf(c, "  if (init_%s) init_%s = !%s;\n", clock.c_str(), clock.c_str(), clock.c_str());
  fprintf(c, "  first = 0;\n  return 0;\n}\n\nstatic void %s_reset(void) {\n  first = 1;\n", name.c_str());
  for (const std::string& clock : clocks_) fprintf(c, "  init_%s = 1;\n", clock.c_str());
  fprintf(c, "}\n\nstatic DroVar %s_inputs[] = {\n", name.c_str());
  for (const std::string& v : c_inputs_) fprintf(c, "  %s,\n", v.c_str());
  fprintf(c, "};\n\nstatic DroVar %s_outputs[] = {\n", name.c_str());
  for (const std::string& v : c_outputs_) fprintf(c, "  %s,\n", v.c_str());
  fprintf(c, "};\n\nDroDesc dro_desc = {DRO_VERSION, \"%s\", %zu, %s_inputs, %zu, %s_outputs,\n"
             "                     %s_step, %s_reset, 0};\n",
          name.c_str(), c_inputs_.size(), name.c_str(), c_outputs_.size(), name.c_str(), name.c_str(),
          name.c_str());
  bool ok = !ferror(ec) && !ferror(c);
  ok = (fclose(ec) == 0) && ok;
  ok = (fclose(c) == 0) && ok;
  if (!ok) fprintf(stderr, "gen_program : writing '%s' failed\n", dir.c_str());
  return ok;
}

void Generator::print_summary(const std::string& name) const {
  printf("name=%s equations=%d inputs=%d outputs=%d memories=%zu clocks=%zu assertions=%d depth=%d\n",
         name.c_str(), equations_, nb_inputs_, nb_outputs_, memories_.size(), clocks_.size(), assertions_,
         max_depth_);
}

int usage() {
  fprintf(stderr, "usage: gen_program N SEED OUT_DIR [--inputs I] [--outputs O] [--name NAME]\n");
  return 2;
}

bool parse_count(const char* text, int low, int* out) {
  char* end = nullptr;
  long v = strtol(text, &end, 10);
  if (!*text || *end || v < low || v > 10000000) return false;
  *out = static_cast<int>(v);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) return usage();
  int n = 0, seed = 0, inputs = 20, outputs = 20;
  if (!parse_count(argv[1], 1, &n) || !parse_count(argv[2], 0, &seed)) return usage();
  std::string dir = argv[3];
  std::string name = "g" + std::string(argv[1]) + "_" + argv[2];
  for (int i = 4; i < argc; i += 2) {
    if (i + 1 >= argc) return usage();
    bool ok = true;
    if (strcmp(argv[i], "--inputs") == 0)
      ok = parse_count(argv[i + 1], 3, &inputs);
    else if (strcmp(argv[i], "--outputs") == 0)
      ok = parse_count(argv[i + 1], 1, &outputs);
    else if (strcmp(argv[i], "--name") == 0)
      name = argv[i + 1];
    else
      ok = false;
    if (!ok) return usage();
  }
  if (n < outputs + 10) {
    fprintf(stderr, "gen_program : N must be at least the outputs + 10\n");
    return 2;
  }
  Generator g(n, static_cast<unsigned>(seed), inputs, outputs);
  g.run();
  if (!g.write(dir, name)) return 1;
  g.print_summary(name);
  return 0;
}
