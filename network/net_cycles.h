// net_cycles.h -- the refusal of a program whose variables depend on one
// another within an instant: a cycle of definitions that passes through no
// `pre` has no meaning, and the evaluator could not order it.
#ifndef NETWORK_NET_CYCLES_H
#define NETWORK_NET_CYCLES_H

class Net;

// Fatal Error naming the variables of one such cycle in order, with the
// line of the first one's equation ("f.ec:3: 'x' depends on itself within
// an instant: x -> b -> x"). A variable depends on those its equation reads
// outside a `pre` and on its clock; `current` also reads the clock of its
// operand. A cycle of plain renamings (x = y; y = x) is left to the
// normaliser, which has always reported it as a variable defined by itself.
// The program must be well clocked.
void check_instant_cycles(Net* net, const char* file);

#endif
