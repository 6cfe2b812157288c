// tk_script.cpp -- IOPanel::to_tk: the fixed sections of the Tk script
// (procedures, global variables, main window, menus, Step button, packing,
// epilogue) around the widgets that the panel tree writes below ".panel".
// Sections go out in a fixed order; everything is written at level 0.
#include "panel/tk_script.h"

#include "panel/io_panel.h"
#include "panel/panel_size.h"

namespace {

// The procedures that need no module name and do not depend on the debug
// flag. The bodies are indented by three blanks per level.
const char ECHO_PROCEDURES[] = R"tcl(proc Verbose {msg} {
   global Global
   if $Global(verbose) then {
      puts $Global(verbose_channel) "$msg"
      flush $Global(verbose_channel)
   }
}
proc VerboseNNL {msg} {
   global Global
   if $Global(verbose) then {
      puts -nonewline $Global(verbose_channel) "$msg"
      flush $Global(verbose_channel)
   }
}
proc TraceVerbose {tab var op} {
   global Global
   Verbose "#program $Global(module_name)" 
   VerboseNNL "#inputs" 
   foreach n $Global(input_names) t $Global(input_types) {
      VerboseNNL " $n:$t" 
   }
   Verbose "" 
   VerboseNNL "#outputs" 
   foreach n $Global(output_names) t $Global(output_types) {
      VerboseNNL " $n:$t" 
   }
   Verbose "" 
}
proc TraceShowStep {tab var op} {
   global Global
   if $Global(show_step) then {
      pack append . .step {top frame center fillx}
   } else {
      pack unpack .step
   }
}
)tcl";

// In Auto Step mode bool inputs are push buttons (and read 0 between
// presses); in Compose mode they are check buttons.
const char MODE_PROCEDURES[] = R"tcl(proc TraceAutoStep {tab var op} {
   global Global InputVars
   if $Global(auto_step) then {
      foreach bif $Global(bif_list) {
         pack unpack $bif.cb
         pack append $bif $bif.b {top frame center expand fill}
      }
      foreach bi $Global(boolean_input_names) {
         set InputVars($bi) 0
      }
   } else {
      foreach bif $Global(bif_list) {
         pack unpack $bif.b
         pack append $bif $bif.cb {top frame center expand fill}
      }
   }
}
proc InvertPopup { toppath } {
   if {"[wm state $toppath]" == "normal"} then {
      wm withdraw $toppath
   } else {
      wm deiconify $toppath
   }
   wm positionfrom $toppath user
}
)tcl";

// A true bool output shows white on red, a false one grey on light grey.
const char DISPLAY_PROCEDURES[] = R"tcl(proc TraceBO { tab bo op } {
   global OutputPaths OutputVars
   set val $OutputVars($bo)
   if { $val } then {
      $OutputPaths($bo).l configure -bg {#ff0000} -fg {#ffffff}
   } else {
      $OutputPaths($bo).l configure -bg {#efefef} -fg {#afafaf}
   }
}
proc TraceShowStepCtr {tab var op} {
   global Global
   if $Global(show_step_ctr) then {
      pack .menu.step_ctr -in .menu -side right
   } else {
      pack unpack .menu.step_ctr
   }
}
)tcl";

// A pressed bool input reads 1 for exactly one step.
void write_treat_bi(PtyStream* out, int debug) {
  out->put("proc TreatBI { bi } {\n");
  if (debug) out->put("   puts \"call of \\\"TreatBI \\{ $bi \\}\\\"\"\n");
  out->put("   global Global InputVars\n"
           "   #set the corresponding variable\n"
           "   set InputVars($bi) 1\n"
           "   #call a step of the reactive program\n"
           "   TreatStep\n"
           "   #unset the corresponding variable\n"
           "   set InputVars($bi) 0\n"
           "}\n");
}

// The scales set their variable themselves; this only decides whether a
// changed value steps. No generated widget calls it.
void write_treat_ii(PtyStream* out, int debug) {
  out->put("proc TreatII { ii val } {\n");
  if (debug) out->put("   puts \"call of \\\"TreatII \\{ $ii \\}\\\"\"\n");
  out->put("   global Global InputVars\n"
           "   #test the mode\n"
           "   if $Global(auto_step) then TreatStep\n"
           "}\n");
}

// In debug mode the reset command is only named, not called, whereas
// TreatStep calls the step command in both modes.
void write_treat_reset(PtyStream* out, int debug, const char* module) {
  out->put("proc TreatReset { } {\n"
           "   global Global InputVars OutputVars\n");
  if (debug) out->put("   puts \"call of \\\"TreatReset \\\"\"\n");
  out->put("   #reset the input values\n"
           "   foreach inme $Global(input_names) {\n"
           "      set InputVars($inme) 0\n"
           "   }\n"
           "   #reset the outputs values\n"
           "   foreach onme $Global(output_names) {\n"
           "      set OutputVars($onme) 0\n"
           "   }\n"
           "   #reset the history\n"
           "   Verbose \"#reset\"\n");
  if (debug)
    out->put("   puts \"call of external %s_reset\"\n", module);
  else
    out->put("   %s_reset\n", module);
  out->put("   set Global(step_ctr) 0\n"
           "}\n");
}

// A step whose command fails is not counted and echoes nothing.
void write_treat_step(PtyStream* out, int debug, const char* module) {
  out->put("proc TreatStep { } {\n"
           "   global Global InputVars OutputVars\n");
  if (debug) out->put("   puts \"call of external %s_step\"\n", module);
  out->put("   set step_ok [ catch %s_step ]\n", module);
  out->put("   if { $step_ok == 0 } then {\n"
           "      incr Global(step_ctr)\n"
           "      if $Global(verbose) then {\n"
           "         Verbose \"#step $Global(step_ctr)\" \n"
           "         foreach inme $Global(input_names) {\n"
           "            VerboseNNL \"$InputVars($inme) \" \n"
           "         }\n"
           "      }\n"
           "      if $Global(verbose) then {\n"
           "         VerboseNNL \"#outs \" \n"
           "         foreach onme $Global(output_names) {\n"
           "            VerboseNNL \"$OutputVars($onme) \" \n"
           "         }\n"
           "         Verbose \"\" \n"
           "      }\n"
           "   }\n"
           "}\n");
}

void write_procedures(PtyStream* out, int debug, const char* module) {
  out->put("###### Procedures \n");
  out->put(ECHO_PROCEDURES);
  out->put(MODE_PROCEDURES);
  write_treat_bi(out, debug);
  write_treat_ii(out, debug);
  out->put(DISPLAY_PROCEDURES);
  write_treat_reset(out, debug, module);
  write_treat_step(out, debug, module);
}

const char* const GLOBAL_LISTS[] = {
    "input_names", "input_types", "boolean_input_names", "output_names",
    "output_types", "bif_list", "iif_list", "rif_list",
    "bof_list", "iof_list", "rof_list"};

void write_settings(PtyStream* out, int debug) {
  out->put("set Global(verbose) %d\n", debug);
  out->put("set Global(verbose_channel) stdout\n"
           "set Global(show_step) 1 \n"
           "set Global(auto_step) 1 \n"
           "trace variable Global(auto_step) w TraceAutoStep\n"
           "set Global(step_ctr) 0\n"
           "set Global(show_step_ctr) 1 \n");
}

void write_main_window(PtyStream* out, const char* module) {
  out->put("###### Main window \n"
           "#Window Configuration\n"
           "wm positionfrom . \"\"\n"
           "wm sizefrom . \"\"\n"
           "wm maxsize . 1024 864\n");
  out->put("wm title . \"Orvane %s - %s\"\n", TK_SCRIPT_VERSION, module);
}

// A menu button ".menu.<word>" with its menu ".menu.<word>.m", held in
// Global(<word>_menu).
void write_menubutton(PtyStream* out, const char* word, const char* title) {
  out->put("menubutton .menu.%s \\\n", word);
  out->put("   -menu {.menu.%s.m} \\\n", word);
  out->put("   -text {%s}\\\n", title);
  out->put("   -underline {0}\n");
  out->put("set Global(%s_menu) \".menu.%s.m\"\n", word, word);
  out->put("menu $Global(%s_menu)\n", word);
}

// One menu entry: `kind` (command, checkbutton, radiobutton) and its
// options, each option on a continuation line, then "-underline {0}".
void write_entry(PtyStream* out, const char* word, const char* kind, const char* options) {
  out->put("$Global(%s_menu) add %s \\\n%s   -underline {0}\n", word, kind, options);
}

void write_separator(PtyStream* out, const char* word) {
  out->put("$Global(%s_menu) add separator\n", word);
}

void write_menus(PtyStream* out, const char* module) {
  out->put("###### Menu \n"
           "frame .menu \\\n"
           "   -borderwidth {2} \\\n"
           "   -relief {raised}\n");

  write_menubutton(out, "files", "Files");
  out->put("$Global(files_menu) add command \\\n");
  out->put("   -command { %s_save_iop } \\\n", module);
  out->put("   -label {Save %s.iop} \\\n", module);
  out->put("   -underline {0}\n");
  write_separator(out, "files");
  write_entry(out, "files", "command", "   -command { exit } \\\n   -label {Quit} \\\n");

  write_menubutton(out, "options", "Options");
  write_entry(out, "options", "checkbutton",
              "   -label {Verbose} \\\n   -variable {Global(verbose)} \\\n");
  write_entry(out, "options", "checkbutton",
              "   -label {Show Step button} \\\n   -variable {Global(show_step)} \\\n");
  write_entry(out, "options", "checkbutton",
              "   -label {Show Step counter} \\\n   -variable {Global(show_step_ctr)} \\\n");

  write_menubutton(out, "clocks", "Clocks");
  write_entry(out, "clocks", "command", "   -command { TreatReset } \\\n   -label {Reset} \\\n");
  write_separator(out, "clocks");
  write_entry(out, "clocks", "radiobutton",
              "   -label {Auto Step} \\\n   -value   {1} \\\n"
              "   -variable {Global(auto_step)} \\\n");
  write_entry(out, "clocks", "radiobutton",
              "   -label {Compose} \\\n   -value {0} \\\n"
              "   -variable {Global(auto_step)} \\\n");
  write_separator(out, "clocks");

  out->put("set Global(user_menu) \".menu.userframe\"\n"
           "frame $Global(user_menu)\n"
           "pack append .menu \\\n"
           "   .menu.files {left frame center} \\\n"
           "   .menu.options {left frame center} \\\n"
           "   .menu.clocks {left frame center} \\\n"
           "   $Global(user_menu) {left frame center}\n");
}

void write_step_button(PtyStream* out) {
  out->put("button .step \\\n"
           "   -command {TreatStep} \\\n"
           "   -text {Step}\n"
           "#step counter\n"
           "label .menu.step_ctr \\\n"
           "   -borderwidth {2} \\\n"
           "   -textvariable {Global(step_ctr)} \\\n"
           "   -relief {sunken}\n"
           "pack append .menu .menu.step_ctr {right frame center}\n");
}

void write_general_packing(PtyStream* out, bool has_top) {
  out->put("####### General packing \n"
           "pack append . \\\n"
           "   .menu  {top frame center fillx} \\\n");
  if (has_top) out->put("   .panel {top frame center expand fill} \\\n");
  out->put("   .step  {top frame center fillx}\n");
}

// Each trace is fired once by a self-assignment so that the initial state
// is shown.
void write_epilogue(PtyStream* out) {
  out->put("####### Epilogue ... \n");
  const char* traced[][2] = {{"verbose", "TraceVerbose"},
                             {"show_step", "TraceShowStep"},
                             {"show_step_ctr", "TraceShowStepCtr"}};
  for (auto& t : traced) {
    out->put("trace variable Global(%s) w %s\n", t[0], t[1]);
    out->put("set Global(%s) $Global(%s)\n", t[0], t[0]);
  }
}

// The leaves' variables: to_tk_var also sets the labels that the widgets
// use later.
void write_globals(PtyStream* out, IOPanel* panel, const char* module) {
  out->put("###### Global variables \n");
  out->put("set Global(module_name) \"%s\"\n", module);
  for (const char* list : GLOBAL_LISTS) out->put("set Global(%s) {}\n", list);
  if (!panel->inputs.empty()) {
    out->put("#Input variables \n");
    for (PanelInput* input : panel->inputs) input->to_tk_var(out);
  }
  if (!panel->outputs.empty()) {
    out->put("#Output variables \n");
    for (PanelOutput* output : panel->outputs) output->to_tk_var(out);
  }
  write_settings(out, panel->debug_tk);
}

// Without a top, ".panel" is created but never packed.
void write_user_panel(PtyStream* out, Panel* top) {
  out->put("####### User defined panel \n"
           "#User defined panel\n"
           "frame .panel \\\n"
           "   -borderwidth {2} \\\n"
           "   -relief {raised}\n");
  if (!top) return;
  top->to_tk(out, ".panel");
  out->put("#Top packing\n"
           "pack append .panel \\\n");
  out->put("   %s {top frame center expand fill}\n", top->path.c_str());
}

}  // namespace

void IOPanel::to_tk(PtyStream* out, int debug) {
  debug_tk = debug;
  // The session always names the module; an unnamed one writes "".
  const char* name = module == -1 ? "" : text(module);
  if (drawn_panels(top, kMaxDrawnPanels) > kMaxDrawnPanels)
    Error("IOPanel::to_tk : the panel of '%s' would draw more than %ld panels (the panels it "
          "refers to with '$' are drawn at each reference)", name, IOPanel::kMaxDrawnPanels);
  write_procedures(out, debug_tk, name);
  write_globals(out, this, name);
  write_main_window(out, name);
  write_menus(out, name);
  write_step_button(out);
  write_user_panel(out, top);
  write_general_packing(out, top != nullptr);
  write_epilogue(out);
  out->flush();
}
