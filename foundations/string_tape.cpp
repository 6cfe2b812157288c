// string_tape.cpp -- interned texts packed into pages and found by hashing.
#include "foundations/string_tape.h"

#include <cstring>

StringTape::~StringTape() {
  for (STapeHashItem* block : item_blocks) delete[] block;
  delete[] buckets;
  delete page;
}

void StringTape::init(int nb) {
  nb_buckets = nb;
  buckets = new STapeHashItem*[nb]();
  chain_length.assign(nb, 0);
  page = new STapePage(nullptr);
  room = STapePage::ROOM;
  cursor = page->data;
}

// The low nibbles of the characters, concatenated in groups (the first of 7
// characters, the next ones of 8, so that a group fits 32 bits), summed.
unsigned StringTape::hash_code(const char* text) const {
  unsigned sum = 0, group = 0;
  int in_group = 0, group_size = 7;
  for (const char* c = text; *c; c++) {
    group = (group << 4) | (static_cast<unsigned char>(*c) & 15u);
    if (++in_group == group_size) {
      sum += group;
      group = 0;
      in_group = 0;
      group_size = 8;
    }
  }
  sum += group;
  return sum % static_cast<unsigned>(nb_buckets);
}

// FNV-1a over the bytes, 64 bits, folded to 32 so that the high bits,
// where FNV's multiplications carry, mix into the low ones that place it.
uint32_t StringTape::index_hash(const char* text) {
  uint64_t h = 14695981039346656037ull;
  for (const char* c = text; *c; c++) h = (h ^ static_cast<unsigned char>(*c)) * 1099511628211ull;
  return static_cast<uint32_t>(h ^ (h >> 32));
}

STapeHashItem* StringTape::item(int number) const {
  return &item_blocks[(number - 1) / ITEM_BLOCK][(number - 1) % ITEM_BLOCK];
}

STapeHashItem* StringTape::lookup(const char* text, uint32_t h) const {
  if (index.empty()) return nullptr;
  size_t mask = index.size() - 1;
  for (size_t i = h & mask;; i = (i + 1) & mask) {
    const IndexSlot& slot = index[i];
    if (slot.number == 0) return nullptr;
    if (slot.hash == h && strcmp(slot.text, text) == 0) return item(slot.number);
  }
}

void StringTape::index_insert(uint32_t hash, int number, const char* text) {
  if (2 * (static_cast<size_t>(nb_strings) + 1) > index.size()) {
    // Doubled and refilled: each growth moves as many texts as it holds,
    // so growing costs a constant per text.
    std::vector<IndexSlot> old(index.size() < 1024 ? 1024 : 2 * index.size(), IndexSlot{0, 0, nullptr});
    old.swap(index);
    for (const IndexSlot& slot : old)
      if (slot.number) index_place(slot);
  }
  index_place({hash, number, text});
}

void StringTape::index_place(const IndexSlot& slot) {
  size_t mask = index.size() - 1;
  size_t i = slot.hash & mask;
  while (index[i].number) i = (i + 1) & mask;
  index[i] = slot;
}

STapeHashItem* StringTape::new_item(const char* text, unsigned bucket) {
  int number = nb_strings + 1;
  if ((number - 1) % ITEM_BLOCK == 0) item_blocks.push_back(new STapeHashItem[ITEM_BLOCK]);
  STapeHashItem* created = item(number);
  *created = {text, number, buckets[bucket]};
  return created;
}

char* StringTape::place(const char* text, int n) {
  room -= n;
  if (room < 0) {
    page = new STapePage(page);
    cursor = page->data;
    room = STapePage::ROOM - n;
  }
  char* where = cursor;
  memcpy(where, text, n);
  cursor += n;
  return where;
}

// A text that is absent would have been looked for along its whole bucket.
STapeHashItem* StringTape::internal_add(const char* text) {
  uint32_t text_hash = index_hash(text);
  if (STapeHashItem* found = lookup(text, text_hash)) return found;
  unsigned h = hash_code(text);
  int k = chain_length[h];
  if (k == 0) nb_used_buckets++;
  if (k > max_chain) max_chain = k + 1;
  char* copy = place(text, static_cast<int>(strlen(text)) + 1);
  STapeHashItem* created = new_item(copy, h);
  // Indexed before it is counted: the index grows on the count it holds.
  index_insert(text_hash, created->number, copy);
  nb_strings++;
  buckets[h] = created;
  chain_length[h]++;
  return created;
}

STapeHashItem* StringTape::internal_find(const char* text) {
  STapeHashItem* found = lookup(text, index_hash(text));
  if (!found) {
    int k = chain_length[hash_code(text)];
    if (k > max_chain) max_chain = k + 1;
  }
  return found;
}

void StringTape::print_statistics(FILE* f) const {
  fprintf(f, "hash size  : %5d\n", nb_buckets);
  fprintf(f, "occupied   : %5d\n", nb_used_buckets);
  fprintf(f, "coll max   : %5d\n", max_chain);
  fprintf(f, "nb strings : %5d\n", nb_strings);
}
