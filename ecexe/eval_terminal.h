// eval_terminal.h -- the items at the ends of the graph: constants and
// inputs (no operands) and outputs (an expression sampled on a clock).
// Outputs are the top items: the evaluator demands them, and assertions are
// boolean outputs. Their value field is the location the panel reads.
#ifndef ECEXE_EVAL_TERMINAL_H
#define ECEXE_EVAL_TERMINAL_H

#include "ecexe/eval_item.h"

// Constants hold the value given at construction and are defined. A
// declared constant, whose value the evaluator does not know, is built the
// same way and then given status nil by the builder; a history reset makes
// any constant defined again. Real literals are passed as the widened
// single-precision value of the literal: this item adds no rounding.
class ConstItem : public EvalItem {
 public:
  void local_reset() override;
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;

 protected:
  explicit ConstItem(EvalItemType type) : EvalItem(type, 0) { status = EI_DEFINED; }
};

class CONST_bool_EI : public ConstItem {
 public:
  explicit CONST_bool_EI(bool v) : ConstItem(EI_bool) { value.i = v; }
};

class CONST_int_EI : public ConstItem {
 public:
  explicit CONST_int_EI(int32_t v) : ConstItem(EI_int) { value.i = v; }
};

class CONST_double_EI : public ConstItem {
 public:
  explicit CONST_double_EI(double v) : ConstItem(EI_double) { value.d = v; }
};

class CONST_extern_EI : public ConstItem {
 public:
  CONST_extern_EI(int type_name, uintptr_t v) : ConstItem(EI_extern), type_name(type_name) {
    value.x = v;
  }
  int extern_type_name() override { return type_name; }
  const int type_name;
};

// An input's value is whatever the caller wrote into `value` before the
// instant; computing it only declares it defined. Fresh or reset, it is nil.
// `ident` is the symbol of the input's name.
class InputItem : public EvalItem {
 public:
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
  const int ident;

 protected:
  InputItem(EvalItemType type, int ident) : EvalItem(type, 0), ident(ident) {}
};

class INPUT_bool_EI : public InputItem {
 public:
  explicit INPUT_bool_EI(int ident) : InputItem(EI_bool, ident) {}
};

class INPUT_int_EI : public InputItem {
 public:
  explicit INPUT_int_EI(int ident) : InputItem(EI_int, ident) {}
};

class INPUT_double_EI : public InputItem {
 public:
  explicit INPUT_double_EI(int ident) : InputItem(EI_double, ident) {}
};

class INPUT_extern_EI : public InputItem {
 public:
  INPUT_extern_EI(int ident, int type_name) : InputItem(EI_extern, ident), type_name(type_name) {}
  int extern_type_name() override { return type_name; }
  const int type_name;
};

// Operands 0 the expression, 1 its clock. At an instant where the clock is
// false the output is absent (is_bottom) and keeps the value and status it
// had; otherwise it takes the expression's. A clock that is not defined
// ends the process ("clock takes on nil"), except for an item that shows a
// local: that local is then undefined, with the clock's status, because
// looking at a local must never stop a program that runs without it.
class OutputItem : public EvalItem {
 public:
  void compute(unsigned key) override { demand_operands(key); combine(); }
  void combine() override;
  int is_bottom() override { return absent; }
  int absent;
  bool shows_local = false;

 protected:
  explicit OutputItem(EvalItemType type) : EvalItem(type, 2), absent(0) {}
};

class OUTPUT_bool_EI : public OutputItem {
 public:
  OUTPUT_bool_EI() : OutputItem(EI_bool) {}
};

class OUTPUT_int_EI : public OutputItem {
 public:
  OUTPUT_int_EI() : OutputItem(EI_int) {}
};

class OUTPUT_double_EI : public OutputItem {
 public:
  OUTPUT_double_EI() : OutputItem(EI_double) {}
};

class OUTPUT_extern_EI : public OutputItem {
 public:
  explicit OUTPUT_extern_EI(int type_name) : OutputItem(EI_extern), type_name(type_name) {}
  int extern_type_name() override { return type_name; }
  const int type_name;
};

#endif
