// norm_print.h -- the normalised network of an interface printed for a user:
// each node the evaluator will build once, with what it stands for. The
// printed order follows the interface and the operands only, so it does not
// change with the numbering of classes or the addresses of nodes.
#ifndef NORMALISE_NORM_PRINT_H
#define NORMALISE_NORM_PRINT_H

#include <vector>

class Exp;
class NetInterface;
class PtyStream;

// The nodes reached from the interface (inputs, outputs, assertions, then
// locals, each in declaration order), following operands in order: each
// node once, at the point where a depth-first walk first meets it. Leaves
// are included.
std::vector<Exp*> norm_walk(const NetInterface* ni);

// Prints "node <name>", then one line per operator node of norm_walk, as
//   #k = NATURE_n(operands) on <clock> : what it stands for
// where operator operands are "#k" and leaves their names or literals;
// a leaf that stands for something gets a line "<name> on <clock> : ...".
// Ends with "<n> nodes, <c> classes": the normalised node and class counts.
void print_norm_net(PtyStream* out, const NetInterface* ni);

#endif
