// tkgen.cpp -- test tool: writes the Tk script of a panel description to
// standard output, so that Tcl tests can source it in a real wish.
//   tkgen <file.iop> [module] [debug]
// The module name defaults to the description's own header. Exits 1 when
// the description cannot be read whole.
#include <cstdio>
#include <cstdlib>

#include "foundations/pty_stream.h"
#include "foundations/symbol_table.h"
#include "panel/io_panel.h"
#include "panel/tk_script.h"

int main(int argc, char** argv) {
  if (argc < 2 || argc > 4) {
    fprintf(stderr, "usage: tkgen <file.iop> [module] [debug]\n");
    return 2;
  }
  IOPanel* panel = new IOPanel;
  panel->init(nullptr, new SymbolTable(1000, 5041));
  if (!panel->read_iop(argv[1])) return 1;
  if (argc > 2) panel->module = panel->symbols->add("%s", argv[2]);
  int debug = argc > 3 ? atoi(argv[3]) : 0;
  PtyStream out(stdout, TK_SCRIPT_WIDTH, nullptr);
  panel->to_tk(&out, debug);
  return 0;
}
