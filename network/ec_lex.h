// ec_lex.h -- the hand-written lexer of ec files.
// One file at a time: the state (input, lookahead, line) is global and the
// lexer is not re-entrant. Token codes are those of the generated parser.
#ifndef NETWORK_EC_LEX_H
#define NETWORK_EC_LEX_H

#include <cstdio>

class SymbolTable;

namespace ec {

extern FILE* input;  // the open ec file
extern int carcour;  // lookahead character, -1 at end of file
extern int yyline;   // current line, from 1
extern int token_line;  // the line where the last token began

// Reads the next character into *c and returns it; counts lines and
// characters, and traces NUL characters ("ICI (car %d)").
int GetChar(int* c);
// Starts reading `input`: line 1 and the first character as lookahead.
// Returns true when the file is not empty.
bool yylexInit();

}  // namespace ec

// The next token code, -1 at end of file; identifiers, literals and the
// type and boolean keywords leave a malloc'ed copy of their text in
// ec_lval.text, which the receiver frees. Lexical errors end the process.
int ec_lex();
// The parser's error report, on standard output with the current line.
void ec_error(const char* msg);
// Prints the token stream of the file at `path`, one token a line.
void EcLexTest(SymbolTable* symbols, const char* path);

#endif
