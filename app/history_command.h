// history_command.h -- the Tcl command tavik_history, through which the
// window's History menu, resource files and tests reach the session's
// recorded history, save and export it, and read scenarios to replay.
#ifndef APP_HISTORY_COMMAND_H
#define APP_HISTORY_COMMAND_H

#include <tcl.h>

class History;

// Registers "tavik_history" over `history` (kept, not owned; it lives as
// long as the session). Scenarios and traces are never written over
// `program`, the file of the program being run, nor over `panel`, the
// panel description in use (null: none).
void history_command_init(Tcl_Interp* interp, History* history, const char* program, const char* panel);

#endif
