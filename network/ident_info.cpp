// ident_info.cpp -- identifier and function records, and the chunked table
// that maps symbol keys to them. A chunk, once created, never moves, so a
// reference to a slot stays valid while the table grows.
#include "network/ident_info.h"

#include "foundations/int_list.h"
#include "foundations/pty_stream.h"
#include "foundations/symbol_table.h"
#include "network/ec_type.h"

IdentInfo::IdentInfo(IdentMode m, int k, EcType* t, int clk)
    : SymbolInfo(false), key(k), clock(clk), type(t), mode(m), def(nullptr), ref(nullptr),
      aux(nullptr), index(-1) {
  value.position = 0;
}

FuncInfo::FuncInfo(int k, int u, int i, EcType* in, EcType* out, IntList* ins, IntList* outs)
    : SymbolInfo(true), kind(k), unsafe(u), index(i), in_type(in), out_type(out),
      in_params(ins), out_params(outs) {}

void FuncInfo::print_params(PtyStream* out, SymbolTable* symbols, IntList* params, EcType* t) {
  int i = 1;
  for (IntList* p = params; p; p = p->next, i++) {
    int type_name = t->is_tuple ? t->member(i) : t->name;
    out->put("%s%s: %s", i > 1 ? "; " : "", symbols->text(p->value), symbols->text(type_name));
  }
}

SymbolInfoArray::SymbolInfoArray(int size, int b)
    : slots(new SymbolInfo*[size]()), chunk_size(size), max_used(-1), base(b), next(nullptr) {}

SymbolInfoArray::~SymbolInfoArray() {
  delete[] slots;
  delete next;
}

SymbolInfo*& SymbolInfoArray::operator[](int i) {
  int k = i / chunk_size;
  if (chunks.empty()) chunks.push_back(this);
  while (static_cast<int>(chunks.size()) <= k) {
    SymbolInfoArray* last = chunks.back();
    last->next = new SymbolInfoArray(chunk_size, last->base + chunk_size);
    chunks.push_back(last->next);
  }
  // Going past a chunk uses it up to its end.
  for (; passed < k; passed++) chunks[passed]->max_used = chunk_size - 1;
  SymbolInfoArray* chunk = chunks[k];
  i -= k * chunk_size;
  if (i > chunk->max_used) chunk->max_used = i;
  return chunk->slots[i];
}

int SymbolInfoArray::size() const {
  int total = 0;
  const SymbolInfoArray* chunk = this;
  for (; chunk->next; chunk = chunk->next) total += chunk_size;
  return total + chunk->max_used + 1;
}
