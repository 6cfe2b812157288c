// exp_text.cpp -- expressions printed with the grammar's own precedences,
// so that a message quotes an equation about as its author wrote it.
#include "network/exp_text.h"

#include <cstring>

#include "foundations/symbol_table.h"
#include "network/net.h"

namespace {

// Binding strength of what a node prints as, loosest first, as in the
// grammar: a conditional extends as far right as it can, so it is looser
// than every operator, and names, calls and lists bind tightest.
enum Level { kIf = 0, kPrefix = 13, kAtom = 14 };

int binary_level(ExpNature n) {
  switch (n) {
    case ARROW_n: return 1;
    case IMPL_n: return 2;
    case OR_n: return 3;
    case XOR_n: return 4;
    case AND_n: return 5;
    case EQUAL_n: case NEQ_n: return 6;
    case GTE_n: case GT_n: case LTE_n: case LT_n: return 7;
    case PLUS_n: case MINUS_n: return 8;
    case TIMES_n: case SLASH_n: case MOD_n: case DIV_n: return 10;
    case POWER_n: return 11;
    case WHEN_n: return 12;
    default: return -1;
  }
}

const int kNotLevel = 9;  // between the additive and multiplicative operators

class Printer {
 public:
  explicit Printer(Net* net) : net(net) {}

  // Appends e, in parentheses when it binds looser than `min_level`.
  void put(Exp* e, int min_level) {
    // "a when c + b" means (a when c) + b, which few readers would guess.
    bool paren = level(e) < min_level || (e->nature == WHEN_n && min_level > kIf);
    if (paren) text += '(';
    put_bare(e);
    if (paren) text += ')';
  }

  std::string text;

 private:
  const char* conversion(Exp* e) { return conversion_keyword(net, e); }

  int level(Exp* e) {
    if (e->nature == IF_n) return kIf;
    if (e->nature == NOT_n) return kNotLevel;
    if (e->nature == UMINUS_n || e->nature == PRE_n || e->nature == CURRENT_n || conversion(e))
      return kPrefix;
    int b = binary_level(e->nature);
    return b >= 0 ? b : kAtom;
  }

  void put_list(Exp* const* ops, int n) {
    for (int i = 0; i < n; i++) {
      if (i > 0) text += ", ";
      put(ops[i], kIf);
    }
  }

  void put_bare(Exp* e) {
    ExpNature n = e->nature;
    if (e->is_leaf()) {
      text += net->symbols->text(e->ident);
    } else if (const char* c = conversion(e)) {
      put_prefix(c, e, kPrefix);
    } else if (n == NOT_n) {
      put_prefix("not", e, kNotLevel);
    } else if (level(e) == kPrefix) {
      put_prefix(opkey(n), e, kPrefix);
    } else if (binary_level(n) >= 0) {
      put_binary(e, binary_level(n));
    } else if (n == IF_n) {
      text += "if ";
      put(e->operands[0], kIf);
      text += " then ";
      put(e->operands[1], kIf);
      text += " else ";
      put(e->operands[2], kIf);
    } else if (n == CALL_n) {
      text += net->symbols->text(e->param);
      Exp* arg = e->operands[0];
      text += '(';
      if (arg->nature == TUPLE_n) put_list(arg->operands, arg->arity);
      else put(arg, kIf);
      text += ')';
    } else if (n == TUPLE_n || n == NOR_n || n == DIESE_n || n == EXACTONE) {
      text += opkey(n);
      text += '(';
      put_list(e->operands, e->arity);
      text += ')';
    } else {
      text += nodekey(n);
    }
  }

  void put_prefix(const char* op, Exp* e, int lvl) {
    text += op;
    text += ' ';
    put(e->operands[0], lvl);
  }

  // Left operands may bind as loosely as the operator itself, right ones
  // must bind tighter; "=>" associates the other way.
  void put_binary(Exp* e, int lvl) {
    bool right_assoc = e->nature == IMPL_n;
    put(e->operands[0], right_assoc ? lvl + 1 : lvl);
    text += ' ';
    text += opkey(e->nature);
    text += ' ';
    put(e->operands[1], right_assoc ? lvl : lvl + 1);
  }

  Net* net;
};

}  // namespace

const char* conversion_keyword(Net* net, Exp* e) {
  if (e->nature != CALL_n) return nullptr;
  const char* name = net->symbols->text(e->param);
  if (strcmp(name, "int2real") == 0) return "real";
  if (strcmp(name, "real2int") == 0) return "int";
  return nullptr;
}

std::string exp_text(Net* net, Exp* e) {
  Printer p(net);
  p.put(e, kIf);
  return p.text;
}
