// int_list.h -- singly linked lists of ints (symbol keys, indices).
// The empty list is a null pointer. Every node holds the length of the list
// that starts at it: length = 1 + next->length, 1 for the last node. Nodes
// are shared by concatenation, never copied nor freed here.
#ifndef FOUNDATIONS_INT_LIST_H
#define FOUNDATIONS_INT_LIST_H

class IntList {
 public:
  // The list of the n values (n >= 1); this object is its first node.
  IntList(int* values, int n);
  explicit IntList(int v) : value(v), length(1), next(nullptr) {}

  // Links `other` behind the last node; returns that former last node.
  IntList* concat(IntList* other);
  // `list` followed by `other`, either may be null: returns the head of the
  // joined list. Static, since the list it works on may be empty.
  static IntList* append(IntList* list, IntList* other);
  // The list on standard output, ten values a line; must not be empty.
  void print();

  // A node holding v in front of `list` (which may be null): the new head.
  static IntList* push(IntList* list, int v);
  // The same nodes relinked in the opposite order, lengths recounted: the
  // new head. A list built by push() comes back in the order of the pushes.
  static IntList* reverse(IntList* list);

  int value;
  int length;
  IntList* next;
};

// Adds a node holding v at the end of `list` (which becomes that node when
// empty); returns what concat returned, or the new node.
IntList* append_list(IntList*& list, int v);

// Equal lengths and equal values in order.
bool operator==(IntList& a, IntList& b);

#endif
