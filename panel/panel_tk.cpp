// panel_tk.cpp -- the Tk side of the panel nodes: the variable set-up of
// the leaves (to_tk_var) and the widgets of every node (to_tk). Each node
// makes one frame below its parent's path; forms are numbered by the form
// counter, every other node by the frame counter, before its sons.
#include "panel/panel.h"

#include <cstring>
#include <vector>

#include "foundations/errors.h"
#include "panel/io_panel.h"

namespace {

// "<parent>.<component><number>", the path of a node's frame.
std::string numbered_path(const char* parent, const char* component, int number) {
  return std::string(parent) + "." + component + std::to_string(number);
}

enum LeafKind { LEAF_BOOL, LEAF_INT, LEAF_REAL, LEAF_UNKNOWN };

// real, double and float share the widgets and variables of real values.
LeafKind kind_of(PanelInOut* leaf) {
  IOPanel* owner = leaf->owner;
  if (leaf->type == owner->bool_key) return LEAF_BOOL;
  if (leaf->type == owner->int_key) return LEAF_INT;
  if (leaf->type == owner->real_key || leaf->type == owner->double_key ||
      leaf->type == owner->float_key)
    return LEAF_REAL;
  return LEAF_UNKNOWN;
}

// The settings a leaf takes from its modifiers; -1 where none was given.
struct LeafSettings {
  int min = -1;
  int max = -1;
  int step = -1;
};

// Reads the modifier pairs of `leaf`: a "label" replaces the label, the
// range keys are recorded when `with_range`; any other key draws the
// warning `who` names and is skipped.
LeafSettings read_modifiers(PanelInOut* leaf, bool with_range, const char* who) {
  LeafSettings settings;
  leaf->label = leaf->name;
  for (IntList* m = leaf->modifiers; m && m->next; m = m->next->next) {
    const char* key = leaf->text(m->value);
    int value = m->next->value;
    if (strcmp(key, "label") == 0)
      leaf->label = value;
    else if (with_range && strcmp(key, "min") == 0)
      settings.min = value;
    else if (with_range && strcmp(key, "max") == 0)
      settings.max = value;
    else if (with_range && strcmp(key, "step") == 0)
      settings.step = value;
    else
      Warning("%s:var2tk: unrecognized modifier ``%s''\n", who, key);
  }
  return settings;
}

const char* value_or(PanelInOut* leaf, int key, const char* fallback) {
  return key == -1 ? fallback : leaf->text(key);
}

// `text` as the body of a double-quoted Tcl word: the characters Tcl would
// substitute, or that would end the word, are escaped.
std::string quoted_body(const char* text) {
  std::string body;
  for (const char* c = text; *c; ++c) {
    if (strchr("\\\"$[]", *c)) body += '\\';
    body += *c;
  }
  return body;
}

// `text` as one Tcl word: between braces, which keep it as written, unless
// its braces are unbalanced or it holds a backslash (braces would then end
// early or keep the backslash); such a text is quoted with escapes instead.
std::string tcl_word(const char* text) {
  int depth = 0;
  for (const char* c = text; *c && depth >= 0; ++c) {
    if (*c == '\\') depth = -1;
    else if (*c == '{') ++depth;
    else if (*c == '}') --depth;
  }
  if (depth == 0) return std::string("{") + text + "}";
  return "\"" + quoted_body(text) + "\"";
}

// An empty label (a "label" modifier with the empty string) hides the
// label line of the widget.
bool shows_label(PanelInOut* leaf) { return leaf->label != leaf->owner->empty_key; }

// The two labels of an int or real output: its name and its value.
void value_output_widgets(PtyStream* out, PanelOutput* leaf, const char* list) {
  const char* p = leaf->path.c_str();
  const char* n = leaf->text(leaf->name);
  out->put("label %s.ln\\\n", p);
  if (shows_label(leaf)) out->put(" -text \"$VarLabel(%s)\" \\\n", n);
  out->put(" -anchor {sw}\n");
  out->put("label %s.lv\\\n", p);
  out->put(" -relief {groove}\\\n");
  out->put(" -textvariable {OutputVars(%s)}\n", n);
  out->put("pack append %s \\\n", p);
  out->put("   %s.ln \\\n", p);
  out->put("      {top frame center expand fill}\\\n");
  out->put("   %s.lv \\\n", p);
  out->put("      {top frame center expand fill}\n");
  out->put("lappend Global(%s) %s\n", list, p);
}

}  // namespace

// ---------------------------------------------------------------- layout

void PanelForm::to_tk(PtyStream* out, const char* parent_path) {
  path = numbered_path(parent_path, "f", ++owner->form_counter);
  out->put("frame %s\n", path.c_str());
  // Each son's path is taken as soon as it is written: a panel shown twice
  // in this form gets a frame, and a packing, per place.
  std::vector<std::string> son_paths;
  for (PanelList* l = sons; l; l = l->next) {
    l->panel->to_tk(out, path.c_str());
    son_paths.push_back(l->panel->path);
  }
  const char* side = mode == PANEL_LINE ? "left" : "top";
  out->put("pack append %s", path.c_str());
  out->tab();
  for (const std::string& son : son_paths) {
    out->put("\\");
    out->cr();
    out->put("%s {%s frame center expand fill}", son.c_str(), side);
  }
  out->untab();
  out->cr();
}

void PanelBox::to_tk(PtyStream* out, const char* parent_path) {
  path = numbered_path(parent_path, "box", ++owner->frame_counter);
  const char* p = path.c_str();
  out->put("frame %s\n", p);
  if (name == -1)
    out->put("label %s.l -text { }\n", p);
  else
    out->put("label %s.l -text {%s}\n", p, text(name));
  out->put("pack append %s \\\n", p);
  out->put("   %s.l \\\n", p);
  out->put("   {top frame center expand fill}\n");
}

// The window "<path>.tl" starts withdrawn; the button in the panel and the
// window's own dismiss button both toggle it. The son lives in "<path>.tl.f".
void PanelPopup::to_tk(PtyStream* out, const char* parent_path) {
  path = numbered_path(parent_path, "pop", ++owner->frame_counter);
  const char* p = path.c_str();
  std::string top_level = path + ".tl";
  const char* tl = top_level.c_str();
  std::string content = top_level + ".f";
  std::string title_body = quoted_body(text(label));
  const char* title = title_body.c_str();

  out->put("frame %s\n", p);
  out->put("toplevel %s\n", tl);
  out->put("wm withdraw %s\n", tl);
  out->put("wm positionfrom %s program\n", tl);
  out->put("wm title %s \"%s\"\n", tl, title);
  out->put("button %s.dismiss \\\n", tl);
  out->put("   -text \"dismiss\"\\\n");
  out->put("   -font {helvetica 12 italic} -fg blue\\\n");
  out->put("   -command \"InvertPopup %s\"\n", tl);
  out->put("frame %s -bd 2 -relief sunken\n", content.c_str());
  out->put("pack %s -side top -expand 1 -fill both\n", content.c_str());
  out->put("pack %s.dismiss -side top -anchor center -expand 0 -fill none\n", tl);

  out->put("button %s.b\\\n", p);
  out->put(" -text \"%s\"\\\n", title);
  out->put(" -command \"InvertPopup %s\"\\\n", tl);
  out->put(" -font {helvetica 12 italic} -fg blue\n");
  son->to_tk(out, content.c_str());
  out->put("pack append %s \\\n", p);
  out->put("   %s.b {top frame center expand fill}\n", p);
  out->put("pack %s -side top -expand 1 -fill both\n", son->path.c_str());
}

// ---------------------------------------------------------------- inputs

void PanelInput::to_tk_var(PtyStream* out) {
  const char* n = text(name);
  out->put("lappend Global(input_names) %s\n", n);
  out->put("lappend Global(input_types) %s\n", text(type));
  LeafSettings s = read_modifiers(this, true, "PanelInput");
  out->put("set VarLabel(%s) %s\n", n, tcl_word(text(label)).c_str());
  switch (kind_of(this)) {
    case LEAF_BOOL:
      out->put("set InputVars(%s) 0\n", n);
      out->put("lappend Global(boolean_input_names) %s\n", n);
      return;
    case LEAF_INT:
      out->put("set MinInt(%s) {%s}\n", n, value_or(this, s.min, "-256"));
      out->put("set MaxInt(%s) {%s}\n", n, value_or(this, s.max, "255"));
      return;
    case LEAF_REAL:
      out->put("set MinReal(%s) {%s}\n", n, value_or(this, s.min, "-100.0"));
      out->put("set MaxReal(%s) {%s}\n", n, value_or(this, s.max, "100.0"));
      out->put("set StepReal(%s) {%s}\n", n, value_or(this, s.step, "0.1"));
      return;
    case LEAF_UNKNOWN:
      break;
  }
  IError("PanelInput::to_tk_var : unknown type '%s'\n", text(type));
}

void PanelInput::to_tk(PtyStream* out, const char* parent_path) {
  switch (kind_of(this)) {
    case LEAF_BOOL: bool_to_tk(out, parent_path); break;
    case LEAF_INT: int_to_tk(out, parent_path); break;
    case LEAF_REAL: real_to_tk(out, parent_path); break;
    case LEAF_UNKNOWN: IError("PanelInput::to_tk:  unknown type '%s'\n", text(type));
  }
  out->put("set InputPaths(%s) {%s}\n", text(name), path.c_str());
}

// A push button for Auto Step mode and a check button for Compose mode;
// the mode in force when the script runs decides which one is packed.
void PanelInput::bool_to_tk(PtyStream* out, const char* parent_path) {
  path = numbered_path(parent_path, "bif", ++owner->frame_counter);
  const char* p = path.c_str();
  const char* n = text(name);
  out->put("frame %s\n", p);
  out->put("button %s.b\\\n", p);
  if (shows_label(this)) out->put(" -text \"$VarLabel(%s)\" \\\n", n);
  out->put("-command {TreatBI {%s}}\n", n);
  out->put("checkbutton %s.cb\\\n", p);
  if (shows_label(this)) out->put("-text \"$VarLabel(%s)\" \\\n", n);
  out->put("-variable {InputVars(%s)}\n", n);
  out->put("if $Global(auto_step) then {\n");
  out->put("pack append %s \\\n   %s.b \\\n   {top frame center expand fill}\n", p, p);
  out->put("} else {\n");
  out->put("pack append %s \\\n   %s.cb \\\n   {top frame center expand fill}\n", p, p);
  out->put("}\n");
  out->put("lappend Global(bif_list) %s\n", p);
}

void PanelInput::int_to_tk(PtyStream* out, const char* parent_path) {
  path = numbered_path(parent_path, "iif", ++owner->frame_counter);
  const char* p = path.c_str();
  const char* n = text(name);
  out->put("frame %s\n", p);
  out->put("scale %s.is\\\n", p);
  if (shows_label(this)) out->put("   -label \"$VarLabel(%s)\" \\\n", n);
  out->put("   -from \"$MinInt(%s)\" \\\n", n);
  out->put("   -to \"$MaxInt(%s)\" \\\n", n);
  out->put("   -orient {horizontal}\\\n");
  out->put("   -relief {raised}\\\n");
  out->put("   -variable {InputVars(%s)}\n", n);
  out->put("pack append %s \\\n", p);
  out->put("   %s.is {left frame center expand fill} \n", p);
  out->put("lappend Global(iif_list) %s\n", p);
}

void PanelInput::real_to_tk(PtyStream* out, const char* parent_path) {
  path = numbered_path(parent_path, "rif", ++owner->frame_counter);
  const char* p = path.c_str();
  const char* n = text(name);
  out->put("frame %s\n", p);
  out->put("scale %s.rs\\\n", p);
  if (shows_label(this)) out->put("   -label \"$VarLabel(%s)\" \\\n", n);
  out->put("   -from \"$MinReal(%s)\" \\\n", n);
  out->put("   -to \"$MaxReal(%s)\" \\\n", n);
  out->put("   -resolution \"$StepReal(%s)\" \\\n", n);
  out->put("   -orient {horizontal}\\\n");
  out->put("   -relief {raised}\\\n");
  out->put("   -variable {InputVars(%s)}\n", n);
  out->put("pack append %s \\\n", p);
  out->put("   %s.rs {left frame center expand fill} \n", p);
  out->put("lappend Global(rif_list) %s\n", p);
}

// ---------------------------------------------------------------- outputs

void PanelOutput::to_tk_var(PtyStream* out) {
  const char* n = text(name);
  out->put("lappend Global(output_names) %s\n", n);
  out->put("lappend Global(output_types) %s\n", text(type));
  read_modifiers(this, false, "PanelOutput");
  out->put("set VarLabel(%s) %s\n", n, tcl_word(text(label)).c_str());
  if (kind_of(this) == LEAF_UNKNOWN)
    IError("PanelOutput::to_tk_var : unknown type '%s'\n", text(type));
  out->put("set OutputVars(%s) ?\n", n);
}

void PanelOutput::to_tk(PtyStream* out, const char* parent_path) {
  switch (kind_of(this)) {
    case LEAF_BOOL: bool_to_tk(out, parent_path); break;
    case LEAF_INT: int_to_tk(out, parent_path); break;
    case LEAF_REAL: real_to_tk(out, parent_path); break;
    case LEAF_UNKNOWN: IError("PanelOutput::to_tk:  unknown type '%s'\n", text(type));
  }
  out->put("set OutputPaths(%s) {%s}\n", text(name), path.c_str());
}

// The label is recoloured by TraceBO whenever the output is written. Its
// command ends on a line of its own, so that it stays whole without the
// label line.
void PanelOutput::bool_to_tk(PtyStream* out, const char* parent_path) {
  path = numbered_path(parent_path, "bof", ++owner->frame_counter);
  const char* p = path.c_str();
  const char* n = text(name);
  out->put("frame %s\n", p);
  out->put("label %s.l\\\n", p);
  if (shows_label(this)) out->put(" -text \"$VarLabel(%s)\" ", n);
  out->put("\n");
  out->put("trace variable OutputVars(%s) w TraceBO\n", n);
  out->put("pack append %s \\\n", p);
  out->put("   %s.l \\\n", p);
  out->put("   {top frame center expand fill}\n");
  out->put("lappend Global(bof_list) %s\n", p);
}

void PanelOutput::int_to_tk(PtyStream* out, const char* parent_path) {
  path = numbered_path(parent_path, "iof", ++owner->frame_counter);
  out->put("frame %s\n", path.c_str());
  value_output_widgets(out, this, "iof_list");
}

void PanelOutput::real_to_tk(PtyStream* out, const char* parent_path) {
  path = numbered_path(parent_path, "rof", ++owner->frame_counter);
  out->put("frame %s\n", path.c_str());
  value_output_widgets(out, this, "rof_list");
}
