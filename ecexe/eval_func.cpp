// eval_func.cpp -- function items and the predefined functions of ec
// programs. The table below is the whole set of real functions a program
// may call; the evaluator binds a call to one of them by name.
#include "ecexe/eval_func.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "ecexe/eval_rules.h"

void UFUNC_bool_EI::combine() {
  ItemView view(this);
  if (!strict(view)) return;
  value.i = function(operand(0)->value.i) != 0;
}

void UFUNC_double_EI::combine() {
  ItemView view(this);
  if (!strict(view)) return;
  value.d = function(operand(0)->value.d);
}

void BFUNC_int_EI::combine() {
  ItemView view(this);
  if (!strict(view)) return;
  value.i = wrap32(function(operand(0)->value.i, operand(1)->value.i));
}

void BFUNC_double_EI::combine() {
  ItemView view(this);
  if (!strict(view)) return;
  value.d = function(operand(0)->value.d, operand(1)->value.d);
}

long random_int(long lo, long hi) {
  int64_t modulus = static_cast<int64_t>(hi) + 1 - lo;
  if (modulus == 0) return lo;
  return static_cast<long>(lo + static_cast<int64_t>(random()) % modulus);
}

int random_bool(int) { return random() & 1; }

// The library's functions are named through the C declarations, which are
// not overloaded, so that each entry has the type double(double).
const RealFunction predefined_real_functions[] = {
    {"cos", ::cos},     {"sin", ::sin},   {"tan", ::tan},     {"acos", ::acos},
    {"asin", ::asin},   {"atan", ::atan}, {"cosh", ::cosh},   {"sinh", ::sinh},
    {"tanh", ::tanh},   {"exp", ::exp},   {"log", ::log},     {"log10", ::log10},
    {"sqrt", ::sqrt},   {"fabs", ::fabs}, {"ceil", ::ceil},   {"floor", ::floor},
};

const int nb_predefined_real_functions =
    sizeof predefined_real_functions / sizeof predefined_real_functions[0];

UFUNC_double_EI::Function find_real_function(const char* name) {
  for (int k = 0; k < nb_predefined_real_functions; k++) {
    if (strcmp(predefined_real_functions[k].name, name) == 0) return predefined_real_functions[k].function;
  }
  return nullptr;
}
