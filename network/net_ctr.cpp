// net_ctr.cpp -- hash-consing of operator nodes. Hashes are computed on the
// operands' addresses only, never on whole subexpressions: operands are
// shared already, so identity of operands is structural equality.
#include "network/net_ctr.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "foundations/errors.h"
#include "foundations/symbol_table.h"
#include "network/net.h"

static std::uint64_t address(Exp* e) { return reinterpret_cast<std::uintptr_t>(e); }

int NetCtr::unary_hash_code(Exp* a) { return static_cast<int>(address(a) % NB_BUCKETS); }

// Symmetric in a and b, so that a commutative node is found from either
// operand order in the same bucket.
int NetCtr::binary_hash_code(Exp* a, Exp* b) {
  return static_cast<int>(((address(b) >> 2) + (address(a) >> 2)) % NB_BUCKETS);
}

int NetCtr::ternary_hash_code(Exp* a, Exp* b, Exp* c) {
  return static_cast<int>(((address(a) >> 4) + (address(b) >> 4) + (address(c) >> 4)) % NB_BUCKETS);
}

// Only the last 16 operands count.
int NetCtr::tuple_hash_code(int n, Exp** ops) {
  if (n == 0) return 0;
  std::uint64_t h = 0;
  for (int i = n - 1; i >= std::max(0, n - 16); i--) h = (address(ops[i]) >> 2) + 4 * h;
  return static_cast<int>(h % NB_BUCKETS);
}

NetCtr::NetCtr(Net* n) : net(n) {
  for (HashCell*& b : buckets) b = nullptr;
}

Exp* NetCtr::push(int bucket, Exp* e) {
  HashCell* head = buckets[bucket];
  HashCell* cell = new HashCell{head ? head->count + 1 : 1, nullptr, e, head};
  cell->last = head ? head->last : cell;
  buckets[bucket] = cell;
  return e;
}

/* ---------------------------------------------------------------- literals */

Exp* NetCtr::operator()(int v) { return net->get_int_const(net->symbols->add("%d", v)); }

Exp* NetCtr::operator()(float v) {
  return net->get_real_const(net->symbols->add("%f", static_cast<double>(v)));
}

/* --------------------------------------------------------- fixed arities */

Exp* NetCtr::operator()(ExpNature n, Exp* a) {
  int b = unary_hash_code(a);
  for (HashCell* c = buckets[b]; c; c = c->next)
    if (c->exp->nature == n && c->exp->operands[0] == a) return c->exp;
  return push(b, new Exp(n, a));
}

Exp* NetCtr::operator()(ExpNature n, Exp* a, int p) {
  if (n == CALL_n) {
    FuncInfo* f = net->get_func_info(p);
    if (f && f->unsafe) return new Exp(n, a, p);
  }
  int b = unary_hash_code(a);
  for (HashCell* c = buckets[b]; c; c = c->next)
    if (c->exp->nature == n && c->exp->operands[0] == a && c->exp->param == p) return c->exp;
  return push(b, new Exp(n, a, p));
}

Exp* NetCtr::operator()(ExpNature n, Exp* a, Exp* b) {
  int h = binary_hash_code(a, b);
  bool either_order = is_commutative(n);
  for (HashCell* c = buckets[h]; c; c = c->next) {
    Exp* e = c->exp;
    if (e->nature != n || e->arity != 2) continue;
    if (e->operands[0] == a && e->operands[1] == b) return e;
    if (either_order && e->operands[0] == b && e->operands[1] == a) return e;
  }
  return push(h, new Exp(n, a, b));
}

Exp* NetCtr::operator()(ExpNature n, Exp* a, Exp* b, Exp* c3) {
  int h = ternary_hash_code(a, b, c3);
  for (HashCell* c = buckets[h]; c; c = c->next) {
    Exp* e = c->exp;
    if (e->nature == n && e->operands[0] == a && e->operands[1] == b && e->operands[2] == c3) return e;
  }
  return push(h, new Exp(n, a, b, c3));
}

static bool same_operands(Exp* e, int k, Exp** ops) {
  if (e->arity != k) return false;
  for (int i = 0; i < k; i++)
    if (e->operands[i] != ops[i]) return false;
  return true;
}

Exp* NetCtr::operator()(ExpNature n, int k, Exp** ops) {
  int h = tuple_hash_code(k, ops);
  for (HashCell* c = buckets[h]; c; c = c->next)
    if (c->exp->nature == n && same_operands(c->exp, k, ops)) return c->exp;
  return push(h, new Exp(n, k, ops));
}

/* ---------------------------------------------------- linear combinations */

// Sorts the items by operand address, merges equal operands, drops zero
// coefficients and writes the result back from index 0; returns its size.
template <typename Coef>
static int canonical(int k, Exp** ops, Coef* coefs, Coef (*add)(const Coef&, const Coef&)) {
  std::vector<std::pair<Exp*, Coef>> items;
  items.reserve(k);
  for (int i = 0; i < k; i++) items.emplace_back(ops[i], coefs[i]);
  std::sort(items.begin(), items.end(), [](const std::pair<Exp*, Coef>& x, const std::pair<Exp*, Coef>& y) {
    return address(x.first) < address(y.first);
  });
  int kept = 0;
  for (size_t i = 0; i < items.size();) {
    Exp* op = items[i].first;
    Coef sum = items[i].second;
    for (i++; i < items.size() && items[i].first == op; i++) sum = add(sum, items[i].second);
    if (sum == 0) continue;
    ops[kept] = op;
    coefs[kept] = sum;
    kept++;
  }
  return kept;
}

static int add_ints(const int& a, const int& b) { return a + b; }

int NetCtr::canonical_form(int k, Exp** ops, Fract* coefs) { return canonical<Fract>(k, ops, coefs, plus); }

int NetCtr::canonical_form(int k, Exp** ops, int* coefs) { return canonical<int>(k, ops, coefs, add_ints); }

Exp* NetCtr::operator()(ExpNature n, int k, Exp** ops, Fract* coefs, Fract c) {
  if (n != RCL_n) IError("NetCtr::operator() RCL_n was expected");
  k = canonical_form(k, ops, coefs);
  int h = tuple_hash_code(k, ops);
  for (HashCell* cell = buckets[h]; cell; cell = cell->next) {
    Exp* e = cell->exp;
    if (e->nature != RCL_n || !same_operands(e, k, ops) || e->const_term != c) continue;
    if (std::equal(coefs, coefs + k, e->coefs)) return e;
  }
  return push(h, new Exp(n, k, ops, coefs, c));
}

Exp* NetCtr::operator()(ExpNature n, int k, Exp** ops, int* coefs, int c) {
  if (n != ICL_n) IError("NetCtr::operator() ICL_n was expected");
  k = canonical_form(k, ops, coefs);
  int h = tuple_hash_code(k, ops);
  for (HashCell* cell = buckets[h]; cell; cell = cell->next) {
    Exp* e = cell->exp;
    if (e->nature != ICL_n || !same_operands(e, k, ops) || e->int_const != c) continue;
    if (std::equal(coefs, coefs + k, e->int_coefs)) return e;
  }
  return push(h, new Exp(n, k, ops, coefs, c));
}

/* ------------------------------------------------------ negation and boxes */

Exp* NetCtr::neg(Exp* e) {
  if (e == net->true_exp) return net->false_exp;
  if (e == net->false_exp) return net->true_exp;
  if (e == net->nil_exp) return e;
  if (e->nature == NOT_n) return e->operands[0];
  return (*this)(NOT_n, e);
}

Exp* NetCtr::getabox() { return new Exp(ERROR_n, 0, static_cast<Exp**>(nullptr)); }

void NetCtr::update(Exp* box, Exp* model) {
  if (box->nature != ERROR_n)
    IError("file 'netctr':\nbuild_net : NetCtr::update : already updated expression");
  *box = *model;
}

void NetCtr::put_in_hash_tab(Exp* e) {
  ExpNature n = e->nature;
  if ((n >= PRE_n && n <= INIT_n) || n == PROJ_n || n == CALL_n) {
    push(unary_hash_code(e->operands[0]), e);
  } else if (n >= ARROW_n && n <= POWER_n) {
    push(binary_hash_code(e->operands[0], e->operands[1]), e);
  } else if (n == IF_n) {
    push(ternary_hash_code(e->operands[0], e->operands[1], e->operands[2]), e);
  } else if (n >= TUPLE_n && n <= EXACTONE) {
    push(tuple_hash_code(e->arity, e->operands), e);
  } else {
    IError("file 'netctr' :\nNetCtr::put_in_hash_tab : unexpected '%s' expression", nodekey(n));
  }
}
