// panel.h -- the nodes of a panel: rows and columns, boxes, pop-ups, and the
// input and output leaves. Every name is a symbol key (-1: anonymous). Nodes
// are never freed: a tree lives as long as the session that built it.
#ifndef PANEL_PANEL_H
#define PANEL_PANEL_H

#include <string>

#include "foundations/int_list.h"
#include "foundations/pty_stream.h"

class IOPanel;
class Panel;

// A singly linked list of panels: the sons of a form, and the list that the
// description reader builds before the form exists.
struct PanelList {
  Panel* panel;
  PanelList* next;
};

enum PanelFormMode { PANEL_LINE = 0, PANEL_COL = 1 };

class Panel {
 public:
  Panel(IOPanel* owner, int name, IntList* modifiers);
  virtual ~Panel();

  // The panel as a declaration line of a description: inputs and outputs
  // only; nothing for the others.
  virtual void to_iop_decl(PtyStream* out);
  // The panel as a named definition; nothing for inputs and outputs, fatal
  // for an anonymous layout panel.
  virtual void to_iop_def(PtyStream* out);
  // The panel inside another definition: " $name" when it has a name, else
  // its expression. An anonymous leaf is an internal error.
  virtual void to_iop_exp(PtyStream* out);
  // The Tcl variable set-up of a leaf. Internal error here.
  virtual void to_tk_var(PtyStream* out);
  // The Tk widgets of the panel below `parent_path`; records `path`.
  // Internal error here.
  virtual void to_tk(PtyStream* out, const char* parent_path);
  // Sons of a form, at the front or the back. Fatal here.
  virtual void add_son(Panel* son);
  virtual void append_son(Panel* son);
  // The type key of a leaf. Fatal here.
  virtual int type_ident();

  // The text of a symbol key, through the owner's table.
  const char* text(int key) const;

  int name;             // symbol key, -1 when anonymous
  int linked = 0;       // 1 once a form holds it as a son
  IntList* modifiers;   // key, value, key, value...; null when none
  IOPanel* owner;
  std::string path;     // Tk widget path, empty until the widgets are written
};

// A row (PANEL_LINE, sons side by side) or a column (PANEL_COL).
class PanelForm : public Panel {
 public:
  PanelForm(IOPanel* owner, PanelFormMode mode);

  void to_iop_def(PtyStream* out) override;
  void to_iop_exp(PtyStream* out) override;
  // A frame numbered by the form counter, the sons' widgets inside it,
  // packed side by side (line) or one above the other (col).
  void to_tk(PtyStream* out, const char* parent_path) override;
  // Both warn when the son is already linked, then link it anyway: a panel
  // shown in two places is allowed.
  void add_son(Panel* son) override;
  void append_son(Panel* son) override;

  PanelFormMode mode;
  PanelList* sons = nullptr;  // in display order
  PanelList* last_son = nullptr;  // the last cell of sons, so that appending takes no walk

 private:
  // Writes "line {" or "col {", the sons, and the closing "}".
  void write_body(PtyStream* out);
  void warn_if_linked(Panel* son);
};

// An empty spacer frame.
class PanelBox : public Panel {
 public:
  explicit PanelBox(IOPanel* owner);

  void to_iop_def(PtyStream* out) override;
  void to_iop_exp(PtyStream* out) override;
  // A frame numbered by the frame counter holding a label: the box's name,
  // or a blank when it has none.
  void to_tk(PtyStream* out, const char* parent_path) override;
};

// A labelled button that opens `son` in a window of its own. The son is not
// marked linked: it may also appear in a form without a warning.
class PanelPopup : public Panel {
 public:
  PanelPopup(IOPanel* owner, int label, Panel* son);

  void to_iop_def(PtyStream* out) override;
  void to_iop_exp(PtyStream* out) override;
  // A button in the panel toggling a withdrawn top-level window that holds
  // the son's widgets; the pop-up is numbered before its son.
  void to_tk(PtyStream* out, const char* parent_path) override;

  int label;   // symbol key of the button text
  Panel* son;
};

// A leaf bound to one program variable.
class PanelInOut : public Panel {
 public:
  PanelInOut(IOPanel* owner, int name, int type, IntList* modifiers);

  // "name : type", the modifiers with every value as a string, ";".
  void to_iop_decl(PtyStream* out) override;
  int type_ident() override;

  int type;    // symbol key of the type name as written
  int label;   // symbol key of the text beside the widget
};

// The Tk side of a leaf. to_tk_var reads the modifiers (unknown keys are
// warned about and skipped) and sets `label`, which to_tk then uses: it
// must come first. An empty label writes no label line. An unknown type
// name is an internal error in both.
class PanelInput : public PanelInOut {
 public:
  PanelInput(IOPanel* owner, int name, int type, IntList* modifiers);

  void to_tk_var(PtyStream* out) override;
  void to_tk(PtyStream* out, const char* parent_path) override;
  // The widgets of one type, in a frame numbered by the frame counter.
  void bool_to_tk(PtyStream* out, const char* parent_path);
  void int_to_tk(PtyStream* out, const char* parent_path);
  void real_to_tk(PtyStream* out, const char* parent_path);
};

class PanelOutput : public PanelInOut {
 public:
  PanelOutput(IOPanel* owner, int name, int type, IntList* modifiers);

  void to_tk_var(PtyStream* out) override;
  void to_tk(PtyStream* out, const char* parent_path) override;
  void bool_to_tk(PtyStream* out, const char* parent_path);
  void int_to_tk(PtyStream* out, const char* parent_path);
  void real_to_tk(PtyStream* out, const char* parent_path);
};

#endif
