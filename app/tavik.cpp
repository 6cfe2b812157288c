// tavik.cpp -- one simulation session: the program, its panel and the loop.
// Values move between the panel's Tcl variables and the program's locations
// at every step; run-time problems of the program are statuses, shown in
// dialogs that let the user abort the instant or continue it.
#include "app/tavik.h"

#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "app/history_command.h"
#include "ecexe/dro_load.h"
#include "ecexe/rp_ec_exe.h"
#include "foundations/errors.h"
#include "trace/instant.h"
#include "trace/instant_runner.h"

const char Tavik::CLOSE[] = "close";
const char Tavik::OK[] = "ok";
const char Tavik::CONTINUE[] = "continue step";
const char Tavik::ABORT[] = "abort step";

static int step_back_command(ClientData session, Tcl_Interp* interp, int, const char*[]);

Tavik::Tavik(Tcl_Interp* i, TavikArgs* a) : args(a), interp(i) { init(); }

// The history records the locals of programs that have at most this many:
// reading them costs each step about a quarter of a step's time at 1,000
// locals, and grows with their number, as does the history's memory.
const int Tavik::kRecordedLocals = 2000;

static bool readable(const char* path) {
  FILE* probe = fopen(path, "r");
  if (!probe) return false;
  fclose(probe);
  return true;
}

// The text from the last dot of `name`, or "" without a dot.
static const char* extension(const char* name) {
  const char* dot = strrchr(name, '.');
  return dot ? dot : "";
}

void Tavik::init() {
  status = 1;
  printf("# orvane version %s\n", args->version_text());
  fflush(stdout);
  symbols = new SymbolTable(1000, 5041);

  if (!args->input_file) {
    args->usage();
    Error("you must specify a tamsel (or ec) program\n");
  }
  file_name = args->input_file;
  if (strcmp(extension(file_name), ".ec") == 0) status = init_ecexe_with_ecfile(file_name);
  else if (strcmp(extension(file_name), ".dro") == 0) status = init_ecexe_with_drofile(file_name);
  else Error("bad file name '%s' : expecting a '.tam' or '.ec' extension", file_name);

  bool standard = true;
  if (args->panel_file) {
    panel_file = args->panel_file;
    if (!readable(panel_file)) Error("Tavik : can't open panel description '%s'", panel_file);
    standard = false;
  } else {
    std::string local = std::string(program->name()) + ".iop";
    panel_file = new char[local.size() + 1];
    strcpy(panel_file, local.c_str());
    if (readable(panel_file)) {
      Verbose("using local file '%s' as panel description\n", panel_file);
      standard = false;
    }
  }
  if (!standard) {
    panel = new IOPanel;
    panel->init(interp, symbols);
    if (!panel->read_iop(panel_file)) Error("Tavik : failed to read '%s'", panel_file);
    if (!check_panel_coherence()) {
      Warning("=> Using standard panel");
      standard = true;  // the refused panel is dropped, never torn down
    }
  }
  if (standard) {
    panel = new IOPanel;
    panel->init(interp, symbols);
    if (!init_standard_panel())
      Error("Tavik : can't create standard panel for node '%s'", program->name());
  }

  const char* rc_file = find_rc_file();
  Verbose("rc_file=%s\n", rc_file ? rc_file : "NULL");

  StringList* commands = nullptr;
  if (args->verbose) commands = StringList::push(commands, "set Global(verbose) 1");
  if (args->auto_step) commands = StringList::push(commands, "set Global(auto_step) 1");
  if (args->compose) commands = StringList::push(commands, "set Global(auto_step) 0");

  // The history and its command exist before the resource file runs, so
  // that it may use them; the menu needs the window.
  flows = new ProgramFlows(program, program->nb_locals() <= kRecordedLocals);
  history = new History(*flows);
  at_reset = save_random_state();
  history_command_init(interp, history, file_name, standard ? nullptr : panel_file);
  Tcl_CreateCommand(interp, "tavik_step_back", step_back_command, this, nullptr);
  panel->init_loop(args->dbgtk, this, tavik_reset, tavik_step, rc_file, commands);
  add_history_menu();
}

// tavik_step_back: 1 when it stepped back, 0 when there was nothing to.
static int step_back_command(ClientData session, Tcl_Interp* interp, int, const char*[]) {
  Tcl_SetObjResult(interp, Tcl_NewIntObj(static_cast<Tavik*>(session)->step_back()));
  return TCL_OK;
}

int Tavik::step_back() {
  long n = history->size();
  if (n == 0 || history->reset_pending()) return 0;
  long first = n - 1;
  while (first > 0 && !history->after_reset(first)) first--;
  // From the last reset again, silently: no dialog, no Tcl variable moves.
  program->reset_history();
  restore_random_state(at_reset);
  InstantRunner runner(*flows, ProblemPolicy::Continue);
  InstantRecord record, replayed;
  for (long k = first; k < n - 1; k++) {
    history->read(k, &record);
    runner.run(record.inputs.data(), &replayed);
  }
  history->drop_last();
  if (n - 1 > first) history->read(n - 2, &record);
  show_instant(n - 1 > first ? &record : nullptr);
  Tcl_SetVar2Ex(interp, "Global", "step_ctr", Tcl_NewLongObj(n - 1 - first), TCL_GLOBAL_ONLY);
  return 1;
}

void Tavik::show_instant(const InstantRecord* record) {
  const char* automatic = Tcl_GetVar2(interp, "Global", "auto_step", TCL_GLOBAL_ONLY);
  bool pulses = automatic && strcmp(automatic, "0") != 0;
  char text[kValueTextMax + 1];
  for (const Flow& f : flows->inputs) {
    // In Auto Step mode a bool input is true only while its button steps.
    FlowValue v = record ? record->inputs[f.index] : FlowValue{0};
    if (f.type == FlowType::Bool && pulses) v.i = 0;
    *format_value(f.type, v, text) = '\0';
    Tcl_SetVar2(interp, "InputVars", f.name, text, TCL_GLOBAL_ONLY);
  }
  for (const Flow& f : flows->outputs) {
    if (record) {
      panel->import_loop_output(f.index, program->output_loc(f.index));
      continue;
    }
    // Before any instant after a reset the panel shows 0, before the first
    // of the session "?" (a bool, whose trace reads a boolean, shows 0).
    bool started = history->reset_pending();
    const char* shown = started || f.type == FlowType::Bool ? "0" : "?";
    Tcl_SetVar2(interp, "OutputVars", f.name, shown, TCL_GLOBAL_ONLY);
  }
}

void Tavik::add_history_menu() {
  const char* install = getenv("TAMSEL_INSTALL");
  std::string path = std::string(install ? install : ".") + "/tcl/history.tcl";
  struct stat info;
  if (stat(path.c_str(), &info) != 0) {
    // A tree of resource files only (TAMSEL_INSTALL set by hand): the
    // window is as it always was.
    Verbose("no History menu: no '%s'\n", path.c_str());
    return;
  }
  if (Tcl_EvalFile(interp, path.c_str()) != TCL_OK)
    Warning("Tavik::add_history_menu : no History menu, '%s' failed:\n => %s", path.c_str(),
            Tcl_GetStringResult(interp));
}

int Tavik::init_ecexe_with_ecfile(const char* file) {
  RPEcExe* ec = new RPEcExe;
  if (ec->init(file, symbols) != 0) Error("Tavik::init_ecexe_with_ecfile : cannot create");
  program = ec;
  return 1;
}

int Tavik::init_ecexe_with_drofile(const char* file) {
  DROLoad* dro = new DROLoad;
  if (const char* error = dro->load(file)) Error("Tavik::init_ecexe_with_drofile: %s", error);
  program = dro;
  return 1;
}

char* Tavik::search_file(const char* dir, const char* name) {
  std::string path = std::string(dir) + "/" + name;
  struct stat info;
  if (stat(path.c_str(), &info) != 0 || !(info.st_mode & S_IFREG)) return nullptr;
  return const_cast<char*>(symbols->text(symbols->add("%s", path.c_str())));
}

const char* Tavik::find_rc_file() {
  struct Probe {
    const char* variable;
    const char* name;
  } probes[] = {{"PWD", "orvanerc.tcl"},  {"PWD", ".orvanerc.tcl"},
                {"HOME", "orvanerc.tcl"}, {"HOME", ".orvanerc.tcl"},
                {"TAMSEL_INSTALL", "tcl/orvanerc.tcl"}};
  for (const Probe& p : probes) {
    const char* dir = getenv(p.variable);
    if (!dir) continue;
    if (const char* found = search_file(dir, p.name)) return found;
  }
  return nullptr;
}

Panel* Tavik::standard_form(bool inputs, const char* form_name) {
  int count = inputs ? program->nb_inputs() : program->nb_outputs();
  Panel* form = panel->createPanelCol(nullptr);
  Panel* group = form;
  for (int i = 0; i < count; i++) {
    if (count >= 10 && i % 5 == 0) {
      group = panel->createPanelLine(nullptr);
      form->append_son(group);
    }
    const char* ident = inputs ? program->input_ident(i) : program->output_ident(i);
    const char* type = inputs ? program->input_type(i) : program->output_type(i);
    int name = symbols->add("%s", ident);
    int type_key = symbols->add("%s", type);
    Panel* leaf = inputs ? panel->createPanelInput(name, type_key, nullptr)
                         : panel->createPanelOutput(name, type_key, nullptr);
    group->append_son(leaf);
  }
  panel->give_a_name(symbols->add("%s", form_name), form);
  return form;
}

int Tavik::init_standard_panel() {
  panel->module = symbols->add("%s", program->name());
  Panel* in = standard_form(true, "inpanel");
  Panel* out = standard_form(false, "outpanel");
  Panel* root = panel->createPanelLine(nullptr);
  root->add_son(out);
  root->add_son(in);
  panel->define_top(root);
  if (args->save_panel) panel->write_iop(symbols->text(symbols->add("%s.iop", program->name())));
  return 1;
}

void Tavik::Error_panel_coherence(char* msg) {
  Warning("%s:\n=> bad panel '%s' (in '%s') for node '%s' (in '%s')\n=> %s",
          "Tavik::check_panel_coherence", panel->module > 0 ? panel->text(panel->module) : "",
          panel_file, program->name(), file_name, msg);
}

int Tavik::check_side(bool inputs) {
  int panel_count = inputs ? panel->input_count : panel->output_count;
  int program_count = inputs ? program->nb_inputs() : program->nb_outputs();
  if (panel_count != program_count) {
    snprintf(message, sizeof message, inputs ? "bad input number (%d != %d)" : "bad output number (%d != %d)",
             panel_count, program_count);
    Error_panel_coherence(message);
    return 0;
  }
  for (int i = 0; i < panel_count; i++) {
    PanelInOut* item = inputs ? static_cast<PanelInOut*>(panel->inputs[i])
                              : static_cast<PanelInOut*>(panel->outputs[i]);
    const char* name = panel->text(item->name);
    const char* type = panel->text(item->type_ident());
    const char* ident = inputs ? program->input_ident(i) : program->output_ident(i);
    const char* program_type = inputs ? program->input_type(i) : program->output_type(i);
    if (strcmp(name, ident) == 0 && strcmp(type, program_type) == 0) continue;
    snprintf(message, sizeof message,
             inputs ? "input panel '%s : %s' cannot implement '%s : %s'"
                    : "output panel '%s : %s' cannot implement '%s : %s'",
             name, type, ident, program_type);
    Error_panel_coherence(message);
    return 0;
  }
  return 1;
}

int Tavik::check_panel_coherence() { return check_side(true) && check_side(false); }

// Asks the user about a problem of the instant; CONTINUE when there is none.
static const char* ask_about(IOPanel* panel, const Problem& p) {
  if (!problem_word(p.status, p.source == Problem::Assertion)) return Tavik::CONTINUE;
  char text[kProblemTextMax];
  format_problem(p, text);
  return panel->dialog("RUN TIME ERROR", text, 2, Tavik::ABORT, Tavik::CONTINUE);
}

const char* Tavik::check_assert_error(int i) {
  return ask_about(panel, {Problem::Assertion, i, program->assert_status(i)});
}

const char* Tavik::check_output_error(int i) {
  return ask_about(panel, {Problem::Output, i, program->output_status(i)});
}

// Copies every output to the panel, asking first about those in error.
// Returns 1 when the user aborted the step.
static int show_outputs(Tavik* t) {
  for (int i = 0; i < t->program->nb_outputs(); i++) {
    if (t->check_output_error(i) == Tavik::ABORT) return 1;
    t->panel->import_loop_output(i, t->program->output_loc(i));
  }
  return 0;
}

int tavik_step(void* session) {
  Tavik* t = static_cast<Tavik*>(session);
  RPExe* program = t->program;
  for (int i = 0; i < program->nb_inputs(); i++) t->panel->export_loop_input(i, program->input_loc(i));

  if (!program->allows_eval_outputs()) {
    if (program->step() != 0) {
      t->panel->dialog("MAJOR RUN TIME ERROR", "step is aborted", 1, Tavik::CLOSE);
      return 1;
    }
    if (show_outputs(t)) return 1;
    capture_instant(*t->flows, &t->taken);
    t->history->record(t->taken);
    return 0;
  }
  // Split protocol: an abort leaves the instant without end_step, so the
  // program's memories stay as they were before it.
  program->init_step();
  program->eval_outputs();
  for (int i = 0; i < program->nb_assertions(); i++)
    if (t->check_assert_error(i) == Tavik::ABORT) return 1;
  if (show_outputs(t)) return 1;
  // The locals as they stood in the instant, before the memories move on.
  capture_instant(*t->flows, &t->taken);
  program->end_step();
  t->history->record(t->taken);
  return 0;
}

int tavik_reset(void* session) {
  Tavik* t = static_cast<Tavik*>(session);
  t->program->reset_history();
  t->history->reset();
  t->at_reset = save_random_state();
  return 1;
}
