// iop_writer.cpp -- writing a panel as a description that the reader reads
// back to the same tree. Layout comes from the stream: tab/untab indent, cr
// starts an indented line. Keywords are spelt by the lexer's table.
#include "panel/io_panel.h"

#include <unistd.h>

#include <cstring>
#include <string>

#include "foundations/errors.h"
#include "foundations/replace_file.h"
#include "panel/iop_lexer.h"

namespace {

// Everything `f` holds, from its start.
std::string rest_of_file(FILE* f) {
  std::string text;
  rewind(f);
  char buffer[4096];
  for (size_t n; (n = fread(buffer, 1, sizeof buffer, f)) > 0;) text.append(buffer, n);
  return text;
}

// " \"text\"". A quote inside is written \" so that it reads back as itself;
// a text with a line break goes out raw, since the stream would indent the
// lines after the break and change the text.
void put_string(PtyStream* out, const char* text) {
  if (!strpbrk(text, "\"\n\f")) {
    out->put(" \"%s\"", text);
    return;
  }
  FILE* f = out->file();
  fputs(" \"", f);
  for (const char* c = text; *c; c++) {
    if (*c == '"') fputc('\\', f);
    fputc(*c, f);
  }
  fputc('"', f);
}

const char* keyword(int token) { return iop_keyword(token); }

const char* form_keyword(PanelFormMode mode) {
  return keyword(mode == PANEL_LINE ? IOP_LINE : IOP_COL);
}

}  // namespace

void PanelInOut::to_iop_decl(PtyStream* out) {
  out->cr();
  out->put("%s : %s", text(name), text(type));
  for (IntList* m = modifiers; m && m->next; m = m->next->next) {
    out->put(" %s =", text(m->value));
    put_string(out, text(m->next->value));
  }
  out->put(";");
}

void Panel::to_iop_exp(PtyStream* out) {
  if (name == -1) IError("Panel::to_iop_exp : undefined case");
  out->put(" $%s", text(name));
}

void PanelForm::write_body(PtyStream* out) {
  out->put("%s {", form_keyword(mode));
  out->tab();
  for (PanelList* s = sons; s; s = s->next) s->panel->to_iop_exp(out);
  out->untab();
  out->cr();
  out->put("}");
}

void PanelForm::to_iop_def(PtyStream* out) {
  if (name == -1) Error("PanelForm::to_iop_def : the node has no name");
  out->cr();
  out->put("%s = ", text(name));
  write_body(out);
  out->put(";");
}

void PanelForm::to_iop_exp(PtyStream* out) {
  if (name != -1) {
    out->put(" $%s", text(name));
    return;
  }
  out->cr();
  write_body(out);
}

void PanelBox::to_iop_def(PtyStream* out) {
  if (name == -1) Error("PanelBox::to_iop_def : the node has no name");
  out->cr();
  out->put("%s = %s ;", text(name), keyword(IOP_BOX));
}

void PanelBox::to_iop_exp(PtyStream* out) {
  if (name != -1) {
    out->put(" $%s", text(name));
    return;
  }
  out->put(" %s", keyword(IOP_BOX));
}

void PanelPopup::to_iop_def(PtyStream* out) {
  if (name == -1) Error("PanelPopup::to_iop_def : the node has no name");
  out->cr();
  out->put("%s = %s", text(name), keyword(IOP_POPUP));
  put_string(out, text(label));
  out->put(" ");
  son->to_iop_exp(out);
  out->put(";");
}

void PanelPopup::to_iop_exp(PtyStream* out) {
  if (name != -1) {
    out->put(" $%s", text(name));
    return;
  }
  out->put(" %s", keyword(IOP_POPUP));
  put_string(out, text(label));
  son->to_iop_exp(out);
}

// Sections with nothing in them are left out; "panels" is written as soon as
// any panel is named, leaves included.
static void write_sections(IOPanel* panel, PtyStream* out) {
  if (panel->module != -1) {
    out->put("%s", keyword(IOP_MODULE));
    put_string(out, panel->text(panel->module));
    out->cr();
  }
  if (!panel->inputs.empty()) {
    out->put("%s", keyword(IOP_INPUTS));
    out->tab();
    for (PanelInput* p : panel->inputs) p->to_iop_decl(out);
    out->untab();
    out->cr();
  }
  if (!panel->outputs.empty()) {
    out->put("%s", keyword(IOP_OUTPUTS));
    out->tab();
    for (PanelOutput* p : panel->outputs) p->to_iop_decl(out);
    out->untab();
    out->cr();
  }
  if (!panel->named.empty()) {
    out->put("%s", keyword(IOP_PANELS));
    out->tab();
    for (Panel* p : panel->named) p->to_iop_def(out);
    out->untab();
    out->cr();
  }
}

int IOPanel::write_iop(FILE* f) {
  if (f == stdout || f == stderr) {
    PtyStream out(f, 80, nullptr);
    write_sections(this, &out);
    return 1;
  }
  // The stream closes its file when it goes: give it a duplicate so that the
  // caller's stays open.
  fflush(f);
  FILE* copy = fdopen(dup(fileno(f)), "w");
  if (!copy) {
    Warning("IOPanel::write_iop : can't write to the stream given\n");
    return 0;
  }
  PtyStream out(copy, 80, nullptr);
  write_sections(this, &out);
  return 1;
}

// The description is a user's file, perhaps written by hand: it is replaced
// whole or not at all, and a former one that differs is kept.
int IOPanel::write_iop(const char* path) {
  FILE* text = path ? tmpfile() : nullptr;
  if (!text || !write_iop(text)) {
    if (text) fclose(text);
    Warning("IOPanel::write_iop : can't open '%s'\n", path ? path : "null");
    return 0;
  }
  std::string description = rest_of_file(text);
  fclose(text);
  switch (replace_file(path, description)) {
    case ReplaceResult::kWritten:
      return 1;
    case ReplaceResult::kKeptOld:
      Warning("IOPanel::write_iop : the former '%s' is kept as '%s~'\n", path, path);
      return 1;
    case ReplaceResult::kCannotOpen:
      Warning("IOPanel::write_iop : can't open '%s'\n", path);
      return 0;
    case ReplaceResult::kCannotWrite:
      break;
  }
  Warning("IOPanel::write_iop : can't write '%s', left as it was\n", path);
  return 0;
}

int IOPanel::write_iop() { return write_iop(stdout); }
