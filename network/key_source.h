// key_source.h -- the process-wide source of marking keys. Every pass that
// marks network nodes, and the evaluator, takes its keys here, so a key
// never means two things: keys are strictly increasing, the first is 1.
#ifndef NETWORK_KEY_SOURCE_H
#define NETWORK_KEY_SOURCE_H

// The last key handed out; 0 before the first call.
extern unsigned current_key;

// Increments current_key and returns it.
unsigned take_a_key();

#endif
