// value_text.cpp -- formatting and reading the values of scenarios and traces.
#include "trace/value_text.h"

#include <cctype>
#include <charconv>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "ecexe/rp_exe.h"

FlowType flow_type(const char* type_name) {
  if (strcmp(type_name, "bool") == 0) return FlowType::Bool;
  if (strcmp(type_name, "int") == 0) return FlowType::Int;
  if (strcmp(type_name, "real") == 0 || strcmp(type_name, "double") == 0) return FlowType::Real;
  if (strcmp(type_name, "float") == 0) return FlowType::Float;
  return FlowType::Extern;
}

const char* flow_type_word(FlowType type) {
  switch (type) {
    case FlowType::Bool: return "bool";
    case FlowType::Int: return "int";
    case FlowType::Real:
    case FlowType::Float: return "real";
    case FlowType::Extern: break;
  }
  return "extern";
}

// NaN as Tcl writes it: its sign, then "NaN", then the payload in hex when
// it is not the default one.
static char* format_nan(double v, char* out) {
  uint64_t bits;
  memcpy(&bits, &v, sizeof bits);
  if (bits >> 63) *out++ = '-';
  memcpy(out, "NaN", 3);
  out += 3;
  uint64_t payload = bits & ((uint64_t{1} << 51) - 1);
  if (payload != 0) out += sprintf(out, "(%" PRIx64 ")", payload);
  return out;
}

char* format_real(double v, char* out) {
  if (v != v) return format_nan(v, out);
  if (v == HUGE_VAL || v == -HUGE_VAL) {
    if (v < 0) *out++ = '-';
    memcpy(out, "Inf", 3);
    return out + 3;
  }
  // The shortest digits that read back as v, and their decimal exponent:
  // to_chars writes them as "[-]d[.ddd]e<sign><exponent>".
  char sci[kValueTextMax];
  *std::to_chars(sci, sci + sizeof sci - 1, v, std::chars_format::scientific).ptr = '\0';
  const char* p = sci;
  if (*p == '-') *out++ = *p++;
  char digits[20] = {};
  int n = 0;
  for (; *p != 'e'; p++)
    if (*p != '.') digits[n++] = *p;
  p++;  // the 'e'
  bool negative = *p++ == '-';
  int exponent = 0;
  while (*p) exponent = exponent * 10 + (*p++ - '0');
  if (negative) exponent = -exponent;

  if (exponent < -4 || exponent > 16) {  // "d.ddde+x", no padding of the exponent
    *out++ = digits[0];
    if (n > 1) {
      *out++ = '.';
      memcpy(out, digits + 1, n - 1);
      out += n - 1;
    }
    return out + sprintf(out, "e%+d", exponent);
  }
  // Fixed: the integer part (at least "0"), a point, the fraction (at least "0").
  int point = exponent + 1;  // digits before the point
  if (point <= 0) {
    *out++ = '0';
  } else {
    for (int k = 0; k < point; k++) *out++ = k < n ? digits[k] : '0';
  }
  *out++ = '.';
  if (n <= point) {
    *out++ = '0';
    return out;
  }
  for (int k = point; k < 0; k++) *out++ = '0';
  int first = point > 0 ? point : 0;
  memcpy(out, digits + first, n - first);
  return out + (n - first);
}

char* format_value(FlowType type, FlowValue v, char* out) {
  switch (type) {
    case FlowType::Bool:
    case FlowType::Int: return std::to_chars(out, out + kValueTextMax, v.i).ptr;
    case FlowType::Real:
    case FlowType::Float: return format_real(v.d, out);
    case FlowType::Extern: break;
  }
  return out;
}

char* format_cell(FlowType type, FlowValue v, int status, char* out) {
  switch (status) {
    case RP_DEFINED: return format_value(type, v, out);
    case RP_NIL: memcpy(out, "nil", 3); return out + 3;
    case RP_DIVBYZERO: memcpy(out, "divbyzero", 9); return out + 9;
    default: return out;  // absent
  }
}

static bool same_word(std::string_view text, const char* word) {
  size_t n = strlen(word);
  if (text.size() != n) return false;
  for (size_t k = 0; k < n; k++)
    if ((text[k] | 0x20) != word[k]) return false;
  return true;
}

// Spreadsheets write TRUE and FALSE, scripts 1 and 0 or true and false.
static bool parse_bool(std::string_view text, int32_t* out) {
  if (text == "1" || same_word(text, "true") || same_word(text, "t")) *out = 1;
  else if (text == "0" || same_word(text, "false") || same_word(text, "f")) *out = 0;
  else return false;
  return true;
}

static bool parse_int(std::string_view text, int32_t* out) {
  const char* begin = text.data();
  const char* end = begin + text.size();
  if (begin != end && *begin == '+') begin++;
  if (begin == end || (*begin == '-' && text[0] == '+')) return false;
  auto result = std::from_chars(begin, end, *out);
  return result.ec == std::errc() && result.ptr == end;
}

// A decimal with at most 15 digits and no exponent, such as a sensor log
// holds ("-92.529"), is its digits as an integer divided by a power of ten
// it can hold exactly: both are exact doubles, so the one division rounds
// exactly as strtod does. False for any other text.
static bool parse_short_decimal(std::string_view text, double* out) {
  static const double kPowers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7,
                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  const char* p = text.data();
  const char* end = p + text.size();
  bool negative = p != end && *p == '-';
  if (negative) p++;
  int64_t digits = 0;
  int count = 0, decimals = -1;
  for (; p != end; p++) {
    if (*p == '.' && decimals < 0) {
      decimals = 0;
      continue;
    }
    if (*p < '0' || *p > '9' || ++count > 15) return false;
    digits = digits * 10 + (*p - '0');
    if (decimals >= 0) decimals++;
  }
  if (count == 0) return false;
  double v = static_cast<double>(digits) / kPowers[decimals < 0 ? 0 : decimals];
  *out = negative ? -v : v;
  return true;
}

// from_chars reads other decimal numbers exactly as strtod does; strtod
// itself takes the rest (a plus sign, hexadecimal, "infinity").
static bool parse_real(std::string_view text, double* out) {
  if (parse_short_decimal(text, out)) return true;
  const char* end = text.data() + text.size();
  auto result = std::from_chars(text.data(), end, *out);
  if (result.ec == std::errc() && result.ptr == end) return true;
  if (text.empty() || text.size() > 400) return false;
  std::string copy(text);
  if (isspace(static_cast<unsigned char>(copy[0]))) return false;
  char* stop;
  *out = strtod(copy.c_str(), &stop);
  return stop == copy.c_str() + copy.size();
}

bool parse_value(FlowType type, std::string_view text, FlowValue* v) {
  switch (type) {
    case FlowType::Bool: return parse_bool(text, &v->i);
    case FlowType::Int: return parse_int(text, &v->i);
    case FlowType::Real:
    case FlowType::Float: return parse_real(text, &v->d);
    case FlowType::Extern: break;
  }
  return false;
}

std::string quoted(std::string_view text) {
  const size_t kShown = 40;
  std::string shown = "'";
  for (size_t k = 0; k < text.size() && k < kShown; k++) {
    unsigned char c = static_cast<unsigned char>(text[k]);
    shown += c < 0x20 || c == 0x7f ? '?' : static_cast<char>(c);
  }
  return shown + (text.size() > kShown ? "...'" : "'");
}

std::string not_a(FlowType type, std::string_view text) {
  return quoted(text) + " is not " + (type == FlowType::Int ? "an " : "a ") + flow_type_word(type);
}

FlowValue load_value(FlowType type, const void* loc) {
  FlowValue v;
  v.d = 0;
  switch (type) {
    case FlowType::Bool:
    case FlowType::Int: memcpy(&v.i, loc, sizeof v.i); break;
    case FlowType::Real: memcpy(&v.d, loc, sizeof v.d); break;
    case FlowType::Float: {
      float f;
      memcpy(&f, loc, sizeof f);
      v.d = f;
      break;
    }
    case FlowType::Extern: break;
  }
  return v;
}

void store_value(FlowType type, FlowValue v, void* loc) {
  switch (type) {
    case FlowType::Bool:
    case FlowType::Int: memcpy(loc, &v.i, sizeof v.i); break;
    case FlowType::Real: memcpy(loc, &v.d, sizeof v.d); break;
    case FlowType::Float: {
      float f = static_cast<float>(v.d);
      memcpy(loc, &f, sizeof f);
      break;
    }
    case FlowType::Extern: break;
  }
}
