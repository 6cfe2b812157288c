// time_handler.h -- the one-shot timer commands add_timer and abort_timer.
// A pending timer is a TimeHandler record in one process-wide list; its
// token is the record's address in hexadecimal, valid while it is listed.
#ifndef APP_TIME_HANDLER_H
#define APP_TIME_HANDLER_H

#include <tcl.h>

struct TimeHandler {
  char token[56];       // the record's own token text, also the command result
  Tcl_TimerToken timer;
  Tcl_Interp* interp;   // where the script is evaluated
  char* script;         // private copy, owned
  TimeHandler* next;

  static TimeHandler* list;  // every pending record, newest first
};

// add_timer <milliseconds> <script>: arms a one-shot timer; the result is
// its token. The delay must be a positive int (trailing junk is ignored).
int create_a_time_handler(ClientData clientData, Tcl_Interp* interp, int argc, const char* argv[]);
// abort_timer <timer-token>: cancels a pending timer; an unknown token is
// a usage error.
int abort_a_time_handler(ClientData clientData, Tcl_Interp* interp, int argc, const char* argv[]);
// Frees every record without cancelling its Tcl timer: it runs only when
// add_timer is deleted, that is when the interpreter goes away.
void delete_all_time_handlers(ClientData clientData);
// The listed record whose token is `token`, or null.
TimeHandler* token2time_handler(const char* token);

// Registers add_timer and abort_timer; returns 0.
int TimeHandler_Init(Tcl_Interp* interp);

#endif
