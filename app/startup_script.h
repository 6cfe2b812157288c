// startup_script.h -- the Tcl script every load of the package runs first.
#ifndef APP_STARTUP_SCRIPT_H
#define APP_STARTUP_SCRIPT_H

#include <tcl.h>

// The embedded start-up script, one constant text.
extern const char TAMSEL_STARTUP_SCRIPT[];

// Evaluates the start-up script: it requires TAMSEL_INSTALL to name an
// existing path and sets the global tamsel_install. Returns the script's
// completion code, its error message left in the interpreter's result.
int Tcl_InitTamsel(Tcl_Interp* interp);

#endif
