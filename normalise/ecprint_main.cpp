// ecprint_main.cpp -- the ecprint tool, for looking at an ec file the way the
// simulator sees it: "ecprint FILE.ec" prints the parsed network back in ec
// syntax, "--lex" its token stream, "--norm" the normalised and minimised
// network the evaluator is built from, "--no-min" the same unminimised.
// "-v" first shows the progress messages. Errors end with status 1.
#include <cstdio>
#include <cstring>

#include "foundations/deep_stack.h"
#include "foundations/errors.h"
#include "foundations/pty_stream.h"
#include "foundations/symbol_table.h"
#include "network/ec_builders.h"
#include "network/ec_lex.h"
#include "network/net.h"
#include "normalise/net_interface.h"
#include "normalise/norm_print.h"

static int usage() {
  fprintf(stderr, "usage: ecprint [-v] [--lex | --norm | --no-min] FILE.ec\n");
  return 1;
}

int main(int argc, char** argv) {
  set_errors_tool_name("ecprint");
  int arg = 1;
  if (arg < argc && strcmp(argv[arg], "-v") == 0) {
    set_verbose_mode(1);
    arg++;
  }
  const char* mode = argc - arg == 2 ? argv[arg++] : "";
  bool lex = strcmp(mode, "--lex") == 0;
  bool norm = strcmp(mode, "--norm") == 0;
  bool no_min = strcmp(mode, "--no-min") == 0;
  if (argc - arg != 1 || (*mode && !lex && !norm && !no_min)) return usage();
  const char* path = argv[arg];
  // Neither EcLexTest nor EcParse tells an unreadable file apart in its
  // result: check first, with their own message.
  FILE* f = fopen(path, "r");
  if (!f) {
    fprintf(stderr, "%s : Can't open file '%s'\n", lex ? "EcLexTest" : "EcParse", path);
    return 1;
  }
  fclose(f);
  // The passes recurse along the program's chains of definitions.
  int result = 0;
  run_on_deep_stack([&] {
    SymbolTable* symbols = new SymbolTable(1000, 5041);
    if (lex) {
      EcLexTest(symbols, path);
      return;
    }
    if (norm || no_min) {
      // Static, like the network below: it stays reachable until the end,
      // so a leak checker does not report the nodes it holds.
      static NetInterface ni;
      if (ni.init(path, symbols, no_min ? 1 : 0, 0) != 0) {
        result = 1;
        return;
      }
      print_norm_net(PtyStream::of_stdout(), &ni);
      return;
    }
    static Net net;
    net.NetInit(symbols);
    if (EcParse(&net, symbols, path) != 0) {
      fprintf(stderr, "syntax errors...\n");
      result = 1;
      return;
    }
    net.print_ec(PtyStream::of_stdout());
  });
  return result;
}
