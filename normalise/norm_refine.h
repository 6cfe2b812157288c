// norm_refine.h -- the classes of bisimilar nodes of a normalised network,
// computed by partition refinement in near-linear time. The result is the
// partition that splitting classes against their first member reaches; the
// classes are numbered by their oldest member.
#ifndef NORMALISE_NORM_REFINE_H
#define NORMALISE_NORM_REFINE_H

#include <vector>

#include "normalise/norm_net.h"

class NormRefinement {
 public:
  explicit NormRefinement(NormNet* net);
  NormRefinement(const NormRefinement&) = delete;
  NormRefinement& operator=(const NormRefinement&) = delete;

  // Fills the network's classes and class count, moving the node-list
  // entries into the class lists, and sets every node's mark to its class
  // number. Prints a dot for every round that split a class (Verbose).
  void refine();

 private:
  // Nature, projected index or function, arity, clock, and the node's own
  // number for a call that must not be shared (else -1).
  struct Kind {
    int nature, index, arity, clock, self;
    bool operator==(const Kind& o) const;
  };
  struct KindHash {
    size_t operator()(const Kind& k) const;
  };
  // The touched nodes of one block in a round: touched[begin, end).
  struct Plan {
    int block, begin, end;
  };

  // Numbers the nodes and reads their operands; returns their kinds.
  std::vector<Kind> read_nodes();
  Kind kind(int v);
  // The first blocks: one for each kind.
  void initial_blocks(const std::vector<Kind>& kinds);
  int new_block();
  void add_to_block(int v, int b);
  // Moves v to block b and queues its users for the next round.
  void move_to_block(int v, int b);
  // Appends v's signature to sig_values: where it starts.
  int put_signature(int v);
  bool same_signature(int a_start, int b_start, int count) const;
  void read_round(std::vector<int>& touched, std::vector<Plan>& plans);
  bool split(const Plan& p, const std::vector<int>& touched);
  void number_classes();

  NormNet* net;
  std::vector<NormNet::NodeEntry*> entries;  // node v is entries[v]->exp
  // Operands of v: operands[first_operand[v] .. first_operand[v + 1]), a
  // node's index or a leaf's negative number.
  std::vector<int> first_operand, operands;
  std::vector<int> first_user, users;  // the same, for the nodes using v
  std::vector<char> commutative;       // whether v's two operands commute
  // Blocks: doubly linked member lists.
  std::vector<int> block, next, prev, head, size;
  int round = 0;
  std::vector<int> current;  // round in which a node is touched
  std::vector<int> queued;   // round for which a node is queued
  std::vector<int> queue;    // the nodes touched next round
  std::vector<int> sig_values, sig_start;
  // Per block, while a round is read: the round it last had touched nodes
  // in, and their count (then where the next one goes).
  std::vector<int> block_round, block_count;
};

#endif
