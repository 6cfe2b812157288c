// eval_arith.h -- the arithmetic and ordering items over int and real:
// + - * unary minus, div / mod, < <= > >=, and the int/real conversions.
// All are strict: any nil or divbyzero operand passes its status on and the
// value is left as it was. Int arithmetic wraps in 32-bit two's complement.
#ifndef ECEXE_EVAL_ARITH_H
#define ECEXE_EVAL_ARITH_H

#include "ecexe/eval_item.h"

// Operands of every binary class: 0 left, 1 right.

class PLUS_int_EI : public EvalItem {
 public:
  PLUS_int_EI() : EvalItem(EI_int, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class PLUS_double_EI : public EvalItem {
 public:
  PLUS_double_EI() : EvalItem(EI_double, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class MINUS_int_EI : public EvalItem {
 public:
  MINUS_int_EI() : EvalItem(EI_int, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class MINUS_double_EI : public EvalItem {
 public:
  MINUS_double_EI() : EvalItem(EI_double, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class TIMES_int_EI : public EvalItem {
 public:
  TIMES_int_EI() : EvalItem(EI_int, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class TIMES_double_EI : public EvalItem {
 public:
  TIMES_double_EI() : EvalItem(EI_double, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class UMINUS_int_EI : public EvalItem {
 public:
  UMINUS_int_EI() : EvalItem(EI_int, 1) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class UMINUS_double_EI : public EvalItem {
 public:
  UMINUS_double_EI() : EvalItem(EI_double, 1) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

// Quotient truncated toward zero. A zero divisor gives status divbyzero, but
// only when both operands are defined: nil div 0 is nil.
// INT_MIN div -1 wraps to INT_MIN instead of trapping.
class DIV_int_EI : public EvalItem {
 public:
  DIV_int_EI() : EvalItem(EI_int, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

// IEEE quotient; a divisor equal to 0.0 (either sign) gives divbyzero.
class DIV_double_EI : public EvalItem {
 public:
  DIV_double_EI() : EvalItem(EI_double, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

// Remainder with the sign of the dividend; divbyzero as for DIV_int_EI.
// INT_MIN mod -1 is 0.
class MOD_int_EI : public EvalItem {
 public:
  MOD_int_EI() : EvalItem(EI_int, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

// The orderings yield bool; ints compare signed, reals as IEEE (false
// whenever either side is NaN).

class LT_int_EI : public EvalItem {
 public:
  LT_int_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class LT_double_EI : public EvalItem {
 public:
  LT_double_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class LE_int_EI : public EvalItem {
 public:
  LE_int_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class LE_double_EI : public EvalItem {
 public:
  LE_double_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class GT_int_EI : public EvalItem {
 public:
  GT_int_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class GT_double_EI : public EvalItem {
 public:
  GT_double_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class GE_int_EI : public EvalItem {
 public:
  GE_int_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

class GE_double_EI : public EvalItem {
 public:
  GE_double_EI() : EvalItem(EI_bool, 2) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

// The int operand converted exactly to real.
class INT2REAL_double_EI : public EvalItem {
 public:
  INT2REAL_double_EI() : EvalItem(EI_double, 1) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

// The real operand truncated toward zero. A real outside the 32-bit range,
// or NaN, gives INT_MIN, as the processor's conversion does.
class REAL2INT_int_EI : public EvalItem {
 public:
  REAL2INT_int_EI() : EvalItem(EI_int, 1) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
};

#endif
