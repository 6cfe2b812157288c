// chain.h -- freeing a singly linked chain of nodes that own no successor.
// Node types link through a public `next` field; their destructors must not
// delete `next` themselves.
#ifndef FOUNDATIONS_CHAIN_H
#define FOUNDATIONS_CHAIN_H

// Deletes `node` and every node after it, iteratively (no deep recursion).
template <typename Node>
void delete_chain(Node* node) {
  while (node) {
    Node* next = node->next;
    delete node;
    node = next;
  }
}

#endif
