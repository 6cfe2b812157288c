// ecprint_main.cpp -- the ecprint tool: "ecprint FILE.ec" parses the file
// and prints the network back in ec syntax; "ecprint --lex FILE.ec" prints
// its token stream. Errors end the process with status 1.
#include <cstdio>
#include <cstring>

#include "foundations/errors.h"
#include "foundations/pty_stream.h"
#include "foundations/symbol_table.h"
#include "network/ec_builders.h"
#include "network/ec_lex.h"
#include "network/net.h"

static int usage() {
  fprintf(stderr, "usage: ecprint [--lex] FILE.ec\n");
  return 1;
}

int main(int argc, char** argv) {
  set_errors_tool_name("ecprint");
  bool lex = argc == 3 && strcmp(argv[1], "--lex") == 0;
  if (argc != 2 && !lex) return usage();
  const char* path = argv[argc - 1];
  // Neither EcLexTest nor EcParse tells an unreadable file apart in its
  // result: check first, with their own message.
  FILE* f = fopen(path, "r");
  if (!f) {
    fprintf(stderr, "%s : Can't open file '%s'\n", lex ? "EcLexTest" : "EcParse", path);
    return 1;
  }
  fclose(f);
  SymbolTable* symbols = new SymbolTable(1000, 5041);
  if (lex) {
    EcLexTest(symbols, path);
    return 0;
  }
  static Net net;
  net.NetInit(symbols);
  if (EcParse(&net, symbols, path) != 0) {
    fprintf(stderr, "syntax errors...\n");
    return 1;
  }
  net.print_ec(PtyStream::of_stdout());
  return 0;
}
