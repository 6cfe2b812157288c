// ec_type.h -- the types of a program network.
// Types are compared by identity: the network creates each named type and
// each tuple of component names once, so equal types are one object.
#ifndef NETWORK_EC_TYPE_H
#define NETWORK_EC_TYPE_H

class IntList;
class IdentInfo;

class EcType {
 public:
  // A named type of key `name`.
  EcType(int name, EcType* next);
  // A tuple type whose components are the named types of `components`.
  EcType(IntList* components, EcType* next);

  bool is_named() const { return !is_tuple; }
  // The name key of component i (from 1) of a tuple type; internal error
  // when this is a named type.
  int member(int i) const;
  // For an enumeration: the room for `count` values, all null.
  void make_enum(int count);

  int number;               // 0 for predefined types, 1, 2, ... for user types
  IntList* consts;          // user constants of this type, in declaration order
  int enum_count;           // 0 unless an enumeration
  IdentInfo** enum_values;  // enum_count records, by ordinal
  int is_tuple;             // 0 named, 1 tuple
  int name;                 // named type: key of its name (0 for a tuple)
  IntList* components;      // tuple type: name keys of its components
  EcType* next;             // the network's chain, newest first
};

#endif
