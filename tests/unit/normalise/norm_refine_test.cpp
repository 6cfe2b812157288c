// norm_refine_test.cpp -- the refinement finds exactly the classes that
// splitting against first members finds, on many generated programs rich
// in equal flows: duplicated equations, commutative operands swapped,
// memories in cycles, a sub-clock, unsafe calls.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "norm_fixture.h"

using normtest::parse_norm;

namespace {

// A program of n int locals v0.. and n bool locals b0.., each defined from a
// few others (earlier or later ones, under pre), from a small pool of
// shapes so that many equations compute the same flow.
std::string generated(unsigned seed, int n) {
  std::mt19937 rng(seed);
  auto pick = [&](int bound) { return static_cast<int>(rng() % bound); };
  auto var = [&](char kind) { return std::string(1, kind) + std::to_string(pick(n)); };
  auto leaf = [&](char kind) {
    if (pick(3) == 0) return std::string(kind == 'v' ? (pick(2) ? "i" : "j") : (pick(2) ? "c" : "d"));
    return "pre " + var(kind);
  };
  std::string text =
      "unsafe function u(a: int) returns (r: int);\n"
      "node g(c, d: bool; i, j: int) returns (o: int; p: bool);\nvar ";
  for (int k = 0; k < n; k++) text += "v" + std::to_string(k) + ": int; b" + std::to_string(k) + ": bool; ";
  text += "(w: int) when c;\nlet\n";
  for (int k = 0; k < n; k++) {
    std::string x = leaf('v'), y = leaf('v'), a = leaf('b'), b = leaf('b');
    std::string v = "v" + std::to_string(k), bv = "b" + std::to_string(k);
    switch (pick(7)) {
      case 0: text += v + " = " + x + " + " + y + ";\n"; break;
      case 1: text += v + " = " + y + " + " + x + ";\n"; break;
      case 2: text += v + " = 0 -> " + x + " - 1;\n"; break;
      case 3: text += v + " = if " + a + " then " + x + " else " + y + ";\n"; break;
      case 4: text += v + " = u(" + x + ");\n"; break;
      case 5: text += v + " = current w;\n"; break;
      default: text += v + " = 0 -> pre " + v + " + 1;\n"; break;
    }
    switch (pick(4)) {
      case 0: text += bv + " = " + a + " and " + b + ";\n"; break;
      case 1: text += bv + " = " + b + " and " + a + ";\n"; break;
      case 2: text += bv + " = false -> " + x + " < " + y + ";\n"; break;
      default: text += bv + " = true -> not " + a + ";\n"; break;
    }
  }
  text += "w = (i when c) -> pre w + (j when c);\n";
  text += "o = v" + std::to_string(n - 1) + " + current w;\n";
  text += "p = b" + std::to_string(n - 1) + ";\ntel\n";
  return text;
}

// Node k of the node list gets the number of the first node of its class,
// in list order: equal for equal partitions, whatever the class numbers.
std::vector<int> canonical(NormNet* net) {
  std::vector<int> first_of(net->nb_classes + 1, -1), labels;
  int k = 0;
  std::vector<Exp*> nodes;
  for (int c = 1; c <= net->nb_classes; c++)
    for (NormNet::NodeEntry* e = net->class_members(c); e; e = e->next) nodes.push_back(e->exp);
  // Serial order: the order normalisation built the nodes, the same in two
  // networks read from the same text.
  std::sort(nodes.begin(), nodes.end(), [&](Exp* a, Exp* b) {
    return net->serial(a) < net->serial(b);
  });
  for (Exp* e : nodes) {
    if (first_of[e->mark] < 0) first_of[e->mark] = k;
    labels.push_back(first_of[e->mark]);
    k++;
  }
  return labels;
}

TEST(NormRefineTest, SameClassesAsSplitting) {
  int merged = 0;
  for (unsigned seed = 1; seed <= 150; seed++) {
    std::string text = generated(seed, 4 + seed % 23);
    NormNet* fast = parse_norm(text);
    NormNet* slow = parse_norm(text);
    fast->normalise();
    slow->normalise();
    fast->minimize();
    slow->minimize_by_splitting();
    ASSERT_EQ(fast->nb_nodes, slow->nb_nodes) << text;
    ASSERT_EQ(fast->nb_classes, slow->nb_classes) << text;
    ASSERT_EQ(canonical(fast), canonical(slow)) << text;
    merged += fast->nb_nodes - fast->nb_classes;
  }
  // The programs must give the algorithms something to merge.
  EXPECT_GT(merged, 500);
}

}  // namespace
