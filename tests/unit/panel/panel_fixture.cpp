// panel_fixture.cpp -- the shared set-up of the panel tests.
#include "panel_fixture.h"

#include <cstdio>

// Everything a test builds stays reachable for the leak checker to the end
// of the process: as in the session, nothing of a panel is ever freed.
static std::vector<void*>* kept = new std::vector<void*>;

void PanelFixture::SetUp() {
  symbols = new SymbolTable(1000, 5041);
  kept->push_back(symbols);
  panel = new_panel();
}

IOPanel* PanelFixture::new_panel() {
  IOPanel* p = new IOPanel;
  p->init(nullptr, symbols);
  kept->push_back(p);
  return p;
}

int PanelFixture::read_text(const std::string& description, IOPanel* p) {
  char path[] = "/tmp/panel_test_XXXXXX";
  int fd = mkstemp(path);
  EXPECT_GE(fd, 0);
  FILE* f = fdopen(fd, "w");
  fputs(description.c_str(), f);
  fclose(f);
  int result = (p ? p : panel)->read_iop(path);
  remove(path);
  return result;
}

std::string PanelFixture::written(IOPanel* p) {
  FILE* f = tmpfile();
  EXPECT_EQ((p ? p : panel)->write_iop(f), 1);
  rewind(f);
  std::string s;
  for (int c; (c = fgetc(f)) != EOF;) s += static_cast<char>(c);
  fclose(f);
  return s;
}

static std::string exp_of(IOPanel* owner, Panel* p, bool defining);

static std::string sons_of(IOPanel* owner, PanelList* sons) {
  std::string s;
  for (PanelList* l = sons; l; l = l->next) s += " " + exp_of(owner, l->panel, false);
  return s;
}

static std::string exp_of(IOPanel* owner, Panel* p, bool defining) {
  if (p->name != -1 && !defining) return std::string("$") + owner->text(p->name);
  if (auto* form = dynamic_cast<PanelForm*>(p))
    return std::string(form->mode == PANEL_LINE ? "line{" : "col{") + sons_of(owner, form->sons) +
           " }";
  if (dynamic_cast<PanelBox*>(p)) return "box";
  if (auto* popup = dynamic_cast<PanelPopup*>(p))
    return std::string("popup<") + owner->text(popup->label) + ">(" +
           exp_of(owner, popup->son, false) + ")";
  return "?anonymous leaf";
}

static std::string decl_of(IOPanel* owner, PanelInOut* leaf) {
  std::string s = std::string(owner->text(leaf->name)) + ":" + owner->text(leaf->type);
  for (IntList* m = leaf->modifiers; m; m = m->next) s += std::string(" <") + owner->text(m->value) + ">";
  return s + ";";
}

std::string dump(IOPanel* p) {
  std::string s = "module<" + std::string(p->module == -1 ? "-" : p->text(p->module)) + ">";
  s += " in[";
  for (PanelInput* i : p->inputs) s += decl_of(p, i);
  s += "] out[";
  for (PanelOutput* o : p->outputs) s += decl_of(p, o);
  s += "]";
  for (Panel* n : p->named)
    if (!dynamic_cast<PanelInOut*>(n)) s += std::string(" ") + p->text(n->name) + "=" + exp_of(p, n, true);
  if (p->top) s += std::string(" top:") + p->text(p->top->name);
  return s;
}

std::string literal(const std::string& text) {
  std::string re;
  for (char c : text) {
    if (std::string("\\^$.|?*+()[]{}").find(c) != std::string::npos) re += '\\';
    re += c;
  }
  return re;
}
