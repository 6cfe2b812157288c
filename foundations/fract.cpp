// fract.cpp -- exact rational numbers and the parsing of decimal literals.
#include "foundations/fract.h"
#include "foundations/errors.h"

#include <cmath>
#include <cstdlib>
#include <cstdint>
#include <utility>

// 64-bit arithmetic that wraps on overflow, as two's complement hardware
// does, instead of being undefined: overflow is not detected, by design.
static long long wrap_mul(long long a, long long b) {
  return static_cast<long long>(static_cast<unsigned long long>(a) * static_cast<unsigned long long>(b));
}
static long long wrap_add(long long a, long long b) {
  return static_cast<long long>(static_cast<unsigned long long>(a) + static_cast<unsigned long long>(b));
}
static long long wrap_neg(long long a) {
  return static_cast<long long>(0ULL - static_cast<unsigned long long>(a));
}

// A power of ten as a 64-bit integer; out of range it gives INT64_MIN, the
// value the hardware conversion yields, so that the literal is refused later.
static long long power_of_ten(long long e) {
  double p = pow(10.0, static_cast<double>(e));
  if (!(p < 9223372036854775808.0)) return INT64_MIN;
  return static_cast<long long>(p);
}

long long pgcd(long long a, long long b) {
  a = a < 0 ? wrap_neg(a) : a;
  b = b < 0 ? wrap_neg(b) : b;
  do {
    if (b > a) std::swap(a, b);
    a = a % b;
  } while (a != 0);
  return b;
}

long long ppcm(long long a, long long b) {
  long long g = pgcd(a, b);
  return (b / g) * ((a / g) * g);
}

Fract::Fract(long long n, long long d) {
  if (d == 0) {
    fputs("Fract::Fract: division by zero\n", stderr);
    FatalExit();
  }
  if (n == 0) {
    num = 0;
    den = 1;
    return;
  }
  if (d < 0) {
    n = wrap_neg(n);
    d = wrap_neg(d);
  }
  if (n == 1 || n == -1 || d == 1) {
    num = n;
    den = d;
    return;
  }
  long long g = pgcd(n, d);
  num = n / g;
  den = d / g;
}

double Fract::todouble() const {
  if (den == 0) {
    fputs("Fract::todouble() : division by zero\n", stderr);
    FatalExit();
  }
  return static_cast<double>(num) / static_cast<double>(den);
}

void Fract::print(FILE* f) const {
  fprintf(f, "%lld", num);
  if (den != 1) fprintf(f, "/%lld", den);
}

static bool is_digit(char c) { return c >= '0' && c <= '9'; }

Fract atofract(const char* text) {
  const char* c = text;
  long long sign = 1;
  if (*c == '-') {
    sign = -1;
    c++;
  }
  long long mantissa = 0;
  for (; is_digit(*c); c++) mantissa = wrap_add(wrap_mul(mantissa, 10), *c - '0');

  long long scale = 0;
  if (*c == '.') {
    c++;
    // Trailing zeros of the fraction must not enlarge the numbers: stop at
    // the last non-zero digit (the first digit when all are zero). A '.'
    // without a digit after it takes the next character as a digit, and the
    // strtod comparison below then refuses the literal.
    const char* last = c;
    for (const char* d = c; is_digit(*d); d++)
      if (*d != '0') last = d;
    for (;;) {
      mantissa = wrap_add(wrap_mul(mantissa, 10), *c - '0');
      scale--;
      if (c == last || *c == '\0') break;
      c++;
    }
    if (*c != '\0') c++;
    while (is_digit(*c)) c++;
  }
  if (*c == 'e' || *c == 'E') {
    c++;
    long long exp_sign = 1;
    if (*c == '-' || *c == '+') {
      if (*c == '-') exp_sign = -1;
      c++;
    }
    long long exponent = 0;
    for (; is_digit(*c); c++) exponent = wrap_add(wrap_mul(exponent, 10), *c - '0');
    scale = wrap_add(scale, wrap_mul(exp_sign, exponent));
  }

  long long numerator, denominator;
  if (scale >= 0) {
    numerator = wrap_mul(wrap_mul(mantissa, power_of_ten(scale)), sign);
    denominator = 1;
  } else {
    numerator = wrap_mul(mantissa, sign);
    denominator = power_of_ten(-scale);
  }
  if (static_cast<double>(numerator) / static_cast<double>(denominator) != strtod(text, nullptr)) {
    fprintf(stderr, "Fract::operator=(char*) : arithmetic overflow while parsing '%s'\n", text);
    FatalExit();
  }
  return Fract(numerator, denominator);
}

bool operator==(const Fract& a, const Fract& b) { return a.num == b.num && a.den == b.den; }
bool operator!=(const Fract& a, const Fract& b) { return !(a == b); }
bool operator<(const Fract& a, const Fract& b) {
  return wrap_mul(a.num, b.den) < wrap_mul(b.num, a.den);
}
bool operator<=(const Fract& a, const Fract& b) {
  return wrap_mul(a.num, b.den) <= wrap_mul(b.num, a.den);
}
bool operator>(const Fract& a, const Fract& b) { return b < a; }
bool operator>=(const Fract& a, const Fract& b) { return b <= a; }

bool operator==(const Fract& a, long long v) { return a.num == v && a.den == 1; }
bool operator!=(const Fract& a, long long v) { return !(a == v); }
bool operator<(const Fract& a, long long v) { return a.num < wrap_mul(v, a.den); }
bool operator<=(const Fract& a, long long v) { return a.num <= wrap_mul(v, a.den); }
bool operator>(const Fract& a, long long v) { return a.num > wrap_mul(v, a.den); }
bool operator>=(const Fract& a, long long v) { return a.num >= wrap_mul(v, a.den); }

bool operator==(long long v, const Fract& a) { return a == v; }
bool operator!=(long long v, const Fract& a) { return a != v; }
bool operator<(long long v, const Fract& a) { return a > v; }
bool operator<=(long long v, const Fract& a) { return a >= v; }
bool operator>(long long v, const Fract& a) { return a < v; }
bool operator>=(long long v, const Fract& a) { return a <= v; }

Fract uminus(const Fract& a) { return Fract(wrap_neg(a.num), a.den); }
Fract abs(const Fract& a) { return a.num < 0 ? uminus(a) : a; }

Fract plus(const Fract& a, const Fract& b) {
  return Fract(wrap_add(wrap_mul(a.num, b.den), wrap_mul(b.num, a.den)), wrap_mul(a.den, b.den));
}
Fract minus(const Fract& a, const Fract& b) {
  return Fract(wrap_add(wrap_mul(a.num, b.den), wrap_neg(wrap_mul(b.num, a.den))),
               wrap_mul(a.den, b.den));
}
Fract times(const Fract& a, const Fract& b) {
  return Fract(wrap_mul(a.num, b.num), wrap_mul(a.den, b.den));
}
Fract slash(const Fract& a, const Fract& b) {
  return Fract(wrap_mul(a.num, b.den), wrap_mul(a.den, b.num));
}
