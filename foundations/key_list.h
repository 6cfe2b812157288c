// key_list.h -- a list of keys in the order they were added, read as an
// IntList. An IntList keeps in every node the length of the list from that
// node on, so appending to one costs its whole length: a program of n
// declarations would take n * n / 2 steps to list. A KeyList links each key
// at its tail at once and counts the lengths only when the list is read.
#ifndef FOUNDATIONS_KEY_LIST_H
#define FOUNDATIONS_KEY_LIST_H

#include "foundations/int_list.h"

class KeyList {
 public:
  void append(int key);
  void prepend(int key);
  // The keys in order, every node's length exact; null when empty. The
  // nodes stay the list's own: later additions relink them.
  IntList* list();
  int length() const { return count; }
  void clear() { head = tail = nullptr, count = 0, stale = false; }

 private:
  IntList* head = nullptr;
  IntList* tail = nullptr;
  int count = 0;
  bool stale = false;  // some node's length predates the last additions
};

#endif
