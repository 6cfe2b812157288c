// run_tavik.h -- the run_tavik command, which starts a simulation session.
#ifndef APP_RUN_TAVIK_H
#define APP_RUN_TAVIK_H

#include <tcl.h>

// run_tavik: ignores its own words and parses the Tcl variables argc/argv
// (looked up from the caller's scope) as the tool's command line, with
// "tavik" as word 0. Without arguments it prints the usage banner and ends
// the process with status 0; help, version and bad options end it too.
int run_tavik_handler(ClientData clientData, Tcl_Interp* interp, int argc, const char* argv[]);

// Registers run_tavik; returns 0.
int run_tavik_Init(Tcl_Interp* interp);

#endif
