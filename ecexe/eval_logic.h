// eval_logic.h -- the boolean items and the ones that compare or select:
// = and <> on every type, the three-valued and / or / =>, not, # and nor,
// and if-then-else. Every operand is computed, whatever the rules below
// then ignore: there is no short-circuit, so shared operands stay in step.
#ifndef ECEXE_EVAL_LOGIC_H
#define ECEXE_EVAL_LOGIC_H

#include "ecexe/eval_rules.h"

// Equality and inequality yield bool and are strict. Bools compare by
// truth, reals as IEEE (NE is true when either side is NaN), extern words
// bit for bit.

class EQ_bool_EI : public RuleItem<EQ_bool_EI, 2> {
 public:
  EQ_bool_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = (c.op(0).i != 0) == (c.op(1).i != 0);
  }
};

class EQ_int_EI : public RuleItem<EQ_int_EI, 2> {
 public:
  EQ_int_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = c.op(0).i == c.op(1).i;
  }
};

class EQ_double_EI : public RuleItem<EQ_double_EI, 2> {
 public:
  EQ_double_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = c.op(0).d == c.op(1).d;
  }
};

// `type_name`: the symbol of the operands' extern type.
class EQ_extern_EI : public RuleItem<EQ_extern_EI, 2> {
 public:
  explicit EQ_extern_EI(int type_name) : RuleItem(EI_bool), type_name(type_name) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = c.op(0).x == c.op(1).x;
  }
  int extern_type_name() override { return type_name; }
  const int type_name;
};

class NE_bool_EI : public RuleItem<NE_bool_EI, 2> {
 public:
  NE_bool_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = (c.op(0).i != 0) != (c.op(1).i != 0);
  }
};

class NE_int_EI : public RuleItem<NE_int_EI, 2> {
 public:
  NE_int_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = c.op(0).i != c.op(1).i;
  }
};

class NE_double_EI : public RuleItem<NE_double_EI, 2> {
 public:
  NE_double_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = c.op(0).d != c.op(1).d;
  }
};

class NE_extern_EI : public RuleItem<NE_extern_EI, 2> {
 public:
  explicit NE_extern_EI(int type_name) : RuleItem(EI_bool), type_name(type_name) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = c.op(0).x != c.op(1).x;
  }
  int extern_type_name() override { return type_name; }
  const int type_name;
};

// Three-valued conjunction: a defined false operand makes the result false
// and defined whatever the other's status; otherwise any nil or divbyzero
// operand gives the OR of the statuses.
class AND_bool_EI : public RuleItem<AND_bool_EI, 2> {
 public:
  AND_bool_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (holds(c, 0, false) || holds(c, 1, false)) {
      c.value().i = 0;
      c.status() = EI_DEFINED;
      return;
    }
    c.status() = operands_status(c);
    if (c.status() == EI_DEFINED) c.value().i = 1;
  }
};

// Dual of AND: a defined true operand decides.
class OR_bool_EI : public RuleItem<OR_bool_EI, 2> {
 public:
  OR_bool_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (holds(c, 0, true) || holds(c, 1, true)) {
      c.value().i = 1;
      c.status() = EI_DEFINED;
      return;
    }
    c.status() = operands_status(c);
    if (c.status() == EI_DEFINED) c.value().i = 0;
  }
};

// a => b: a defined false premise or a defined true conclusion decides.
class IMPL_bool_EI : public RuleItem<IMPL_bool_EI, 2> {
 public:
  IMPL_bool_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (holds(c, 0, false) || holds(c, 1, true)) {
      c.value().i = 1;
      c.status() = EI_DEFINED;
      return;
    }
    c.status() = operands_status(c);
    if (c.status() == EI_DEFINED) c.value().i = 0;
  }
};

class NOT_bool_EI : public RuleItem<NOT_bool_EI, 1> {
 public:
  NOT_bool_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = c.op(0).i == 0;
  }
};

// Over any number of operands (true when there are none): DIESE is true
// when at most one operand is true, NOR when none is. Any undefined operand
// makes the result undefined, even when the count is already decided.
class DIESE_bool_EI : public RuleItem<DIESE_bool_EI, -1> {
 public:
  explicit DIESE_bool_EI(int nb_operands) : RuleItem(EI_bool, nb_operands) {}
  template <class V>
  static void rule(V& c) {
    if (!strict(c)) return;
    int count = 0;
    for (int k = 0; k < c.nb(); k++) count += c.op(k).i != 0;
    c.value().i = count <= 1;
  }
};

class NOR_bool_EI : public RuleItem<NOR_bool_EI, -1> {
 public:
  explicit NOR_bool_EI(int nb_operands) : RuleItem(EI_bool, nb_operands) {}
  template <class V>
  static void rule(V& c) {
    if (!strict(c)) return;
    int count = 0;
    for (int k = 0; k < c.nb(); k++) count += c.op(k).i != 0;
    c.value().i = count == 0;
  }
};

// if-then-else, operands 0 condition, 1 then, 2 else. An undefined
// condition gives its status; otherwise the chosen branch's value and
// status, the other branch's status being ignored.
class CondItem : public RuleItem<CondItem, 3> {
 public:
  template <class V>
  static void rule(V& c) {
    if (c.st(0) != EI_DEFINED) {
      c.status() = c.st(0);
      return;
    }
    copy_operand(c, c.op(0).i != 0 ? 1 : 2);
  }

 protected:
  explicit CondItem(EvalItemType type) : RuleItem(type) {}
};

class COND_bool_EI : public CondItem {
 public:
  COND_bool_EI() : CondItem(EI_bool) {}
};

class COND_int_EI : public CondItem {
 public:
  COND_int_EI() : CondItem(EI_int) {}
};

class COND_double_EI : public CondItem {
 public:
  COND_double_EI() : CondItem(EI_double) {}
};

class COND_extern_EI : public CondItem {
 public:
  explicit COND_extern_EI(int type_name) : CondItem(EI_extern), type_name(type_name) {}
  int extern_type_name() override { return type_name; }
  const int type_name;
};

#endif
