// eval_func.h -- items that apply a C function to their operands, and the
// functions an ec program may call by name: the unary real functions of
// the mathematics library, random_int and random_bool. Function items are
// strict: the function is called only when every operand is defined.
#ifndef ECEXE_EVAL_FUNC_H
#define ECEXE_EVAL_FUNC_H

#include "ecexe/eval_item.h"

// A bool function of one bool operand (only random_bool is predefined).
class UFUNC_bool_EI : public EvalItem {
 public:
  using Function = int (*)(int);
  explicit UFUNC_bool_EI(Function f) : EvalItem(EI_bool, 1), function(f) {}
  // The result is normalised to 0 or 1.
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
  const Function function;
};

// A real function of one real operand.
class UFUNC_double_EI : public EvalItem {
 public:
  using Function = double (*)(double);
  explicit UFUNC_double_EI(Function f) : EvalItem(EI_double, 1), function(f) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
  const Function function;
};

// An int function of two int operands (only random_int is predefined). The
// result is folded to 32 bits.
class BFUNC_int_EI : public EvalItem {
 public:
  using Function = long (*)(long, long);
  explicit BFUNC_int_EI(Function f) : EvalItem(EI_int, 2), function(f) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
  const Function function;
};

// A real function of two real operands. No predefined function uses it.
class BFUNC_double_EI : public EvalItem {
 public:
  using Function = double (*)(double, double);
  explicit BFUNC_double_EI(Function f) : EvalItem(EI_double, 2), function(f) {}
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
  const Function function;
};

// lo + random() mod (hi + 1 - lo), in 64-bit signed arithmetic, from the C
// library's generator with whatever seed it has. For lo <= hi the result
// lies in [lo, hi]. The empty range hi = lo - 1, whose modulus is zero,
// gives lo instead of dividing by zero.
long random_int(long lo, long hi);

// random() & 1; the argument is ignored.
int random_bool(int unused);

// One predefined unary real function: its name in ec programs and the
// mathematics library function it applies.
struct RealFunction {
  const char* name;
  double (*function)(double);
};

// The sixteen predefined unary real functions, in a fixed order.
extern const RealFunction predefined_real_functions[];
extern const int nb_predefined_real_functions;

// The predefined unary real function named `name`, or null.
UFUNC_double_EI::Function find_real_function(const char* name);

#endif
