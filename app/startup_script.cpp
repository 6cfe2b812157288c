// startup_script.cpp -- the Tcl script every load of the package runs first.
// The package cannot load without an installation tree: TAMSEL_INSTALL must
// name an existing path. The lappend to tcl_libPath is local to the procedure
// and has no lasting effect; the script is kept as it has always been.
#include "app/startup_script.h"

const char TAMSEL_STARTUP_SCRIPT[] =
    "proc tamselSetTclLib {} {\n"
    "    # puts \"Entering tamselSetTclLib\"\n"
    "    global env tcl_library tk_library tamsel_install\n"
    "    if {![info exists env(TAMSEL_INSTALL)]} {\n"
    "        error \"INSTALLATION PROBLEM:\\n==> environment variable TAMSEL_INSTALL not defined\\n\"\n"
    "    }\n"
    "    set tamsel_install $env(TAMSEL_INSTALL)\n"
    "    if {![file exist $tamsel_install]} {\n"
    "        error \"INSTALLATION PROBLEM:\\n==> can't access $env(TAMSEL_INSTALL)\"\n"
    "    }\n"
    "    set tamsel_install_tcl [file join $tamsel_install \"tcl\"]\n"
    "    lappend tcl_libPath $tamsel_install_tcl\n"
    "    # puts \"Exit tamselSetTclLib\"\n"
    "    return\n"
    "}\n"
    "tamselSetTclLib\n";

int Tcl_InitTamsel(Tcl_Interp* interp) { return Tcl_Eval(interp, TAMSEL_STARTUP_SCRIPT); }
