// value_text_test.cpp -- value texts: reals exactly as Tcl prints them, and
// the cells a scenario accepts or refuses.
#undef USE_TCL_STUBS  // the real Tcl_PrintDouble is the reference
#include "trace/value_text.h"

#include <gtest/gtest.h>
#include <tcl.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace {

std::string ours(double v) {
  char text[kValueTextMax];
  return std::string(text, format_real(v, text));
}

std::string tcls(double v) {
  char text[TCL_DOUBLE_SPACE];
  Tcl_PrintDouble(nullptr, v, text);
  return text;
}

double from_bits(uint64_t bits) {
  double v;
  memcpy(&v, &bits, sizeof v);
  return v;
}

TEST(ValueTextTest, RealsAreWrittenAsTclPrintsThem) {
  Tcl_FindExecutable(nullptr);
  const double special[] = {0.0, -0.0, 1.0, 0.1, 1e15, 1e16, 1e17, 1e-4, 1e-5, 123456789012345678.0,
                            12345678901234567.0, 5e-324, 2.5e-308, 1.7976931348623157e308, -2.5,
                            HUGE_VAL, -HUGE_VAL, std::numeric_limits<double>::quiet_NaN(),
                            -std::numeric_limits<double>::quiet_NaN(), from_bits(0x7ff8000000000123ULL),
                            static_cast<double>(0.1f)};
  for (double v : special) EXPECT_EQ(ours(v), tcls(v));
  std::mt19937_64 random(20261123);
  std::uniform_int_distribution<int> exponent(-30, 30);
  for (int k = 0; k < 100000; k++) {
    double any = from_bits(random());
    double decimal = std::round(static_cast<double>(random() % 2000000) - 1e6) * std::pow(10.0, exponent(random));
    ASSERT_EQ(ours(any), tcls(any));
    ASSERT_EQ(ours(decimal), tcls(decimal));
  }
}

TEST(ValueTextTest, CellsOfEachType) {
  struct Row {
    FlowType type;
    const char* text;
    bool accepted;
    double value;
  };
  const Row rows[] = {
      {FlowType::Bool, "1", true, 1},          {FlowType::Bool, "TRUE", true, 1},
      {FlowType::Bool, "f", true, 0},          {FlowType::Bool, "2", false, 0},
      {FlowType::Bool, "yes", false, 0},       {FlowType::Int, "+42", true, 42},
      {FlowType::Int, "-2147483648", true, -2147483648.0}, {FlowType::Int, "2147483648", false, 0},
      {FlowType::Int, "+-1", false, 0},        {FlowType::Int, "1.0", false, 0},
      {FlowType::Int, "", false, 0},           {FlowType::Real, "-2.5e3", true, -2500},
      {FlowType::Real, "+0x1p-2", true, 0.25}, {FlowType::Real, "1e999", true, HUGE_VAL},
      {FlowType::Real, "1,5", false, 0},       {FlowType::Real, "3x", false, 0},
      {FlowType::Float, "0.5", true, 0.5},
  };
  for (const Row& r : rows) {
    FlowValue v;
    v.d = -1;
    EXPECT_EQ(parse_value(r.type, r.text, &v), r.accepted) << r.text;
    if (!r.accepted) continue;
    double got = r.type == FlowType::Real || r.type == FlowType::Float ? v.d : v.i;
    EXPECT_EQ(got, r.value) << r.text;
  }
}

TEST(ValueTextTest, DecimalsReadAsStrtodReadsThem) {
  std::mt19937_64 random(7);
  for (int k = 0; k < 200000; k++) {
    std::string digits = std::to_string(random() % 1000000000000000ULL);
    digits.insert(random() % (digits.size() + 1), ".");
    if (random() & 1) digits.insert(0, "-");
    FlowValue v;
    ASSERT_TRUE(parse_value(FlowType::Real, digits, &v)) << digits;
    ASSERT_EQ(v.d, strtod(digits.c_str(), nullptr)) << digits;
  }
}

TEST(ValueTextTest, FloatsAreStoredNarrowAndShownWide) {
  float storage;
  FlowValue v;
  v.d = 0.1;
  store_value(FlowType::Float, v, &storage);
  EXPECT_EQ(storage, 0.1f);
  char text[kValueTextMax];
  EXPECT_EQ(std::string(text, format_value(FlowType::Float, load_value(FlowType::Float, &storage), text)),
            "0.10000000149011612");
}

}  // namespace
