// net_cycles.cpp -- the dependency graph of the equations within an instant
// and a depth-first search for a cycle in it. The search keeps its own
// stack: a chain of definitions may be as long as the program.
#include "network/net_cycles.h"

#include <string>
#include <utility>
#include <vector>

#include "foundations/errors.h"
#include "foundations/int_list.h"
#include "foundations/symbol_table.h"
#include "network/net.h"

namespace {

class DependencyGraph {
 public:
  DependencyGraph(Net* net, const char* file);
  // Refuses the first cycle found, searching from the equations in order.
  void check();

 private:
  void collect(Exp* e, std::vector<int>& deps);
  void add(int key, std::vector<int>& deps);
  // The equation a plain renaming x = y (or y when c) refers to, else -1.
  int renamed(const Equation& eq);
  bool has_renaming_cycle();
  // cycle: (equation, the key it was reached by), from the first back to it.
  [[noreturn]] void refuse(const std::vector<std::pair<int, int>>& cycle);

  Net* net;
  const char* file;
  std::vector<int> equation_of;  // by key: the equation defining it, -1 when none
  // The keys each equation depends on: deps[first[i] .. first[i + 1]).
  std::vector<int> first, deps;
};

DependencyGraph::DependencyGraph(Net* n, const char* f)
    : net(n), file(f), equation_of(n->symbols->size() + 1, -1) {
  const std::vector<Equation>& eqs = net->equations;
  for (size_t i = 0; i < eqs.size(); i++) {
    if (net->get_ident_info(eqs[i].name)->mode == ASSERT_ID) continue;
    if (!eqs[i].tuple) equation_of[eqs[i].name] = static_cast<int>(i);
    for (IntList* k = eqs[i].tuple; k; k = k->next) equation_of[k->value] = static_cast<int>(i);
  }
  first.push_back(0);
  for (const Equation& eq : eqs) {
    IdentInfo* info = net->get_ident_info(eq.name);
    if (info->mode != ASSERT_ID) {
      add(info->clock, deps);
      collect(eq.exp, deps);
    }
    first.push_back(static_cast<int>(deps.size()));
  }
}

void DependencyGraph::add(int key, std::vector<int>& out) {
  if (key > 0 && key < static_cast<int>(equation_of.size()) && equation_of[key] >= 0) out.push_back(key);
}

void DependencyGraph::collect(Exp* e, std::vector<int>& out) {
  if (e->nature == PRE_n) return;  // read at the previous instant
  if (e->nature == ECREF_n) add(e->ident, out);
  if (e->nature == CURRENT_n) add(net->clock(e->operands[0]), out);
  for (int k = 0; k < e->arity; k++) collect(e->operands[k], out);
}

int DependencyGraph::renamed(const Equation& eq) {
  if (eq.tuple) return -1;
  Exp* e = eq.exp;
  while (e->nature == WHEN_n) e = e->operands[0];
  return e->nature == ECREF_n ? equation_of[e->ident] : -1;
}

bool DependencyGraph::has_renaming_cycle() {
  const std::vector<Equation>& eqs = net->equations;
  std::vector<int> seen_in(eqs.size(), -1);  // the walk that first met it
  for (size_t start = 0; start < eqs.size(); start++) {
    for (int i = static_cast<int>(start); i >= 0; i = renamed(eqs[i])) {
      if (seen_in[i] == static_cast<int>(start)) return true;
      if (seen_in[i] >= 0) break;
      seen_in[i] = static_cast<int>(start);
    }
  }
  return false;
}

void DependencyGraph::check() {
  const std::vector<Equation>& eqs = net->equations;
  enum { kUnseen = 0, kOnStack, kDone };
  std::vector<char> state(eqs.size(), kUnseen);
  std::vector<int> on_stack_at(eqs.size(), -1);
  // (equation, next dependency to follow); the key it was reached by is
  // kept beside, for the message.
  std::vector<std::pair<int, int>> stack;
  std::vector<int> via;
  for (size_t root = 0; root < eqs.size(); root++) {
    if (state[root] != kUnseen || first[root] == first[root + 1]) continue;
    stack.push_back({static_cast<int>(root), first[root]});
    via.push_back(eqs[root].name);
    state[root] = kOnStack;
    on_stack_at[root] = 0;
    while (!stack.empty()) {
      auto& top = stack.back();
      if (top.second == first[top.first + 1]) {
        state[top.first] = kDone;
        stack.pop_back();
        via.pop_back();
        continue;
      }
      int key = deps[top.second++];
      int next = equation_of[key];
      if (state[next] == kDone) continue;
      if (state[next] == kOnStack) {
        if (has_renaming_cycle()) return;
        std::vector<std::pair<int, int>> cycle;
        for (size_t i = on_stack_at[next]; i < stack.size(); i++) cycle.push_back({stack[i].first, via[i]});
        cycle.push_back({next, key});
        refuse(cycle);
      }
      state[next] = kOnStack;
      on_stack_at[next] = static_cast<int>(stack.size());
      stack.push_back({next, first[next]});
      via.push_back(key);
    }
  }
}

void DependencyGraph::refuse(const std::vector<std::pair<int, int>>& cycle) {
  std::string path;
  for (size_t i = 0; i < cycle.size(); i++)
    path += (i > 0 ? " -> " : "") + std::string(net->symbols->text(cycle[i].second));
  const Equation& eq = net->equations[cycle[0].first];
  Error("%s:%d: '%s' depends on itself within an instant: %s", file, eq.line,
        net->symbols->text(cycle[0].second), path.c_str());
}

}  // namespace

void check_instant_cycles(Net* net, const char* file) { DependencyGraph(net, file).check(); }
