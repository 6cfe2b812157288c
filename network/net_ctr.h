// net_ctr.h -- the constructor of operator nodes with structural sharing.
// Invariant: no two nodes in the table have the same nature, the same
// parameters and the same operand nodes (up to order for the commutative
// natures), so equal subexpressions are one node. Nothing is ever removed.
#ifndef NETWORK_NET_CTR_H
#define NETWORK_NET_CTR_H

#include "foundations/block_pool.h"
#include "foundations/fract.h"
#include "network/exp.h"

class Net;

class NetCtr {
 public:
  static const int NB_BUCKETS = 5041;  // 71 * 71, never grows

  // One cell of a bucket; new cells are pushed at the head. Cells live as
  // long as the network: they come from the pool, like its nodes.
  struct HashCell {
    int count;       // cells from this one to the end of the bucket
    HashCell* last;  // the bucket's oldest cell
    Exp* exp;
    HashCell* next;
    static void* operator new(size_t size) { return pool_allocate(size); }
    static void operator delete(void*) {}
  };

  explicit NetCtr(Net* n);
  NetCtr(const NetCtr&) = delete;
  NetCtr& operator=(const NetCtr&) = delete;

  // The leaf of the integer literal "%d" of v, or of the real literal "%f"
  // of v (1.5 is the text 1.500000).
  Exp* operator()(int v);
  Exp* operator()(float v);

  // Each returns the node already built with the same nature, operands and
  // parameters, or builds one and enters it in the table. Types and clocks
  // of new nodes are left to Net::type and Net::clock.
  Exp* operator()(ExpNature n, Exp* a);
  // PROJ (component p) or CALL (function p). A call of an unsafe function
  // is always a new node, kept out of the table.
  Exp* operator()(ExpNature n, Exp* a, int p);
  // For AND, OR, XOR, EQUAL, NEQ, PLUS and TIMES, (b, a) finds (a, b).
  Exp* operator()(ExpNature n, Exp* a, Exp* b);
  Exp* operator()(ExpNature n, Exp* a, Exp* b, Exp* c);
  // TUPLE, NOR, DIESE, EXACTONE: operands are kept in order.
  Exp* operator()(ExpNature n, int k, Exp** ops);
  // Linear combinations, n being RCL_n (resp. ICL_n). The items are first
  // put in canonical form, written back into ops and coefs: sorted by
  // operand, equal operands merged, zero coefficients dropped.
  Exp* operator()(ExpNature n, int k, Exp** ops, Fract* coefs, Fract c);
  Exp* operator()(ExpNature n, int k, Exp** ops, int* coefs, int c);

  // Boolean negation: true and false swap, nil stays, not not e is e.
  Exp* neg(Exp* e);
  // A new empty node (ERROR_n), outside the table, to be filled by update.
  Exp* getabox();
  // Copies every field of model into the empty box (arrays are shared).
  void update(Exp* box, Exp* model);
  // Enters an already built node where the constructors would look for it,
  // without looking for a duplicate.
  void put_in_hash_tab(Exp* e);

  static int unary_hash_code(Exp* a);
  static int binary_hash_code(Exp* a, Exp* b);
  static int ternary_hash_code(Exp* a, Exp* b, Exp* c);
  static int tuple_hash_code(int n, Exp** ops);

  // The head cell of bucket i (null when empty).
  const HashCell* bucket(int i) const { return buckets[i]; }

  Net* net;

 private:
  Exp* push(int bucket, Exp* e);
  int canonical_form(int k, Exp** ops, Fract* coefs);
  int canonical_form(int k, Exp** ops, int* coefs);

  HashCell* buckets[NB_BUCKETS];
};

#endif
