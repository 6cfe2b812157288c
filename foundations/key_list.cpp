// key_list.cpp -- keys linked at the tail in constant time, lengths counted
// on reading.
#include "foundations/key_list.h"

void KeyList::append(int key) {
  IntList* node = new IntList(key);
  if (tail)
    tail->next = node;
  else
    head = node;
  tail = node;
  count++;
  stale = true;
}

void KeyList::prepend(int key) {
  IntList* node = new IntList(key);
  node->next = head;
  node->length = count + 1;
  head = node;
  if (!tail) tail = node;
  count++;
}

IntList* KeyList::list() {
  if (stale) {
    int length = count;
    for (IntList* node = head; node; node = node->next) node->length = length--;
    stale = false;
  }
  return head;
}
