// norm_refine.cpp -- the classes of bisimilar normalised nodes, found by
// partition refinement in O(m log n) for n nodes and m operands. It finds
// the same partition as splitting classes against their first member (the
// coarsest stable one that separates nodes of different nature, index,
// function, arity or clock), which rescans every class after every split
// and grows quadratically with the network.
//
// A node's signature is the list of its operands' block numbers (a leaf,
// outside the node list, has a number of its own; the two operands of a
// commutative node are sorted), so two nodes of a block stay together
// exactly when their signatures are equal. Work goes in rounds: the nodes
// whose operands were renumbered in the last round are "touched"; every
// signature of a round is read before any block of the round splits, and
// the untouched members of a block still share one signature. When a block
// splits, its largest part keeps the block's number and only the other
// parts are renumbered, so only their users are touched next, and a node is
// renumbered at most log2 n times (each time into a part at most half the
// size of its block).
#include "normalise/norm_refine.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

#include "foundations/errors.h"

NormRefinement::NormRefinement(NormNet* net) : net(net) {}

std::vector<NormRefinement::Kind> NormRefinement::read_nodes() {
  for (NormNet::NodeEntry* e = net->node_list; e; e = e->next) {
    // The mark holds the node's index + 1 until the classes are numbered.
    e->exp->mark = static_cast<int>(entries.size()) + 1;
    entries.push_back(e);
  }
  int n = static_cast<int>(entries.size());
  first_operand.assign(n + 1, 0);
  std::unordered_map<Exp*, int> leaf_numbers;
  commutative.assign(n, 0);
  std::vector<Kind> kinds;
  kinds.reserve(n);
  for (int v = 0; v < n; v++) {
    // Everything read of a node is read in this one visit: on a large
    // network each visit costs cache misses.
    Exp* e = entries[v]->exp;
    commutative[v] = e->arity == 2 && is_commutative(e->nature);
    kinds.push_back(kind(v));
    first_operand[v] = static_cast<int>(operands.size());
    for (int i = 0; i < e->arity; i++) {
      Exp* o = net->through_ref(e->operands[i]);
      if (o->mark > 0) {
        operands.push_back(o->mark - 1);
      } else {
        // A leaf matches itself only: a negative number of its own.
        int fresh = -1 - static_cast<int>(leaf_numbers.size());
        operands.push_back(leaf_numbers.emplace(o, fresh).first->second);
      }
    }
  }
  first_operand[n] = static_cast<int>(operands.size());
  // The users of each node, counted and then placed.
  first_user.assign(n + 1, 0);
  for (int o : operands)
    if (o >= 0) first_user[o + 1]++;
  for (int v = 0; v < n; v++) first_user[v + 1] += first_user[v];
  users.assign(first_user[n], 0);
  std::vector<int> fill(first_user.begin(), first_user.end() - 1);
  for (int v = 0; v < n; v++)
    for (int k = first_operand[v]; k < first_operand[v + 1]; k++)
      if (operands[k] >= 0) users[fill[operands[k]]++] = v;
  return kinds;
}

// What the nodes of a class share besides their operands' classes.
NormRefinement::Kind NormRefinement::kind(int v) {
  Exp* e = entries[v]->exp;
  Kind k{e->nature, 0, e->arity, net->norm_clock(e), -1};
  if (e->nature == PROJ_n || e->nature == CALL_n) k.index = e->param;
  if (e->nature == CALL_n) {
    // A call with side effects is only ever equal to itself.
    FuncInfo* f = net->get_func_info(e->param);
    if (f && f->unsafe) k.self = v;
  }
  return k;
}

bool NormRefinement::Kind::operator==(const Kind& o) const {
  return nature == o.nature && index == o.index && arity == o.arity && clock == o.clock &&
         self == o.self;
}

size_t NormRefinement::KindHash::operator()(const Kind& k) const {
  size_t h = 0;
  for (int field : {k.nature, k.index, k.arity, k.clock, k.self})
    h = h * 1000003u ^ static_cast<size_t>(static_cast<unsigned>(field));
  return h;
}

void NormRefinement::initial_blocks(const std::vector<Kind>& kinds) {
  int n = static_cast<int>(entries.size());
  block.assign(n, -1);
  next.assign(n, -1);
  prev.assign(n, -1);
  std::unordered_map<Kind, int, KindHash> blocks;
  for (int v = 0; v < n; v++) {
    auto found = blocks.emplace(kinds[v], -1).first;
    if (found->second < 0) found->second = new_block();
    add_to_block(v, found->second);
  }
}

int NormRefinement::new_block() {
  head.push_back(-1);
  size.push_back(0);
  return static_cast<int>(head.size()) - 1;
}

void NormRefinement::add_to_block(int v, int b) {
  block[v] = b;
  prev[v] = -1;
  next[v] = head[b];
  if (head[b] >= 0) prev[head[b]] = v;
  head[b] = v;
  size[b]++;
}

void NormRefinement::move_to_block(int v, int b) {
  int old = block[v];
  if (prev[v] >= 0)
    next[prev[v]] = next[v];
  else
    head[old] = next[v];
  if (next[v] >= 0) prev[next[v]] = prev[v];
  size[old]--;
  add_to_block(v, b);
  for (int k = first_user[v]; k < first_user[v + 1]; k++) {
    int u = users[k];
    if (queued[u] == round + 1) continue;
    queued[u] = round + 1;
    queue.push_back(u);
  }
}

int NormRefinement::put_signature(int v) {
  int start = static_cast<int>(sig_values.size());
  for (int k = first_operand[v]; k < first_operand[v + 1]; k++) {
    int o = operands[k];
    sig_values.push_back(o >= 0 ? block[o] : o);
  }
  if (commutative[v] && sig_values[start + 1] < sig_values[start])
    std::swap(sig_values[start], sig_values[start + 1]);
  return start;
}

bool NormRefinement::same_signature(int a_start, int b_start, int count) const {
  return std::equal(sig_values.begin() + a_start, sig_values.begin() + a_start + count,
                    sig_values.begin() + b_start);
}

// The nodes of one round, block by block, each with its signature (read
// before anything splits), sorted so that equal signatures are side by side.
void NormRefinement::read_round(std::vector<int>& touched, std::vector<Plan>& plans) {
  // Touched nodes gathered block by block, by counting: sorting them would
  // cost a log factor on the first round, where every node is touched.
  int nb_blocks = static_cast<int>(head.size());
  block_round.resize(nb_blocks, 0);
  block_count.resize(nb_blocks, 0);
  std::vector<int> blocks;
  for (int v : touched) {
    int b = block[v];
    if (block_round[b] != round) {
      block_round[b] = round;
      block_count[b] = 0;
      blocks.push_back(b);
    }
    block_count[b]++;
  }
  int at = 0;
  for (int b : blocks) {
    plans.push_back({b, at, at});
    at += block_count[b];
    block_count[b] = plans.back().begin;  // from now on: where b's next node goes
  }
  std::vector<int> by_block(touched.size());
  for (int v : touched) {
    int b = block[v];
    by_block[block_count[b]++] = v;
  }
  touched.swap(by_block);
  sig_values.clear();
  for (int v : touched) sig_start[v] = put_signature(v);
  std::vector<std::pair<uint64_t, int>> keyed;
  for (Plan& p : plans) {
    p.end = block_count[p.block];
    if (p.end - p.begin < 2) continue;
    int arity = first_operand[touched[p.begin] + 1] - first_operand[touched[p.begin]];
    if (arity > 2) {
      std::sort(touched.begin() + p.begin, touched.begin() + p.end, [&](int a, int b) {
        return std::lexicographical_compare(
            sig_values.begin() + sig_start[a], sig_values.begin() + sig_start[a] + arity,
            sig_values.begin() + sig_start[b], sig_values.begin() + sig_start[b] + arity);
      });
      continue;
    }
    // Most nodes have one or two operands: their signature fits in one
    // word that orders as the signature does, and sorting words side by
    // side with their nodes costs far fewer cache misses than comparing
    // signatures through their nodes.
    keyed.clear();
    for (int i = p.begin; i < p.end; i++) {
      int v = touched[i];
      uint64_t key = 0;
      for (int k = 0; k < arity; k++) key = key << 32 | (static_cast<uint32_t>(sig_values[sig_start[v] + k]) ^ 0x80000000u);
      keyed.push_back({key, v});
    }
    std::sort(keyed.begin(), keyed.end());
    for (int i = p.begin; i < p.end; i++) touched[i] = keyed[i - p.begin].second;
  }
}

// Splits a block as its plan says; whether it split. A touched node refers
// to a node renumbered in the last round, which no untouched node does, so
// its signature always differs from the untouched members'.
bool NormRefinement::split(const Plan& p, const std::vector<int>& touched) {
  int arity = first_operand[touched[p.begin] + 1] - first_operand[touched[p.begin]];
  // Groups of equal signatures among the touched nodes.
  std::vector<int> start;
  for (int i = p.begin; i < p.end; i++)
    if (i == p.begin || !same_signature(sig_start[touched[i]], sig_start[touched[i - 1]], arity))
      start.push_back(i);
  int groups = static_cast<int>(start.size());
  start.push_back(p.end);
  bool untouched = size[p.block] > p.end - p.begin;
  if (groups + untouched <= 1) return false;

  // The largest part keeps the block; -1 is the untouched members.
  auto group_size = [&](int g) { return start[g + 1] - start[g]; };
  int largest = -1;
  int largest_size = untouched ? size[p.block] - (p.end - p.begin) : 0;
  for (int g = 0; g < groups; g++)
    if (group_size(g) > largest_size) largest = g, largest_size = group_size(g);

  for (int g = 0; g < groups; g++) {
    if (g == largest) continue;
    int b = new_block();
    for (int i = start[g]; i < start[g + 1]; i++) move_to_block(touched[i], b);
  }
  if (largest >= 0 && untouched) {
    // The untouched part is smaller than a touched group: walking the block
    // for it costs no more than the touched nodes did.
    int b = new_block();
    std::vector<int> part;
    for (int v = head[p.block]; v >= 0; v = next[v])
      if (current[v] != round) part.push_back(v);
    for (int v : part) move_to_block(v, b);
  }
  return true;
}

void NormRefinement::refine() {
  initial_blocks(read_nodes());
  int n = static_cast<int>(entries.size());
  current.assign(n, 0);
  queued.assign(n, 0);
  sig_start.assign(n, 0);
  // At first no block is known to be stable: every node is touched.
  round = 0;
  for (int v = 0; v < n; v++) queue.push_back(v);
  while (!queue.empty()) {
    round++;
    std::vector<int> touched;
    touched.swap(queue);
    for (int v : touched) current[v] = round;
    std::vector<Plan> plans;
    read_round(touched, plans);
    bool split_any = false;
    for (const Plan& p : plans) {
      if (!split(p, touched)) continue;
      split_any = true;
      VerboseWheel(100);
    }
    if (split_any) Verbose(".");
  }
  number_classes();
}

void NormRefinement::number_classes() {
  // The node list is newest first. Classes are numbered by their oldest
  // member and list their members oldest first, so that the first member,
  // whose copy represents the class, is the one written first in the
  // program, as the classes made by splitting begin.
  int n = static_cast<int>(entries.size());
  std::vector<int> number(head.size(), 0);
  std::vector<NormNet::NodeEntry*> last(head.size(), nullptr);
  net->classes.assign(n, nullptr);
  net->nb_classes = 0;
  for (int v = n - 1; v >= 0; v--) {
    int b = block[v];
    NormNet::NodeEntry* e = entries[v];
    e->next = nullptr;
    if (number[b] == 0) {
      number[b] = ++net->nb_classes;
      net->classes[number[b] - 1] = e;
    } else {
      last[b]->next = e;
    }
    last[b] = e;
    e->exp->mark = number[b];
  }
}
