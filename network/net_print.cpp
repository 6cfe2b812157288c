// net_print.cpp -- a network printed back as ec text, and debugging dumps.
// Every operator node is printed in parentheses, so the text parses back to
// the same node shapes whatever the precedences; declarations come first so
// that every name is declared before it is used.
#include "network/net.h"

#include <set>

#include "foundations/int_list.h"
#include "foundations/pty_stream.h"
#include "foundations/symbol_table.h"

/* ------------------------------------------------------------ expressions */

static bool is_prefix(ExpNature n) { return n >= PRE_n && n <= INIT_n; }
static bool is_binary(ExpNature n) { return n >= ARROW_n && n <= POWER_n; }

// "a, b, c" for the operands of e.
static void print_operands(Net* net, PtyStream* out, Exp* e) {
  for (int i = 0; i < e->arity; i++) {
    if (i > 0) out->put(", ");
    net->print_exp(out, e->operands[i]);
  }
}

static void print_fract(PtyStream* out, const Fract& f) {
  if (f.den == 1) out->put("%lld", f.num);
  else out->put("%lld/%lld", f.num, f.den);
}

// "(c1 * x1 + ... + k)": not ec syntax, linear combinations only exist in
// normalised networks.
static void print_combination(Net* net, PtyStream* out, Exp* e) {
  out->put("(");
  for (int i = 0; i < e->arity; i++) {
    if (e->nature == ICL_n) out->put("%d", e->int_coefs[i]);
    else print_fract(out, e->coefs[i]);
    out->put(" * ");
    net->print_exp(out, e->operands[i]);
    out->put(" + ");
  }
  if (e->nature == ICL_n) out->put("%d", e->int_const);
  else print_fract(out, e->const_term);
  out->put(")");
}

void Net::print_exp(PtyStream* out, Exp* e) {
  if (!e) {
    out->put("<null>");
    return;
  }
  ExpNature n = e->nature;
  if (e->is_leaf()) {
    out->put("%s", symbols->text(e->ident));
  } else if (is_prefix(n)) {
    out->put("(%s ", opkey(n));
    print_exp(out, e->operands[0]);
    out->put(")");
  } else if (is_binary(n)) {
    out->put("(");
    print_exp(out, e->operands[0]);
    out->put(" %s ", opkey(n));
    print_exp(out, e->operands[1]);
    out->put(")");
  } else if (n == IF_n) {
    out->put("(if ");
    print_exp(out, e->operands[0]);
    out->put(" then ");
    print_exp(out, e->operands[1]);
    out->put(" else ");
    print_exp(out, e->operands[2]);
    out->put(")");
  } else if (n == TUPLE_n || n == NOR_n || n == DIESE_n || n == EXACTONE) {
    out->put("%s(", opkey(n));
    print_operands(this, out, e);
    out->put(")");
  } else if (n == CALL_n) {
    out->put("%s(", symbols->text(e->param));
    Exp* arg = e->operands[0];
    if (arg->nature == TUPLE_n) print_operands(this, out, arg);
    else print_exp(out, arg);
    out->put(")");
  } else if (n == PROJ_n) {
    out->put("proj_%d(", e->param);
    print_exp(out, e->operands[0]);
    out->put(")");
  } else if (n == RCL_n || n == ICL_n) {
    print_combination(this, out, e);
  } else {
    out->put("<%s>", nodekey(n));
  }
}

void Net::print_exp_def(PtyStream* out, Exp* e) { e->print_def(out, symbols); }

/* ----------------------------------------------------------- declarations */

void Net::print_func_decl(int function, PtyStream* out) {
  FuncInfo* f = get_func_info(function);
  if (!f) {
    out->put("-- '%s' is no function\n", symbols->text(function));
    return;
  }
  // An extern node is the one unsafe procedure whose result is not a tuple.
  if (f->unsafe && f->kind == 1 && !f->out_type->is_tuple) out->put("extern node ");
  else if (f->unsafe) out->put("unsafe function ");
  else out->put("function ");
  out->put("%s(", symbols->text(function));
  FuncInfo::print_params(out, symbols, f->in_params, f->in_type);
  out->put(") returns (");
  FuncInfo::print_params(out, symbols, f->out_params, f->out_type);
  out->put(");\n");
}

// "x: T" or "(x: T) when c" for a declared identifier.
static void print_declared(Net* net, PtyStream* out, IdentInfo* info) {
  const char* name = net->symbols->text(info->key);
  const char* type = net->symbols->text(info->type->name);
  if (info->clock == net->true_key) out->put("%s: %s", name, type);
  else out->put("(%s: %s) when %s", name, type, net->symbols->text(info->clock));
}

void Net::print_vars(PtyStream* out, IntList* keys) {
  for (IntList* k = keys; k; k = k->next) {
    if (k != keys) out->put("; ");
    print_declared(this, out, get_ident_info(k->value));
  }
}

// The values of an enumeration in file order: ordinals run from the last
// value (0) to the first (count - 1).
static void print_enum_values(Net* net, PtyStream* out, EcType* t) {
  for (int i = t->enum_count - 1; i >= 0; i--) {
    IdentInfo* v = t->enum_values[i];
    out->put("%s%s", i < t->enum_count - 1 ? ", " : "", v ? net->symbols->text(v->key) : "?");
  }
}

void Net::print_decls(PtyStream* out) {
  for (IntList* k = usr_types; k; k = k->next) {
    EcType* t = define_type(k->value);
    out->put("type %s", symbols->text(k->value));
    if (t->enum_count > 0) {
      out->put(" = (");
      print_enum_values(this, out, t);
      out->put(")");
    }
    out->put(";\n");
  }
  for (IntList* k = consts; k; k = k->next) {
    IdentInfo* info = get_ident_info(k->value);
    if (!info || info->mode != CONST_ID) continue;
    out->put("const ");
    print_declared(this, out, info);
    out->put(";\n");
  }
  for (IntList* k = funcs; k; k = k->next) print_func_decl(k->value, out);
  for (IntList* k = procs; k; k = k->next) print_func_decl(k->value, out);
}

void Net::print_equations(PtyStream* out) {
  std::set<IntList*> tuples_done;
  IntList* lists[2] = {outputs.list(), locals.list()};
  for (IntList* list : lists) {
    for (IntList* k = list; k; k = k->next) {
      IdentInfo* info = get_ident_info(k->value);
      if (!info->def) continue;
      IntList* tuple = info->value.tuple;
      if (info->def->nature == PROJ_n && tuple) {
        if (!tuples_done.insert(tuple).second) continue;
        out->put("\n(");
        for (IntList* n = tuple; n; n = n->next) out->put("%s%s", n == tuple ? "" : ", ", symbols->text(n->value));
        out->put(") = ");
        print_exp(out, info->def->operands[0]);
      } else {
        out->put("\n%s = ", symbols->text(k->value));
        print_exp(out, info->def);
      }
      out->put(";");
    }
  }
  for (IntList* k = asserts.list(); k; k = k->next) {
    out->put("\nassert ");
    print_exp(out, get_ident_info(k->value)->def);
    out->put(";");
  }
}

void Net::print_ec(PtyStream* out) {
  print_decls(out);
  if (!node_name) return;
  out->put("node %s(", symbols->text(node_name));
  print_vars(out, inputs.list());
  out->put(") returns (");
  print_vars(out, outputs.list());
  out->put(");\n");
  if (locals.length()) {
    out->put("var ");
    print_vars(out, locals.list());
    out->put(";\n");
  }
  out->put("let");
  out->tab();
  print_equations(out);
  out->untab();
  out->put("\ntel.\n");
  out->flush();
}
