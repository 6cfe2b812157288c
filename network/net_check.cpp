// net_check.cpp -- the well-formedness of a parsed program: its node, its
// declarations, and the type and clock of every equation, inferred from the
// leaves up and compared with the declarations. A leaf carries its
// identifier's declared type and clock; the type and clock cached on an
// operator are never read, since the parser fills them with what the
// equation should give. The clock inferred for an operator is cached on it
// for the normaliser.
#include "network/net_check.h"

#include <sys/stat.h>

#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

#include "foundations/errors.h"
#include "foundations/int_list.h"
#include "foundations/symbol_table.h"
#include "network/exp_text.h"
#include "network/net.h"
#include "network/net_cycles.h"

namespace {

// A constant fits every clock; an undeclared clock is left to the
// normaliser, which names it, so it fits every clock here too.
const int kAnyClock = -2;
const int kUnknownClock = -3;

struct Flow {
  EcType* type;
  int clock;
};

std::string vformat(const char* fmt, va_list ap) {
  va_list again;
  va_copy(again, ap);
  int n = vsnprintf(nullptr, 0, fmt, ap);
  std::string text(n > 0 ? n : 0, '\0');
  vsnprintf(&text[0], text.size() + 1, fmt, again);
  va_end(again);
  return text;
}

class Checker {
 public:
  Checker(Net* net, const char* file) : net(net), file(file) {}

  void check_node();
  void check_declarations();
  void check_equations();

 private:
  [[noreturn]] void fail_at(int line, const char* fmt, ...) TAVIK_PRINTF(3, 4);
  // A refusal of the equation being checked, quoted before the reason.
  [[noreturn]] void fail(const char* fmt, ...) TAVIK_PRINTF(2, 3);

  const char* name(int key) { return net->symbols->text(key); }
  std::string text(Exp* e) { return exp_text(net, e); }
  std::string type_text(EcType* t);
  std::string clock_text(int clock);

  // The clock a declaration names, as the checks see it.
  int declared_clock(int clock);
  void check_declaration(IdentInfo* info);
  void check_clock_chain(IdentInfo* info, std::vector<char>& state);
  void check_definition(const Equation& eq, std::vector<int>& defined_at);
  void check_variable(IdentInfo* info, Exp* rhs);
  void check_tuple(IntList* names, Exp* rhs);

  // What an operator asks of its operands' types.
  enum TypeRule { kBool, kNumber, kInt, kAnyType };
  bool fits(EcType* t, TypeRule rule);
  static bool is_free(int clock);
  const char* op_name(Exp* e);

  Flow infer(Exp* e);
  Flow infer_operator(Exp* e);
  Flow infer_current(Exp* e, Flow f);
  Flow infer_when(Exp* e);
  Flow infer_call(Exp* e);
  Flow infer_tuple(Exp* e, const Flow* f);
  // The operands' flows from `first` on: each fits `rule`, all of one type
  // unless the rule is kBool; the result has their type and their clock.
  Flow combine(Exp* e, const Flow* f, int first, TypeRule rule);
  // The clock the operands from `first` on share, constants fitting any:
  // refused when two differ.
  int clock_of(const char* op, Exp** ops, const Flow* f, int count, int first);

  Net* net;
  const char* file;
  const Equation* equation = nullptr;  // the one being checked
};

void Checker::fail_at(int line, const char* fmt, ...) {
  va_list ap;
  va_start(ap, fmt);
  std::string reason = vformat(fmt, ap);
  va_end(ap);
  Error("%s:%d: %s", file, line, reason.c_str());
}

void Checker::fail(const char* fmt, ...) {
  va_list ap;
  va_start(ap, fmt);
  std::string reason = vformat(fmt, ap);
  va_end(ap);
  const Equation& eq = *equation;
  std::string head;
  if (net->get_ident_info(eq.name)->mode == ASSERT_ID) {
    head = "assert " + text(eq.exp);
  } else if (eq.tuple) {
    for (IntList* n = eq.tuple; n; n = n->next) head += (n == eq.tuple ? "(" : ", ") + std::string(name(n->value));
    head += ") = " + text(eq.exp);
  } else {
    head = std::string("'") + name(eq.name) + "' = " + text(eq.exp);
  }
  fail_at(eq.line, "%s: %s", head.c_str(), reason.c_str());
}

std::string Checker::type_text(EcType* t) {
  if (!t->is_tuple) return name(t->name);
  std::string s = "(";
  for (IntList* c = t->components; c; c = c->next) s += (c == t->components ? "" : ", ") + std::string(name(c->value));
  return s + ")";
}

std::string Checker::clock_text(int clock) {
  if (clock == net->true_key) return "the base clock";
  return name(clock);
}

/* -------------------------------------------------------------- the node */

void Checker::check_node() {
  if (net->node_name) return;
  struct stat st;
  if (stat(file, &st) == 0 && S_ISDIR(st.st_mode)) Error("%s: is a directory, not an ec file", file);
  Error("%s: no node in the file", file);
}

/* ---------------------------------------------------------- declarations */

int Checker::declared_clock(int clock) {
  if (clock == net->true_key) return clock;
  return net->get_ident_info(clock) ? clock : kUnknownClock;
}

void Checker::check_declaration(IdentInfo* info) {
  if (info->clock == net->true_key) return;
  IdentInfo* c = net->get_ident_info(info->clock);
  const char* x = name(info->key);
  if (!c) {
    // An output or local on it is reported by the normaliser; an input is
    // never normalised.
    if (info->mode == INPUT_ID)
      fail_at(info->line, "input '%s' is on clock '%s', which is not declared", x, name(info->clock));
    return;
  }
  if (c->type != net->bool_type)
    fail_at(info->line, "'%s' is on clock '%s', which is %s, not bool", x, name(info->clock),
            type_text(c->type).c_str());
}

// Clocks on clocks must end at the base clock: "c when d" with "d when c"
// would send the normaliser round for ever.
void Checker::check_clock_chain(IdentInfo* info, std::vector<char>& state) {
  enum { kUnseen = 0, kOnPath, kDone };
  std::vector<IdentInfo*> path;
  for (IdentInfo* i = info; i && state[i->key] != kDone; i = net->get_ident_info(i->clock)) {
    if (state[i->key] == kOnPath) {
      std::string chain;
      for (IdentInfo* p : path) chain += std::string(name(p->key)) + " when ";
      fail_at(info->line, "the clock of '%s' depends on itself: %s%s", name(info->key), chain.c_str(),
              name(i->key));
    }
    if (i->clock == net->true_key) break;
    state[i->key] = kOnPath;
    path.push_back(i);
  }
  for (IdentInfo* p : path) state[p->key] = kDone;
}

void Checker::check_declarations() {
  std::vector<char> declared(net->symbols->size() + 1, 0);
  std::vector<char> chain(net->symbols->size() + 1, 0);
  for (KeyList* list : {&net->inputs, &net->outputs, &net->locals}) {
    for (IntList* k = list->list(); k; k = k->next) {
      IdentInfo* info = net->get_ident_info(k->value);
      if (declared[k->value]++) fail_at(info->line, "'%s' is declared twice", name(k->value));
      check_declaration(info);
      check_clock_chain(info, chain);
    }
  }
}

/* ------------------------------------------------------------- equations */

void Checker::check_equations() {
  std::vector<int> defined_at(net->symbols->size() + 1, 0);
  for (const Equation& eq : net->equations) {
    equation = &eq;
    check_definition(eq, defined_at);
    IdentInfo* info = net->get_ident_info(eq.name);
    if (info->mode == ASSERT_ID) {
      // Its type is the evaluator's to check; its clock, which the parser
      // took from the first operand, is the one inferred.
      Flow f = infer(eq.exp);
      if (!is_free(f.clock)) info->clock = f.clock;
    } else if (eq.tuple) check_tuple(eq.tuple, eq.exp);
    else check_variable(info, eq.exp);
  }
}

void Checker::check_definition(const Equation& eq, std::vector<int>& defined_at) {
  IntList single(eq.name);
  for (IntList* n = eq.tuple ? eq.tuple : &single; n; n = n->next) {
    IdentInfo* info = net->get_ident_info(n->value);
    const char* x = name(n->value);
    if (info->mode == INPUT_ID) fail_at(eq.line, "'%s' is an input: no equation may define it", x);
    if (info->mode != OUTPUT_ID && info->mode != LOCAL_ID && info->mode != ASSERT_ID)
      fail_at(eq.line, "'%s' is a constant: no equation may define it", x);
    if (defined_at[n->value])
      fail_at(eq.line, "'%s' is defined twice, first at line %d", x, defined_at[n->value]);
    defined_at[n->value] = eq.line;
  }
}

void Checker::check_variable(IdentInfo* info, Exp* rhs) {
  Flow f = infer(rhs);
  const char* x = name(info->key);
  if (f.type != info->type)
    fail("'%s' is %s, %s is %s", x, type_text(info->type).c_str(), text(rhs).c_str(), type_text(f.type).c_str());
  int clock = declared_clock(info->clock);
  if (!is_free(f.clock) && !is_free(clock) && f.clock != clock)
    fail("'%s' is on %s, %s on %s", x, clock_text(clock).c_str(), text(rhs).c_str(),
         clock_text(f.clock).c_str());
}

void Checker::check_tuple(IntList* names, Exp* rhs) {
  Flow f = infer(rhs);
  int count = f.type->is_tuple ? f.type->components->length : 1;
  if (count != names->length)
    fail("%s gives %d value%s for %d variables", text(rhs).c_str(), count, count > 1 ? "s" : "", names->length);
  int i = 1;
  for (IntList* n = names; n; n = n->next, i++) {
    EcType* t = net->define_type(f.type->member(i));
    IdentInfo* info = net->get_ident_info(n->value);
    if (t != info->type)
      fail("'%s' is %s, value %d is %s", name(n->value), type_text(info->type).c_str(), i, type_text(t).c_str());
    int clock = declared_clock(info->clock);
    if (!is_free(f.clock) && !is_free(clock) && f.clock != clock)
      fail("'%s' is on %s, the values on %s", name(n->value), clock_text(clock).c_str(),
           clock_text(f.clock).c_str());
  }
}

/* ------------------------------------------------------------- inference */

Flow Checker::infer(Exp* e) {
  if (!e->is_leaf()) {
    // The clock an operator caches for the normaliser is its first
    // operand's, which is wrong when that operand is a constant and another
    // is on a slower clock (1 + (x when c) is on c): the clock inferred here
    // takes its place. A node of constants only keeps the base clock.
    Flow f = infer_operator(e);
    if (!is_free(f.clock)) e->clock = f.clock;
    return f;
  }
  if (e->nature == CONST_n) return {e->type, kAnyClock};
  return {e->type, declared_clock(e->clock)};
}

const char* Checker::op_name(Exp* e) { return e->nature == IF_n ? "if" : opkey(e->nature); }

Flow Checker::infer_operator(Exp* e) {
  if (e->nature == CALL_n) return infer_call(e);
  if (e->nature == WHEN_n) return infer_when(e);
  // Each operand is inferred once: inferring again at each level would cost
  // exponential time on nested operators. Most operators have at most three
  // operands, and a large program has many nodes: no allocation for them.
  Flow few[3];
  std::vector<Flow> many(e->arity > 3 ? e->arity : 0);
  Flow* f = e->arity > 3 ? many.data() : few;
  for (int k = 0; k < e->arity; k++) f[k] = infer(e->operands[k]);
  switch (e->nature) {
    case PRE_n:
      return f[0];
    case CURRENT_n:
      return infer_current(e, f[0]);
    case NOT_n: case AND_n: case OR_n: case XOR_n: case IMPL_n:
    case NOR_n: case DIESE_n: case EXACTONE:
      return combine(e, f, 0, kBool);
    case UMINUS_n: case PLUS_n: case MINUS_n: case TIMES_n: case SLASH_n: case POWER_n:
      return combine(e, f, 0, kNumber);
    case DIV_n: case MOD_n:
      return combine(e, f, 0, kInt);
    case ARROW_n:
      return combine(e, f, 0, kAnyType);
    case EQUAL_n: case NEQ_n:
      return {net->bool_type, combine(e, f, 0, kAnyType).clock};
    case GTE_n: case GT_n: case LTE_n: case LT_n:
      return {net->bool_type, combine(e, f, 0, kNumber).clock};
    case IF_n:
      if (f[0].type != net->bool_type)
        fail("'if' needs a bool condition, %s is %s", text(e->operands[0]).c_str(), type_text(f[0].type).c_str());
      return {combine(e, f, 1, kAnyType).type, clock_of(op_name(e), e->operands, f, e->arity, 0)};
    case TUPLE_n:
      return infer_tuple(e, f);
    default:
      IError("check_program : unexpected '%s' in a parsed network", nodekey(e->nature));
  }
}

bool Checker::fits(EcType* t, TypeRule rule) {
  switch (rule) {
    case kBool: return t == net->bool_type;
    case kNumber: return t == net->int_type || t == net->real_type;
    case kInt: return t == net->int_type;
    default: return true;
  }
}

Flow Checker::combine(Exp* e, const Flow* f, int first, TypeRule rule) {
  static const char* const wanted[] = {"bool", "int or real", "int", ""};
  for (int k = first; k < e->arity; k++) {
    Exp* x = e->operands[k];
    if (!fits(f[k].type, rule))
      fail("'%s' needs %s%s operand%s, %s is %s", op_name(e),
           e->arity > 1 ? "" : wanted[rule][0] == 'i' ? "an " : "a ", wanted[rule],
           e->arity > 1 ? "s" : "", text(x).c_str(), type_text(f[k].type).c_str());
    if (rule != kBool && f[k].type != f[first].type)
      fail("'%s' needs operands of one type, %s is %s, %s is %s", op_name(e),
           text(e->operands[first]).c_str(), type_text(f[first].type).c_str(), text(x).c_str(),
           type_text(f[k].type).c_str());
  }
  return {f[first].type, clock_of(op_name(e), e->operands, f, e->arity, first)};
}

bool Checker::is_free(int clock) { return clock == kAnyClock || clock == kUnknownClock; }

int Checker::clock_of(const char* op, Exp** ops, const Flow* f, int count, int first) {
  int clocked = -1;  // the first operand with a clock of its own
  for (int k = first; k < count; k++) {
    if (is_free(f[k].clock)) continue;
    if (clocked < 0) {
      clocked = k;
    } else if (f[k].clock != f[clocked].clock) {
      fail("'%s' needs operands on one clock, %s is on %s, %s on %s", op, text(ops[clocked]).c_str(),
           clock_text(f[clocked].clock).c_str(), text(ops[k]).c_str(), clock_text(f[k].clock).c_str());
    }
  }
  if (clocked >= 0) return f[clocked].clock;
  for (int k = first; k < count; k++)
    if (f[k].clock == kUnknownClock) return kUnknownClock;
  return kAnyClock;
}

Flow Checker::infer_current(Exp* e, Flow f) {
  if (f.clock == kUnknownClock) return f;
  if (f.clock == net->true_key || f.clock == kAnyClock)
    fail("'current' needs a flow on a slower clock, %s is on %s", text(e->operands[0]).c_str(),
         f.clock == kAnyClock ? "every clock" : "the base clock");
  return {f.type, declared_clock(net->get_ident_info(f.clock)->clock)};
}

Flow Checker::infer_when(Exp* e) {
  int c = net->when_clock(e);
  IdentInfo* info = net->get_ident_info(c);
  Flow f = infer(e->operands[0]);
  if (info->type != net->bool_type)
    fail("the clock of 'when' must be bool, %s is %s", name(c), type_text(info->type).c_str());
  int base = declared_clock(info->clock);
  if (!is_free(f.clock) && !is_free(base) && f.clock != base)
    fail("'when %s' needs a flow on the clock of %s, %s is on %s", name(c), name(c),
         text(e->operands[0]).c_str(), clock_text(f.clock).c_str());
  return {f.type, c};
}

Flow Checker::infer_call(Exp* e) {
  FuncInfo* fn = net->get_func_info(e->param);
  const char* f = name(e->param);
  Exp* arg = e->operands[0];
  bool several = arg->nature == TUPLE_n;
  int given = several ? arg->arity : 1;
  int wanted = fn->in_type->is_tuple ? fn->in_type->components->length : 1;
  if (given != wanted) fail("'%s' needs %d argument%s, not %d", f, wanted, wanted > 1 ? "s" : "", given);
  std::vector<Flow> flows(given);
  for (int i = 0; i < given; i++) {
    Exp* x = several ? arg->operands[i] : arg;
    flows[i] = infer(x);
    EcType* t = fn->in_type->is_tuple ? net->define_type(fn->in_type->member(i + 1)) : fn->in_type;
    if (flows[i].type == t) continue;
    if (const char* keyword = conversion_keyword(net, e))
      fail("'%s' needs %s %s operand, %s is %s", keyword, t == net->int_type ? "an" : "a",
           type_text(t).c_str(), text(x).c_str(), type_text(flows[i].type).c_str());
    fail("argument %d of '%s' must be %s, %s is %s", i + 1, f, type_text(t).c_str(), text(x).c_str(),
         type_text(flows[i].type).c_str());
  }
  return {fn->out_type, clock_of(f, several ? arg->operands : e->operands, flows.data(), given, 0)};
}

Flow Checker::infer_tuple(Exp* e, const Flow* f) {
  std::vector<int> names;
  for (int k = 0; k < e->arity; k++) {
    if (f[k].type->is_tuple)
      fail("a tuple holds single values, %s is %s", text(e->operands[k]).c_str(), type_text(f[k].type).c_str());
    names.push_back(f[k].type->name);
  }
  return {net->define_type(names.data(), static_cast<int>(names.size())), clock_of(op_name(e), e->operands, f, e->arity, 0)};
}

}  // namespace

void check_program(Net* net, const char* file) {
  Checker checker(net, file);
  checker.check_node();
  checker.check_declarations();
  checker.check_equations();
  check_instant_cycles(net, file);
}
