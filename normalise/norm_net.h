// norm_net.h -- a network rewritten into its normalised form, then minimised.
// Invariant: every node of the node list is on the base clock in meaning and
// uses only LAST_n, INIT_n, IF_n and the ordinary operators; a node's class
// number (its `mark`) is 0 for nodes outside the list and 1.. for members.
#ifndef NORMALISE_NORM_NET_H
#define NORMALISE_NORM_NET_H

#include <vector>

#include "network/net.h"
#include "network/net_ctr.h"

class NormNet : public Net {
 public:
  // One entry of the node list; entries move between classes, never copied.
  struct NodeEntry {
    Exp* exp;
    NodeEntry* next;
  };

  NormNet();

  // Clears the normalisation tables, takes the seven marking keys and sets
  // the option mode (3: no minimisation, below 3: minimise) and the spare
  // option. Call after NetInit.
  void init_norm(int option_mode, int option_b);

  // Normalises the network, then minimises it (or makes one class per node
  // in option mode 3) and builds one representative node per class. An
  // option mode above 3 is fatal ("unknown option").
  void build();

  // Fills the four tables for every output, local and assertion, in
  // declaration order. Undeclared or undefined variables are fatal.
  void normalise();
  // The tables' entries for one variable v.
  void normalise(int v);

  // The node of clock c: true exactly at c's instants (memoised).
  Exp* Xclock(int c);
  // INIT_n of clock c's node, on the base clock (memoised).
  Exp* Xinit(int c);
  // e as a flow on the base clock: nil where e is absent (memoised).
  Exp* Xflow(Exp* e);
  // e computed as if always present, on e's clock (memoised).
  Exp* Ximpl(Exp* e);

  // A new normalised node, unless boolean simplification (when switched on)
  // answers the request. Counts the request; a new node gets class 1, its
  // serial number and clock identifier, and joins the node list's front.
  // `model` gives the coefficients of a linear combination (else null).
  Exp* get_norm_exp(ExpNature n, int arity, Exp** ops, int param, int clk,
                    const Exp* model = nullptr);
  Exp* get_norm_exp(ExpNature n, Exp* a, int clk);
  Exp* get_norm_exp(ExpNature n, Exp* a, Exp* b, int clk);
  Exp* get_norm_exp(ExpNature n, Exp* a, Exp* b, Exp* c, int clk);
  // The simplified equivalent of a boolean request, or null.
  Exp* get_norm_bool(ExpNature n, Exp** ops, int clk);

  // e, followed through references to variables' implementations.
  Exp* through_ref(Exp* e);
  // The normalised node of identifier v: its class representative once
  // minimisation has run, its leaf when v was not normalised (an input).
  Exp* norm(int v);

  /* Minimisation. */
  // The classes of bisimilar nodes, by partition refinement (near-linear).
  void minimize();
  // The same classes by splitting classes against their first member until
  // nothing splits (quadratic): the reference the refinement is tested on.
  void minimize_by_splitting();
  void no_minimize();
  void init_classes();
  // Splits class k against its first member; 1 when a class was made.
  int bary_split(int k);
  // May a and b stay together in class k?
  bool exp_bisim(Exp* a, Exp* b, int k);
  bool exp_nature_cmp(Exp* a, Exp* b);
  bool exp_cmp(Exp* x, Exp* y, int k);
  // One shared node per class, built after the classes are final.
  void build_representatives();

  // The representative of class c (1-based); null before build().
  Exp* representative(int c) const;
  // The order in which normalisation built a node (from 1).
  int serial(const Exp* e) const { return e->get_int_info(serial_key); }
  // The clock identifier a normalised node was built on.
  int norm_clock(const Exp* e) const { return e->get_int_info(min_key); }
  // The members of class c (1-based), in list order.
  NodeEntry* class_members(int c) const { return classes[c - 1]; }

  NetCtr* ctr = nullptr;
  int bool_optimise = 0;  // boolean simplification switch, off for simulation
  int option_mode = 0;
  int option_b = 0;

  int nb_requests = 0;  // get_norm_exp calls
  int nb_nodes = 0;     // normalised nodes built (the node list's length)
  int nb_operands = 0;  // their operands, in total
  NodeEntry* node_list = nullptr;

  std::vector<NodeEntry*> classes;  // class c is classes[c - 1]
  int nb_classes = 0;
  std::vector<Exp*> representatives;

 private:
  Exp** table_slot(std::vector<Exp*>& table, int v);
  Exp* Ximpl_node(Exp* e);
  Exp* not_of(Exp* e, int clk) { return get_norm_exp(NOT_n, e, clk); }
  bool is_bool(Exp* e) { return type(e) == bool_type; }

  std::vector<Exp*> init_table;
  std::vector<Exp*> clock_table;
  std::vector<Exp*> impl_table;
  std::vector<Exp*> normal_table;

  // Marking keys, taken once by init_norm.
  int impl_key = 0;       // source node -> its Ximpl
  int flow_key = 0;       // source node -> its Xflow
  int impl_src_key = 0;   // Ximpl result -> its source
  int flow_src_key = 0;   // Xflow result -> its source
  int clock_def_key = 0;  // clock node -> the clock's definition
  int serial_key = 0;     // normalised node -> its serial number
  int min_key = 0;        // normalised node -> its clock identifier
};

#endif
