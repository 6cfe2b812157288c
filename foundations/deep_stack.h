// deep_stack.h -- running a recursive pass on a stack as deep as the
// program it walks. The passes over a network (parsing nested expressions,
// normalisation, types and clocks, building the items) recurse once per
// node of the longest chain of definitions, and a machine-generated program
// may chain 100,000 equations: far more than the 8 MB a process starts with.
#ifndef FOUNDATIONS_DEEP_STACK_H
#define FOUNDATIONS_DEEP_STACK_H

#include <functional>

// Runs `pass` to its end on a thread with a 1 GB stack (only the pages it
// touches take memory) and returns when it has ended; the calling thread
// waits meanwhile, so the pass may use everything the caller could. Called
// from such a pass, or when no such thread can be made, runs it in place.
// An exception that escapes the pass is thrown again in the caller.
void run_on_deep_stack(const std::function<void()>& pass);

#endif
