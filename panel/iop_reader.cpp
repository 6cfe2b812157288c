// iop_reader.cpp -- reading a panel description into an IOPanel.
// The generated parser does the work; this file opens the file, reports
// the outcome, and holds the small builders its actions need.
#include "panel/iop_reader.h"

#include "foundations/chain.h"

#include <cstdio>

#include "foundations/errors.h"
#include "panel/io_panel.h"
#include "panel/iop_lexer.h"

IntList* iop_modifier(int key, int value) {
  int pair[2] = {key, value};
  return new IntList(pair, 2);
}

Panel* iop_reference(int name) {
  Panel* p = iop_panel()->get_by_name(name);
  if (!p)
    Error("IOPanel::read_iop: undefined ident '%s' line %d\n", iop_panel()->text(name), iop_line());
  return p;
}

PanelList* iop_list_prepend(PanelList* list, Panel* p) { return new PanelList{p, list}; }

PanelList* iop_list_reverse(PanelList* list) {
  PanelList* reversed = nullptr;
  while (list) {
    PanelList* next = list->next;
    list->next = reversed;
    reversed = list;
    list = next;
  }
  return reversed;
}

void iop_list_free(PanelList* list) { delete_chain(list); }

void iop_modifiers_free(IntList* list) {
  while (list) {
    IntList* next = list->next;
    delete list;
    list = next;
  }
}

int IOPanel::read_iop(const char* path) {
  FILE* f = path ? fopen(path, "r") : nullptr;
  if (!f) {
    Warning("IOPanel::read_iop : can't open '%s'\n", path ? path : "null");
    return 0;
  }
  // An empty file is reported as one that cannot be opened.
  if (!iop_parse_init(this, f)) {
    fclose(f);
    Warning("IOPanel::read_iop : can't open '%s'\n", path);
    return 0;
  }
  int status = iop_parse_parse();
  fclose(f);
  if (status == 0) return 1;
  Warning("IOPanel::read_iop: file '%s' syntax error line '%d'\n", path, iop_line());
  return 0;
}
