// fract_test.cpp -- normal form, arithmetic, literal parsing and its
// overflow refusal.
#include "foundations/fract.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string text(const Fract& f) { return std::to_string(f.num) + "/" + std::to_string(f.den); }

TEST(FractTest, NormalFormAndArithmetic) {
  EXPECT_EQ(text(Fract(6, -4)), "-3/2");
  EXPECT_EQ(text(Fract(0, -5)), "0/1");
  EXPECT_EQ(text(Fract(-12, -18)), "2/3");
  EXPECT_EQ(text(plus(Fract(1, 6), Fract(1, 3))), "1/2");
  EXPECT_EQ(text(minus(Fract(1, 6), Fract(1, 3))), "-1/6");
  EXPECT_EQ(text(times(Fract(2, 3), Fract(-9, 4))), "-3/2");
  EXPECT_EQ(text(slash(Fract(2, 3), Fract(-4, 9))), "-3/2");
  EXPECT_TRUE(Fract(1, 3) < Fract(1, 2));
  EXPECT_FALSE(Fract(1, 2) <= Fract(1, 3));
  EXPECT_TRUE(Fract(-1, 2) < 0);
  EXPECT_TRUE(Fract(4, 2) == 2);
  EXPECT_EXIT(slash(Fract(1), Fract(0)), testing::ExitedWithCode(1), "^Fract::Fract: division by zero\n$");
}

TEST(FractTest, LiteralsParseExactly) {
  const char* cases[][2] = {
      {"1.500", "3/2"}, {"2.5e1", "25/1"}, {"25e-2", "1/4"},     {"-0.75", "-3/4"},
      {"0.000", "0/1"}, {"12", "12/1"},    {"1E+2", "100/1"},    {"3.25E-1", "13/40"},
      {"10.0e", "10/1"}, {"0.1", "1/10"},  {"-5", "-5/1"},       {"7x", "7/1"},
  };
  for (const auto& c : cases) EXPECT_EQ(text(atofract(c[0])), c[1]) << c[0];
  for (const char* text : {"1.", "123456789012345678901234567890", "1e30", "1.e5"})
    EXPECT_EXIT(atofract(text), testing::ExitedWithCode(1),
                std::string("^Fract::operator=\\(char\\*\\) : arithmetic overflow while parsing '") +
                    text + "'\n$");
}

}  // namespace
