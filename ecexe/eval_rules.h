// eval_rules.h -- what the rule of an item class is written against. A
// class whose result depends only on its operands states that dependence
// once, as a static template `rule(V& c)` over a view V of cells:
//
//   c.nb()        the number of operands
//   c.op(k)       operand k's value, c.st(k) its status
//   c.value()     the result's value, c.status() its status (assignable)
//
// RuleItem applies the rule to an item and its operand items (combine()),
// and hands it to the flat code for dense cells (flat_kernel()), so that
// both ways of computing share the one definition of the operator.
#ifndef ECEXE_EVAL_RULES_H
#define ECEXE_EVAL_RULES_H

#include <cstdint>

#include "ecexe/eval_item.h"
#include "ecexe/flat_code.h"

// An item and its operand items, seen as cells.
class ItemView {
 public:
  explicit ItemView(EvalItem* item) : item(item) {}
  int nb() const { return item->nb_operands; }
  const EvalValue& op(int k) const { return item->operands[k]->value; }
  int st(int k) const { return item->operands[k]->status; }
  EvalValue& value() { return item->value; }
  int& status() { return item->status; }

 private:
  EvalItem* item;
};

// The base of the classes with a rule: `Item` derives from
// RuleItem<Item, Arity> and defines `template <class V> static void rule(V&
// c)`. Arity is the number of operands, or -1 when it varies by item.
template <class Item, int Arity>
class RuleItem : public EvalItem {
 public:
  static constexpr int arity = Arity;
  void compute(unsigned key) override {
    demand_operands(key);
    combine();
  }
  void combine() override {
    ItemView view(this);
    Item::rule(view);
  }
  FlatKernel flat_kernel() const override { return &run_flat<Item>; }

 protected:
  explicit RuleItem(EvalItemType type) : EvalItem(type, Arity) {}
  RuleItem(EvalItemType type, int nb_operands) : EvalItem(type, nb_operands) {}
};

// The OR of the operands' statuses. Most items are binary: no loop for them.
template <class V>
inline int operands_status(const V& c) {
  if (c.nb() == 2) return c.st(0) | c.st(1);
  int s = EI_DEFINED;
  for (int k = 0; k < c.nb(); k++) s |= c.st(k);
  return s;
}

// The strict rule: status := OR of the operands'. True when all are
// defined, i.e. when the caller must now compute the value; otherwise the
// value keeps what it held.
template <class V>
inline bool strict(V& c) {
  int s = operands_status(c);
  c.status() = s;
  return s == EI_DEFINED;
}

// The rule of a division: strict, and then a zero divisor (`zero_divisor`)
// gives divbyzero. True when the caller must now compute the quotient.
template <class V>
inline bool divisible(V& c, bool zero_divisor) {
  if (!strict(c)) return false;
  if (zero_divisor) c.status() = EI_DIVBYZERO;
  return !zero_divisor;
}

// Takes value and status from operand k (a defined operand gives its value;
// a nil or divbyzero one only its status).
template <class V>
inline void copy_operand(V& c, int k) {
  c.status() = c.st(k);
  if (c.st(k) == EI_DEFINED) c.value() = c.op(k);
}

// A defined operand k holding `truth`.
template <class V>
inline bool holds(const V& c, int k, bool truth) {
  return c.st(k) == EI_DEFINED && (c.op(k).i != 0) == truth;
}

// The low 32 bits of `v`, read as a signed int: int arithmetic done in 64
// bits and folded back wraps in two's complement without signed overflow.
inline int32_t wrap32(int64_t v) { return static_cast<int32_t>(static_cast<uint32_t>(v)); }

#endif
