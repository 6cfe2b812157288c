// symbol_table.cpp -- texts interned once and numbered densely from 1.
#include "foundations/symbol_table.h"

#include <cstring>

StringArray::Chunk::Chunk(int sz, int b)
    : entries(new const char*[sz]()), size(sz), next(nullptr), max_used(-1), base(b) {}

StringArray::Chunk::~Chunk() {
  delete[] entries;
  delete next;
}

StringArray::StringArray(int chunk_size) : head(new Chunk(chunk_size, 0)) {}

StringArray::~StringArray() { delete head; }

const char*& StringArray::at(int p) {
  int k = p / head->size;
  if (chunks.empty()) chunks.push_back(head);
  while (static_cast<int>(chunks.size()) <= k) {
    Chunk* last = chunks.back();
    last->next = new Chunk(last->size, last->base + last->size);
    chunks.push_back(last->next);
  }
  // Going past a chunk uses it up to its end.
  for (; passed < k; passed++) chunks[passed]->max_used = chunks[passed]->size - 1;
  Chunk* c = chunks[k];
  p -= k * c->size;
  if (c->max_used < p) c->max_used = p;
  return c->entries[p];
}

int StringArray::nb_chunks() const {
  int n = 0;
  for (const Chunk* c = head; c; c = c->next) n++;
  return n;
}

SymbolTable::SymbolTable(int chunk, int nb_buckets)
    : tape(new StringTape), chunk_size(chunk), index(chunk) {
  tape->init(nb_buckets);
}

int SymbolTable::register_text(const char* text) {
  STapeHashItem* item = tape->internal_add(text);
  if (item->number <= nb_symbols) return item->number;
  nb_symbols++;
  index.at(nb_symbols - 1) = item->text;
  return item->number;
}

int SymbolTable::add(const char* fmt, ...) {
  char buffer[10240];
  va_list ap;
  va_start(ap, fmt);
  if (fmt[0] == '%' && fmt[1] == 's' && fmt[2] == 0) {
    // A plain text, the parsers' every identifier: no formatting needed
    // when it fits the buffer that formatting would cut it to.
    const char* text = va_arg(ap, const char*);
    va_end(ap);
    if (strlen(text) < sizeof buffer) return register_text(text);
    return add("%.*s", static_cast<int>(sizeof buffer - 1), text);
  }
  vsnprintf(buffer, sizeof buffer, fmt, ap);
  va_end(ap);
  return register_text(buffer);
}

int SymbolTable::vadd(const char* fmt, va_list ap) {
  char buffer[1024];
  vsnprintf(buffer, sizeof buffer, fmt, ap);
  return register_text(buffer);
}

int SymbolTable::find(const char* fmt, ...) {
  char buffer[1024];
  va_list ap;
  va_start(ap, fmt);
  vsnprintf(buffer, sizeof buffer, fmt, ap);
  va_end(ap);
  STapeHashItem* item = tape->internal_find(buffer);
  return item ? item->number : 0;
}

int SymbolTable::find_then_add(int* id, const char* fmt, ...) {
  char buffer[1024];
  va_list ap;
  va_start(ap, fmt);
  vsnprintf(buffer, sizeof buffer, fmt, ap);
  va_end(ap);
  int before = nb_symbols;
  *id = register_text(buffer);
  return *id <= before;
}

int SymbolTable::find_then_get(int* id, const char* fmt, ...) {
  char buffer[1024];
  va_list ap;
  va_start(ap, fmt);
  vsnprintf(buffer, sizeof buffer, fmt, ap);
  va_end(ap);
  STapeHashItem* item = tape->internal_find(buffer);
  if (!item) return 0;
  *id = item->number;
  return 1;
}

const char* SymbolTable::iterate() {
  if (iter >= nb_symbols) return nullptr;
  return index.at(iter++);
}

void SymbolTable::print() {
  for (int k = 1; k <= nb_symbols; k++) printf("symbol[%3d]= \"%s\"\n", k, text(k));
}
