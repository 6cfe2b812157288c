// tavik_init.cpp -- Tavik_Init, the entry point that Tcl's load calls.
// The commands are registered only once the start-up script succeeded, so
// a failed load leaves no run_tavik behind.
#include <tcl.h>
#include <tk.h>

#include "app/run_tavik.h"
#include "app/startup_script.h"
#include "app/time_handler.h"

extern "C" int Tavik_Init(Tcl_Interp* interp) {
  if (!Tcl_InitStubs(interp, "8.6", 0)) return TCL_ERROR;
  if (!Tk_InitStubs(interp, "8.6", 0)) return TCL_ERROR;
  if (Tcl_PkgProvideEx(interp, "Pwish", "1.0", nullptr) == TCL_ERROR) return TCL_ERROR;
  if (Tcl_InitTamsel(interp) != TCL_OK) return TCL_ERROR;
  TimeHandler_Init(interp);
  return run_tavik_Init(interp) != 0 ? TCL_ERROR : TCL_OK;
}
