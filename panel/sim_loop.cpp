// sim_loop.cpp -- the bridge between the running Tk script and the program:
// the Tcl commands the script calls, the start-up of the loop, and the
// conversions between InputVars/OutputVars texts and program locations.
// Locations hold bool and int as 32-bit ints, real and double as doubles,
// float as a 32-bit float.
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "foundations/errors.h"
#include "foundations/replace_file.h"
#include "panel/io_panel.h"

// "<module>_step": the session's step callback; its status is the command's
// completion code, so the script's catch sees a failed step as an error.
static int TreatStepProc(ClientData clientData, Tcl_Interp*, int, const char*[]) {
  IOPanel* panel = static_cast<IOPanel*>(clientData);
  return panel->step_callback(panel->client_data);
}

// "<module>_reset": the session's reset callback; always TCL_OK.
static int TreatResetProc(ClientData clientData, Tcl_Interp*, int, const char*[]) {
  IOPanel* panel = static_cast<IOPanel*>(clientData);
  panel->reset_callback(panel->client_data);
  return TCL_OK;
}

// "<module>_save_iop": writes "<module>.iop" in the current directory; a
// failure only warns.
static int SaveIopProc(ClientData clientData, Tcl_Interp*, int, const char*[]) {
  IOPanel* panel = static_cast<IOPanel*>(clientData);
  std::string file = std::string(panel->text(panel->module)) + ".iop";
  panel->write_iop(file.c_str());
  return TCL_OK;
}

// The script is built in memory, then written beside its name and renamed
// into place: a directory where it cannot be written whole ends the
// session before any window is shown, saying where and why.
void IOPanel::write_script(const char* script, int debug) {
  char* built = nullptr;
  size_t size = 0;
  FILE* memory = open_memstream(&built, &size);
  if (!memory) Error("IOPanel::init_loop : no memory for the window's script: %s", strerror(errno));
  {
    PtyStream out(memory, 1024, nullptr);  // closes the stream, which completes `built`
    to_tk(&out, debug);
  }
  FileReplacement file;
  bool written = file.open(script) && fwrite(built, 1, size, file.file()) == size &&
                 file.commit(false) == ReplaceResult::kWritten;
  int reason = errno;
  free(built);
  if (written) return;
  file.abandon();  // the fatal exit below runs no destructor
  char place[4096];
  Error("IOPanel::init_loop : cannot write the window's script '%s' in %s: %s", script,
        getcwd(place, sizeof place) ? place : "the current directory", strerror(reason));
}

void IOPanel::init_loop(int debug, void* client, int (*reset)(void*), int (*step)(void*),
                        const char* rc, StringList* extra) {
  debug_loop = debug;
  client_data = client;
  reset_callback = reset;
  step_callback = step;
  rc_file = rc;
  extra_commands = extra;

  const char* name = text(module);
  std::string command = std::string(name) + "_reset";
  Tcl_CreateCommand(interp, command.c_str(), TreatResetProc, this, nullptr);
  command = std::string(name) + "_step";
  Tcl_CreateCommand(interp, command.c_str(), TreatStepProc, this, nullptr);
  command = std::string(name) + "_save_iop";
  Tcl_CreateCommand(interp, command.c_str(), SaveIopProc, this, nullptr);

  input_array = new PanelInput*[input_count + 1];
  for (int i = 0; i < input_count; i++) input_array[i] = inputs[i];
  output_array = new PanelOutput*[output_count + 1];
  for (int i = 0; i < output_count; i++) output_array[i] = outputs[i];

  const char* script = text(symbols->add("%s_%d.tcl", name, static_cast<int>(getpid())));
  write_script(script, debug);
  if (Tcl_EvalFile(interp, script) != TCL_OK)
    Error("IOPanel::loop : Tcl Error :\n => %s", Tcl_GetStringResult(interp));
  if (rc_file) {
    if (Tcl_EvalFile(interp, rc_file) != TCL_OK)
      Error("Tcl Error while loading \"%s\":\n => %s", rc_file, Tcl_GetStringResult(interp));
    printf("# rc file loaded: \"%s\"\n", rc_file);
    fflush(stdout);
  }
  for (StringList* c = extra_commands; c; c = c->next)
    if (Tcl_Eval(interp, c->text) != TCL_OK)
      Error("Tcl Error while parsing extra command \"%s\":\n => %s", c->text,
            Tcl_GetStringResult(interp));
  if (!debug_loop && unlink(script) != 0) Warning("IOPanel::init_loop : could not remove '%s'\n", script);
}

int IOPanel::export_loop_input(int index, void* location) {
  if (!interp) Error("IOPanel::export_loop_input : not executing ");
  PanelInput* input = input_array[index];
  const char* value = Tcl_GetVar2(interp, "InputVars", text(input->name), 0);
  if (!value) Error("IOPanel::export_loop_input : %s", Tcl_GetStringResult(interp));
  int type = input->type;
  int converted;
  if (type == bool_key || type == int_key) {
    int v;
    converted = type == bool_key ? Tcl_GetBoolean(interp, value, &v) : Tcl_GetInt(interp, value, &v);
    if (converted == TCL_OK && location) *static_cast<int*>(location) = v;
  } else if (type == real_key || type == double_key || type == float_key) {
    double v;
    converted = Tcl_GetDouble(interp, value, &v);
    if (converted == TCL_OK && location) {
      if (type == float_key) *static_cast<float*>(location) = static_cast<float>(v);
      else *static_cast<double*>(location) = v;
    }
  } else {
    Error("IOPanel::export_loop_input : unknown type '%s'", text(type));
  }
  if (converted != TCL_OK) Error("IOPanel::export_loop_input : %s", Tcl_GetStringResult(interp));
  return 0;
}

int IOPanel::import_loop_output(int index, const void* location) {
  if (!interp) Error("IOPanel::import_loop_output : not executing ");
  PanelOutput* output = output_array[index];
  int type = output->type;
  bool known = type == bool_key || type == int_key || type == real_key || type == double_key ||
               type == float_key;
  if (!known) Error("IOPanel::import_loop_output : unknown type '%s'", text(type));
  if (!location) return 0;
  char buffer[TCL_DOUBLE_SPACE + 32];
  if (type == bool_key || type == int_key)
    snprintf(buffer, sizeof buffer, "%d", *static_cast<const int*>(location));
  else if (type == float_key)
    Tcl_PrintDouble(interp, static_cast<double>(*static_cast<const float*>(location)), buffer);
  else
    Tcl_PrintDouble(interp, *static_cast<const double*>(location), buffer);
  return Tcl_SetVar2(interp, "OutputVars", text(output->name), buffer, 0) ? 0 : 1;
}

const char* IOPanel::dialog(const char* title, const char* message, int n, ...) {
  std::string command = std::string("tk_dialog .iop_dialog \"") + title + "\" {" + message + "} {} 0 ";
  va_list ap;
  va_start(ap, n);
  const char* labels[64];
  for (int i = 0; i < n; i++) {
    const char* label = va_arg(ap, const char*);
    if (i < 64) labels[i] = label;
    command += std::string(" \"") + label + "\"";
  }
  va_end(ap);
  Tcl_Eval(interp, command.c_str());
  // tk_dialog answers -1 when its window is destroyed without a choice: that
  // reads as the first button, like any answer that is no button's index.
  // Callers put the cautious choice first ("close", "abort step").
  long chosen = strtol(Tcl_GetStringResult(interp), nullptr, 10);
  if (chosen < 0 || chosen >= n || chosen >= 64) chosen = 0;
  return n > 0 ? labels[chosen] : nullptr;
}
