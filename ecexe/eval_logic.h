// eval_logic.h -- the boolean items and the ones that compare or select:
// = and <> on every type, the three-valued and / or / =>, not, # and nor,
// and if-then-else. Every operand is computed, whatever the rules below
// then ignore: there is no short-circuit, so shared operands stay in step.
#ifndef ECEXE_EVAL_LOGIC_H
#define ECEXE_EVAL_LOGIC_H

#include "ecexe/eval_item.h"

// Equality and inequality yield bool and are strict. Reals compare as IEEE
// (NE is true when either side is NaN); extern words compare bit for bit.

class EQ_bool_EI : public EvalItem {
 public:
  EQ_bool_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class EQ_int_EI : public EvalItem {
 public:
  EQ_int_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class EQ_double_EI : public EvalItem {
 public:
  EQ_double_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

// `type_name`: the symbol of the operands' extern type.
class EQ_extern_EI : public EvalItem {
 public:
  explicit EQ_extern_EI(int type_name) : EvalItem(EI_bool, 2), type_name(type_name) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
  int extern_type_name() override { return type_name; }
  const int type_name;
};

class NE_bool_EI : public EvalItem {
 public:
  NE_bool_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class NE_int_EI : public EvalItem {
 public:
  NE_int_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class NE_double_EI : public EvalItem {
 public:
  NE_double_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class NE_extern_EI : public EvalItem {
 public:
  explicit NE_extern_EI(int type_name) : EvalItem(EI_bool, 2), type_name(type_name) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
  int extern_type_name() override { return type_name; }
  const int type_name;
};

// Three-valued conjunction: a defined false operand makes the result false
// and defined whatever the other's status; otherwise any nil or divbyzero
// operand gives the OR of the statuses.
class AND_bool_EI : public EvalItem {
 public:
  AND_bool_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

// Dual of AND: a defined true operand decides.
class OR_bool_EI : public EvalItem {
 public:
  OR_bool_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

// a => b: a defined false premise or a defined true conclusion decides.
class IMPL_bool_EI : public EvalItem {
 public:
  IMPL_bool_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class NOT_bool_EI : public EvalItem {
 public:
  NOT_bool_EI() : EvalItem(EI_bool, 1) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

// Over any number of operands (true when there are none): DIESE is true
// when at most one operand is true, NOR when none is. Any undefined operand
// makes the result undefined, even when the count is already decided.
class DIESE_bool_EI : public EvalItem {
 public:
  explicit DIESE_bool_EI(int nb_operands) : EvalItem(EI_bool, nb_operands) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class NOR_bool_EI : public EvalItem {
 public:
  explicit NOR_bool_EI(int nb_operands) : EvalItem(EI_bool, nb_operands) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

// if-then-else, operands 0 condition, 1 then, 2 else. An undefined
// condition gives its status; otherwise the chosen branch's value and
// status, the other branch's status being ignored.
class CondItem : public EvalItem {
 public:
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;

 protected:
  explicit CondItem(EvalItemType type) : EvalItem(type, 3) {}
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
