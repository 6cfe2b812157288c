// exp.cpp -- construction, operand lists and annotation slots of nodes.
// A node's annotation list stays in strictly decreasing slot order, so a
// lookup can stop at the first record whose slot is not larger.
#include "network/exp.h"

#include <cstring>
#include <new>
#include <unordered_map>

#include "foundations/errors.h"
#include "foundations/pty_stream.h"
#include "foundations/symbol_table.h"
#include "network/ec_type.h"

const ExpNatureKey ExpNatureKeys[NB_EXP_NATURES] = {
    {"ERROR_n", ""},     {"CONST_n", ""},    {"INPUT_n", ""},   {"ECREF_n", ""},
    {"MODELREF_n", ""},  {"PRE_n", "pre"},   {"CURRENT_n", "current"},
    {"NOT_n", "not"},    {"UMINUS_n", "-"},  {"LAST_n", "last"},
    {"INIT_n", "init"},  {"ARROW_n", "->"},  {"WHEN_n", "when"},
    {"AND_n", "and"},    {"OR_n", "or"},     {"XOR_n", "xor"},
    {"IMPL_n", "=>"},    {"EQUAL_n", "="},   {"NEQ_n", "<>"},
    {"GTE_n", ">="},     {"GT_n", ">"},      {"LTE_n", "<="},
    {"LT_n", "<"},       {"DIV_n", "div"},   {"MOD_n", "mod"},
    {"MINUS_n", "-"},    {"PLUS_n", "+"},    {"SLASH_n", "/"},
    {"TIMES_n", "*"},    {"POWER_n", "**"},  {"IF_n", ""},
    {"TUPLE_n", ""},     {"NOR_n", "nor"},   {"DIESE_n", "#"},
    {"EXACTONE", "&"},   {"RCL_n", ""},      {"ICL_n", ""},
    {"PROJ_n", ""},      {"CALL_n", ""},
};

const char* nodekey(ExpNature n) { return ExpNatureKeys[n].key; }
const char* opkey(ExpNature n) { return ExpNatureKeys[n].op; }

bool is_commutative(ExpNature n) {
  return n == AND_n || n == OR_n || n == XOR_n || n == EQUAL_n || n == NEQ_n || n == PLUS_n ||
         n == TIMES_n;
}


/* ---------------------------------------------------------------- ExpList */

void ExpList::uplast() {
  ExpList* tail = last;
  ExpList* succ = tail->next;
  if (!succ) return;
  // The successor's own sublist may itself have been joined since it was
  // built: repair it first, then the old tail and this head take its end.
  succ->uplast();
  tail->length = 1 + succ->length;
  tail->last = succ->last;
  if (tail != this) length = length + tail->length - 1;
  last = tail->last;
}

ExpList* ExpList::append(ExpList* list, ExpList* other) {
  if (!list) return other;
  if (!other) return list;
  list->last->next = other;
  list->uplast();
  return list;
}

/* ------------------------------------------------------------ construction */

Exp** Exp::new_operands(int count) {
  return static_cast<Exp**>(pool_allocate(sizeof(Exp*) * (count > 0 ? count : 1)));
}

void Exp::init(ExpNature n, int count) {
  type = nullptr;
  clock = -1;
  infos = nullptr;
  mark = 0;
  ident = 0;
  nature = n;
  arity = count;
  operands = new_operands(count);
  param = 0;
  int_coefs = nullptr;
  int_const = 0;
  coefs = nullptr;
  const_term = Fract(0);
}

Exp::Exp(ExpNature n, Exp* op) : const_term(0) {
  init(n, 1);
  operands[0] = op;
}

Exp::Exp(ExpNature n, Exp* op, int p) : const_term(0) {
  init(n, 1);
  operands[0] = op;
  param = p;
}

Exp::Exp(ExpNature n, Exp* a, Exp* b) : const_term(0) {
  init(n, 2);
  operands[0] = a;
  operands[1] = b;
}

Exp::Exp(ExpNature n, Exp* a, Exp* b, Exp* c) : const_term(0) {
  init(n, 3);
  operands[0] = a;
  operands[1] = b;
  operands[2] = c;
}

Exp::Exp(ExpNature n, ExpList* l) : const_term(0) {
  if (l) l->uplast();
  init(n, l ? l->length : 0);
  int i = 0;
  for (ExpList* cell = l; cell && i < arity; cell = cell->next) operands[i++] = cell->exp;
}

Exp::Exp(ExpNature n, int count, Exp** ops) : const_term(0) {
  init(n, count);
  for (int i = 0; i < count; i++) operands[i] = ops[i];
}

Exp::Exp(ExpNature n, int count, Exp** ops, Fract* cs, Fract k) : const_term(0) {
  init(n, count);
  // Fract has no default value: the array is built element by element.
  coefs = static_cast<Fract*>(::operator new(sizeof(Fract) * (count > 0 ? count : 1)));
  for (int i = 0; i < count; i++) {
    operands[i] = ops[i];
    new (&coefs[i]) Fract(cs[i]);
  }
  const_term = k;
}

Exp::Exp(ExpNature n, int count, Exp** ops, int* cs, int k) : const_term(0) {
  init(n, count);
  int_coefs = new int[count > 0 ? count : 1];
  for (int i = 0; i < count; i++) {
    operands[i] = ops[i];
    int_coefs[i] = cs[i];
  }
  int_const = k;
}

Exp::Exp(ExpNature n, int key, EcType* t, int clk) : const_term(0) {
  init(n, 0);
  ident = key;
  type = t;
  clock = clk;
}

Exp::Exp(ExpNature n, int key, EcType* t) : Exp(n, key, t, -1) {}

int Exp::projection_order() const {
  if (nature != PROJ_n)
    IError("file 'net':\nExp::projection_order called on '%s' operator", nodekey(nature));
  return param;
}

/* -------------------------------------------------------- annotation slots */

// The first record whose slot is not larger than `slot`, or null.
ExpInfo* Exp::find_info(int slot) const {
  ExpInfo* r = infos;
  while (r && r->slot > slot) r = r->next;
  return r;
}

std::intptr_t Exp::get_info(int slot) const {
  ExpInfo* r = find_info(slot);
  return (r && r->slot == slot) ? r->value : 0;
}

void Exp::set_info(int slot, std::intptr_t value) {
  ExpInfo** link = &infos;
  while (*link && (*link)->slot > slot) link = &(*link)->next;
  if (*link && (*link)->slot == slot) {
    (*link)->value = value;
    return;
  }
  *link = new ExpInfo{slot, value, *link};
}

void Exp::put_info(int slot, void* value) {
  set_info(slot, reinterpret_cast<std::intptr_t>(value));
}

void Exp::put_int_info(int slot, int value) { set_info(slot, value); }

void* Exp::get_ptr_info(int slot) const { return reinterpret_cast<void*>(get_info(slot)); }

int Exp::get_int_info(int slot) const { return static_cast<int>(get_info(slot)); }

/* ---------------------------------------------------------- debugging dump */

namespace {

// Numbers the nodes of one dump so that a shared node is written once and
// referred to by its number afterwards.
struct DefDumper {
  PtyStream* out;
  SymbolTable* symbols;
  std::unordered_map<const Exp*, int> seen;

  void dump(const Exp* e) {
    if (!e) {
      out->put("<null>");
      return;
    }
    auto found = seen.find(e);
    if (found != seen.end()) {
      out->put("@%d", found->second);
      return;
    }
    int number = static_cast<int>(seen.size()) + 1;
    seen[e] = number;
    out->put("@%d %s", number, nodekey(e->nature));
    if (e->ident > 0) out->put(" '%s'", symbols->text(e->ident));
    if (e->nature == PROJ_n || e->nature == CALL_n) out->put(" %d", e->param);
    dump_coefs(e);
    if (e->type && e->type->is_named()) out->put(" :%s", symbols->text(e->type->name));
    if (e->clock > 0) out->put(" on %s", symbols->text(e->clock));
    out->tab();
    for (int i = 0; i < e->arity; i++) {
      out->put("\n");
      dump(e->operands[i]);
    }
    out->untab();
  }

  void dump_coefs(const Exp* e) {
    if (e->nature == ICL_n) {
      out->put(" [");
      for (int i = 0; i < e->arity; i++) out->put("%d ", e->int_coefs[i]);
      out->put("+ %d]", e->int_const);
    } else if (e->nature == RCL_n) {
      out->put(" [");
      for (int i = 0; i < e->arity; i++) out->put("%lld/%lld ", e->coefs[i].num, e->coefs[i].den);
      out->put("+ %lld/%lld]", e->const_term.num, e->const_term.den);
    }
  }
};

}  // namespace

void Exp::print_def(PtyStream* out, SymbolTable* symbols) {
  DefDumper dumper{out, symbols, {}};
  dumper.dump(this);
  out->put("\n");
}
