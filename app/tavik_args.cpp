// tavik_args.cpp -- the simulator's option table and its handlers.
#include "app/tavik_args.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "foundations/errors.h"

const char TavikArgs::VERSION[] = "1.75";
const char TavikArgs::TOOL_NAME[] = "tavik";

ArgToken TavikArgs::ARGS[] = {
    {0, 1, "-h", treat_help_arg, 0, "(-help): display available options"},
    {0, 0, "-help", treat_help_arg, 0, ": display available options"},
    {0, 1, "-v", treat_verbose_arg, 0, "set verbose mode"},
    {0, 1, "-sp", treat_savepanel_arg, 0, "(-savepanel): save the used panel in <node>.iop"},
    {0, 0, "-savepanel", treat_savepanel_arg, 0, "(-savepanel): save the used panel in <node>.iop"},
    {0, 1, "-auto", treat_auto_step_arg, 0, "start in auto-step mode"},
    {0, 1, "-comp", treat_compose_arg, 0, "start in compose mode"},
    {0, 1, "-p", treat_panel_arg, 0, "(-panel) <file>[.iop] : select the panel interface"},
    {0, 0, "-panel", treat_panel_arg, 0, "<file>[.iop] : select the panel interface"},
    {1, 1, nullptr, nullptr, 0, "Debug :"},
    {0, 1, "-dbgtk", treat_dbgtk_arg, 0, ": generates extra Tcl code to debug the panel"},
    {0, 0, nullptr, treat_input_arg, 0, nullptr},
};

TavikArgs::TavikArgs(int argc, const char** argv) {
  version = VERSION;
  tool_name = TOOL_NAME;
  parse(argc, argv, ARGS);
  set_errors_tool_name(name());
}

void TavikArgs::usage() {
  fprintf(stderr, "%s Version %s\nusage: %s [options] <file.ec> | %s -help\n", name(),
          version_text(), name(), name());
}

void TavikArgs::treat_help_arg(ArgsMng* args, int) {
  fputs("recognized options :\n", stderr);
  args->ArgsMng::usage(0);
  ExitProcess(0);
}

void TavikArgs::treat_verbose_arg(ArgsMng* args, int) {
  static_cast<TavikArgs*>(args)->verbose = 1;
}

void TavikArgs::treat_savepanel_arg(ArgsMng* args, int) {
  static_cast<TavikArgs*>(args)->save_panel = 1;
}

void TavikArgs::treat_auto_step_arg(ArgsMng* args, int) {
  TavikArgs* self = static_cast<TavikArgs*>(args);
  self->auto_step = 1;
  self->compose = 0;
}

void TavikArgs::treat_compose_arg(ArgsMng* args, int) {
  TavikArgs* self = static_cast<TavikArgs*>(args);
  self->auto_step = 0;
  self->compose = 1;
}

void TavikArgs::treat_dbgtk_arg(ArgsMng* args, int) {
  static_cast<TavikArgs*>(args)->dbgtk = 1;
}

// -p <file>[.iop]: the value must not look like an option, and from its last
// dot on it must read ".iop"; without a dot ".iop" is appended.
void TavikArgs::treat_panel_arg(ArgsMng* args, int) {
  TavikArgs* self = static_cast<TavikArgs*>(args);
  const char* value = self->next();
  if (!value || value[0] == '-') Error("TavikArgs : <file>[.iop] expected after '-p' option");
  if (self->panel_file) Error("TavikArgs : '-p' option multiply defined");
  char* file = new char[strlen(value) + 5 + 1];
  strcpy(file, value);
  const char* dot = strrchr(file, '.');
  if (!dot) strcat(file, ".iop");
  else if (strcmp(dot, ".iop") != 0) Error("TavikArgs : <file>[.iop] expected after '-p' option");
  self->panel_file = file;
}

void TavikArgs::treat_input_arg(ArgsMng* args, int) {
  TavikArgs* self = static_cast<TavikArgs*>(args);
  if (self->input_file)
    Error("bad command : two input file names ? ('%s' and '%s')", self->input_file, self->current());
  self->input_file = const_cast<char*>(self->current());
}
