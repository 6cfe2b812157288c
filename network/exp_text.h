// exp_text.h -- an expression as the user would write it in an ec file, with
// only the parentheses its operators' precedences need, for messages.
#ifndef NETWORK_EXP_TEXT_H
#define NETWORK_EXP_TEXT_H

#include <string>

class Exp;
class Net;

// The ec text of e, which parses back to the same node shapes: "a + b * c",
// "(a + b) * c", "real x". Nodes of the normalised form print as their
// nature's name.
std::string exp_text(Net* net, Exp* e);

// "int" or "real" when e is a call of the conversion that the parser makes
// of "int x" or "real x", else null.
const char* conversion_keyword(Net* net, Exp* e);

#endif
