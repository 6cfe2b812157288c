// ec_lex.cpp -- the ec lexer: blanks, comments "(* *)" and "--", numbers,
// identifiers and keywords, one- and two-character operators. It reads one
// character ahead (carcour) and never pushes a character back.
#include "network/ec_lex.h"
#include "foundations/errors.h"

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unordered_map>

#include "network/ec_parse.h"

namespace ec {

FILE* input = nullptr;
int carcour = EOF;
int yyline = 1;
int token_line = 1;
static int nb_chars = 0;

int GetChar(int* c) {
  // One thread reads the file: the stream need not be locked per character.
  *c = getc_unlocked(input);
  if (*c == EOF) return *c;
  nb_chars++;
  if (*c == '\n') yyline++;
  if (*c == 0) printf("ICI (car %d)\n", nb_chars);
  return *c;
}

bool yylexInit() {
  yyline = 1;
  token_line = 1;
  nb_chars = 0;
  return GetChar(&carcour) != EOF;
}

}  // namespace ec

using ec::carcour;
using ec::GetChar;

namespace {

struct Keyword {
  const char* text;
  int code;
  bool keeps_text;
};

const Keyword Keywords[] = {
    {"and", EC_AND, false},         {"assert", EC_ASSERT, false},
    {"bool", EC_BOOL, true},        {"const", EC_CONST, false},
    {"current", EC_CURRENT, false}, {"div", EC_DIV, false},
    {"else", EC_ELSE, false},       {"function", EC_FUNCTION, false},
    {"false", EC_FALSE, true},      {"if", EC_IF, false},
    {"int", EC_INT, true},          {"let", EC_LET, false},
    {"mod", EC_MOD, false},         {"node", EC_NODE, false},
    {"not", EC_NOT, false},         {"or", EC_OR, false},
    {"nor", EC_NOR, false},         {"pre", EC_PRE, false},
    {"real", EC_REAL, true},        {"returns", EC_RETURNS, false},
    {"tel", EC_TEL, false},         {"type", EC_TYPE, false},
    {"then", EC_THEN, false},       {"true", EC_TRUE, true},
    {"var", EC_VAR, false},         {"when", EC_WHEN, false},
    {"xor", EC_XOR, false},         {"extern", EC_EXTERN, false},
    {"unsafe", EC_UNSAFE, false},
};

const Keyword SpecKeywords[] = {
    {"->", EC_ARROW, false}, {">=", EC_GTE, false}, {"=>", EC_IMPL, false},
    {"<=", EC_LTE, false},   {"<>", EC_NEQ, false}, {"**", EC_POWER, false},
};

std::string lexeme;

bool is_one_of(int c, const char* set) { return c > 0 && strchr(set, c) != nullptr; }

// Moves the lookahead into the lexeme and reads the next character.
void take() {
  lexeme.push_back(static_cast<char>(carcour));
  GetChar(&carcour);
}

void take_digits() {
  while (carcour != EOF && isdigit(carcour)) take();
}

int with_text(int code) {
  ec_lval.text = strdup(lexeme.c_str());
  return code;
}

// number -> digits [ '.' digits ] [ ('e'|'E') ['+'|'-'] digit digits ]
int lex_number() {
  bool real = false;
  take_digits();
  if (carcour == '.') {
    real = true;
    take();
    take_digits();
  }
  if (carcour == 'e' || carcour == 'E') {
    real = true;
    take();
    if (carcour == '+' || carcour == '-') take();
    if (carcour == EOF || !isdigit(carcour)) {
      printf("ecread lex error : bad real syntax, line '%d'\n", ec::yyline);
      FatalExit();
    }
    take_digits();
  }
  return with_text(real ? EC_XRConst : EC_XIConst);
}

// word -> (letter | '_') { letter | digit | '_' }
int lex_word() {
  while (carcour != EOF && (isalnum(carcour) || carcour == '_')) take();
  // Every word is looked up: a table rather than a comparison per keyword.
  static const std::unordered_map<std::string, const Keyword*> by_text = [] {
    std::unordered_map<std::string, const Keyword*> table;
    for (const Keyword& k : Keywords) table.emplace(k.text, &k);
    return table;
  }();
  auto found = by_text.find(lexeme);
  if (found == by_text.end()) return with_text(EC_XIdf);
  const Keyword& k = *found->second;
  return k.keeps_text ? with_text(k.code) : k.code;
}

// "(*" was read, its '*' being the lookahead: that '*' may close the comment.
void skip_block_comment() {
  int previous = carcour;
  GetChar(&carcour);
  while (carcour != EOF && !(previous == '*' && carcour == ')')) {
    previous = carcour;
    GetChar(&carcour);
  }
  if (carcour != EOF) GetChar(&carcour);
}

// "-" was read, the second '-' being the lookahead.
void skip_line_comment() {
  while (carcour != EOF && carcour != '\n') GetChar(&carcour);
  if (carcour != EOF) GetChar(&carcour);
}

}  // namespace

int ec_lex() {
  for (;;) {
    while (carcour != EOF && isspace(carcour)) GetChar(&carcour);
    if (carcour == EOF) return -1;
    ec::token_line = ec::yyline;
    lexeme.clear();
    if (isdigit(carcour)) return lex_number();
    if (isalpha(carcour) || carcour == '_') return lex_word();
    int first = carcour;
    if (is_one_of(first, "#%&)+,./:;")) {
      GetChar(&carcour);
      return first;
    }
    if (!is_one_of(first, "(*-<=>")) {
      printf("ecread lex error : unknown char '%d' (%c), line '%d'\n", first, first, ec::yyline);
      FatalExit();
    }
    GetChar(&carcour);
    if (first == '(' && carcour == '*') {
      skip_block_comment();
      continue;
    }
    if (first == '-' && carcour == '-') {
      skip_line_comment();
      continue;
    }
    for (const Keyword& k : SpecKeywords) {
      if (k.text[0] != first || k.text[1] != carcour) continue;
      GetChar(&carcour);
      return k.code;
    }
    return first;
  }
}

void ec_error(const char* msg) { printf("%s     - at line %d\n", msg, ec::yyline); }

// The text a token is printed with by EcLexTest, or null if unknown.
static const char* keyword_text(int code) {
  for (const Keyword& k : Keywords)
    if (k.code == code) return k.text;
  for (const Keyword& k : SpecKeywords)
    if (k.code == code) return k.text;
  return nullptr;
}

// Prints one token; keeps and frees its text.
static void print_token(int code) {
  const char* suffix = code == EC_XRConst ? "XRConst"
                       : code == EC_XIConst ? "XIConst"
                       : code == EC_XIdf    ? "XIdf"
                                            : nullptr;
  if (suffix) {
    printf("%s (*%s*)\n", ec_lval.text, suffix);
    free(ec_lval.text);
    return;
  }
  if (code < 256) {
    printf("%c\n", code);
    return;
  }
  const char* text = keyword_text(code);
  if (!text) {
    printf("unknmown lexeme '%d'\n", code);
    FatalExit();
  }
  printf("%s\n", text);
  if (code == EC_BOOL || code == EC_INT || code == EC_REAL || code == EC_TRUE || code == EC_FALSE)
    free(ec_lval.text);
}

void EcLexTest(SymbolTable*, const char* path) {
  ec::input = fopen(path, "r");
  if (!ec::input) {
    fprintf(stderr, "EcLexTest : Can't open file '%s'\n", path);
    return;
  }
  ec::yylexInit();
  for (int code; (code = ec_lex()) != -1;) print_token(code);
  fclose(ec::input);
  ec::input = nullptr;
  fflush(stdout);
}
