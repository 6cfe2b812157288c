// int_list.cpp -- singly linked lists of ints with per-node lengths.
#include "foundations/int_list.h"

#include <cstdio>

IntList::IntList(int* values, int n) : value(values[0]), length(n), next(nullptr) {
  IntList* last = this;
  for (int i = 1; i < n; i++) {
    last->next = new IntList(values[i]);
    last->next->length = n - i;
    last = last->next;
  }
}

IntList* IntList::concat(IntList* other) {
  int added = other ? other->length : 0;
  IntList* node = this;
  for (;;) {
    node->length += added;
    if (!node->next) break;
    node = node->next;
  }
  node->next = other;
  return node;
}

IntList* IntList::append(IntList* list, IntList* other) {
  if (!list) return other;
  list->concat(other);
  return list;
}

IntList* append_list(IntList*& list, int v) {
  IntList* node = new IntList(v);
  if (!list) {
    list = node;
    return node;
  }
  return list->concat(node);
}

IntList* IntList::push(IntList* list, int v) {
  IntList* node = new IntList(v);
  node->next = list;
  if (list) node->length = list->length + 1;
  return node;
}

IntList* IntList::reverse(IntList* list) {
  IntList* reversed = nullptr;
  int length = 0;
  while (list) {
    IntList* next = list->next;
    list->next = reversed;
    list->length = ++length;
    reversed = list;
    list = next;
  }
  return reversed;
}

bool operator==(IntList& a, IntList& b) {
  if (a.length != b.length) return false;
  for (IntList *x = &a, *y = &b; x; x = x->next, y = y->next)
    if (x->value != y->value) return false;
  return true;
}

void IntList::print() {
  printf("{ %d", value);
  int count = 1;
  for (IntList* node = next; node; node = node->next, count++)
    printf(count % 10 == 0 ? ",\n%d" : ", %d", node->value);
  printf(" }\n");
}
