// fract.h -- exact rational numbers on two signed 64-bit integers.
// Normal form, kept by every operation: den > 0, zero is 0/1, and num and
// den are coprime; equality is therefore a comparison of fields.
// Overflow of the 64-bit products is not detected.
#ifndef FOUNDATIONS_FRACT_H
#define FOUNDATIONS_FRACT_H

#include <cstdio>

// Greatest common divisor of |a| and |b|; both must be non-zero.
long long pgcd(long long a, long long b);
long long ppcm(long long a, long long b);

class Fract {
 public:
  // n/d in normal form; a zero d ends the process.
  Fract(long long n, long long d);
  Fract(long long v) : num(v), den(1) {}  // NOLINT: integers are fractions
  Fract(const Fract&) = default;
  Fract& operator=(const Fract&) = default;
  Fract& operator=(long long v) {
    num = v;
    den = 1;
    return *this;
  }

  double todouble() const;
  void print(FILE* f) const;
  void print() const { print(stdout); }

  long long num;
  long long den;
};

// The exact value of a decimal literal ("-12.50e-3"); a literal whose exact
// value does not match strtod's ends the process with an overflow message.
Fract atofract(const char* text);

bool operator==(const Fract& a, const Fract& b);
bool operator!=(const Fract& a, const Fract& b);
bool operator<(const Fract& a, const Fract& b);
bool operator<=(const Fract& a, const Fract& b);
bool operator>(const Fract& a, const Fract& b);
bool operator>=(const Fract& a, const Fract& b);
bool operator==(const Fract& a, long long v);
bool operator!=(const Fract& a, long long v);
bool operator<(const Fract& a, long long v);
bool operator<=(const Fract& a, long long v);
bool operator>(const Fract& a, long long v);
bool operator>=(const Fract& a, long long v);
bool operator==(long long v, const Fract& a);
bool operator!=(long long v, const Fract& a);
bool operator<(long long v, const Fract& a);
bool operator<=(long long v, const Fract& a);
bool operator>(long long v, const Fract& a);
bool operator>=(long long v, const Fract& a);

Fract uminus(const Fract& a);
Fract abs(const Fract& a);
Fract plus(const Fract& a, const Fract& b);
Fract minus(const Fract& a, const Fract& b);
Fract times(const Fract& a, const Fract& b);
Fract slash(const Fract& a, const Fract& b);

#endif
