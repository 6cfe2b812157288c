// random_state.h -- the state of the C library's generator, which random_int
// and random_bool draw from, saved and restored whole: going back in a
// program's history must draw the same numbers again.
#ifndef ECEXE_RANDOM_STATE_H
#define ECEXE_RANDOM_STATE_H

#include <array>

// The generator's whole state: its table and its place in it.
using RandomState = std::array<char, 128>;

// The state now. The first call moves the generator onto a table of ours,
// where it goes on with the same sequence.
RandomState save_random_state();
// Puts back a state save_random_state gave: the next draws are those that
// followed it.
void restore_random_state(const RandomState& state);

#endif
