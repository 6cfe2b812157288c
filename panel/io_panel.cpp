// io_panel.cpp -- the registry of named panels and the creation of nodes.
// Inputs and outputs are registered under their names as they are created;
// layout panels are anonymous until give_a_name or define_top names them.
#include "panel/io_panel.h"

#include "foundations/errors.h"
#include "panel/iop_lexer.h"
#include "panel/iop_reader.h"

void IOPanel::init(Tcl_Interp* i, SymbolTable* s) {
  interp = i;
  symbols = s;
  module = -1;
  top = nullptr;
  named.clear();
  by_name.clear();
  created.clear();
  inputs.clear();
  outputs.clear();
  input_count = output_count = 0;
  form_counter = frame_counter = 0;
  // The order of entry fixes the keys; other parts may rely on it.
  bool_key = symbols->add("bool");
  int_key = symbols->add("int");
  real_key = symbols->add("real");
  double_key = symbols->add("double");
  float_key = symbols->add("float");
  empty_key = symbols->add("%s", "");
}

Panel* IOPanel::get_by_name(int key) {
  auto found = by_name.find(key);
  return found == by_name.end() ? nullptr : found->second;
}

void IOPanel::give_a_name(int key, Panel* p) {
  if (p->name != -1)
    Error("IOPanel: can't give name '%s' (already named by '%s')", text(key), text(p->name));
  if (get_by_name(key)) Error("IOPanel can't give name '%s' (already used)", text(key));
  p->name = key;
  named.push_back(p);
  by_name[key] = p;
}

void IOPanel::define_top(Panel* p) {
  give_a_name(symbols->add("%s", iop_keyword(IOP_TOP)), p);
  if (top) Error("IOPanel: top panel defined twice\n");
  top = p;
}

Panel* IOPanel::hold(Panel* p) {
  created.push_back(p);
  return p;
}

void IOPanel::register_leaf(Panel* leaf, const char* who) {
  hold(leaf);
  if (get_by_name(leaf->name)) Error("IOPanel:%s : name '%s' already used", who, text(leaf->name));
  named.push_back(leaf);
  by_name[leaf->name] = leaf;
}

Panel* IOPanel::createPanelInput(int name, int type, IntList* modifiers) {
  PanelInput* input = new PanelInput(this, name, type, modifiers);
  register_leaf(input, "createPanelInput");
  inputs.push_back(input);
  input_count++;
  return input;
}

Panel* IOPanel::createPanelOutput(int name, int type, IntList* modifiers) {
  PanelOutput* output = new PanelOutput(this, name, type, modifiers);
  register_leaf(output, "createPanelOutput");
  outputs.push_back(output);
  output_count++;
  return output;
}

Panel* IOPanel::createPanelBox() { return hold(new PanelBox(this)); }

Panel* IOPanel::createPanelPopup(int label, Panel* son) {
  return hold(new PanelPopup(this, label, son));
}

Panel* IOPanel::createPanelLine(PanelList* list) {
  PanelForm* form = new PanelForm(this, PANEL_LINE);
  hold(form);
  initPanelForm(form, list);
  return form;
}

Panel* IOPanel::createPanelCol(PanelList* list) {
  PanelForm* form = new PanelForm(this, PANEL_COL);
  hold(form);
  initPanelForm(form, list);
  return form;
}

// The list is in display order: each son goes after the ones before it.
void IOPanel::initPanelForm(PanelForm* form, PanelList* list) {
  while (list) {
    PanelList* next = list->next;
    form->append_son(list->panel);
    delete list;
    list = next;
  }
}
