// ec_type.cpp -- named, tuple and enumerated types.
// A tuple type only lists the names of its components; the components
// themselves are the named types of those names in the same network.
#include "network/ec_type.h"

#include "foundations/errors.h"
#include "foundations/int_list.h"

EcType::EcType(int n, EcType* nx)
    : number(0), consts(nullptr), enum_count(0), enum_values(nullptr), is_tuple(0), name(n),
      components(nullptr), next(nx) {}

EcType::EcType(IntList* comps, EcType* nx)
    : number(0), consts(nullptr), enum_count(0), enum_values(nullptr), is_tuple(1), name(0),
      components(comps), next(nx) {}

int EcType::member(int i) const {
  if (!is_tuple) IError("file net\n EcType::member() called on non tuple type\n");
  IntList* l = components;
  for (int k = 1; k < i && l; k++) l = l->next;
  if (!l || i < 1) IError("file net\n EcType::member() : no component %d\n", i);
  return l->value;
}

void EcType::make_enum(int count) {
  enum_count = count;
  enum_values = new IdentInfo*[count > 0 ? count : 1]();
}
