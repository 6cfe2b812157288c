// exp.h -- the expression node of a program network and its operand lists.
// Every node has the same fields whatever its nature; the operand and
// coefficient arrays hold exactly `arity` entries. Nodes are never freed:
// they live as long as the network that holds them.
#ifndef NETWORK_EXP_H
#define NETWORK_EXP_H

#include <cstdint>

#include "foundations/block_pool.h"

#include "foundations/fract.h"
#include "network/key_source.h"

class EcType;
class PtyStream;
class SymbolTable;

// The kinds of nodes. The numbering is fixed: later passes test ranges of
// it and tables are indexed by it.
enum ExpNature {
  ERROR_n = 0,  // empty box, not yet filled
  CONST_n,      // leaves: 1 to 4
  INPUT_n,
  ECREF_n,
  MODELREF_n,
  PRE_n,  // unary: 5 to 10
  CURRENT_n,
  NOT_n,
  UMINUS_n,
  LAST_n,
  INIT_n,
  ARROW_n,  // binary: 11 to 29
  WHEN_n,
  AND_n,
  OR_n,
  XOR_n,
  IMPL_n,
  EQUAL_n,
  NEQ_n,
  GTE_n,
  GT_n,
  LTE_n,
  LT_n,
  DIV_n,
  MOD_n,
  MINUS_n,
  PLUS_n,
  SLASH_n,
  TIMES_n,
  POWER_n,
  IF_n,  // 30: condition, then, else
  TUPLE_n,  // n-ary: 31 to 34
  NOR_n,
  DIESE_n,
  EXACTONE,
  RCL_n,  // linear combinations: 35, 36
  ICL_n,
  PROJ_n,  // 37: component `param` of a tuple
  CALL_n   // 38: call of function `param`
};

const int NB_EXP_NATURES = 39;

struct ExpNatureKey {
  const char* key;  // the nature's name, for internal messages
  const char* op;   // the operator's text in ec syntax ("" when none)
};

extern const ExpNatureKey ExpNatureKeys[NB_EXP_NATURES];

// The two texts of ExpNatureKeys for a nature.
const char* nodekey(ExpNature n);
const char* opkey(ExpNature n);
// The binary natures whose two operands may be exchanged: and, or, xor, =,
// <>, + and *.
bool is_commutative(ExpNature n);


class Exp;

// An operand list under construction by the parser. Lists are joined by
// linking the last cell of one to the head of the other, which leaves
// `length` and `last` of the head stale until uplast() repairs them.
class ExpList {
 public:
  explicit ExpList(Exp* e) : length(1), last(this), exp(e), next(nullptr) {}

  // Repairs `length` and `last` of this cell after concatenations.
  void uplast();
  // `list` followed by `other` (either may be null), repaired.
  static ExpList* append(ExpList* list, ExpList* other);

  int length;     // cells from this one to the end of its sublist
  ExpList* last;  // the last cell
  Exp* exp;
  ExpList* next;
};

// One record of a node's annotation list.
// Annotations live as long as their node: from the pool, never freed.
struct ExpInfo {
  int slot;
  std::intptr_t value;
  ExpInfo* next;
  static void* operator new(size_t size) { return pool_allocate(size); }
  static void operator delete(void*) {}
};

class Exp {
 public:
  // A network's nodes live as long as the network, that is until the end:
  // from the pool, never freed.
  static void* operator new(size_t size) { return pool_allocate(size); }
  static void operator delete(void*) {}
  // An operand array of `count` entries (room for one when there are
  // none), from the pool like the node: operand arrays are never freed.
  static Exp** new_operands(int count);

  Exp(ExpNature n, Exp* op);
  Exp(ExpNature n, Exp* op, int p);
  Exp(ExpNature n, Exp* a, Exp* b);
  Exp(ExpNature n, Exp* a, Exp* b, Exp* c);
  // The operands of the list, in order (the list is repaired first); a null
  // list gives no operand.
  Exp(ExpNature n, ExpList* l);
  Exp(ExpNature n, int count, Exp** ops);
  // Real linear combination: sum of coefs[i] * ops[i], plus k.
  Exp(ExpNature n, int count, Exp** ops, Fract* coefs, Fract k);
  // Integer linear combination: sum of coefs[i] * ops[i], plus k.
  Exp(ExpNature n, int count, Exp** ops, int* coefs, int k);
  // Leaves: the identifier `key`, with its type and clock.
  Exp(ExpNature n, int key, EcType* t, int clock);
  Exp(ExpNature n, int key, EcType* t);
  Exp(const Exp&) = default;
  Exp& operator=(const Exp&) = default;

  // Annotation slots: a list kept in strictly decreasing slot order, one
  // record per slot. put_* replace an existing record or insert one; get_*
  // read an absent slot as null / 0.
  void put_info(int slot, void* value);
  void put_int_info(int slot, int value);
  void* get_ptr_info(int slot) const;
  int get_int_info(int slot) const;

  // The component number of a projection; internal error on other natures.
  int projection_order() const;
  bool is_leaf() const { return nature >= CONST_n && nature <= MODELREF_n; }

  // A debugging dump of the node and its operands, one node a line, each
  // shared node printed once per call.
  void print_def(PtyStream* out, SymbolTable* symbols);

  EcType* type;  // null until known
  int clock;     // key of the clock identifier, -1 until known
  ExpInfo* infos;
  int mark;      // work integer of later passes, 0 at creation
  int ident;     // key of a leaf, 0 for operators
  ExpNature nature;
  int arity;
  Exp** operands;
  int param;       // PROJ: component number; CALL: function key
  int* int_coefs;  // ICL only
  int int_const;   // ICL only
  Fract* coefs;    // RCL only
  Fract const_term;

 private:
  void init(ExpNature n, int count);
  ExpInfo* find_info(int slot) const;
  std::intptr_t get_info(int slot) const;
  void set_info(int slot, std::intptr_t value);
};

#endif
