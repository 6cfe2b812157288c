// norm_fixture.h -- helpers of the normalisation tests: an ec text read into
// a fresh normalising network, and nodes rendered as terms so that normal
// forms can be compared as text. Networks live until the process ends.
#ifndef TESTS_UNIT_NORMALISE_NORM_FIXTURE_H
#define TESTS_UNIT_NORMALISE_NORM_FIXTURE_H

#include <set>
#include <string>
#include <vector>

#include "network/net_fixture.h"
#include "normalise/norm_net.h"

namespace normtest {

using nettest::key;
using nettest::symbols;

using testsupport::kept;

// The ec text parsed into a new NormNet of the given option mode; the parse
// must succeed.
inline NormNet* parse_norm(const std::string& text, int mode = 0) {
  NormNet* net = kept(new NormNet());
  net->NetInit(symbols());
  net->init_norm(mode, 0);
  int r = EcParse(net, symbols(), nettest::write_temp(text).c_str());
  EXPECT_EQ(r, 0) << text;
  return net;
}

// A node as a term: leaves by name, operators by nature name with their
// operands; a node met again below itself prints as "@" (a memory's cycle).
inline std::string term(NormNet* net, Exp* e, std::set<Exp*>& path) {
  if (!e) return "null";
  if (e->is_leaf()) return symbols()->text(e->ident);
  if (path.count(e)) return "@";
  path.insert(e);
  std::string name = nodekey(e->nature);
  std::string text = name.substr(0, name.size() - 2) + "(";
  for (int i = 0; i < e->arity; i++)
    text += (i ? "," : "") + term(net, e->operands[i], path);
  path.erase(e);
  return text + ")";
}

inline std::string term(NormNet* net, Exp* e) {
  std::set<Exp*> path;
  return term(net, e, path);
}

// The normal form of variable `name`.
inline std::string norm_term(NormNet* net, const char* name) {
  return term(net, net->norm(key(name)));
}

}  // namespace normtest

#endif
