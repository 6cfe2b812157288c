// net_interface.h -- an ec program read, normalised and minimised, with its
// inputs, outputs, assertions and locals listed as normalised nodes. Each
// listed node carries, under the info key, a record of what it stands for.
#ifndef NORMALISE_NET_INTERFACE_H
#define NORMALISE_NET_INTERFACE_H

#include "network/exp.h"

class NormNet;
class PtyStream;
class SymbolTable;

// One entry of a node's list of outputs (or locals); count is 1 + the count
// of the entry below it.
struct NodeUse {
  int number;  // 1-based output or local number
  int count;
  NodeUse* next;
};

// What a recorded node stands for; created zeroed on first need.
struct NodeRecord {
  int unused[3];
  NodeUse* outputs;
  NodeUse* locals;
  int input;      // 1-based input number, 0 when no input
  int assertion;  // 1-based assertion number, 0 when no assertion
};

// The recording operations, apart so that they can be used on their own.
class PNetInterface {
 public:
  PNetInterface();
  PNetInterface(const PNetInterface&) = delete;
  PNetInterface& operator=(const PNetInterface&) = delete;
  virtual ~PNetInterface();

  // Each appends to its arrays and records the number on the node.
  void add_input(Exp* node, int ident);
  // Several outputs may share one node.
  void add_output(Exp* node, int ident);
  // A node without identifier takes the local's, so it prints under it.
  void add_local(Exp* node, int ident);
  void add_assert(Exp* node);

  // The record of node, null when the node was never recorded.
  NodeRecord* record(Exp* node) const;

  NormNet* net = nullptr;  // owned
  int nb_outputs = 0;
  int nb_inputs = 0;
  int nb_assertions = 0;
  int nb_locals = 0;
  Exp** output_nodes = nullptr;
  Exp** input_nodes = nullptr;
  Exp** local_nodes = nullptr;
  int* output_idents = nullptr;
  int* input_idents = nullptr;
  int* local_idents = nullptr;
  Exp** assertion_nodes = nullptr;
  int control_index = -1;  // reserved
  unsigned info_key = 0;

 protected:
  // Room for the counts of the network's declarations.
  void allocate();

 private:
  NodeRecord* get_record(Exp* node);
};

class NetInterface : public PNetInterface {
 public:
  NetInterface();
  // init(file, symbols, 0, 0); a failure ends the process with status 1.
  NetInterface(const char* file, SymbolTable* symbols);

  // Reads the ec file, checks it, normalises and minimises it (opt_a
  // nonzero: no minimisation) and lists the interface. 0 on success; 1
  // after a syntax error, with "syntax errors...\n" on standard error. An
  // ill-formed program ends the process with its message.
  int init(const char* file, SymbolTable* symbols, int opt_a, int opt_b);

  // The steps of init, in its order; public so that a caller can time them
  // apart: create the network, parse the file into it and check that it is
  // well formed (1 after a syntax error, with the message; an ill-formed
  // program ends the process, see check_program), then, after
  // NormNet::build() or its own phases, list the interface.
  void create_net(SymbolTable* symbols, int opt_a, int opt_b);
  int parse(const char* file, SymbolTable* symbols);
  void list_interface();

  void print_exp(Exp* e);
  void print_exp(PtyStream* out, Exp* e);
  void print_exp_def(Exp* e);
  void print_exp_def(PtyStream* out, Exp* e);
  void print_func_decl(int function, PtyStream* out);
};

#endif
