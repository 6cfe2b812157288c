// ec_parse_test.cpp -- the ec grammar: declarations, node shapes built for
// each operator and precedence, and the reported errors.
#include "network/ec_builders.h"

#include <gtest/gtest.h>

#include "net_fixture.h"

using namespace nettest;

namespace {

const char* kHeader =
    "function f(x: int; y: int) returns (r: int);\n"
    "node t(a, b, c: bool; i, j: int; r: real) returns (o: bool);\n"
    "let o = ";

// The shape of the node built for `expression`, fully parenthesised.
std::string shape(const std::string& expression) {
  int result = -1;
  Net* net = parse_text(std::string(kHeader) + expression + "; tel", &result);
  EXPECT_EQ(result, 0) << expression;
  return exp_text(net, info(net, "o")->def);
}

TEST(EcParseTest, PrecedenceAndAssociativity) {
  struct Case { const char* text; const char* built; } cases[] = {
      {"a -> b -> c", "((a -> b) -> c)"},
      {"a => b => c", "(a => (b => c))"},
      {"not a * b", "(not (a * b))"},
      {"not a + b", "((not a) + b)"},
      {"a + b when c", "(a + (b when c))"},
      {"a * b when c", "(a * (b when c))"},
      {"pre a when c", "((pre a) when c)"},
      {"- a ** b", "((- a) ** b)"},
      {"a ** b * c", "((a ** b) * c)"},
      {"a or b xor c and a", "(a or (b xor (c and a)))"},
      {"a = b < c", "(a = (b < c))"},
      {"a <> b = c", "((a <> b) = c)"},
      {"i + j < i - j", "((i + j) < (i - j))"},
      {"a and b => c or a -> b", "(((a and b) => (c or a)) -> b)"},
      {"i - j - i", "((i - j) - i)"},
      {"i div j mod i % j / i", "((((i div j) mod i) mod j) / i)"},
      {"if a then i else if b then j else i + j", "(if a then i else (if b then j else (i + j)))"},
      {"if a then b else c -> a", "(if a then b else (c -> a))"},
      {"current (i when a) + 1", "((current (i when a)) + 1)"},
      {"(a)", "a"},
  };
  for (const Case& c : cases) EXPECT_EQ(shape(c.text), c.built) << c.text;
}

// Calls take a tuple for several arguments, the bare operand for one; the
// conversions become calls of functions declared once per network.
TEST(EcParseTest, ListsCallsAndConversions) {
  EXPECT_EQ(shape("#(a, b, c) or &(a) or nor(a, b)"), "((#(a, b, c) or &(a)) or nor(a, b))");
  Net* net = parse_text(std::string(kHeader) + "f(i, j) = f(i) + f((i, j)); tel");
  Exp* e = info(net, "o")->def;
  ASSERT_EQ(e->nature, EQUAL_n);
  EXPECT_EQ(e->operands[0]->param, key("f"));
  EXPECT_EQ(e->operands[0]->operands[0]->arity, 2);
  EXPECT_EQ(e->operands[1]->operands[0]->operands[0], info(net, "i")->ref) << "one argument: no tuple";
  EXPECT_EQ(e->operands[1]->operands[1]->operands[0]->nature, TUPLE_n);
  for (int round = 0; round < 2; round++) {
    EXPECT_EQ(shape("int r + int 3.5 + real (int r) > 0"),
              "(((real2int(r) + real2int(3.5)) + int2real(real2int(r))) > 0)");
    net = parse_text(std::string(kHeader) + "int r + real (int r) > 0; tel");
    EXPECT_EQ(keys_of(net->funcs), (std::vector<int>{key("f"), key("real2int"), key("int2real")}));
    EXPECT_EQ(net->get_func_info(key("real2int"))->in_type, net->real_type);
  }
}

TEST(EcParseTest, DeclarationsOfEveryForm) {
  testing::internal::CaptureStderr();
  Net* net = parse_file(std::string(TAVIK_SOURCE_DIR) + "/tests/ec/decls.ec");
  std::string warning = testing::internal::GetCapturedStderr();
  EXPECT_NE(warning.find(" Warning :\nbasic support of extern node (treated as unsafe procedure)\n"),
            std::string::npos)
      << warning;
  EXPECT_EQ(net->node_name, key("decls"));
  EXPECT_EQ(keys_of(net->usr_types), (std::vector<int>{key("T"), key("Color"), key("U")}));
  EcType* color = net->define_type(key("Color"));
  ASSERT_EQ(color->enum_count, 3);
  EXPECT_EQ(color->enum_values[2]->key, key("red"));  // ordinals count from the list's end
  EXPECT_EQ(info(net, "red")->ref->type, color);
  EXPECT_EQ(keys_of(net->consts),
            (std::vector<int>{key("red"), key("green"), key("blue"), key("n"), key("pi"), key("k")}));
  EXPECT_EQ(info(net, "k")->clock, key("base_c"));
  EXPECT_EQ(info(net, "pi")->value.position, 4);

  EXPECT_EQ(keys_of(net->funcs), (std::vector<int>{key("f"), key("log_it")}));
  EXPECT_EQ(keys_of(net->procs), (std::vector<int>{key("g"), key("ext")}));
  EXPECT_EQ(net->get_func_info(key("ext"))->unsafe + net->get_func_info(key("log_it"))->unsafe, 2);

  EXPECT_EQ(keys_of(net->inputs.list()), (std::vector<int>{key("c"), key("x"), key("y"), key("z"), key("t")}));
  EXPECT_EQ(info(net, "z")->clock, key("c"));
  EXPECT_EQ(keys_of(net->outputs.list()), (std::vector<int>{key("o"), key("p"), key("col")}));
  EXPECT_EQ(keys_of(net->locals.list()), (std::vector<int>{key("l1"), key("l2"), key("l3"), key("m")}));
  EXPECT_EQ(info(net, "m")->clock, key("c"));

  // (p, l3) = g(z): projections 1 and 2 of one call, with the names' types.
  Exp* p = info(net, "p")->def;
  Exp* l3 = info(net, "l3")->def;
  ASSERT_EQ(p->nature, PROJ_n);
  EXPECT_EQ(p->param, 1);
  EXPECT_EQ(l3->param, 2);
  EXPECT_EQ(p->operands[0], l3->operands[0]);
  EXPECT_EQ(p->clock, key("c"));
  EXPECT_EQ(keys_of(info(net, "p")->value.tuple), (std::vector<int>{key("p"), key("l3")}));

  EXPECT_EQ(info(net, "__assert_0")->def->nature, DIESE_n);
  EXPECT_EQ(info(net, "__assert_0")->clock, key("c"));
}

TEST(EcParseTest, WholeProgramsAndEndMarks) {
  for (const char* end : {"", ".", ";", ","}) {
    int result = -1;
    Net* net = parse_text(std::string("node n(x: int) returns (y: int); let y = x; tel") + end, &result);
    EXPECT_EQ(result, 0) << end;
    EXPECT_EQ(info(net, "y")->def, info(net, "x")->ref);
  }
}

TEST(EcParseTest, SyntaxErrorsGiveTheirLine) {
  struct Case { const char* text; const char* report; } cases[] = {
      {"node n(x: int) returns (y: int);\nlet\n  y = x + ) ;\ntel", "syntax error     - at line 3\n"},
      // The lexer has read the newline after the offending ';' already.
      {"node n(x: int) returns (y: int);\nlet\n  y = x +;\ntel", "syntax error     - at line 4\n"},
      {"(* a\ncomment *)\n-- one\nnode n(x: int) returns (y: int)\nlet y = x; tel",
       "syntax error     - at line 5\n"},
      {"node n() returns (y: int); let tel", "syntax error     - at line 1\n"},
      {"node n(x: int) returns (y: int); let y = x; tel node", "syntax error     - at line 1\n"},
  };
  for (const Case& c : cases) {
    int result = 0;
    testing::internal::CaptureStdout();
    parse_text(c.text, &result);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), c.report) << c.text;
    EXPECT_NE(result, 0);
  }
  int result = 0;
  testing::internal::CaptureStderr();
  parse_file("/nonexistent/n.ec", &result);
  EXPECT_EQ(result, 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "EcParse : Can't open file '/nonexistent/n.ec'\n");
}

TEST(EcParseDeathTest, UndeclaredIdentifiers) {
  const char* texts[] = {
      "node n(x: int) returns (y: int); let y = x + z; tel",
      "node n(x: int) returns (y: int); let z = x; tel",
      "node n(x: int) returns (y: int); let y = z(x); tel",
  };
  for (const char* text : texts) {
    std::string path = write_temp(text);
    EXPECT_EXIT(parse_file(path), ::testing::ExitedWithCode(1),
                "^ecnet::GetIdentInfo : undeclared ident 'z'\n")
        << text;
  }
}

}  // namespace

// An int literal is 32-bit; 2147483648 only under a unary minus, which
// then is the constant -2147483648 itself.
TEST(EcParseTest, IntLiteralsFitIn32Bits) {
  EXPECT_EQ(shape("i = -2147483648 + - (2147483648) + 2147483647 + 0002147483647"),
            "(i = (((-2147483648 + -2147483648) + 2147483647) + 0002147483647))");
  EXPECT_EQ(shape("i = - -2147483648"), "(i = (- -2147483648))");
  Net* net = parse_text(std::string(kHeader) + "i = -2147483648; tel");
  EXPECT_EQ(info(net, "-2147483648")->value.int_value, INT32_MIN);
}

TEST(EcParseDeathTest, IntLiteralsBeyond32BitsAreRefused) {
  struct Case { const char* text; const char* literal; int line; } cases[] = {
      {"i = 2147483648", "2147483648", 5},
      {"i = j -\n2147483648", "2147483648", 6},
      {"i = -2147483648 +\n\n2147483648", "2147483648", 7},
      {"i = -99999999999999999999", "99999999999999999999", 5},
      {"i = -2147483649", "2147483649", 5},
  };
  for (const Case& c : cases) {
    std::string path = write_temp(std::string(kHeader) + "\n\n" + c.text + "; tel");
    EXPECT_EXIT(parse_file(path), ::testing::ExitedWithCode(1),
                ":" + std::to_string(c.line) + ": the integer " + c.literal +
                    " is beyond 32 bits \\(an int is from -2147483648 to 2147483647\\)\n")
        << c.text;
  }
}
