// panel_fixture.cpp -- the shared set-up of the panel tests.
#include "panel_fixture.h"

#include <cstdio>

#include "test_support.h"

using testsupport::kept;

void PanelFixture::SetUp() {
  symbols = kept(new SymbolTable(1000, 5041));
  panel = new_panel();
}

IOPanel* PanelFixture::new_panel() {
  IOPanel* p = kept(new IOPanel);
  p->init(nullptr, symbols);
  return p;
}

int PanelFixture::read_text(const std::string& description, IOPanel* p) {
  std::string path = testsupport::write_temp(description, ".iop");
  int result = (p ? p : panel)->read_iop(path.c_str());
  remove(path.c_str());
  return result;
}

std::string PanelFixture::written(IOPanel* p) {
  FILE* f = tmpfile();
  EXPECT_EQ((p ? p : panel)->write_iop(f), 1);
  std::string s = testsupport::rest_of(f);
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

