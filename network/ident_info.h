// ident_info.h -- the records of declared identifiers and functions, and the
// table that maps symbol keys to them. Identifiers and functions share the
// symbol table's key space: one slot holds either kind of record.
#ifndef NETWORK_IDENT_INFO_H
#define NETWORK_IDENT_INFO_H

#include <vector>

#include <cstdint>

class EcType;
class Exp;
class IntList;
class PtyStream;
class SymbolTable;

enum IdentMode {
  INPUT_ID = 0,
  OUTPUT_ID,
  LOCAL_ID,
  CONST_ID,
  ASSERT_ID,
  BOOL_CONST_ID,
  INT_CONST_ID,
  REAL_CONST_ID,
  ENUM_CONST_ID
};

// What a slot of the symbol information table holds.
class SymbolInfo {
 public:
  explicit SymbolInfo(bool func) : is_func(func) {}
  const bool is_func;
};

class IdentInfo : public SymbolInfo {
 public:
  IdentInfo(IdentMode m, int key, EcType* t, int clock);

  int key;
  int clock;  // key of its clock; -1 for an assertion until computed
  EcType* type;
  IdentMode mode;
  // One 64-bit slot read according to the mode.
  union {
    long long position;  // CONST_ID, ENUM_CONST_ID: rank in the constant list
    long long int_value; // INT_CONST_ID
    float real_value;    // REAL_CONST_ID: single precision, deliberately
    IntList* tuple;      // all the names of the tuple definition binding it
  } value;
  Exp* def;   // defining expression, null until given
  Exp* ref;   // the leaf standing for the identifier (null for assertions)
  void* aux;  // spare pointer of later passes
  int index;  // enum ordinal, or running number among its kind; -1 otherwise
  int line = 0;  // a variable's: the line of its declaration in the ec file
};

class FuncInfo : public SymbolInfo {
 public:
  FuncInfo(int kind, int unsafe, int index, EcType* in, EcType* out, IntList* in_params,
           IntList* out_params);

  // "name: type; name: type" for the names of `params` typed by `t`.
  static void print_params(PtyStream* out, SymbolTable* symbols, IntList* params, EcType* t);

  int kind;    // 0 function with one result, 1 procedure
  int unsafe;  // nonzero: side effects, calls never shared
  int index;   // position in its list (functions and procedures apart)
  EcType* in_type;
  EcType* out_type;
  IntList* in_params;
  IntList* out_params;
};

// Pointers indexed by symbol key, in a chain of chunks that never move.
// Reading a slot through operator[] marks it used, as writing does.
class SymbolInfoArray {
 public:
  SymbolInfoArray(int chunk_size, int base);
  SymbolInfoArray(const SymbolInfoArray&) = delete;
  SymbolInfoArray& operator=(const SymbolInfoArray&) = delete;
  ~SymbolInfoArray();

  // Slot i, creating the chunks up to it. Constant time: the first chunk
  // keeps every chunk in a directory, so a large program's keys do not walk
  // the chain.
  SymbolInfo*& operator[](int i);
  // Slots up to and including the highest one used.
  int size() const;

 private:
  SymbolInfo** slots;
  int chunk_size;
  int max_used;  // highest slot used in this chunk, -1 when none
  int base;
  SymbolInfoArray* next;
  // In the first chunk: the chain's chunks in order, and how many leading
  // ones were gone past (those count as used up to their end).
  std::vector<SymbolInfoArray*> chunks;
  int passed = 0;
};

#endif
