// tavik.h -- one simulation session: the program, its panel and the loop.
// The session is created once by run_tavik and lives until the process
// ends; after init() it is driven only by the step and reset callbacks.
#ifndef APP_TAVIK_H
#define APP_TAVIK_H

#include <tcl.h>

#include "app/tavik_args.h"
#include "ecexe/random_state.h"
#include "ecexe/rp_exe.h"
#include "foundations/symbol_table.h"
#include "panel/io_panel.h"
#include "trace/history.h"
#include "trace/instant.h"
#include "trace/program_flows.h"

class Tavik {
 public:
  // Labels of the dialog buttons, compared by address when a dialog answers.
  static const char CLOSE[];
  static const char OK[];
  static const char CONTINUE[];
  static const char ABORT[];

  // Stores both and runs init(); every failure ends the process. `args`
  // is valid only during the construction.
  Tavik(Tcl_Interp* interp, TavikArgs* args);

  // Loads the program, chooses or builds the panel, finds the resource file
  // and starts the panel's simulation loop.
  void init();
  int init_ecexe_with_ecfile(const char* file);
  int init_ecexe_with_drofile(const char* file);
  // "<dir>/<name>" interned in the symbol table when it is a regular file,
  // else null.
  char* search_file(const char* dir, const char* name);
  // The default panel: one widget per input and output, in groups of five
  // from ten inputs (outputs) on. Returns 1.
  int init_standard_panel();
  // 1 when the panel's inputs and outputs match the program's in number,
  // order, names and types; else 0 after a warning.
  int check_panel_coherence();
  void Error_panel_coherence(char* msg);
  // The dialog's answer (ABORT or CONTINUE) when item i is in error, else
  // CONTINUE without a dialog.
  const char* check_assert_error(int i);
  const char* check_output_error(int i);

  TavikArgs* args;
  Tcl_Interp* interp;
  int status = 0;
  SymbolTable* symbols = nullptr;
  RPExe* program = nullptr;
  const char* file_name = nullptr;
  IOPanel* panel = nullptr;
  char* panel_file = nullptr;
  char message[1024];
  // Every completed instant and every reset, from the start (the locals
  // with them when there are at most kRecordedLocals); `taken` holds the
  // instant being completed.
  static const int kRecordedLocals;
  // The generator's state at the last reset (or the start), from which the
  // instants since are run again when stepping back.
  RandomState at_reset;

  // Steps back over the last completed instant since the last reset: the
  // program, the panel's inputs and outputs, the step counter and the
  // history are as they were before it. 0 when there is none to step back.
  int step_back();
  ProgramFlows* flows = nullptr;
  History* history = nullptr;
  InstantRecord taken;

 private:
  // Creates (or finds) a panel leaf per program input or output, grouped as
  // the standard panel lays them out, under a column form named `form_name`.
  Panel* standard_form(bool inputs, const char* form_name);
  // The resource file: the first existing one of PWD, HOME, TAMSEL_INSTALL.
  const char* find_rc_file();
  // Compares one side (inputs or outputs) of the panel with the program.
  int check_side(bool inputs);
  // Adds the History menu and its commands to the window.
  void add_history_menu();
  // Shows in the panel the inputs and outputs of `record`, or those of the
  // first instant's start when it is null.
  void show_instant(const InstantRecord* record);
};

// The loop's callbacks, `session` being the Tavik. tavik_step's result is
// the step command's completion code: 0 done, 1 aborted or failed.
int tavik_step(void* session);
int tavik_reset(void* session);

#endif
