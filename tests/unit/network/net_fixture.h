// net_fixture.h -- helpers shared by the network tests: parse an ec text or
// file into a fresh network, and render nodes as text. Networks live until
// the process ends, as they do in the simulator.
#ifndef TESTS_UNIT_NETWORK_NET_FIXTURE_H
#define TESTS_UNIT_NETWORK_NET_FIXTURE_H

#include <string>
#include <vector>

#include "foundations/int_list.h"
#include "foundations/symbol_table.h"
#include "network/ec_builders.h"
#include "network/net.h"
#include "test_support.h"

namespace nettest {

inline SymbolTable* symbols() {
  static SymbolTable* table = new SymbolTable(1000, 5041);
  return table;
}

inline int key(const char* text) { return symbols()->add("%s", text); }

using testsupport::kept;
using testsupport::printed;

// A network after NetInit, kept alive for the whole run.
inline Net* fresh_net() {
  Net* net = kept(new Net());
  net->NetInit(symbols());
  return net;
}

inline std::string write_temp(const std::string& text) { return testsupport::write_temp(text, ".ec"); }

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

// A node built by a test, kept like the network's own nodes.
template <typename... Args>
Exp* make_exp(Args... args) {
  return kept(new Exp(args...));
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
