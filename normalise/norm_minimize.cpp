// norm_minimize.cpp -- minimisation of the normalised network: the node list
// is partitioned into classes of bisimilar nodes (by refinement, or by the
// iterated splitting that checks it), then one shared representative is
// built per class. Invariant during splitting: a node's `mark` is its class
// number; a number above the class count marks a node just moved out of the
// class being split.
#include "normalise/norm_net.h"

#include "foundations/errors.h"
#include "normalise/norm_refine.h"

void NormNet::build() {
  Verbose("start normalisation ... ");
  normalise();
  Verbose("done\n");
  if (bool_optimise) Verbose("Bool optimization : %d -> %d nodes\n", nb_requests, nb_nodes);
  if (option_mode < 3)
    minimize();
  else if (option_mode == 3)
    no_minimize();
  else
    Error("unknown option");
  build_representatives();
}

void NormNet::no_minimize() {
  classes.assign(nb_nodes, nullptr);
  nb_classes = 0;
  // Each entry becomes a class of its own: unlink it from the list, so that
  // a class list holds exactly its one member.
  for (NodeEntry* e = node_list; e;) {
    NodeEntry* next = e->next;
    e->next = nullptr;
    classes[nb_classes++] = e;
    e->exp->mark = nb_classes;
    e = next;
  }
  Verbose("no network minimization (%d nodes)\n", nb_nodes);
}

void NormNet::init_classes() {
  classes.assign(nb_nodes, nullptr);
  nb_classes = 0;
  int by_nature[NB_EXP_NATURES] = {0};
  for (NodeEntry* e = node_list; e;) {
    NodeEntry* next = e->next;
    Exp* n = through_ref(e->exp);
    int& c = by_nature[n->nature];
    if (c == 0) {
      c = ++nb_classes;
      e->next = nullptr;
    } else {
      e->next = classes[c - 1];
    }
    classes[c - 1] = e;
    n->mark = c;
    e = next;
  }
}

void NormNet::minimize() {
  Verbose("start minimal network generation .");
  NormRefinement(this).refine();
  Verbose(" done (%d -> %d nodes)\n", nb_nodes, nb_classes);
}

// The same classes by splitting each class against its first member until
// a whole pass splits nothing: simple, but every split costs a rescan of
// the classes. Kept to check the refinement against.
void NormNet::minimize_by_splitting() {
  Verbose("start minimal network generation .");
  init_classes();
  bool changed = false;
  int c = 1;
  while (c <= nb_classes) {
    int k = c++;
    if (bary_split(k) == 1) {
      nb_classes++;
      changed = true;
      VerboseWheel(100);
    }
    if (c > nb_classes && changed) {
      Verbose(".");
      c = 1;
      changed = false;
    }
  }
  Verbose(" done (%d -> %d nodes)\n", nb_nodes, nb_classes);
}

int NormNet::bary_split(int k) {
  NodeEntry* first = classes[k - 1];
  Exp* pivot = first->exp;
  NodeEntry* split = nullptr;
  NodeEntry* prev = first;
  for (NodeEntry* m = first->next; m; m = prev->next) {
    if (exp_bisim(m->exp, pivot, k)) {
      prev = m;
      continue;
    }
    prev->next = m->next;
    m->next = split;
    split = m;
    m->exp->mark = nb_classes + 1;
  }
  if (!split) return 0;
  classes[nb_classes] = split;
  return 1;
}

bool NormNet::exp_nature_cmp(Exp* a, Exp* b) {
  a = through_ref(a);
  b = through_ref(b);
  if (a->nature != b->nature) return false;
  if (a->nature == PROJ_n || a->nature == CALL_n) {
    if (a->param != b->param) return false;
  }
  if (a->nature == CALL_n) {
    // A call with side effects is only ever equal to itself.
    FuncInfo* fa = get_func_info(a->param);
    FuncInfo* fb = get_func_info(b->param);
    if ((fa && fa->unsafe) || (fb && fb->unsafe)) return false;
  }
  return a->arity == b->arity;
}

bool NormNet::exp_bisim(Exp* a, Exp* b, int k) {
  if (!exp_nature_cmp(a, b)) return false;
  if (norm_clock(a) != norm_clock(b)) return false;
  Exp** x = a->operands;
  Exp** y = b->operands;
  if (is_commutative(a->nature)) {
    return (exp_cmp(x[0], y[0], k) && exp_cmp(x[1], y[1], k)) ||
           (exp_cmp(x[1], y[0], k) && exp_cmp(x[0], y[1], k));
  }
  for (int i = 0; i < a->arity; i++)
    if (!exp_cmp(x[i], y[i], k)) return false;
  return true;
}

bool NormNet::exp_cmp(Exp* x, Exp* y, int k) {
  x = through_ref(x);
  y = through_ref(y);
  if (x->mark == 0 || y->mark == 0) return x == y;
  int cx = x->mark > nb_classes ? k : x->mark;
  int cy = y->mark > nb_classes ? k : y->mark;
  return cx == cy;
}

// Boxes are made for every class first, so that a representative can point
// to the representative of any class, its own included (a memory's cycle).
void NormNet::build_representatives() {
  representatives.assign(nb_classes, nullptr);
  for (int c = 0; c < nb_classes; c++) representatives[c] = ctr->getabox();
  for (int c = 0; c < nb_classes; c++) {
    Exp* member = classes[c]->exp;
    Exp* rep = representatives[c];
    type(member);
    ctr->update(rep, member);
    rep->operands = Exp::new_operands(member->arity);
    for (int i = 0; i < member->arity; i++) {
      Exp* o = through_ref(member->operands[i]);
      rep->operands[i] = o->mark > 0 ? representatives[o->mark - 1] : o;
    }
    // The representative stands outside the classes, and gets annotation
    // slots of its own: later passes mark it without touching its member.
    rep->mark = 0;
    rep->infos = nullptr;
    rep->put_int_info(min_key, norm_clock(member));
    ctr->put_in_hash_tab(rep);
  }
}
