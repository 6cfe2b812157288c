// random_state.cpp -- saving and restoring the generator of random().
// The C library keeps the generator's place outside its table and writes it
// into the table's first word only when setstate switches to another table;
// so a state is read, or written, while a spare table is the current one.
#include "ecexe/random_state.h"

#include <cstdlib>
#include <cstring>

namespace {

RandomState live;   // the generator's table, once taken over
RandomState spare;  // current only while `live` is read or written
bool taken = false;

// The default generator uses a table of exactly this size: copying it onto
// ours, with its place, keeps the sequence.
void take_over() {
  if (taken) return;
  taken = true;
  char* previous = initstate(1, spare.data(), spare.size());
  memcpy(live.data(), previous, live.size());
  setstate(live.data());
}

}  // namespace

RandomState save_random_state() {
  take_over();
  setstate(spare.data());
  RandomState state = live;
  setstate(live.data());
  return state;
}

void restore_random_state(const RandomState& state) {
  take_over();
  setstate(spare.data());
  live = state;
  setstate(live.data());
}
