// norm_print.cpp -- printing the normalised network of an interface. Nodes
// are numbered in the order the walk meets them, never by class or address,
// so two minimisations that find the same classes print the same text.
#include "normalise/norm_print.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "foundations/pty_stream.h"
#include "foundations/symbol_table.h"
#include "normalise/net_interface.h"
#include "normalise/norm_net.h"

std::vector<Exp*> norm_walk(const NetInterface* ni) {
  std::vector<Exp*> roots;
  roots.insert(roots.end(), ni->input_nodes, ni->input_nodes + ni->nb_inputs);
  roots.insert(roots.end(), ni->output_nodes, ni->output_nodes + ni->nb_outputs);
  roots.insert(roots.end(), ni->assertion_nodes, ni->assertion_nodes + ni->nb_assertions);
  roots.insert(roots.end(), ni->local_nodes, ni->local_nodes + ni->nb_locals);
  // An explicit stack, because a long chain of memories would exhaust the
  // call stack. A node counts as met when it is popped, and operands are
  // pushed in reverse: the order is that of a recursive pre-order walk.
  std::vector<Exp*> order;
  std::unordered_set<Exp*> met;
  std::vector<Exp*> stack(roots.rbegin(), roots.rend());
  while (!stack.empty()) {
    Exp* e = stack.back();
    stack.pop_back();
    if (!met.insert(e).second) continue;
    order.push_back(e);
    for (int i = e->arity - 1; i >= 0; i--) stack.push_back(e->operands[i]);
  }
  return order;
}

// The text of a symbol, "?" for a key that names none (0 or unset -1).
static const char* name(SymbolTable* symbols, int key) {
  return key > 0 && key <= symbols->size() ? symbols->text(key) : "?";
}

// The numbers of a node's list of outputs or locals, lowest first (the list
// holds the newest first).
static std::vector<int> use_numbers(const NodeUse* uses) {
  std::vector<int> numbers;
  for (; uses; uses = uses->next) numbers.push_back(uses->number);
  std::reverse(numbers.begin(), numbers.end());
  return numbers;
}

// " : input 1 'a', output 2 'x', local 1 'l', assertion 1", or nothing.
static void print_uses(PtyStream* out, const NetInterface* ni, Exp* e) {
  const NodeRecord* r = ni->record(e);
  if (!r) return;
  SymbolTable* symbols = ni->net->symbols;
  const char* sep = " : ";
  if (r->input) {
    out->put("%sinput %d '%s'", sep, r->input, name(symbols, ni->input_idents[r->input - 1]));
    sep = ", ";
  }
  for (int k : use_numbers(r->outputs)) {
    out->put("%soutput %d '%s'", sep, k, name(symbols, ni->output_idents[k - 1]));
    sep = ", ";
  }
  for (int k : use_numbers(r->locals)) {
    out->put("%slocal %d '%s'", sep, k, name(symbols, ni->local_idents[k - 1]));
    sep = ", ";
  }
  if (r->assertion) out->put("%sassertion %d", sep, r->assertion);
}

void print_norm_net(PtyStream* out, const NetInterface* ni) {
  NormNet* net = ni->net;
  SymbolTable* symbols = net->symbols;
  std::vector<Exp*> order = norm_walk(ni);
  std::unordered_map<Exp*, int> number;
  for (Exp* e : order)
    if (!e->is_leaf()) number.emplace(e, static_cast<int>(number.size()) + 1);

  out->put("node %s", name(symbols, net->node_name));
  out->tab();
  for (Exp* e : order) {
    if (e->is_leaf()) {
      // Leaves are named where they are used; only those that stand for
      // something get a line.
      if (!ni->record(e)) continue;
      out->put("\n%s on %s", name(symbols, e->ident), name(symbols, e->clock));
      print_uses(out, ni, e);
      continue;
    }
    out->put("\n#%d = %s", number[e], nodekey(e->nature));
    if (e->nature == CALL_n) out->put("[%s]", name(symbols, e->param));
    if (e->nature == PROJ_n) out->put("[%d]", e->param);
    out->put("(");
    for (int i = 0; i < e->arity; i++) {
      Exp* o = e->operands[i];
      const char* sep = i > 0 ? ", " : "";
      if (o->is_leaf()) out->put("%s%s", sep, name(symbols, o->ident));
      else out->put("%s#%d", sep, number[o]);
    }
    out->put(") on %s", name(symbols, net->norm_clock(e)));
    print_uses(out, ni, e);
  }
  out->untab();
  out->put("\n%d nodes, %d classes\n", net->nb_nodes, net->nb_classes);
}
