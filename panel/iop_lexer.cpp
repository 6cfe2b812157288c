// iop_lexer.cpp -- tokens of panel descriptions, read byte by byte with one
// character of look-ahead. Identifiers and strings are interned in the
// panel's symbol table and travel as their keys.
#include "panel/iop_lexer.h"

#include <cctype>
#include <cstring>

#include "foundations/errors.h"
#include "panel/io_panel.h"

namespace {

// Longest word or string kept; a longer one is a lexical error.
const int TOKEN_MAX = 4096;

FILE* iop_file = nullptr;
IOPanel* iop_target = nullptr;
int iop_line_nb = 1;
int look = EOF;  // the character read ahead

struct Keyword {
  const char* text;
  int token;
};

// Shared by the lexer (words) and the writer (every keyword it writes).
const Keyword KEYWORDS[] = {
    {"module", IOP_MODULE}, {"inputs", IOP_INPUTS}, {"outputs", IOP_OUTPUTS},
    {"panels", IOP_PANELS}, {"line", IOP_LINE},     {"col", IOP_COL},
    {"box", IOP_BOX},       {"popup", IOP_POPUP},   {"top", IOP_TOP},
    {",", ','}, {":", ':'}, {";", ';'}, {"{", '{'}, {"}", '}'}, {"=", '='}, {"$", '$'},
};

void advance() { look = iop_getc(); }

bool is_word_char(int c) { return c != EOF && (isalnum(c) || c == '-' || c == '.' || c == '_'); }

bool is_punctuation(int c) { return c != EOF && c != 0 && strchr(",:;{}=$", c); }

[[noreturn]] void unterminated(const char* what) {
  Error("lexical error : unterminated %s, line '%d'\n", what, iop_line_nb);
}

// After "/*": up to the first "*/", the opening star included, so that
// "/*/" is a whole comment.
void skip_block_comment() {
  bool star = true;
  for (;;) {
    int c = look;
    if (c == EOF) unterminated("comment");
    advance();
    if (star && c == '/') return;
    star = c == '*';
  }
}

void skip_line_comment() {
  while (look != EOF && look != '\n') advance();
}

// After a '/': the rest of a comment, or the two-character error.
void skip_comment() {
  int second = look;
  if (second == '*') {
    advance();
    skip_block_comment();
    return;
  }
  if (second == '/') {
    skip_line_comment();
    return;
  }
  char pair[3] = {'/', static_cast<char>(second == EOF ? '\0' : second), '\0'};
  Error("lexical error : bad sequence '%s', line '%d'\n", pair, iop_line_nb);
}

void keep(char* buffer, int& n, int c) {
  if (n >= TOKEN_MAX) Error("lexical error : token too long, line '%d'\n", iop_line_nb);
  buffer[n++] = static_cast<char>(c);
}

int intern(const char* text) { return iop_target->symbols->add("%s", text); }

int read_word() {
  static char buffer[TOKEN_MAX + 1];
  int n = 0;
  while (is_word_char(look)) {
    keep(buffer, n, look);
    advance();
  }
  buffer[n] = '\0';
  for (const Keyword& k : KEYWORDS)
    if (strcmp(k.text, buffer) == 0) return k.token;
  iop_parse_lval.key = intern(buffer);
  return IOP_IDENT;
}

// After the opening quote. \" stands for a quote; any other backslash is
// kept with the character after it.
int read_string() {
  static char buffer[TOKEN_MAX + 1];
  int n = 0;
  for (;;) {
    int c = look;
    if (c == EOF) unterminated("string");
    advance();
    if (c == '"') break;
    if (c == '\\') {
      if (look == EOF) unterminated("string");
      if (look != '"') keep(buffer, n, '\\');
      c = look;
      advance();
    }
    keep(buffer, n, c);
  }
  buffer[n] = '\0';
  iop_parse_lval.key = intern(buffer);
  return IOP_STRING;
}

}  // namespace

bool iop_parse_init(IOPanel* panel, FILE* f) {
  iop_target = panel;
  iop_file = f;
  iop_line_nb = 1;
  advance();
  return look != EOF;
}

int iop_getc() {
  int c = getc(iop_file);
  if (c == '\n') iop_line_nb++;
  return c;
}

int iop_line() { return iop_line_nb; }

IOPanel* iop_panel() { return iop_target; }

int iop_parse_lex() {
  for (;;) {
    int c = look;
    if (c == EOF) return 0;
    if (isspace(c)) {
      advance();
      continue;
    }
    if (c == '/') {
      advance();
      skip_comment();
      continue;
    }
    if (c == '"') {
      advance();
      return read_string();
    }
    if (is_word_char(c)) return read_word();
    if (is_punctuation(c)) {
      advance();
      return c;
    }
    Error("lexical error : unknown char '%c'='%d', line '%d'\n", c, c, iop_line_nb);
  }
}

void iop_parse_error(const char* message) { fprintf(stderr, "%s   line %d\n", message, iop_line_nb); }

const char* iop_keyword(int token) {
  for (const Keyword& k : KEYWORDS)
    if (k.token == token) return k.text;
  return nullptr;
}
