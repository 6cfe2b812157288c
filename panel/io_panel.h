// io_panel.h -- the panel of a session: its tree of nodes, the registry of
// named panels, and what the Tcl side of the simulation loop needs. A name
// is given at most once and a panel carries at most one name; nothing is
// ever removed from the registry.
#ifndef PANEL_IO_PANEL_H
#define PANEL_IO_PANEL_H

#include <tcl.h>

#include <cstdio>
#include <unordered_map>
#include <vector>

#include "foundations/int_list.h"
#include "foundations/symbol_table.h"
#include "panel/panel.h"

#include "panel/string_list.h"

class IOPanel {
 public:
  // Stores both (neither is owned), empties the tree and the registry and
  // enters the type names into the table. Must come before anything else.
  void init(Tcl_Interp* interp, SymbolTable* symbols);

  // The registered panel named `key`, or null.
  Panel* get_by_name(int key);
  // Names `p` and registers it. Fatal when `p` already has a name or when
  // `key` is taken.
  void give_a_name(int key, Panel* p);
  // Names `p` "top" (through give_a_name) and makes it the top panel.
  // Fatal when the name is taken or a top exists already.
  void define_top(Panel* p);

  // A leaf named `name`, registered and appended to the inputs (outputs).
  // Fatal when the name is taken. The type is not checked here.
  Panel* createPanelInput(int name, int type, IntList* modifiers);
  Panel* createPanelOutput(int name, int type, IntList* modifiers);
  // Anonymous layout panels. The pop-up's son is not marked linked.
  Panel* createPanelBox();
  Panel* createPanelPopup(int label, Panel* son);
  // Anonymous forms holding the listed panels in list order; the list
  // cells are freed.
  Panel* createPanelLine(PanelList* list);
  Panel* createPanelCol(PanelList* list);
  void initPanelForm(PanelForm* form, PanelList* list);

  // Reads a panel description into this panel. 1 when the whole file was
  // read; 0, with a warning, when it cannot be opened, is empty or has a
  // syntax error (what was built before the error stays). Lexical errors,
  // undefined references and naming conflicts are fatal.
  int read_iop(const char* path);
  // Writes the panel as a description that read_iop reads back to the same
  // tree. 1 on success; 0, with a warning, when `path` cannot be opened.
  // The stream given is flushed, not closed. A file at `path` is replaced
  // whole or left as it was (see replace_file); one whose text differed is
  // kept as "<path>~", with a warning that says so.
  int write_iop(FILE* f);
  int write_iop(const char* path);
  int write_iop();

  // Writes the whole Tk script of the panel: procedures, variables, menus,
  // the widgets of the tree below ".panel", packing and traces. `debug`
  // (0 or 1) is stored in debug_tk; it makes the script echo its calls,
  // starts the echo switched on, and keeps TreatReset from calling the
  // module's reset command. Numbers widget paths from the form and frame
  // counters, which it does not reset. A panel that would draw more than
  // kMaxDrawnPanels panels (shared sub-panels drawn at each reference) is
  // fatal, before anything is written.
  void to_tk(PtyStream* out, int debug);
  static constexpr long kMaxDrawnPanels = 100000;

  // Starts the simulation loop: registers the commands "<module>_reset",
  // "<module>_step" and "<module>_save_iop", writes the Tk script of the
  // panel to "<module>_<pid>.tcl", sources it, then the rc file (if any),
  // then evaluates the extra commands in order, and removes the script
  // unless debug_tk is set. Every failure is fatal.
  void init_loop(int debug_tk, void* client, int (*reset)(void*), int (*step)(void*),
                 const char* rc_file, StringList* extra);
  // InputVars(<name of input index>) converted by the input's type and
  // stored at `location` (nothing when it is null). Fatal when the text
  // does not convert. Returns 0.
  int export_loop_input(int index, void* location);
  // The value at `location` formatted by the output's type into
  // OutputVars(<name of output index>), firing its traces. 0 on success,
  // 1 when Tcl refused the assignment. A null location writes nothing.
  int import_loop_output(int index, const void* location);
  // A modal tk_dialog with `n` buttons labelled by the const char*
  // arguments; returns the label pressed. A dialog closed without a choice
  // (or any answer that is not a button's index) returns the first label.
  const char* dialog(const char* title, const char* text, int n, ...);

  // The text of a symbol key.
  const char* text(int key) { return symbols->text(key); }

  int debug_tk = 0;
  SymbolTable* symbols = nullptr;
  int module = -1;                    // symbol key of the module name
  Panel* top = nullptr;
  std::vector<Panel*> named;          // in naming order, leaves included
  std::unordered_map<int, Panel*> by_name;  // the same, by name key
  int input_count = 0;
  int output_count = 0;
  std::vector<PanelInput*> inputs;    // in declaration order
  std::vector<PanelOutput*> outputs;
  Tcl_Interp* interp = nullptr;       // the loop refuses to run while null
  // Every node created here, named or not, attached or not: the panel holds
  // its whole tree for as long as it lives, even the parts that a failed
  // read left unattached.
  std::vector<Panel*> created;

  // Settings of the simulation loop, stored when it starts.
  int debug_loop = 0;
  void* client_data = nullptr;        // handed back to the callbacks
  int (*reset_callback)(void*) = nullptr;
  int (*step_callback)(void*) = nullptr;
  const char* rc_file = nullptr;
  StringList* extra_commands = nullptr;
  PanelInput** input_array = nullptr;   // inputs by exchange index
  PanelOutput** output_array = nullptr;

  int form_counter = 0;   // numbers the widget paths of forms
  int frame_counter = 0;  // numbers those of every other node

  // Type keys, entered by init.
  int bool_key = -1;
  int int_key = -1;
  int real_key = -1;
  int double_key = -1;
  int float_key = -1;
  int empty_key = -1;

 private:
  // Writes the Tk script of the panel to `script`, whole, or ends the
  // process with a diagnostic that names the file, the directory and why.
  void write_script(const char* script, int debug);
  // Registers a new leaf after checking that its name is free; `who` names
  // the operation in the message.
  void register_leaf(Panel* leaf, const char* who);
  // Enters `p` in `created`; returns it.
  Panel* hold(Panel* p);
};

#endif
