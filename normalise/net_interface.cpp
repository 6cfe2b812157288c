// net_interface.cpp -- reading an ec program into a normalised network and
// listing its interface. Arrays are sized from the network's declaration
// counts before they are filled, so each add_* writes within them.
#include "normalise/net_interface.h"
#include "foundations/errors.h"

#include <cstdio>
#include <cstdlib>

#include "foundations/int_list.h"
#include "foundations/pty_stream.h"
#include "network/ec_builders.h"
#include "network/net_check.h"
#include "normalise/norm_net.h"

PNetInterface::PNetInterface() : info_key(take_a_key()) {}

PNetInterface::~PNetInterface() = default;

void PNetInterface::allocate() {
  output_nodes = new Exp*[net->nb_outputs + 1];
  output_idents = new int[net->nb_outputs + 1];
  input_nodes = new Exp*[net->nb_inputs + 1];
  input_idents = new int[net->nb_inputs + 1];
  local_nodes = new Exp*[net->nb_locals + 1];
  local_idents = new int[net->nb_locals + 1];
  assertion_nodes = new Exp*[net->nb_asserts + 1];
}

NodeRecord* PNetInterface::record(Exp* node) const {
  return static_cast<NodeRecord*>(node->get_ptr_info(static_cast<int>(info_key)));
}

NodeRecord* PNetInterface::get_record(Exp* node) {
  NodeRecord* r = record(node);
  if (r) return r;
  r = new NodeRecord();
  node->put_info(static_cast<int>(info_key), r);
  return r;
}

void PNetInterface::add_input(Exp* node, int ident) {
  NodeRecord* r = get_record(node);
  input_nodes[nb_inputs] = node;
  input_idents[nb_inputs] = ident;
  r->input = ++nb_inputs;
}

static NodeUse* push_use(NodeUse* list, int number) {
  return new NodeUse{number, list ? list->count + 1 : 1, list};
}

void PNetInterface::add_output(Exp* node, int ident) {
  NodeRecord* r = get_record(node);
  output_nodes[nb_outputs] = node;
  output_idents[nb_outputs] = ident;
  r->outputs = push_use(r->outputs, ++nb_outputs);
}

void PNetInterface::add_local(Exp* node, int ident) {
  NodeRecord* r = get_record(node);
  local_nodes[nb_locals] = node;
  local_idents[nb_locals] = ident;
  r->locals = push_use(r->locals, ++nb_locals);
  if (node->ident == 0) node->ident = ident;
}

void PNetInterface::add_assert(Exp* node) {
  NodeRecord* r = get_record(node);
  assertion_nodes[nb_assertions] = node;
  r->assertion = ++nb_assertions;
}

/* ------------------------------------------------------------ NetInterface */

NetInterface::NetInterface() = default;

NetInterface::NetInterface(const char* file, SymbolTable* symbols) {
  if (init(file, symbols, 0, 0) != 0) FatalExit();
}

int NetInterface::init(const char* file, SymbolTable* symbols, int opt_a, int opt_b) {
  create_net(symbols, opt_a, opt_b);
  if (parse(file, symbols) != 0) return 1;
  net->build();
  list_interface();
  return 0;
}

void NetInterface::create_net(SymbolTable* symbols, int opt_a, int opt_b) {
  net = new NormNet();
  net->NetInit(symbols);
  net->init_norm(opt_a ? 3 : 0, opt_b);
}

int NetInterface::parse(const char* file, SymbolTable* symbols) {
  if (EcParse(net, symbols, file) != 0) {
    fprintf(stderr, "syntax errors...\n");
    return 1;
  }
  check_program(net, file);
  return 0;
}

void NetInterface::list_interface() {
  allocate();
  for (IntList* l = net->inputs.list(); l; l = l->next) add_input(net->norm(l->value), l->value);
  for (IntList* l = net->outputs.list(); l; l = l->next) add_output(net->norm(l->value), l->value);
  for (IntList* l = net->asserts.list(); l; l = l->next) add_assert(net->norm(l->value));
  for (IntList* l = net->locals.list(); l; l = l->next) {
    Exp* node = net->norm(l->value);
    // A local sampled on a slower clock is listed by its value.
    if (node->nature == IF_n && node->operands[2] == net->nil_exp) node = node->operands[1];
    // A leaf (constant or input) needs no item of its own.
    if (node->arity > 0) add_local(node, l->value);
  }
}

void NetInterface::print_exp(Exp* e) { print_exp(PtyStream::of_stdout(), e); }

void NetInterface::print_exp(PtyStream* out, Exp* e) { net->print_exp(out, e); }

void NetInterface::print_exp_def(Exp* e) { print_exp_def(PtyStream::of_stdout(), e); }

void NetInterface::print_exp_def(PtyStream* out, Exp* e) { net->print_exp_def(out, e); }

void NetInterface::print_func_decl(int function, PtyStream* out) {
  net->print_func_decl(function, out);
}
