// ec_builders.cpp -- the hand-written side of the ec parser: declarations
// go into the global network through its add_* operations, expressions are
// plain Exp nodes. Every name used in an expression must be declared first.
#include "network/ec_builders.h"

#include "foundations/chain.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

#include "foundations/errors.h"
#include "foundations/int_list.h"
#include "foundations/symbol_table.h"
#include "network/ec_lex.h"
#include "network/ec_parse.h"
#include "network/net.h"

namespace ec {

Net* net = nullptr;
SymbolTable* Symbols = nullptr;
int int2real_undef = 1;
int real2int_undef = 1;

}  // namespace ec

using ec::net;
using ec::Symbols;

namespace {

const char* parsed_path = nullptr;  // the file being parsed, for messages

// The literals 2147483648 read and not yet taken by a unary minus, each a
// node of its own, with its line. Only the last can be taken: a unary
// minus follows its operand's reduction at once.
std::vector<std::pair<Exp*, int>> unsigned_minima;

[[noreturn]] void refuse_literal(const char* text, int line) {
  Error("%s:%d: the integer %s is beyond 32 bits (an int is from -2147483648 to 2147483647)", parsed_path, line,
        text);
}

}  // namespace

int EcParse(Net* n, SymbolTable* s, const char* path) {
  FILE* f = fopen(path, "r");
  if (!f) {
    fprintf(stderr, "EcParse : Can't open file '%s'\n", path);
    return 1;
  }
  net = n;
  Symbols = s;
  // The conversions are declared once per network, so that each parse of
  // the process gets its own declarations.
  ec::int2real_undef = 1;
  ec::real2int_undef = 1;
  ec::input = f;
  parsed_path = path;
  unsigned_minima.clear();
  ec::yylexInit();
  int result = ec_parse();
  fclose(f);
  ec::input = nullptr;
  fflush(stdout);
  if (result == 0 && !unsigned_minima.empty()) refuse_literal("2147483648", unsigned_minima.front().second);
  return result;
}

/* ---------------------------------------------------------- texts and keys */

int InternText(char* text) {
  int key = Symbols->add("%s", text);
  free(text);
  return key;
}

int TrueKey() { return net->true_key; }

int CurrentLine() { return ec::token_line; }

void FreeIntList(IntList* l) { delete_chain(l); }

/* ------------------------------------------------------------ declarations */

// Records the line of a variable's declaration, for messages.
static void declared_here(int key) { net->get_ident_info(key)->line = ec::token_line; }

void AddUserConsts(IntList* names, int type, int clock) {
  EcType* t = net->define_type(type);
  for (IntList* n = names; n; n = n->next) net->add_usr_const(n->value, t, clock);
  FreeIntList(names);
}

void AddInputs(IntList* names, int type, int clock) {
  EcType* t = net->define_type(type);
  for (IntList* n = names; n; n = n->next) {
    net->add_input(n->value, t, clock);
    declared_here(n->value);
  }
  FreeIntList(names);
}

void AddOutputs(IntList* names, int type, int clock) {
  EcType* t = net->define_type(type);
  for (IntList* n = names; n; n = n->next) {
    net->add_output(n->value, t, clock, 0);
    declared_here(n->value);
  }
  FreeIntList(names);
}

void AddLocals(IntList* names, int type, int clock) {
  EcType* t = net->define_type(type);
  for (IntList* n = names; n; n = n->next) {
    net->add_local(n->value, t, clock);
    declared_here(n->value);
  }
  FreeIntList(names);
}

void AddUserType(int name) { net->add_usr_type(name); }

void AddUserEnumType(int name, IntList* values) {
  net->add_usr_type(name, values);
  FreeIntList(values);
}

ParamList* NewParam(int name, int type) {
  ParamList* p = new ParamList{name, type, nullptr, nullptr};
  p->last = p;
  return p;
}

ParamList* AppendParams(ParamList* list, ParamList* other) {
  list->last->next = other;
  list->last = other->last;
  return list;
}

void FreeParamList(ParamList* l) { delete_chain(l); }

// The names of the parameters, and the type of the whole list (a named
// type for one parameter, a tuple type otherwise).
static IntList* param_names(ParamList* params, EcType** type) {
  IntList* names = nullptr;
  IntList* types = nullptr;
  for (ParamList* p = params; p; p = p->next) {
    append_list(names, p->name);
    append_list(types, p->type);
  }
  *type = net->define_type(types);
  FreeIntList(types);
  FreeParamList(params);
  return names;
}

void AddUserFunction(int name, int unsafe, ParamList* ins, ParamList* outs) {
  EcType* in_type;
  EcType* out_type;
  IntList* in_names = param_names(ins, &in_type);
  IntList* out_names = param_names(outs, &out_type);
  net->add_usr_func(name, unsafe, in_type, out_type, in_names, out_names);
}

void AddExternNode(int name, ParamList* ins, ParamList* outs) {
  Warning("basic support of extern node (treated as unsafe procedure)");
  EcType* in_type;
  EcType* out_type;
  IntList* in_names = param_names(ins, &in_type);
  IntList* out_names = param_names(outs, &out_type);
  net->add_usr_unsafe_proc(name, in_type, out_type, in_names, out_names);
}

void SetNodeName(int name) { net->node_name = name; }

/* --------------------------------------------------------------- equations */

// The record of a declared identifier; an undeclared one ends the process.
static IdentInfo* GetIdentInfo(int key) {
  IdentInfo* info = net->get_ident_info(key);
  if (info && info->ref) return info;
  fprintf(stderr, "ecnet::GetIdentInfo : undeclared ident '%s'\n", Symbols->text(key));
  FatalExit();
}

void AddAssertion(Exp* e, int line) {
  int key = net->add_assertion(e);
  net->equations.push_back({key, nullptr, e, line});
}

void DefineVariable(int name, Exp* e, int line) {
  IdentInfo* info = GetIdentInfo(name);
  net->equations.push_back({name, nullptr, e, line});
  info->def = e;
  // A leaf is shared by every use of its identifier: it keeps its own type
  // and clock (x = y must not retype y).
  if (e->is_leaf()) return;
  e->type = info->type;
  e->clock = info->clock;
}

void DefineTuple(IntList* names, Exp* e, int line) {
  for (IntList* n = names; n; n = n->next) GetIdentInfo(n->value);
  net->equations.push_back({names->value, names, e, line});
  net->define_tuple(names, e);
}

/* ------------------------------------------------------------- expressions */

Exp* RefExp(int name) { return GetIdentInfo(name)->ref; }

Exp* CallExp(int function, Exp* arg) {
  if (!net->get_func_info(function)) {
    fprintf(stderr, "ecnet::GetIdentInfo : undeclared ident '%s'\n", Symbols->text(function));
    FatalExit();
  }
  return new Exp(CALL_n, arg, function);
}

Exp* UnaryExp(ExpNature n, Exp* a) {
  if (n == UMINUS_n && !unsigned_minima.empty() && a == unsigned_minima.back().first) {
    unsigned_minima.pop_back();
    return net->get_int_const(Symbols->add("-2147483648"));
  }
  return new Exp(n, a);
}

Exp* BinaryExp(ExpNature n, Exp* a, Exp* b) { return new Exp(n, a, b); }

Exp* IfExp(Exp* c, Exp* a, Exp* b) { return new Exp(IF_n, c, a, b); }

Exp* ListExp(ExpNature n, ExpList* l) {
  Exp* e = new Exp(n, l);
  FreeExpList(l);
  return e;
}

ExpList* AppendExp(ExpList* list, Exp* e) { return ExpList::append(list, new ExpList(e)); }

void FreeExpList(ExpList* l) {
  while (l) {
    ExpList* next = l->next;
    delete l;
    l = next;
  }
}

Exp* BoolConst(char* text) { return net->get_bool_const(InternText(text)); }

// The lexer gives digits only: beyond ten significant ones, or beyond
// 2147483648 in ten, a literal cannot be an int.
Exp* IntConst(char* text) {
  int key = InternText(text);
  const char* literal = Symbols->text(key);
  const char* digits = literal + strspn(literal, "0");
  size_t n = strlen(digits);
  int order = n == 10 ? strcmp(digits, "2147483648") : n < 10 ? -1 : 1;
  if (order > 0) refuse_literal(literal, ec::token_line);
  if (order < 0) return net->get_int_const(key);
  Exp* waiting = new Exp(CONST_n, key, net->int_type, net->true_key);
  unsigned_minima.emplace_back(waiting, ec::token_line);
  return waiting;
}

Exp* RealConst(char* text) { return net->get_real_const(InternText(text)); }

// Declares `name` (x: from) returns (y: to) as a safe function.
static void declare_conversion(const char* name, const char* from, const char* to) {
  ParamList* in = NewParam(Symbols->add("x"), Symbols->add("%s", from));
  ParamList* out = NewParam(Symbols->add("y"), Symbols->add("%s", to));
  AddUserFunction(Symbols->add("%s", name), 0, in, out);
}

Exp* I2RExp(Exp* e) {
  if (ec::int2real_undef) declare_conversion("int2real", "int", "real");
  ec::int2real_undef = 0;
  return new Exp(CALL_n, e, Symbols->add("int2real"));
}

Exp* R2IExp(Exp* e) {
  if (ec::real2int_undef) declare_conversion("real2int", "real", "int");
  ec::real2int_undef = 0;
  return new Exp(CALL_n, e, Symbols->add("real2int"));
}
