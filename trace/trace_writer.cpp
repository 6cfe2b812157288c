// trace_writer.cpp -- the trace file, and the CSV trace.
#include "trace/trace_writer.h"

#include <cerrno>
#include <charconv>
#include <cstring>

#include "ecexe/rp_exe.h"

TraceWriter::TraceWriter(const ProgramFlows& f, const char* p) : flows(f), path(p) {}

TraceWriter::~TraceWriter() {
  if (file && file != stdout) fclose(file);
}

bool TraceWriter::open(std::string* error) {
  file = path == "-" ? stdout : fopen(path.c_str(), "w");
  if (!file) {
    *error = "cannot write '" + path + "': " + strerror(errno);
    return false;
  }
  // Rows are written whole; a large buffer makes each a copy, not a call.
  setvbuf(file, nullptr, _IOFBF, 1 << 16);
  start();
  return true;
}

void TraceWriter::flush() {
  if (file) fflush(file);
}

bool TraceWriter::close(std::string* error) {
  finish();
  bool ok = fflush(file) == 0 && !ferror(file);
  int saved = errno;
  if (file != stdout && fclose(file) != 0 && ok) {
    ok = false;
    saved = errno;
  }
  file = nullptr;
  if (!ok) *error = "cannot write '" + (path == "-" ? std::string("standard output") : path) + "': " + strerror(saved);
  return ok;
}

void CsvTraceWriter::start() {
  row = "step";
  for (const std::vector<Flow>* list : {&flows.inputs, &flows.outputs, &flows.locals})
    for (const Flow& f : *list) (row += ',') += f.name;
  row += ",problems\n";
  put(row);
}

void CsvTraceWriter::reset() { put("reset\n", 6); }

void CsvTraceWriter::cell(FlowType type, FlowValue value, int status) {
  row += ',';
  switch (status) {
    case RP_DEFINED: {
      char text[kValueTextMax];
      row.append(text, format_value(type, value, text));
      break;
    }
    case RP_NIL: row += "nil"; break;
    case RP_DIVBYZERO: row += "divbyzero"; break;
    default: break;  // absent
  }
}

void CsvTraceWriter::instant(const InstantRecord& r) {
  char text[kProblemTextMax];
  row.assign(text, std::to_chars(text, text + sizeof text, r.step).ptr);
  for (const Flow& f : flows.inputs) cell(f.type, r.inputs[f.index], RP_DEFINED);
  for (const Flow& f : flows.outputs) cell(f.type, r.outputs[f.index], r.output_status[f.index]);
  for (size_t k = 0; k < flows.locals.size(); k++) cell(flows.locals[k].type, r.locals[k], r.local_status[k]);
  row += ',';
  for (size_t k = 0; k < r.problems.size(); k++) {
    if (k > 0) row += "; ";
    row.append(text, format_problem(r.problems[k], text));
  }
  row += '\n';
  put(row);
}
