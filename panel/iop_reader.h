// iop_reader.h -- the helpers that the description grammar's actions call
// besides the IOPanel builders. They act on the panel being read.
#ifndef PANEL_IOP_READER_H
#define PANEL_IOP_READER_H

#include "foundations/int_list.h"
#include "panel/panel.h"

// The two-element list key, value.
IntList* iop_modifier(int key, int value);
// The panel already named `name`; fatal when there is none (no forward
// references).
Panel* iop_reference(int name);
// A list of sons is built backwards, each new son in front, so that a long
// one takes no walk; it is turned round once whole.
PanelList* iop_list_prepend(PanelList* list, Panel* p);
PanelList* iop_list_reverse(PanelList* list);
// Free the cells of a list the parser discards after a syntax error.
void iop_list_free(PanelList* list);
void iop_modifiers_free(IntList* list);

#endif
