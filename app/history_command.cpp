// history_command.cpp -- the tavik_history command. Its subcommands:
//   size                   the number of instants recorded
//   flows                  one {name kind type} per column: the inputs, outputs
//                          and locals (kind input, output, local), then the
//                          assertions ({assert_1 assertion bool} ...)
//   rows FROM TO           the instants FROM to TO-1 (0-based), each a list
//                          {after-reset cell...}: a cell is the value as the
//                          window shows it, nil, divbyzero, or {} when absent;
//                          an assertion's cell is 1, 0, nil or {}
//   reset_pending          1 when a reset came after the last instant
//   save_scenario FILE     the inputs of every instant, and the resets
//   export FILE csv|vcd    the trace, locals included (neither is written
//                          over the program or the panel description)
//   replay_open FILE       reads a scenario for the program and checks it whole;
//                          the number of instants it holds
//   replay_next            the next event of that scenario: {instant VALUES}
//                          (one text per input), reset, or end
//   until CONDITION        compiles a condition in ec over the program's flows;
//                          an error says what is wrong and where in it
//   until_holds            runs the condition on the last recorded instant:
//                          1 when it holds
#include "app/history_command.h"

#include <cstring>
#include <memory>
#include <string>
#include <utility>

#include "ecexe/rp_exe.h"
#include "foundations/file_identity.h"
#include "trace/history.h"
#include "trace/observer.h"
#include "trace/scenario.h"
#include "trace/vcd_writer.h"

namespace {

struct HistoryCommand {
  History* history;
  std::string program;  // the files the window reads, never written over
  std::string panel;
  std::unique_ptr<ScenarioReader> replay;
  std::unique_ptr<Observer> until;
};

Tcl_Obj* cell(FlowType type, FlowValue v, int status) {
  char text[kValueTextMax];
  return Tcl_NewStringObj(text, static_cast<int>(format_cell(type, v, status, text) - text));
}

Tcl_Obj* assertion_cell(int status) {
  switch (status) {
    case RP_DEFINED: return Tcl_NewStringObj("1", 1);
    case RP_FALSE: return Tcl_NewStringObj("0", 1);
    case RP_ABSENT: return Tcl_NewObj();
    default: return Tcl_NewStringObj("nil", 3);
  }
}

Tcl_Obj* row_of(const ProgramFlows& flows, const InstantRecord& r) {
  Tcl_Obj* row = Tcl_NewListObj(0, nullptr);
  Tcl_ListObjAppendElement(nullptr, row, Tcl_NewIntObj(r.after_reset));
  for (const Flow& f : flows.inputs) Tcl_ListObjAppendElement(nullptr, row, cell(f.type, r.inputs[f.index], RP_DEFINED));
  for (const Flow& f : flows.outputs)
    Tcl_ListObjAppendElement(nullptr, row, cell(f.type, r.outputs[f.index], r.output_status[f.index]));
  for (size_t k = 0; k < flows.locals.size(); k++)
    Tcl_ListObjAppendElement(nullptr, row, cell(flows.locals[k].type, r.locals[k], r.local_status[k]));
  for (int status : r.assert_status) Tcl_ListObjAppendElement(nullptr, row, assertion_cell(status));
  return row;
}

Tcl_Obj* flows_of(const ProgramFlows& flows) {
  Tcl_Obj* list = Tcl_NewListObj(0, nullptr);
  auto add = [list](const std::string& name, const char* kind, const char* type) {
    Tcl_Obj* words[3] = {Tcl_NewStringObj(name.c_str(), -1), Tcl_NewStringObj(kind, -1), Tcl_NewStringObj(type, -1)};
    Tcl_ListObjAppendElement(nullptr, list, Tcl_NewListObj(3, words));
  };
  for (const Flow& f : flows.inputs) add(f.name, "input", flow_type_word(f.type));
  for (const Flow& f : flows.outputs) add(f.name, "output", flow_type_word(f.type));
  for (const Flow& f : flows.locals) add(f.name, "local", flow_type_word(f.type));
  for (int i = 1; i <= flows.nb_assertions; i++) add("assert_" + std::to_string(i), "assertion", "bool");
  return list;
}

int fail(Tcl_Interp* interp, const std::string& message) {
  Tcl_SetObjResult(interp, Tcl_NewStringObj(message.c_str(), -1));
  return TCL_ERROR;
}

// Writes the history to `file` unless it is a file the window reads.
int write_history(Tcl_Interp* interp, HistoryCommand* c, const char* file, const char* what, TraceWriter* writer) {
  for (const auto& [read, role] : {std::pair(&c->program, "the program being run"),
                                   std::pair(&c->panel, "the panel description in use")})
    if (!read->empty() && same_file(file, *read))
      return fail(interp, std::string("cannot write ") + what + " to '" + file + "': it is " + role);
  std::string error;
  if (!c->history->write(writer, &error)) return fail(interp, error);
  return TCL_OK;
}

int replay_next(Tcl_Interp* interp, HistoryCommand* c) {
  if (!c->replay) return fail(interp, "tavik_history replay_next : no scenario is open");
  switch (c->replay->next()) {
    case ScenarioReader::Reset: Tcl_SetObjResult(interp, Tcl_NewStringObj("reset", -1)); return TCL_OK;
    case ScenarioReader::End: c->replay.reset(); Tcl_SetObjResult(interp, Tcl_NewStringObj("end", -1)); return TCL_OK;
    case ScenarioReader::Bad: {
      std::string error = c->replay->error();
      c->replay.reset();
      return fail(interp, error);
    }
    case ScenarioReader::Instant: break;
  }
  const ProgramFlows& flows = c->history->flows;
  Tcl_Obj* values = Tcl_NewListObj(0, nullptr);
  for (const Flow& f : flows.inputs)
    Tcl_ListObjAppendElement(nullptr, values, cell(f.type, c->replay->values()[f.index], RP_DEFINED));
  Tcl_Obj* words[2] = {Tcl_NewStringObj("instant", -1), values};
  Tcl_SetObjResult(interp, Tcl_NewListObj(2, words));
  return TCL_OK;
}

int history_cmd(ClientData data, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
  HistoryCommand* c = static_cast<HistoryCommand*>(data);
  History& h = *c->history;
  static const char* const subcommands[] = {"size", "flows", "rows", "reset_pending", "save_scenario", "export",
                                            "replay_open", "replay_next", "until", "until_holds", nullptr};
  enum { SIZE, FLOWS, ROWS, RESET_PENDING, SAVE_SCENARIO, EXPORT, REPLAY_OPEN, REPLAY_NEXT, UNTIL, UNTIL_HOLDS };
  static const int words[] = {2, 2, 4, 2, 3, 4, 3, 2, 3, 2};
  static const char* const usage[] = {"", "", "FROM TO", "", "FILE", "FILE csv|vcd", "FILE", "", "CONDITION", ""};
  int index;
  if (objc < 2) {
    Tcl_WrongNumArgs(interp, 1, objv, "subcommand ?arg ...?");
    return TCL_ERROR;
  }
  if (Tcl_GetIndexFromObj(interp, objv[1], subcommands, "subcommand", 0, &index) != TCL_OK) return TCL_ERROR;
  if (objc != words[index]) {
    Tcl_WrongNumArgs(interp, 2, objv, usage[index]);
    return TCL_ERROR;
  }
  switch (index) {
    case SIZE: Tcl_SetObjResult(interp, Tcl_NewLongObj(h.size())); return TCL_OK;
    case FLOWS: Tcl_SetObjResult(interp, flows_of(h.flows)); return TCL_OK;
    case RESET_PENDING: Tcl_SetObjResult(interp, Tcl_NewIntObj(h.reset_pending())); return TCL_OK;
    case ROWS: {
      long from, to;
      if (Tcl_GetLongFromObj(interp, objv[2], &from) != TCL_OK || Tcl_GetLongFromObj(interp, objv[3], &to) != TCL_OK)
        return TCL_ERROR;
      if (from < 0) from = 0;
      if (to > h.size()) to = h.size();
      Tcl_Obj* rows = Tcl_NewListObj(0, nullptr);
      InstantRecord r;
      for (long k = from; k < to; k++) {
        h.read(k, &r);
        Tcl_ListObjAppendElement(nullptr, rows, row_of(h.flows, r));
      }
      Tcl_SetObjResult(interp, rows);
      return TCL_OK;
    }
    case SAVE_SCENARIO: {
      const char* file = Tcl_GetString(objv[2]);
      CsvTraceWriter writer(h.flows, file, true);
      return write_history(interp, c, file, "the scenario", &writer);
    }
    case EXPORT: {
      const char* file = Tcl_GetString(objv[2]);
      const char* format = Tcl_GetString(objv[3]);
      if (strcmp(format, "csv") == 0) {
        CsvTraceWriter writer(h.flows, file);
        return write_history(interp, c, file, "the trace", &writer);
      }
      if (strcmp(format, "vcd") == 0) {
        VcdTraceWriter writer(h.flows, file);
        return write_history(interp, c, file, "the trace", &writer);
      }
      return fail(interp, std::string("tavik_history export : the format is csv or vcd, not '") + format + "'");
    }
    case REPLAY_OPEN: {
      auto reader = std::make_unique<ScenarioReader>(h.flows, Tcl_GetString(objv[2]));
      std::string error;
      if (!reader->check(&error)) return fail(interp, error);
      Tcl_SetObjResult(interp, Tcl_NewLongObj(reader->nb_instants()));
      c->replay = std::move(reader);
      return TCL_OK;
    }
    case REPLAY_NEXT: return replay_next(interp, c);
    case UNTIL: {
      auto observer = std::make_unique<Observer>();
      std::string error;
      if (!observer->build(h.flows, Tcl_GetString(objv[2]), &error)) return fail(interp, error);
      c->until = std::move(observer);
      return TCL_OK;
    }
    case UNTIL_HOLDS: {
      if (!c->until) return fail(interp, "tavik_history until_holds : no condition was compiled");
      if (h.size() == 0) return fail(interp, "tavik_history until_holds : no instant was recorded");
      InstantRecord r;
      h.read(h.size() - 1, &r);
      Tcl_SetObjResult(interp, Tcl_NewIntObj(c->until->holds(r)));
      return TCL_OK;
    }
  }
  return TCL_OK;
}

}  // namespace

void history_command_init(Tcl_Interp* interp, History* history, const char* program, const char* panel) {
  auto* c = new HistoryCommand{history, program ? program : "", panel ? panel : "", nullptr, nullptr};
  Tcl_CreateObjCommand(interp, "tavik_history", history_cmd, c, nullptr);
}
