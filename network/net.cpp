// net.cpp -- the declaration side of a network: types, constants, functions,
// inputs, outputs, locals and assertions. Every declared identifier has one
// record in `idents` and, except assertions, one leaf as its reference.
#include "network/net.h"

#include <cstdlib>

#include "foundations/errors.h"
#include "foundations/int_list.h"
#include "foundations/symbol_table.h"

// Nodes and records are shared with the passes built on the network, which
// may outlive any one of its tables: nothing is freed here.
Net::~Net() = default;

void Net::NetInit(SymbolTable* s) {
  symbols = s;
  node_name = 0;
  inputs.clear();
  outputs.clear();
  locals.clear();
  asserts.clear();
  equations.clear();
  consts = funcs = procs = usr_types = nullptr;
  nb_inputs = nb_outputs = nb_locals = nb_asserts = 0;
  nb_usr_types = nb_consts = nb_funcs = nb_procs = 0;
  types = nullptr;
  idents = new SymbolInfoArray(200, 0);
  bool_type = define_type(symbols->add("bool"));
  int_type = define_type(symbols->add("int"));
  real_type = define_type(symbols->add("real"));
  true_key = symbols->add("true");
  true_exp = get_bool_const(true_key);
  false_exp = get_bool_const(symbols->add("false"));
  bottom_exp = get_bool_const(symbols->add("bottom"));
  nil_exp = get_bool_const(symbols->add("nil"));
}

IdentInfo* Net::get_ident_info(int key) {
  SymbolInfo* info = (*idents)[key];
  return (info && !info->is_func) ? static_cast<IdentInfo*>(info) : nullptr;
}

FuncInfo* Net::get_func_info(int key) {
  SymbolInfo* info = (*idents)[key];
  return (info && info->is_func) ? static_cast<FuncInfo*>(info) : nullptr;
}

/* ------------------------------------------------------------------- types */

EcType* Net::define_type(int name) {
  for (EcType* t = types; t; t = t->next)
    if (!t->is_tuple && t->name == name) return t;
  types = new EcType(name, types);
  return types;
}

static bool same_components(IntList* a, int* names, int n) {
  int i = 0;
  for (; a && i < n; a = a->next, i++)
    if (a->value != names[i]) return false;
  return !a && i == n;
}

EcType* Net::define_type(int* names, int n) {
  if (n == 1) return define_type(names[0]);
  for (EcType* t = types; t; t = t->next)
    if (t->is_tuple && same_components(t->components, names, n)) return t;
  types = new EcType(new IntList(names, n), types);
  return types;
}

EcType* Net::define_type(IntList* names) {
  int n = 0;
  for (IntList* l = names; l; l = l->next) n++;
  int* keys = new int[n > 0 ? n : 1];
  int i = 0;
  for (IntList* l = names; l; l = l->next) keys[i++] = l->value;
  EcType* t = define_type(keys, n);
  delete[] keys;
  return t;
}

EcType* Net::add_usr_type(int name) {
  append_list(usr_types, name);
  EcType* t = define_type(name);
  t->number = ++nb_usr_types;
  return t;
}

EcType* Net::add_usr_type(int name, IntList* values) {
  EcType* t = add_usr_type(name);
  t->make_enum(values ? values->length : 0);
  // A value's ordinal is its cell's length minus one: the last value of the
  // list is 0 and the first is count - 1.
  for (IntList* v = values; v; v = v->next) add_enum_const(v->value, t, true_key, v->length - 1);
  return t;
}

/* --------------------------------------------------------------- constants */

IdentInfo* Net::new_ident(IdentMode m, int key, EcType* t, int clk) {
  IdentInfo* info = new IdentInfo(m, key, t, clk);
  (*idents)[key] = info;
  return info;
}

void Net::add_enum_const(int key, EcType* t, int clk, int ordinal) {
  IdentInfo* info = new_ident(ENUM_CONST_ID, key, t, clk);
  info->index = ordinal;
  info->value.position = consts ? consts->length : 0;
  info->def = info->ref = new Exp(CONST_n, key, t, clk);
  if (ordinal >= 0 && ordinal < t->enum_count) t->enum_values[ordinal] = info;
  append_list(consts, key);
  nb_consts++;
}

void Net::add_usr_const(int key, EcType* t, int clk) {
  IdentInfo* info = new_ident(CONST_ID, key, t, clk);
  info->value.position = consts ? consts->length : 0;
  info->def = info->ref = new Exp(CONST_n, key, t, clk);
  append_list(consts, key);
  append_list(t->consts, key);
  nb_consts++;
}

Exp* Net::get_literal(int key, IdentMode m, EcType* t) {
  IdentInfo* info = get_ident_info(key);
  if (info) return info->ref;
  info = new_ident(m, key, t, true_key);
  info->def = info->ref = new Exp(CONST_n, key, t, true_key);
  return info->ref;
}

Exp* Net::get_bool_const(int key) { return get_literal(key, BOOL_CONST_ID, bool_type); }

Exp* Net::get_int_const(int key) {
  bool fresh = !get_ident_info(key);
  Exp* leaf = get_literal(key, INT_CONST_ID, int_type);
  if (fresh) get_ident_info(key)->value.int_value = atoi(symbols->text(key));
  return leaf;
}

Exp* Net::get_real_const(int key) {
  bool fresh = !get_ident_info(key);
  Exp* leaf = get_literal(key, REAL_CONST_ID, real_type);
  if (fresh) get_ident_info(key)->value.real_value = strtof(symbols->text(key), nullptr);
  return leaf;
}

/* --------------------------------------------------------------- functions */

void Net::add_usr_func(int key, int unsafe, EcType* in, EcType* out, IntList* ins,
                       IntList* outs) {
  bool procedure = out && out->is_tuple;
  IntList*& list = procedure ? procs : funcs;
  int index = list ? list->length : 0;
  (*idents)[key] = new FuncInfo(procedure ? 1 : 0, unsafe, index, in, out, ins, outs);
  append_list(list, key);
  (procedure ? nb_procs : nb_funcs)++;
}

void Net::add_usr_unsafe_proc(int key, EcType* in, EcType* out, IntList* ins, IntList* outs) {
  int index = procs ? procs->length : 0;
  (*idents)[key] = new FuncInfo(1, 1, index, in, out, ins, outs);
  append_list(procs, key);
  nb_procs++;
}

/* --------------------------------------------------------------- variables */

void Net::add_input(int key, EcType* t, int clk) {
  IdentInfo* info = new_ident(INPUT_ID, key, t, clk);
  info->def = info->ref = new Exp(INPUT_n, key, t, clk);
  inputs.append(key);
  info->index = nb_inputs++;
}

void Net::add_output(int key, EcType* t, int clk, int at_front) {
  IdentInfo* info = new_ident(OUTPUT_ID, key, t, clk);
  info->ref = new Exp(ECREF_n, key, t, clk);
  if (at_front)
    outputs.prepend(key);
  else
    outputs.append(key);
  info->index = nb_outputs++;
}

void Net::add_local(int key, EcType* t, int clk) {
  IdentInfo* info = new_ident(LOCAL_ID, key, t, clk);
  info->ref = new Exp(ECREF_n, key, t, clk);
  locals.append(key);
  info->index = nb_locals++;
}

int Net::add_assertion(Exp* e) {
  int key = symbols->add("__assert_%d", asserts.length());
  IdentInfo* info = new_ident(ASSERT_ID, key, bool_type, -1);
  info->def = e;
  info->clock = clock(e);
  // A leaf is shared by every use of its identifier and keeps its own.
  if (!e->is_leaf()) {
    e->clock = info->clock;
    e->type = bool_type;
  }
  asserts.append(key);
  nb_asserts++;
  return key;
}

void Net::define_tuple(IntList* names, Exp* e) {
  int i = 1;
  for (IntList* n = names; n; n = n->next, i++) {
    IdentInfo* info = get_ident_info(n->value);
    if (!info) IError("file 'net':\nNet::define_tuple : undeclared '%s'", symbols->text(n->value));
    Exp* proj = new Exp(PROJ_n, e, i);
    proj->type = info->type;
    proj->clock = info->clock;
    info->def = proj;
    info->value.tuple = names;
  }
}
