// net.h -- a program network: its types, declared identifiers and functions,
// and the expression nodes that define outputs, locals and assertions.
// Declarations only grow; the network owns its types, records and nodes and
// nothing is freed while it lives. Keys are SymbolTable keys (0: no name).
#ifndef NETWORK_NET_H
#define NETWORK_NET_H

#include <vector>

#include "foundations/key_list.h"
#include "network/ec_type.h"
#include "network/exp.h"
#include "network/ident_info.h"

class IntList;
class PtyStream;
class SymbolTable;

// One equation or assertion of the node as written, for the checks that
// report in the user's terms.
struct Equation {
  int name;        // the variable defined (the first of a tuple), or the assertion
  IntList* tuple;  // all the names of a tuple definition, else null
  Exp* exp;        // the right side as parsed (for a tuple, the whole tuple)
  int line;        // the line of its "=" or "assert"
};

class Net {
 public:
  Net() = default;
  Net(const Net&) = delete;
  Net& operator=(const Net&) = delete;
  virtual ~Net();

  // Empties the network, then defines the types "bool", "int", "real" and
  // the constants "true", "false", "bottom", "nil" over `symbols`.
  void NetInit(SymbolTable* symbols);

  /* Records of keys: null when the key names nothing of that kind. */
  IdentInfo* get_ident_info(int key);
  FuncInfo* get_func_info(int key);

  /* Types. */
  // The named type `name`, found in the chain or created (not numbered).
  EcType* define_type(int name);
  // One name: the named type; several: the tuple of exactly these
  // component names, found or created.
  EcType* define_type(IntList* names);
  EcType* define_type(int* names, int n);
  // A user type: listed in usr_types and numbered 1, 2, ...
  EcType* add_usr_type(int name);
  // A user enumeration whose values are the keys of `values`, in order.
  EcType* add_usr_type(int name, IntList* values);

  /* Constants. Each records a CONST leaf as both definition and reference. */
  void add_enum_const(int key, EcType* t, int clock, int ordinal);
  void add_usr_const(int key, EcType* t, int clock);
  // The leaf of a predefined boolean constant or literal, created once per
  // key on the base clock; literal records keep the literal's value.
  Exp* get_bool_const(int key);
  Exp* get_int_const(int key);
  Exp* get_real_const(int key);

  /* Functions. */
  // A function when `out` is a named type, a procedure when it is a tuple.
  void add_usr_func(int key, int unsafe, EcType* in, EcType* out, IntList* in_params,
                    IntList* out_params);
  void add_usr_unsafe_proc(int key, EcType* in, EcType* out, IntList* in_params,
                           IntList* out_params);

  /* Variables. Each gets the next running number of its kind. */
  void add_input(int key, EcType* t, int clock);
  // The key goes to the head of `outputs` when at_front is nonzero.
  void add_output(int key, EcType* t, int clock, int at_front);
  void add_local(int key, EcType* t, int clock);
  // Declares "__assert_<n>" defined by e and returns its key; computes e's
  // clock and types it bool.
  int add_assertion(Exp* e);
  // Defines the i-th name (from 1) as the projection i of e. Every name must
  // be declared.
  void define_tuple(IntList* names, Exp* e);

  /* Types and clocks of nodes, computed on first demand and cached. */
  EcType* type(Exp* e);
  int clock(Exp* e);
  // The clock named by the `when` node e; fatal when its clock operand is
  // no named leaf.
  int when_clock(Exp* e);

  /* Printers. */
  // The whole network as an ec program that parses back to an equivalent one.
  void print_ec(PtyStream* out);
  // One expression in ec syntax, fully parenthesised.
  void print_exp(PtyStream* out, Exp* e);
  // A debugging dump of a node and its operands.
  void print_exp_def(PtyStream* out, Exp* e);
  // The declaration of the function or procedure `function`.
  void print_func_decl(int function, PtyStream* out);

  EcType* bool_type = nullptr;
  EcType* int_type = nullptr;
  EcType* real_type = nullptr;
  int true_key = 0;  // the base clock of every constant
  Exp* true_exp = nullptr;
  Exp* false_exp = nullptr;
  Exp* bottom_exp = nullptr;
  Exp* nil_exp = nullptr;
  SymbolTable* symbols = nullptr;  // not owned
  int node_name = 0;
  SymbolInfoArray* idents = nullptr;

  // Keys in declaration order. The variables' lists grow with the program,
  // one key per declaration: read them through list().
  KeyList inputs;
  KeyList outputs;
  KeyList locals;
  KeyList asserts;
  IntList* consts = nullptr;  // user and enumeration constants
  IntList* funcs = nullptr;
  IntList* procs = nullptr;
  IntList* usr_types = nullptr;

  std::vector<Equation> equations;  // in file order

  int nb_inputs = 0;
  int nb_outputs = 0;
  int nb_locals = 0;
  int nb_asserts = 0;
  int nb_usr_types = 0;
  int nb_consts = 0;
  int nb_funcs = 0;
  int nb_procs = 0;

  EcType* types = nullptr;  // the chain, newest first

 private:
  IdentInfo* new_ident(IdentMode m, int key, EcType* t, int clock);
  Exp* get_literal(int key, IdentMode m, EcType* t);
  EcType* compute_type(Exp* e);
  void print_decls(PtyStream* out);
  void print_vars(PtyStream* out, IntList* keys);
  void print_equations(PtyStream* out);
};

#endif
