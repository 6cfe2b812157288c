// time_handler.cpp -- the one-shot timer commands add_timer and abort_timer.
#include "app/time_handler.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

TimeHandler* TimeHandler::list = nullptr;

static char ADD_USAGE[] = "usage : add_timer <milliseconds> <script>";
static char ABORT_USAGE[] = "usage : abort_timer <timer-token>";

// Removes `record` from the list if it is still there. The list is walked
// afresh because a timer script may have added or aborted timers.
static void unlink_record(TimeHandler* record) {
  if (TimeHandler::list == record) {
    TimeHandler::list = record->next;
    return;
  }
  for (TimeHandler* h = TimeHandler::list; h; h = h->next) {
    if (h->next == record) {
      h->next = record->next;
      return;
    }
  }
}

static void free_record(TimeHandler* record) {
  delete[] record->script;
  delete record;
}

// Timer expiry: the script runs once; its errors are deliberately ignored.
static void call_a_script(ClientData clientData) {
  TimeHandler* record = static_cast<TimeHandler*>(clientData);
  Tcl_Eval(record->interp, record->script);
  unlink_record(record);
  free_record(record);
}

int create_a_time_handler(ClientData, Tcl_Interp* interp, int argc, const char* argv[]) {
  if (argc != 3) {
    Tcl_SetResult(interp, ADD_USAGE, TCL_STATIC);
    return TCL_ERROR;
  }
  int delay = static_cast<int>(strtol(argv[1], nullptr, 10));
  if (delay <= 0) {
    Tcl_SetResult(interp, ADD_USAGE, TCL_STATIC);
    return TCL_ERROR;
  }
  TimeHandler* record = new TimeHandler;
  record->interp = interp;
  record->script = new char[strlen(argv[2]) + 1];
  strcpy(record->script, argv[2]);
  record->next = TimeHandler::list;
  TimeHandler::list = record;
  snprintf(record->token, sizeof record->token, "%lx", reinterpret_cast<unsigned long>(record));
  record->timer = Tcl_CreateTimerHandler(delay, call_a_script, record);
  Tcl_SetResult(interp, record->token, TCL_STATIC);
  return TCL_OK;
}

TimeHandler* token2time_handler(const char* token) {
  unsigned long address;
  if (sscanf(token, "%lx", &address) != 1) return nullptr;
  for (TimeHandler* h = TimeHandler::list; h; h = h->next)
    if (reinterpret_cast<unsigned long>(h) == address) return h;
  return nullptr;
}

int abort_a_time_handler(ClientData, Tcl_Interp* interp, int argc, const char* argv[]) {
  TimeHandler* record = argc == 2 ? token2time_handler(argv[1]) : nullptr;
  if (!record) {
    Tcl_SetResult(interp, ABORT_USAGE, TCL_STATIC);
    return TCL_ERROR;
  }
  Tcl_DeleteTimerHandler(record->timer);
  unlink_record(record);
  free_record(record);
  return TCL_OK;
}

void delete_all_time_handlers(ClientData) {
  while (TimeHandler* record = TimeHandler::list) {
    TimeHandler::list = record->next;
    free_record(record);
  }
}

int TimeHandler_Init(Tcl_Interp* interp) {
  Tcl_CreateCommand(interp, "add_timer", create_a_time_handler, nullptr, delete_all_time_handlers);
  Tcl_CreateCommand(interp, "abort_timer", abort_a_time_handler, nullptr, nullptr);
  return 0;
}
