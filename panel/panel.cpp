// panel.cpp -- construction of the panel nodes, the sons of forms, and the
// operations that the base class refuses. The description writer is in
// iop_writer.cpp.
#include "panel/panel.h"

#include "foundations/errors.h"
#include "panel/io_panel.h"

Panel::Panel(IOPanel* o, int n, IntList* m) : name(n), modifiers(m), owner(o) {}

Panel::~Panel() {}

const char* Panel::text(int key) const { return owner->text(key); }

void Panel::to_iop_decl(PtyStream*) {}
void Panel::to_iop_def(PtyStream*) {}

void Panel::to_tk_var(PtyStream*) { IError("Panel::to_tk_var is only virtual"); }
void Panel::to_tk(PtyStream*, const char*) { IError("Panel::to_tk is only virtual"); }
// The texts are misspelt as they have always been; scripts may match them.
void Panel::add_son(Panel*) { Error("Panel:add_son() is only vurtual"); }
void Panel::append_son(Panel*) { Error("Panel:append_son() is only vurtual"); }
int Panel::type_ident() { Error("Panel:type_ident() is only virtual"); }

PanelForm::PanelForm(IOPanel* o, PanelFormMode m) : Panel(o, -1, nullptr), mode(m) {}

// Both insertions say "append": the text is the same for either.
void PanelForm::warn_if_linked(Panel* son) {
  if (!son->linked) return;
  Warning("PanelForm::append");
  Warning("   node already linked (are you building a dag ?)");
}

void PanelForm::add_son(Panel* son) {
  warn_if_linked(son);
  son->linked = 1;
  sons = new PanelList{son, sons};
  if (!last_son) last_son = sons;
}

void PanelForm::append_son(Panel* son) {
  warn_if_linked(son);
  son->linked = 1;
  PanelList* cell = new PanelList{son, nullptr};
  (last_son ? last_son->next : sons) = cell;
  last_son = cell;
}

PanelBox::PanelBox(IOPanel* o) : Panel(o, -1, nullptr) {}

PanelPopup::PanelPopup(IOPanel* o, int l, Panel* s) : Panel(o, -1, nullptr), label(l), son(s) {}

PanelInOut::PanelInOut(IOPanel* o, int n, int t, IntList* m)
    : Panel(o, n, m), type(t), label(n) {}

int PanelInOut::type_ident() { return type; }

PanelInput::PanelInput(IOPanel* o, int n, int t, IntList* m) : PanelInOut(o, n, t, m) {}

PanelOutput::PanelOutput(IOPanel* o, int n, int t, IntList* m) : PanelInOut(o, n, t, m) {}
