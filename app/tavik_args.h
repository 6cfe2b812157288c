// tavik_args.h -- the simulator's options.
// Parsing happens in the constructor; help, version and malformed options
// end the process there. The error header names the tool only afterwards.
#ifndef APP_TAVIK_ARGS_H
#define APP_TAVIK_ARGS_H

#include "app/args_mng.h"

class TavikArgs : public ArgsMng {
 public:
  static ArgToken ARGS[];
  static const char VERSION[];    // "1.75"
  static const char TOOL_NAME[];  // "tavik"

  TavikArgs(int argc, const char** argv);

  using ArgsMng::usage;
  // The usage banner on standard error; the caller ends the process.
  void usage();

  int verbose = 0;
  char* input_file = nullptr;  // points into the argument vector
  int dbgtk = 0;
  int save_panel = 0;
  int auto_step = 0;  // at most one of auto_step and compose is set:
  int compose = 0;    // the last of -auto / -comp wins
  char* panel_file = nullptr;  // allocated, always ending in ".iop"

 private:
  static void treat_help_arg(ArgsMng* args, int param);
  static void treat_verbose_arg(ArgsMng* args, int param);
  static void treat_savepanel_arg(ArgsMng* args, int param);
  static void treat_auto_step_arg(ArgsMng* args, int param);
  static void treat_compose_arg(ArgsMng* args, int param);
  static void treat_panel_arg(ArgsMng* args, int param);
  static void treat_dbgtk_arg(ArgsMng* args, int param);
  static void treat_input_arg(ArgsMng* args, int param);
};

#endif
