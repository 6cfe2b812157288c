// ec_lex_test.cpp -- the ec lexer, through the token stream EcLexTest prints.
#include "network/ec_lex.h"

#include <gtest/gtest.h>

#include "net_fixture.h"
#include "network/ec_parse.h"

using namespace nettest;

namespace {

std::string tokens_of(const std::string& text) {
  std::string path = write_temp(text);
  testing::internal::CaptureStdout();
  EcLexTest(symbols(), path.c_str());
  return testing::internal::GetCapturedStdout();
}

TEST(EcLexTest, TokenStreams) {
  struct Case { const char* text; const char* tokens; } cases[] = {
      // Two-character operators against their one-character prefixes.
      {"a->b", "a (*XIdf*)\n->\nb (*XIdf*)\n"},
      {"a- >b", "a (*XIdf*)\n-\n>\nb (*XIdf*)\n"},
      {"x<>y x<=y x>=y x=>y x**y", "x (*XIdf*)\n<>\ny (*XIdf*)\nx (*XIdf*)\n<=\ny (*XIdf*)\n"
                                   "x (*XIdf*)\n>=\ny (*XIdf*)\nx (*XIdf*)\n=>\ny (*XIdf*)\n"
                                   "x (*XIdf*)\n**\ny (*XIdf*)\n"},
      {"x<y(z*w=v", "x (*XIdf*)\n<\ny (*XIdf*)\n(\nz (*XIdf*)\n*\nw (*XIdf*)\n=\nv (*XIdf*)\n"},
      // Numbers: a sign or a leading dot is never part of a literal.
      {"1. 1.5 1e3 1.5E-2 12", "1. (*XRConst*)\n1.5 (*XRConst*)\n1e3 (*XRConst*)\n"
                               "1.5E-2 (*XRConst*)\n12 (*XIConst*)\n"},
      {"-3 .5", "-\n3 (*XIConst*)\n.\n5 (*XIConst*)\n"},
      // Comments.
      {"a(*)b", "a (*XIdf*)\nb (*XIdf*)\n"},
      {"a (* x * ) *) b", "a (*XIdf*)\nb (*XIdf*)\n"},
      {"a (**) b -- c\nd -- e", "a (*XIdf*)\nb (*XIdf*)\nd (*XIdf*)\n"},
      {"a (* never closed", "a (*XIdf*)\n"},
      // Keywords are case-sensitive.
      {"node f True true", "node\nf (*XIdf*)\nTrue (*XIdf*)\ntrue\n"},
      {"unsafe extern nor xor _x1 #%&+,./:;)", "unsafe\nextern\nnor\nxor\n_x1 (*XIdf*)\n#\n%\n&\n+\n,\n.\n/\n:\n;\n)\n"},
      {"", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(tokens_of(c.text), c.tokens) << "input: " << c.text;
}

TEST(EcLexDeathTest, FatalLexicalErrors) {
  struct Case { std::string text; const char* message; } cases[] = {
      {"x = 1e;", "^x \\(\\*XIdf\\*\\)\n=\necread lex error : bad real syntax, line '1'\n"},
      {"\n\n1e+", "^ecread lex error : bad real syntax, line '3'\n"},
      {"a\n[", "ecread lex error : unknown char '91' \\(\\[\\), line '2'\n"},
      {"a ! b", "ecread lex error : unknown char '33' \\(!\\), line '1'\n"},
      {std::string("ab\0", 3), "^ICI \\(car 3\\)\nab \\(\\*XIdf\\*\\)\necread lex error : unknown char '0'"},
  };
  for (const Case& c : cases) {
    std::string path = write_temp(c.text);
    // The messages go to standard output: the child copies them to its
    // standard error, where the death test looks.
    EXPECT_EXIT(
        {
          dup2(2, 1);
          EcLexTest(symbols(), path.c_str());
        },
        ::testing::ExitedWithCode(1), c.message)
        << c.text;
  }
}

TEST(EcLexTest, UnknownFileIsReported) {
  testing::internal::CaptureStderr();
  EcLexTest(symbols(), "/nonexistent/x.ec");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "EcLexTest : Can't open file '/nonexistent/x.ec'\n");
}

}  // namespace
