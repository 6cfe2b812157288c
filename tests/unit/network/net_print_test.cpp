// net_print_test.cpp -- networks printed as ec text parse back to the same
// declarations and structurally equal definitions.
#include <gtest/gtest.h>

#include <dirent.h>

#include <algorithm>
#include <tuple>

#include "net_fixture.h"

using namespace nettest;

namespace {

// Same nature, parameters, leaf identifiers and coefficients, recursively.
bool same_shape(Exp* a, Exp* b) {
  if (!a || !b) return a == b;
  if (a->nature != b->nature || a->arity != b->arity || a->ident != b->ident || a->param != b->param)
    return false;
  for (int i = 0; i < a->arity; i++)
    if (!same_shape(a->operands[i], b->operands[i])) return false;
  return true;
}

// The identifiers of `keys` in both networks: same modes, clocks, indices,
// types and definitions.
void expect_same_idents(Net* a, Net* b, IntList* keys_a, IntList* keys_b) {
  ASSERT_EQ(keys_of(keys_a), keys_of(keys_b));
  for (IntList* k = keys_a; k; k = k->next) {
    IdentInfo* x = a->get_ident_info(k->value);
    IdentInfo* y = b->get_ident_info(k->value);
    SCOPED_TRACE(symbols()->text(k->value));
    ASSERT_NE(y, nullptr);
    EXPECT_EQ(std::make_tuple(x->mode, x->clock, x->index, x->type->name),
              std::make_tuple(y->mode, y->clock, y->index, y->type->name));
    EXPECT_TRUE(same_shape(x->def, y->def)) << exp_text(a, x->def) << " vs " << exp_text(b, y->def);
  }
}

std::string ec_text(Net* net, int width) {
  return printed([&](PtyStream* out) { net->print_ec(out); }, width);
}

std::vector<std::string> test_programs() {
  std::vector<std::string> paths;
  std::string dir = std::string(TAVIK_SOURCE_DIR) + "/tests/ec/";
  DIR* d = opendir(dir.c_str());
  for (dirent* entry; d && (entry = readdir(d));) {
    std::string name = entry->d_name;
    if (name.size() > 3 && name.substr(name.size() - 3) == ".ec") paths.push_back(dir + name);
  }
  if (d) closedir(d);
  std::sort(paths.begin(), paths.end());
  return paths;
}

TEST(NetPrintTest, EveryTestProgramReparsesToTheSameNetwork) {
  std::vector<std::string> paths = test_programs();
  ASSERT_GE(paths.size(), 3u);
  for (const std::string& path : paths) {
    SCOPED_TRACE(path);
    testing::internal::CaptureStderr();  // extern node warnings
    int result = -1;
    Net* first = parse_file(path, &result);
    ASSERT_EQ(result, 0);
    // A narrow stream breaks lines between tokens; the text must still parse.
    std::string text = ec_text(first, 40);
    Net* second = parse_text(text, &result);
    testing::internal::GetCapturedStderr();
    ASSERT_EQ(result, 0) << text;

    EXPECT_EQ(first->node_name, second->node_name);
    EXPECT_EQ(keys_of(first->usr_types), keys_of(second->usr_types));
    expect_same_idents(first, second, first->consts, second->consts);
    expect_same_idents(first, second, first->inputs.list(), second->inputs.list());
    expect_same_idents(first, second, first->outputs.list(), second->outputs.list());
    expect_same_idents(first, second, first->locals.list(), second->locals.list());
    expect_same_idents(first, second, first->asserts.list(), second->asserts.list());
    // Functions are compared through their printed declarations.
    EXPECT_EQ(keys_of(first->funcs), keys_of(second->funcs));
    EXPECT_EQ(keys_of(first->procs), keys_of(second->procs));
    // Printing is a fixed point after one round.
    EXPECT_EQ(ec_text(second, 80), ec_text(first, 80));
  }
}

// A plain function's declaration shows in session-5.1's refusal.
TEST(NetPrintTest, FunctionDeclarations) {
  testing::internal::CaptureStderr();
  Net* net = parse_text(
      "unsafe function u(a: int) returns (r: int; s: bool);\n"
      "extern node e(a: int) returns (r: int);\n");
  testing::internal::GetCapturedStderr();
  auto decl = [&](const char* name) {
    return printed([&](PtyStream* out) { net->print_func_decl(key(name), out); });
  };
  EXPECT_EQ(decl("u"), "unsafe function u(a: int) returns (r: int; s: bool);\n");
  EXPECT_EQ(decl("e"), "extern node e(a: int) returns (r: int);\n");
}

}  // namespace
