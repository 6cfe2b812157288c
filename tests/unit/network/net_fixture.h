// net_fixture.h -- helpers shared by the network tests: parse an ec text or
// file into a fresh network, and render nodes as text. Networks live until
// the process ends, as they do in the simulator.
#ifndef TESTS_UNIT_NETWORK_NET_FIXTURE_H
#define TESTS_UNIT_NETWORK_NET_FIXTURE_H

#include <cstdio>
#include <cstdlib>
#include <unistd.h>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "foundations/int_list.h"
#include "foundations/pty_stream.h"
#include "foundations/symbol_table.h"
#include "network/ec_builders.h"
#include "network/net.h"

namespace nettest {

inline SymbolTable* symbols() {
  static SymbolTable* table = new SymbolTable(1000, 5041);
  return table;
}

inline int key(const char* text) { return symbols()->add("%s", text); }

// A network after NetInit, kept alive for the whole run.
inline Net* fresh_net() {
  // Never destroyed, so that the networks stay reachable at exit.
  static std::vector<Net*>* all = new std::vector<Net*>;
  all->push_back(new Net());
  all->back()->NetInit(symbols());
  return all->back();
}

// Writes `text` to a new temporary file and returns its path.
inline std::string write_temp(const std::string& text) {
  static int counter = 0;
  std::string path = ::testing::TempDir() + "nettest_" + std::to_string(getpid()) + "_" +
                     std::to_string(++counter) + ".ec";
  FILE* f = fopen(path.c_str(), "w");
  fwrite(text.data(), 1, text.size(), f);
  fclose(f);
  return path;
}

// Parses the file; *result gets EcParse's result when asked for.
inline Net* parse_file(const std::string& path, int* result = nullptr) {
  Net* net = fresh_net();
  int r = EcParse(net, symbols(), path.c_str());
  if (result) *result = r;
  return net;
}

inline Net* parse_text(const std::string& text, int* result = nullptr) {
  return parse_file(write_temp(text), result);
}

// What `print` writes on a PtyStream of the given width.
template <typename F>
std::string printed(F print, int width = 10000) {
  char* buffer = nullptr;
  size_t size = 0;
  FILE* f = open_memstream(&buffer, &size);
  PtyStream* out = new PtyStream(f, width, nullptr);
  print(out);
  delete out;  // closes f, which fills buffer
  std::string text(buffer, size);
  free(buffer);
  return text;
}

// Keeps a node built by a test reachable until the process ends, as the
// network's own nodes are.
inline Exp* keep(Exp* e) {
  static std::vector<Exp*>* all = new std::vector<Exp*>;
  all->push_back(e);
  return e;
}

// A node built by a test, kept like the others.
template <typename... Args>
Exp* make_exp(Args... args) {
  return keep(new Exp(args...));
}

inline std::string exp_text(Net* net, Exp* e) {
  return printed([&](PtyStream* out) { net->print_exp(out, e); });
}

inline IdentInfo* info(Net* net, const char* name) { return net->get_ident_info(key(name)); }

inline std::vector<int> keys_of(IntList* l) {
  std::vector<int> v;
  for (; l; l = l->next) v.push_back(l->value);
  return v;
}

}  // namespace nettest

#endif
