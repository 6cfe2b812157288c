// net_check.h -- what a parsed ec program must satisfy before it is
// normalised: one node, variables declared once on declared boolean clocks,
// each equation defining an output or a local once, well typed and well
// clocked, and no cycle within an instant. Programs are written by hand, so
// nothing downstream may assume more than these checks establish.
#ifndef NETWORK_NET_CHECK_H
#define NETWORK_NET_CHECK_H

class Net;

// Refuses the program parsed from `file` into `net` when it breaks one of
// the rules above: a fatal Error whose message names the file and, for a
// declaration or an equation, its line, the variable and what is wrong in
// the terms of the ec text ("f.ec:7: 'b' = a + f: '+' needs int or real
// operands, f is bool"). Returns only for a well-formed program. Errors that
// the normaliser and the evaluator report themselves (an undefined variable
// or an undeclared clock of an output or a local, an assertion that is not
// boolean, an operator or a function the evaluator lacks) are left to them.
// Each operator on a clock keeps the clock inferred for it, which the
// normaliser reads.
void check_program(Net* net, const char* file);

#endif
