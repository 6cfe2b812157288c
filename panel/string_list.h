// string_list.h -- a list of Tcl command texts handed to the simulation loop.
// Nodes are pushed at the front; each knows the length of the list from
// itself to the end. The texts are constants and are not copied.
#ifndef PANEL_STRING_LIST_H
#define PANEL_STRING_LIST_H

struct StringList {
  const char* text;
  StringList* next;
  int length;

  // Pushes `command` in front of `list` (which may be null); returns the new head.
  static StringList* push(StringList* list, const char* command) {
    return new StringList{command, list, list ? list->length + 1 : 1};
  }
};

#endif
