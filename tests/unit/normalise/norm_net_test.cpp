// norm_net_test.cpp -- normal forms of small ec programs, boolean
// simplification and the fatal messages of normalisation.
#include <gtest/gtest.h>

#include "foundations/errors.h"
#include "norm_fixture.h"

using normtest::norm_term;
using normtest::parse_norm;
using normtest::term;

namespace {

const char* kHeader = "node n(a, b, c, c1: bool; i: int; (c2: bool) when c1; (j: int) when c2)\n";

struct NormalFormCase {
  const char* outputs;   // the returns part
  const char* body;      // var and let ... tel
  const char* variable;  // whose normal form is checked
  const char* expected;
};

TEST(NormNetTest, NormalFormsOfSmallPrograms) {
  const NormalFormCase cases[] = {
      // Memory with initialisation on the base clock.
      {"(x: int)", "let x = 0 -> pre x + 1; tel", "x", "IF(INIT(true),0,PLUS(LAST(x),1))"},
      // A variable on a clock that is itself on a slower clock.
      {"((o: int) when c2)", "let o = j; tel", "o", "IF(IF(c1,c2,false),j,nil)"},
      // current of a sampled flow holds its last value between samples.
      {"(o: int)", "let o = current (i when c); tel", "o", "IF(c,i,LAST(IF(c,i,nil)))"},
      // current of current climbs two clock levels, each with its own memory.
      {"(p: int)", "let p = current (current j); tel", "p",
       "IF(c1,IF(IF(c1,c2,false),j,LAST(IF(IF(c1,c2,false),j,nil))),"
       "LAST(IF(c1,IF(IF(c1,c2,false),j,LAST(IF(IF(c1,c2,false),j,nil))),nil)))"},
      // -> and pre on a slower clock use that clock's first instant and flow.
      {"((o: int) when c)", "let o = 0 -> pre o + 1; tel", "o",
       "IF(c,IF(INIT(c),0,PLUS(LAST(IF(c,o,nil)),1)),nil)"},
      // when alone leaves no node: the sampling lives in the clock.
      {"((o: bool) when c)", "let o = (a and b) when c; tel", "o", "IF(c,AND(a,b),nil)"},
      // A local equal to an input is that input's leaf.
      {"(o: int)", "var l: int; let l = i; o = l + 1; tel", "l", "i"},
      {"(o: int)", "var l: int; let l = i; o = l + 1; tel", "o", "PLUS(l,1)"},
      // A call keeps its function and translates its argument.
      {"(o: int)", "let o = pre f(i); tel", "o", "LAST(CALL(i))"},
      // Boolean simplification is off by default.
      {"(o: bool)", "let o = if a then true else b; tel", "o", "IF(a,true,b)"},
  };
  for (const NormalFormCase& t : cases) {
    std::string text = std::string("function f(a: int) returns (r: int);\n") + kHeader +
                       "returns " + t.outputs + ";\n" + t.body + "\n";
    NormNet* net = parse_norm(text);
    net->normalise();
    EXPECT_EQ(norm_term(net, t.variable), t.expected) << t.body;
  }
}

TEST(NormNetTest, SharedSourceNodeIsTranslatedOnce) {
  // Both projections read one call node: its translation is memoised.
  NormNet* net = parse_norm(
      "function g(a: int) returns (r: int; s: int);\n" + std::string(kHeader) +
      "returns (p, q: int);\nlet (p, q) = g(i); tel\n");
  net->normalise();
  EXPECT_EQ(norm_term(net, "p"), "PROJ(CALL(i))");
  Exp* p = net->norm(normtest::key("p"));
  Exp* q = net->norm(normtest::key("q"));
  EXPECT_EQ(p->param, 1);
  EXPECT_EQ(q->param, 2);
  EXPECT_EQ(p->operands[0], q->operands[0]);
  EXPECT_EQ(net->nb_nodes, 3);
}

struct BoolCase { ExpNature nature; const char* ops[3]; const char* expected; };

TEST(NormNetTest, BooleanSimplificationWhenSwitchedOn) {
  const BoolCase cases[] = {
      {NOT_n, {"true"}, "false"},
      {NOT_n, {"a"}, "NOT(a)"},
      {AND_n, {"a", "false"}, "false"},
      {AND_n, {"a", "true"}, "a"},
      {OR_n, {"true", "a"}, "true"},
      {OR_n, {"a", "false"}, "a"},
      {XOR_n, {"false", "a"}, "a"},
      {XOR_n, {"true", "a"}, "NOT(a)"},
      {NEQ_n, {"a", "true"}, "NOT(a)"},
      {NEQ_n, {"i", "i"}, "NEQ(i,i)"},
      {IMPL_n, {"true", "a"}, "a"},
      {IMPL_n, {"false", "a"}, "true"},
      {IMPL_n, {"a", "false"}, "NOT(a)"},
      {EQUAL_n, {"true", "a"}, "a"},
      {EQUAL_n, {"a", "false"}, "NOT(a)"},
      {EQUAL_n, {"i", "i"}, "EQUAL(i,i)"},
      {IF_n, {"true", "a", "nil"}, "IF(true,a,nil)"},
      {IF_n, {"true", "a", "b"}, "a"},
      {IF_n, {"a", "true", "b"}, "OR(a,b)"},
      {IF_n, {"a", "false", "b"}, "AND(NOT(a),b)"},
      {IF_n, {"a", "b", "true"}, "OR(NOT(a),b)"},
      {IF_n, {"a", "b", "false"}, "AND(a,b)"},
      {PLUS_n, {"i", "i"}, "PLUS(i,i)"},
  };
  NormNet* net = parse_norm(std::string(kHeader) + "returns (o: bool);\nlet o = a; tel\n");
  net->bool_optimise = 1;
  for (const BoolCase& t : cases) {
    Exp* ops[3];
    int arity = t.ops[2] ? 3 : t.ops[1] ? 2 : 1;
    for (int i = 0; i < arity; i++) ops[i] = net->get_ident_info(normtest::key(t.ops[i]))->ref;
    Exp* e = net->get_norm_exp(t.nature, arity, ops, 0, net->true_key);
    EXPECT_EQ(term(net, e), t.expected) << nodekey(t.nature) << " " << t.ops[0];
  }
}

TEST(NormNetDeathTest, UndefinedUndeclaredVariablesAndClocksAreFatal) {
  const struct {
    const char* program;  // the returns part and the body
    const char* variable;  // normalised alone, or all when null
    const char* message;
  } cases[] = {
      {"returns (o, p: int);\nlet o = i; tel\n", nullptr,
       "Error :\nNormNet::normalise : undefined variable 'p'\n"},
      {"returns (o: int);\nlet o = i; tel\n", "never_declared",
       "Error :\nNormNet::normalise : undeclared variable 'never_declared'\n"},
      {"returns ((o: int) when zz);\nlet o = i; tel\n", nullptr,
       "Error :\nNormNet::Xclock : undeclared clock 'zz'\n"},
  };
  for (const auto& c : cases) {
    NormNet* net = parse_norm(std::string(kHeader) + c.program);
    EXPECT_EXIT(c.variable ? net->normalise(normtest::key(c.variable)) : net->normalise(),
                ::testing::ExitedWithCode(1), c.message)
        << c.program;
  }
}

}  // namespace
