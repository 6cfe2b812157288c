// eval_arith.cpp -- compute() of the arithmetic and ordering items.
// Int results are computed in 64 bits and folded back to 32, which gives
// two's-complement wrapping without signed overflow in C++.
#include "ecexe/eval_arith.h"

#include <cstdint>

namespace {

// The low 32 bits of `v`, read as a signed int.
int32_t wrap32(int64_t v) { return static_cast<int32_t>(static_cast<uint32_t>(v)); }

int64_t left_int(const EvalItem* item) { return item->operand(0)->value.i; }
int64_t right_int(const EvalItem* item) { return item->operand(1)->value.i; }
double left_real(const EvalItem* item) { return item->operand(0)->value.d; }
double right_real(const EvalItem* item) { return item->operand(1)->value.d; }

}  // namespace

void PLUS_int_EI::combine() {
  if (!strict()) return;
  value.i = wrap32(left_int(this) + right_int(this));
}

void PLUS_double_EI::combine() {
  if (!strict()) return;
  value.d = left_real(this) + right_real(this);
}

void MINUS_int_EI::combine() {
  if (!strict()) return;
  value.i = wrap32(left_int(this) - right_int(this));
}

void MINUS_double_EI::combine() {
  if (!strict()) return;
  value.d = left_real(this) - right_real(this);
}

void TIMES_int_EI::combine() {
  if (!strict()) return;
  value.i = wrap32(left_int(this) * right_int(this));
}

void TIMES_double_EI::combine() {
  if (!strict()) return;
  value.d = left_real(this) * right_real(this);
}

void UMINUS_int_EI::combine() {
  if (!strict()) return;
  value.i = wrap32(-left_int(this));
}

void UMINUS_double_EI::combine() {
  if (!strict()) return;
  value.d = -left_real(this);
}

// In 64 bits, INT_MIN / -1 is 2^31 and folds back to INT_MIN; C++ integer
// division already truncates toward zero and gives the remainder the sign
// of the dividend.
void DIV_int_EI::combine() {
  if (!strict()) return;
  if (right_int(this) == 0) {
    status = EI_DIVBYZERO;
    return;
  }
  value.i = wrap32(left_int(this) / right_int(this));
}

void DIV_double_EI::combine() {
  if (!strict()) return;
  if (right_real(this) == 0.0) {
    status = EI_DIVBYZERO;
    return;
  }
  value.d = left_real(this) / right_real(this);
}

void MOD_int_EI::combine() {
  if (!strict()) return;
  if (right_int(this) == 0) {
    status = EI_DIVBYZERO;
    return;
  }
  value.i = wrap32(left_int(this) % right_int(this));
}

void LT_int_EI::combine() {
  if (!strict()) return;
  value.i = left_int(this) < right_int(this);
}

void LT_double_EI::combine() {
  if (!strict()) return;
  value.i = left_real(this) < right_real(this);
}

void LE_int_EI::combine() {
  if (!strict()) return;
  value.i = left_int(this) <= right_int(this);
}

void LE_double_EI::combine() {
  if (!strict()) return;
  value.i = left_real(this) <= right_real(this);
}

void GT_int_EI::combine() {
  if (!strict()) return;
  value.i = left_int(this) > right_int(this);
}

void GT_double_EI::combine() {
  if (!strict()) return;
  value.i = left_real(this) > right_real(this);
}

void GE_int_EI::combine() {
  if (!strict()) return;
  value.i = left_int(this) >= right_int(this);
}

void GE_double_EI::combine() {
  if (!strict()) return;
  value.i = left_real(this) >= right_real(this);
}

void INT2REAL_double_EI::combine() {
  if (!strict()) return;
  value.d = static_cast<double>(left_int(this));
}

// The bounds are exclusive and exact in double: everything strictly between
// them truncates to a 32-bit int. The negated test also catches NaN.
void REAL2INT_int_EI::combine() {
  if (!strict()) return;
  double r = left_real(this);
  if (!(r > -2147483649.0 && r < 2147483648.0)) {
    value.i = INT32_MIN;
    return;
  }
  value.i = static_cast<int32_t>(r);
}
