// run_tavik.cpp -- the run_tavik command, which starts a simulation session.
#include "app/run_tavik.h"

#include <cstdlib>
#include <vector>

#include "app/tavik.h"
#include "app/tavik_args.h"

// The tool's word count from the script's argc (0 when it is not set).
static int script_argc(Tcl_Interp* interp) {
  const char* text = Tcl_GetVar2(interp, "argc", nullptr, 0);
  return text ? static_cast<int>(strtol(text, nullptr, 10)) : 0;
}

int run_tavik_handler(ClientData, Tcl_Interp* interp, int, const char*[]) {
  int n = script_argc(interp) + 1;
  std::vector<const char*> words(n > 1 ? n : 1, "");
  words[0] = TavikArgs::TOOL_NAME;
  if (n > 1) {
    // argc is trusted to agree with argv, but a shorter list must not make
    // us read past its end: the missing words stay empty.
    Tcl_Obj* list = Tcl_GetVar2Ex(interp, "argv", nullptr, 0);
    int count = 0;
    Tcl_Obj** elements = nullptr;
    if (list && Tcl_ListObjGetElements(interp, list, &count, &elements) == TCL_OK)
      for (int i = 0; i < count && i + 1 < n; i++) words[i + 1] = Tcl_GetString(elements[i]);
  }
  TavikArgs args(n > 1 ? n : 1, words.data());
  if (n <= 1) {
    args.usage();
    exit(0);
  }
  // The session lives until the process ends; `args` only during its
  // construction.
  new Tavik(interp, &args);
  return TCL_OK;
}

int run_tavik_Init(Tcl_Interp* interp) {
  Tcl_CreateCommand(interp, "run_tavik", run_tavik_handler, nullptr, nullptr);
  return 0;
}
