// string_tape.h -- interned texts packed into pages and found by hashing.
// Texts are numbered from 1 in order of storage and never move or disappear,
// so the pointers handed out stay valid for the tape's whole life.
#ifndef FOUNDATIONS_STRING_TAPE_H
#define FOUNDATIONS_STRING_TAPE_H

#include <cstdint>
#include <cstdio>
#include <vector>

// A page of the tape: a link to the previously filled page and the data.
struct STapePage {
  static const int DATA_SIZE = 16384;
  static const int ROOM = 16380;  // a fresh page offers this much; 4 bytes stay unused
  STapePage* previous;
  char data[DATA_SIZE];
  explicit STapePage(STapePage* prev) : previous(prev) {}
  ~STapePage() { delete previous; }
};

// One stored text, chained in its bucket. Items live in the tape's item
// blocks, in order of storage, and go with the tape.
struct STapeHashItem {
  const char* text;
  int number;
  STapeHashItem* next;
};

class StringTape {
 public:
  StringTape() = default;
  StringTape(const StringTape&) = delete;
  StringTape& operator=(const StringTape&) = delete;
  ~StringTape();

  // Allocates the bucket array and the first page.
  void init(int nb_buckets);

  // The item holding `text`, stored first if new.
  STapeHashItem* internal_add(const char* text);
  // The item holding `text`, or null; stores nothing.
  STapeHashItem* internal_find(const char* text);

  unsigned hash_code(const char* text) const;
  void print_statistics(FILE* f) const;

  int strings() const { return nb_strings; }
  int used_buckets() const { return nb_used_buckets; }
  int longest_chain() const { return max_chain; }
  int room_left() const { return room; }

 private:
  // The item holding `text`, whose index hash is `h`, or null.
  STapeHashItem* lookup(const char* text, uint32_t h) const;
  // Copies `text` (n bytes with its terminator) into the tape.
  char* place(const char* text, int n);

  STapeHashItem** buckets = nullptr;
  int nb_buckets = 0;
  // The buckets' lengths, and every item by its text: the buckets keep the
  // statistics, but a large program has so many texts per bucket that
  // walking them for each identifier made reading quadratic. The index is
  // open-addressed; a slot holds the text's hash, its number and the text
  // itself, so that a lookup in a large table touches one slot and one
  // text, and the item only once found (items are stored densely by number,
  // so the items of recent texts stay in the cache).
  struct IndexSlot {
    uint32_t hash;
    int number;  // 0: free
    const char* text;
  };
  static uint32_t index_hash(const char* text);
  void index_insert(uint32_t hash, int number, const char* text);
  void index_place(const IndexSlot& slot);
  STapeHashItem* item(int number) const;
  // A new item numbered after the last one, pushed on bucket `bucket`.
  STapeHashItem* new_item(const char* text, unsigned bucket);
  std::vector<int> chain_length;
  std::vector<IndexSlot> index;  // a power of two long, at most half full
  static const int ITEM_BLOCK = 4096;
  std::vector<STapeHashItem*> item_blocks;
  int nb_strings = 0;
  int nb_used_buckets = 0;
  // Raised only when a chain longer than it is walked, and then to one more
  // than the length walked: a loose statistic that print_statistics shows.
  int max_chain = 0;
  STapePage* page = nullptr;
  int room = 0;
  char* cursor = nullptr;
};

#endif
