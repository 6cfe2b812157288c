// fract_test.cpp -- normal form, literal parsing and its overflow refusal.
#include "foundations/fract.h"

#include <gtest/gtest.h>

#include <string>

namespace {

void expect_fract(const Fract& f, long long num, long long den) {
  EXPECT_EQ(f.num, num);
  EXPECT_EQ(f.den, den);
}

TEST(FractTest, ConstructorNormalises) {
  expect_fract(Fract(6, -4), -3, 2);
  expect_fract(Fract(0, -5), 0, 1);
  expect_fract(Fract(-12, -18), 2, 3);
}

TEST(FractTest, LiteralsParseExactly) {
  struct Case {
    const char* text;
    long long num, den;
  } cases[] = {
      {"1.500", 3, 2},     {"2.5e1", 25, 1},  {"25e-2", 1, 4},   {"-0.75", -3, 4},
      {"0.000", 0, 1},     {"12", 12, 1},     {"1E+2", 100, 1},  {"3.25E-1", 13, 40},
      {"10.0e", 10, 1},    {"0.1", 1, 10},    {"-5", -5, 1},     {"7x", 7, 1},
  };
  for (const Case& c : cases) {
    Fract f = atofract(c.text);
    EXPECT_EQ(f.num, c.num) << c.text;
    EXPECT_EQ(f.den, c.den) << c.text;
  }
}

TEST(FractTest, UnrepresentableLiteralsEndTheProcess) {
  for (const char* text : {"1.", "123456789012345678901234567890", "1e30", "1.e5"}) {
    std::string message =
        std::string("^Fract::operator=\\(char\\*\\) : arithmetic overflow while parsing '") + text +
        "'\n$";
    EXPECT_EXIT(atofract(text), testing::ExitedWithCode(1), message) << text;
  }
}

TEST(FractTest, ComparisonsAndArithmetic) {
  EXPECT_TRUE(Fract(1, 3) < Fract(1, 2));
  EXPECT_FALSE(Fract(1, 2) <= Fract(1, 3));
  EXPECT_TRUE(Fract(-1, 2) < 0);
  EXPECT_TRUE(Fract(4, 2) == 2);
  expect_fract(plus(Fract(1, 6), Fract(1, 3)), 1, 2);
  expect_fract(minus(Fract(1, 6), Fract(1, 3)), -1, 6);
  expect_fract(times(Fract(2, 3), Fract(-9, 4)), -3, 2);
  expect_fract(slash(Fract(2, 3), Fract(-4, 9)), -3, 2);
  EXPECT_EXIT(slash(Fract(1), Fract(0)), testing::ExitedWithCode(1),
              "^Fract::Fract: division by zero\n$");
}

TEST(FractTest, PrintingOmitsADenominatorOfOne) {
  testing::internal::CaptureStdout();
  Fract(5, 1).print();
  putchar(' ');
  Fract(3, 4).print();
  putchar(' ');
  Fract(-2).print();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "5 3/4 -2");
}

}  // namespace
