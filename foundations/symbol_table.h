// symbol_table.h -- texts interned once and numbered densely from 1.
// Every name in the system travels as its symbol, an int key; 0 means "no
// such symbol". The text of symbol k is at position k - 1 of the index.
#ifndef FOUNDATIONS_SYMBOL_TABLE_H
#define FOUNDATIONS_SYMBOL_TABLE_H

#include <vector>

#include <cstdarg>
#include <cstdio>

#include "foundations/errors.h"
#include "foundations/string_tape.h"

// A growable array of text pointers kept in a chain of fixed-size chunks, so
// that growing never moves an entry. Reading a position grows the array just
// as writing does.
class StringArray {
 public:
  struct Chunk {
    const char** entries;
    int size;
    Chunk* next;
    int max_used;  // highest position written or read in this chunk, -1 when fresh
    int base;      // position of entries[0] in the whole array
    Chunk(int sz, int b);
    ~Chunk();
  };

  explicit StringArray(int chunk_size);
  StringArray(const StringArray&) = delete;
  StringArray& operator=(const StringArray&) = delete;
  ~StringArray();

  // The slot at position p, appending chunks as needed. Constant time: the
  // chunks are also kept in a directory.
  const char*& at(int p);
  int nb_chunks() const;
  const Chunk* first() const { return head; }

 private:
  Chunk* head;
  std::vector<Chunk*> chunks;  // the chain, in order
  int passed = 0;              // leading chunks gone past, used up to their end
};

class SymbolTable {
 public:
  SymbolTable(int chunk_size, int nb_buckets);
  SymbolTable(const SymbolTable&) = delete;
  SymbolTable& operator=(const SymbolTable&) = delete;

  // The symbol of the formatted text, registered if new.
  int add(const char* fmt, ...) TAVIK_PRINTF(2, 3);
  int vadd(const char* fmt, va_list ap);
  // The text's number in the tape, or 0 if never stored; stores nothing.
  int find(const char* fmt, ...) TAVIK_PRINTF(2, 3);
  // *id = the symbol, registered if new; 1 if it existed already, else 0.
  int find_then_add(int* id, const char* fmt, ...) TAVIK_PRINTF(3, 4);
  // 1 and *id = the symbol if the text is known; else 0, *id untouched.
  int find_then_get(int* id, const char* fmt, ...) TAVIK_PRINTF(3, 4);

  // The text of symbol k (1 <= k), owned by the table.
  const char* text(int k) { return index.at(k - 1); }
  const char* operator[](int k) { return text(k); }
  int size() const { return nb_symbols; }

  void init_iterate() { iter = 0; }
  // The text at the cursor, then advances; null after the last symbol.
  const char* iterate();

  void print();
  void print_statistics(FILE* f) const { tape->print_statistics(f); }
  const StringTape& string_tape() const { return *tape; }
  const StringArray& string_array() const { return index; }

 private:
  int register_text(const char* text);

  int nb_symbols = 0;
  int iter = 0;
  StringTape* tape;
  [[maybe_unused]] int chunk_size;  // as given; the index is made of chunks of this size
  StringArray index;
};

#endif
