// eval_arith.h -- the arithmetic and ordering items over int and real:
// + - * unary minus, div / mod, < <= > >=, and the int/real conversions.
// All are strict: any nil or divbyzero operand passes its status on and the
// value is left as it was. Int arithmetic is done in 64 bits and folded
// back to 32, which wraps in two's complement.
#ifndef ECEXE_EVAL_ARITH_H
#define ECEXE_EVAL_ARITH_H

#include <cstdint>

#include "ecexe/eval_rules.h"

// Operands of every binary class: 0 left, 1 right.

class PLUS_int_EI : public RuleItem<PLUS_int_EI, 2> {
 public:
  PLUS_int_EI() : RuleItem(EI_int) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = wrap32(int64_t{c.op(0).i} + c.op(1).i);
  }
};

class PLUS_double_EI : public RuleItem<PLUS_double_EI, 2> {
 public:
  PLUS_double_EI() : RuleItem(EI_double) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().d = c.op(0).d + c.op(1).d;
  }
};

class MINUS_int_EI : public RuleItem<MINUS_int_EI, 2> {
 public:
  MINUS_int_EI() : RuleItem(EI_int) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = wrap32(int64_t{c.op(0).i} - c.op(1).i);
  }
};

class MINUS_double_EI : public RuleItem<MINUS_double_EI, 2> {
 public:
  MINUS_double_EI() : RuleItem(EI_double) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().d = c.op(0).d - c.op(1).d;
  }
};

class TIMES_int_EI : public RuleItem<TIMES_int_EI, 2> {
 public:
  TIMES_int_EI() : RuleItem(EI_int) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = wrap32(int64_t{c.op(0).i} * c.op(1).i);
  }
};

class TIMES_double_EI : public RuleItem<TIMES_double_EI, 2> {
 public:
  TIMES_double_EI() : RuleItem(EI_double) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().d = c.op(0).d * c.op(1).d;
  }
};

class UMINUS_int_EI : public RuleItem<UMINUS_int_EI, 1> {
 public:
  UMINUS_int_EI() : RuleItem(EI_int) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = wrap32(-int64_t{c.op(0).i});
  }
};

class UMINUS_double_EI : public RuleItem<UMINUS_double_EI, 1> {
 public:
  UMINUS_double_EI() : RuleItem(EI_double) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().d = -c.op(0).d;
  }
};

// Quotient truncated toward zero (as C++ division is). A zero divisor
// gives status divbyzero, but only when both operands are defined: nil div
// 0 is nil. INT_MIN div -1 is 2^31 in 64 bits and wraps to INT_MIN instead
// of trapping.
class DIV_int_EI : public RuleItem<DIV_int_EI, 2> {
 public:
  DIV_int_EI() : RuleItem(EI_int) {}
  template <class V>
  static void rule(V& c) {
    if (divisible(c, c.op(1).i == 0)) c.value().i = wrap32(int64_t{c.op(0).i} / c.op(1).i);
  }
};

// IEEE quotient; a divisor equal to 0.0 (either sign) gives divbyzero.
class DIV_double_EI : public RuleItem<DIV_double_EI, 2> {
 public:
  DIV_double_EI() : RuleItem(EI_double) {}
  template <class V>
  static void rule(V& c) {
    if (divisible(c, c.op(1).d == 0.0)) c.value().d = c.op(0).d / c.op(1).d;
  }
};

// Remainder with the sign of the dividend; divbyzero as for DIV_int_EI.
// INT_MIN mod -1 is 0.
class MOD_int_EI : public RuleItem<MOD_int_EI, 2> {
 public:
  MOD_int_EI() : RuleItem(EI_int) {}
  template <class V>
  static void rule(V& c) {
    if (divisible(c, c.op(1).i == 0)) c.value().i = wrap32(int64_t{c.op(0).i} % c.op(1).i);
  }
};

// The orderings yield bool; ints compare signed, reals as IEEE (false
// whenever either side is NaN).

class LT_int_EI : public RuleItem<LT_int_EI, 2> {
 public:
  LT_int_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = c.op(0).i < c.op(1).i;
  }
};

class LT_double_EI : public RuleItem<LT_double_EI, 2> {
 public:
  LT_double_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = c.op(0).d < c.op(1).d;
  }
};

class LE_int_EI : public RuleItem<LE_int_EI, 2> {
 public:
  LE_int_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = c.op(0).i <= c.op(1).i;
  }
};

class LE_double_EI : public RuleItem<LE_double_EI, 2> {
 public:
  LE_double_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = c.op(0).d <= c.op(1).d;
  }
};

class GT_int_EI : public RuleItem<GT_int_EI, 2> {
 public:
  GT_int_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = c.op(0).i > c.op(1).i;
  }
};

class GT_double_EI : public RuleItem<GT_double_EI, 2> {
 public:
  GT_double_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = c.op(0).d > c.op(1).d;
  }
};

class GE_int_EI : public RuleItem<GE_int_EI, 2> {
 public:
  GE_int_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = c.op(0).i >= c.op(1).i;
  }
};

class GE_double_EI : public RuleItem<GE_double_EI, 2> {
 public:
  GE_double_EI() : RuleItem(EI_bool) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().i = c.op(0).d >= c.op(1).d;
  }
};

// The int operand converted exactly to real.
class INT2REAL_double_EI : public RuleItem<INT2REAL_double_EI, 1> {
 public:
  INT2REAL_double_EI() : RuleItem(EI_double) {}
  template <class V>
  static void rule(V& c) {
    if (strict(c)) c.value().d = static_cast<double>(c.op(0).i);
  }
};

// The real operand truncated toward zero. A real outside the 32-bit range,
// or NaN, gives INT_MIN, as the processor's conversion does.
class REAL2INT_int_EI : public RuleItem<REAL2INT_int_EI, 1> {
 public:
  REAL2INT_int_EI() : RuleItem(EI_int) {}
  template <class V>
  static void rule(V& c) {
    if (!strict(c)) return;
    double r = c.op(0).d;
    // Exclusive bounds, exact in double: everything strictly between them
    // truncates to a 32-bit int. The negated test also catches NaN.
    c.value().i = r > -2147483649.0 && r < 2147483648.0 ? static_cast<int32_t>(r) : INT32_MIN;
  }
};

#endif
