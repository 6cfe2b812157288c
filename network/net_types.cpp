// net_types.cpp -- the type and the clock of a node, computed on first
// demand and cached in the node. While a type is being computed the node
// holds a marker, so a node whose type depends on itself is reported.
#include "network/net.h"

#include <vector>

#include "foundations/errors.h"
#include "foundations/int_list.h"
#include "foundations/symbol_table.h"

// The in-progress marker: an object that is never one of a network's types.
static EcType type_in_progress(0, nullptr);

EcType* Net::type(Exp* e) {
  if (e->type == &type_in_progress) IError("Net::type : infinite loop");
  if (e->type) return e->type;
  e->type = &type_in_progress;
  e->type = compute_type(e);
  return e->type;
}

// The type of a tuple: its operands' names, a named type for one operand.
static std::vector<int> operand_type_names(Net* net, Exp* e) {
  std::vector<int> names;
  for (int i = 0; i < e->arity; i++) names.push_back(net->type(e->operands[i])->name);
  return names;
}

EcType* Net::compute_type(Exp* e) {
  switch (e->nature) {
    case EQUAL_n: case NEQ_n: case GTE_n: case GT_n: case LTE_n: case LT_n:
    case NOR_n: case DIESE_n: case EXACTONE:
      return bool_type;
    case IF_n:
      return type(e->operands[1]);
    case CALL_n: {
      FuncInfo* f = get_func_info(e->param);
      if (!f) IError("file net_types:\nNet::type : '%s' is no function\n", symbols->text(e->param));
      return f->out_type;
    }
    case TUPLE_n: {
      std::vector<int> names = operand_type_names(this, e);
      return define_type(names.data(), static_cast<int>(names.size()));
    }
    case PROJ_n: {
      EcType* t = type(e->operands[0]);
      if (!t->is_tuple) IError("file net\n EcType::member() called on non tuple type\n");
      return define_type(t->member(e->projection_order()));
    }
    case RCL_n:
      return real_type;
    case ICL_n:
      return int_type;
    default:
      break;
  }
  if (e->arity < 1) IError("file net_types:\nNet::type '%s' is not implemented\n", nodekey(e->nature));
  return type(e->operands[0]);
}

int Net::clock(Exp* e) {
  if (e->clock != -1) return e->clock;
  switch (e->nature) {
    case CURRENT_n: {
      int k = clock(e->operands[0]);
      IdentInfo* info = get_ident_info(k);
      if (!info) IError("file net_types:\nNet::clock : undeclared clock '%s'\n", symbols->text(k));
      e->clock = info->clock;
      return e->clock;
    }
    case WHEN_n:
      e->clock = when_clock(e);
      return e->clock;
    default:
      break;
  }
  if (e->arity < 1) IError("file net_types:\nNet::clock '%s' is not implemented\n", nodekey(e->nature));
  e->clock = clock(e->operands[0]);
  return e->clock;
}

int Net::when_clock(Exp* e) {
  if (e->operands[1]->ident == 0) Error("The clock operand of 'when' operator must be named\n");
  return e->operands[1]->ident;
}
