// norm_net.cpp -- normalisation: every variable's definition rewritten into an
// equivalent expression on the base clock using LAST_n, INIT_n and IF_n in
// place of pre, current, -> and when. Each translation is memoised on its
// source node, so a shared source node is translated once.
#include "normalise/norm_net.h"

#include "foundations/errors.h"
#include "foundations/int_list.h"
#include "foundations/symbol_table.h"

NormNet::NormNet() = default;

void NormNet::init_norm(int mode, int b) {
  init_table.clear();
  clock_table.clear();
  impl_table.clear();
  normal_table.clear();
  impl_key = static_cast<int>(take_a_key());
  flow_key = static_cast<int>(take_a_key());
  impl_src_key = static_cast<int>(take_a_key());
  flow_src_key = static_cast<int>(take_a_key());
  clock_def_key = static_cast<int>(take_a_key());
  serial_key = static_cast<int>(take_a_key());
  min_key = static_cast<int>(take_a_key());
  option_mode = mode;
  option_b = b;
  if (!ctr) ctr = new NetCtr(this);
}

// The slot of v in a table, or null when v is beyond it (a symbol interned
// after the tables were sized names no variable).
Exp** NormNet::table_slot(std::vector<Exp*>& table, int v) {
  if (v < 0 || v >= static_cast<int>(table.size())) return nullptr;
  return &table[v];
}

/* ------------------------------------------------------------ translations */

Exp* NormNet::Xclock(int c) {
  if (c == true_key) {
    true_exp->put_info(clock_def_key, true_exp);
    return true_exp;
  }
  Exp** slot = table_slot(clock_table, c);
  if (slot && *slot) return *slot;
  IdentInfo* info = get_ident_info(c);
  if (!info) Error("NormNet::Xclock : undeclared clock '%s'", symbols->text(c));
  // A clock defined by an equation is reached through its reference, which
  // through_ref resolves to the clock's normalised implementation.
  Exp* def = info->def && info->def->is_leaf() ? info->def : info->ref;
  if (!def) Error("NormNet::Xclock : undeclared clock '%s'", symbols->text(c));
  Exp* node = def;
  if (info->clock != true_key) node = get_norm_exp(IF_n, Xclock(info->clock), def, false_exp, true_key);
  slot = table_slot(clock_table, c);
  if (slot) *slot = node;
  node->put_info(clock_def_key, def);
  return node;
}

Exp* NormNet::Xinit(int c) {
  Exp** slot = table_slot(init_table, c);
  if (slot && *slot) return *slot;
  Exp* node = get_norm_exp(INIT_n, Xclock(c), true_key);
  if (slot) *slot = node;
  return node;
}

Exp* NormNet::Xflow(Exp* e) {
  Exp* done = static_cast<Exp*>(e->get_ptr_info(flow_key));
  if (done) return done;
  Exp* clk = Xclock(clock(e));
  Exp* node = clk == true_exp ? Ximpl(e) : get_norm_exp(IF_n, clk, Ximpl(e), nil_exp, true_key);
  e->put_info(flow_key, node);
  if (node != e) node->put_info(flow_src_key, e);
  return node;
}

Exp* NormNet::Ximpl(Exp* e) {
  if (e->nature == CONST_n || e->nature == INPUT_n || e->nature == ECREF_n) return e;
  Exp* done = static_cast<Exp*>(e->get_ptr_info(impl_key));
  if (done) return done;
  Exp* node = Ximpl_node(e);
  e->put_info(impl_key, node);
  if (node != e) node->put_info(impl_src_key, e);
  return node;
}

Exp* NormNet::Ximpl_node(Exp* e) {
  int clk = clock(e);
  Exp** ops = e->operands;
  switch (e->nature) {
    case PRE_n:
      return get_norm_exp(LAST_n, Xflow(ops[0]), true_key);
    case CURRENT_n:
      return get_norm_exp(IF_n, Xclock(clock(ops[0])), Ximpl(ops[0]),
                          get_norm_exp(LAST_n, Xflow(ops[0]), true_key), clk);
    case ARROW_n:
      return get_norm_exp(IF_n, Xinit(clk), Ximpl(ops[0]), Ximpl(ops[1]), clk);
    case WHEN_n:
      // Sampling is carried by the clock of the result, not by a node.
      return Ximpl(ops[0]);
    case CALL_n:
      if (e->arity != 1) IError("net_norm::Ximpl: bad CALL_n arity\n");
      break;
    default:
      break;
  }
  std::vector<Exp*> impl(e->arity);
  for (int i = 0; i < e->arity; i++) impl[i] = Ximpl(ops[i]);
  return get_norm_exp(e->nature, e->arity, impl.data(), e->param, clk, e);
}

/* ------------------------------------------------------- node construction */

Exp* NormNet::get_norm_exp(ExpNature n, int arity, Exp** ops, int param, int clk,
                           const Exp* model) {
  nb_requests++;
  if (bool_optimise) {
    Exp* simpler = get_norm_bool(n, ops, clk);
    if (simpler) return simpler;
  }
  Exp* node;
  if (n == RCL_n && model)
    node = new Exp(n, arity, ops, model->coefs, model->const_term);
  else if (n == ICL_n && model)
    node = new Exp(n, arity, ops, model->int_coefs, model->int_const);
  else
    node = new Exp(n, arity, ops);
  node->param = param;
  node->clock = clk;
  nb_nodes++;
  nb_operands += arity;
  node->mark = 1;
  node->put_int_info(serial_key, nb_nodes);
  node->put_int_info(min_key, clk);
  node_list = new NodeEntry{node, node_list};
  return node;
}

Exp* NormNet::get_norm_exp(ExpNature n, Exp* a, int clk) {
  Exp* ops[1] = {a};
  return get_norm_exp(n, 1, ops, 0, clk);
}

Exp* NormNet::get_norm_exp(ExpNature n, Exp* a, Exp* b, int clk) {
  Exp* ops[2] = {a, b};
  return get_norm_exp(n, 2, ops, 0, clk);
}

Exp* NormNet::get_norm_exp(ExpNature n, Exp* a, Exp* b, Exp* c, int clk) {
  Exp* ops[3] = {a, b, c};
  return get_norm_exp(n, 3, ops, 0, clk);
}

// The simplifications are tried in a fixed order: which one answers decides
// the shape of the result, and so the node counts that are reported.
Exp* NormNet::get_norm_bool(ExpNature n, Exp** ops, int clk) {
  Exp* T = true_exp;
  Exp* F = false_exp;
  Exp* a = ops[0];
  switch (n) {
    case NOT_n:
      if (a == T) return F;
      if (a == F) return T;
      return nullptr;
    case AND_n:
      if (a == T) return ops[1];
      if (ops[1] == F) return ops[1];
      if (ops[1] == T || a == F) return a;
      return nullptr;
    case OR_n:
      if (a == T) return T;
      if (ops[1] == F) return a;
      if (ops[1] == T || a == F) return ops[1];
      return nullptr;
    case XOR_n:
    case NEQ_n:
      if (!is_bool(a)) return nullptr;
      if (a == F) return ops[1];
      if (ops[1] == F) return a;
      if (a == T) return not_of(ops[1], clk);
      if (ops[1] == T) return not_of(a, clk);
      return nullptr;
    case IMPL_n:
      if (a == T || ops[1] == T) return ops[1];
      if (a == F || ops[1] == F) return not_of(a, clk);
      return nullptr;
    case EQUAL_n:
      if (!is_bool(a)) return nullptr;
      if (a == T) return ops[1];
      if (ops[1] == T) return a;
      if (a == F) return not_of(ops[1], clk);
      if (ops[1] == F) return not_of(a, clk);
      return nullptr;
    case IF_n: {
      Exp* x = ops[1];
      Exp* y = ops[2];
      if (y == nil_exp) return nullptr;
      if (a == T) return x;
      if (a == F) return y;
      if (x == T) return get_norm_exp(OR_n, a, y, clk);
      if (x == F) return get_norm_exp(AND_n, not_of(a, clk), y, clk);
      if (y == T) return get_norm_exp(OR_n, not_of(a, clk), x, clk);
      if (y == F) return get_norm_exp(AND_n, a, x, clk);
      return nullptr;
    }
    default:
      return nullptr;
  }
}

/* -------------------------------------------------------------- variables */

void NormNet::normalise(int v) {
  IdentInfo* info = get_ident_info(v);
  if (!info) Error("NormNet::normalise : undeclared variable '%s'", symbols->text(v));
  if (!info->def) Error("NormNet::normalise : undefined variable '%s'", symbols->text(v));
  Exp* impl = Ximpl(info->def);
  *table_slot(impl_table, v) = impl;
  Exp* clk = Xclock(info->clock);
  Exp* normal = clk == true_exp ? impl : get_norm_exp(IF_n, clk, impl, nil_exp, true_key);
  *table_slot(normal_table, v) = normal;
}

void NormNet::normalise() {
  size_t size = static_cast<size_t>(symbols->size()) + 1;
  init_table.assign(size, nullptr);
  clock_table.assign(size, nullptr);
  impl_table.assign(size, nullptr);
  normal_table.assign(size, nullptr);
  for (IntList* l = outputs.list(); l; l = l->next) normalise(l->value);
  for (IntList* l = locals.list(); l; l = l->next) normalise(l->value);
  for (IntList* l = asserts.list(); l; l = l->next) normalise(l->value);
}

Exp* NormNet::through_ref(Exp* e) {
  // Each step moves to another variable, so a chain longer than the symbol
  // count can only be a definition that refers to itself.
  for (int steps = 0; e && e->nature == ECREF_n; steps++) {
    Exp** slot = table_slot(impl_table, e->ident);
    if (!slot || !*slot) return e;
    if (steps > symbols->size())
      Error("NormNet::through_ref : '%s' is defined by itself", symbols->text(e->ident));
    e = *slot;
  }
  return e;
}

Exp* NormNet::norm(int v) {
  Exp** slot = table_slot(normal_table, v);
  if (!slot || !*slot) {
    IdentInfo* info = get_ident_info(v);
    return info ? info->ref : nullptr;
  }
  Exp* e = through_ref(*slot);
  if (e->mark > 0 && e->mark <= nb_classes && !representatives.empty())
    return representatives[e->mark - 1];
  return e;
}

Exp* NormNet::representative(int c) const {
  if (c < 1 || c > static_cast<int>(representatives.size())) return nullptr;
  return representatives[c - 1];
}
