// iop_lexer.h -- the lexical level of panel descriptions and the state that
// the generated parser shares with it: the file being read, its line
// counter, and the panel being filled. One description is read at a time.
#ifndef PANEL_IOP_LEXER_H
#define PANEL_IOP_LEXER_H

#include <cstdio>

#include "panel/iop_parse.hpp"

class IOPanel;

// Starts reading `f` into `panel`: line 1, first character read ahead.
// False when the file is empty.
bool iop_parse_init(IOPanel* panel, FILE* f);
// The next character of the file (EOF at its end); counts line feeds.
int iop_getc();
// The line of the character read ahead.
int iop_line();
// The panel being filled.
IOPanel* iop_panel();

// The next token for the parser: its code, with the symbol key of an
// identifier or string in iop_parse_lval.key; 0 at the end of the file.
// Lexical errors are fatal.
int iop_parse_lex();
// Reports a parser message with the current line on standard error.
void iop_parse_error(const char* message);

// The text of a keyword or punctuation token code; null for another code.
const char* iop_keyword(int token);

#endif
