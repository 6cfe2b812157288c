// trace_writer.cpp -- the trace file, and the CSV trace.
#include "trace/trace_writer.h"

#include <cerrno>
#include <charconv>
#include <cstring>

#include "ecexe/rp_exe.h"

TraceWriter::TraceWriter(const ProgramFlows& f, const char* p) : flows(f), path(p) {}

TraceWriter::~TraceWriter() = default;

std::string TraceWriter::name() const { return path == "-" ? "standard output" : "'" + path + "'"; }

bool TraceWriter::open(std::string* error) {
  if (path == "-") {
    out.open_shared(stdout);
  } else if (!out.open(path)) {
    *error = "cannot write " + name() + ": " + strerror(errno);
    return false;
  }
  // Rows are written whole; a large buffer makes each a copy, not a call.
  setvbuf(out.file(), nullptr, _IOFBF, 1 << 16);
  start();
  return true;
}

bool TraceWriter::failed(std::string* error) const {
  if (write_errno) *error = "cannot write " + name() + ": " + strerror(write_errno);
  return write_errno != 0;
}

bool TraceWriter::close(std::string* error) {
  if (!out.file()) return true;
  finish();
  if (failed(error)) {
    out.abandon();
    return false;
  }
  if (out.commit(false) == ReplaceResult::kWritten) return true;
  *error = "cannot write " + name() + ": " + strerror(errno);
  return false;
}

CsvTraceWriter::CsvTraceWriter(const ProgramFlows& f, const char* path, bool inputs)
    : TraceWriter(f, path), inputs_only(inputs) {}

// Every name and cell is written after a comma; a scenario, which has no
// step column, leaves out the first.
void CsvTraceWriter::start() {
  std::string header = "step";
  size_t cells = 0;
  for (const std::vector<Flow>* list : {&flows.inputs, &flows.outputs, &flows.locals}) {
    for (const Flow& f : *list) {
      (header += ',') += f.name;
      cells++;
    }
    if (inputs_only) break;
  }
  header += inputs_only ? "\n" : ",problems\n";
  size_t skip = inputs_only ? 5 : 0;  // "step,"
  put(header.data() + skip, header.size() - skip);
  size_t problems = flows.nb_assertions + flows.outputs.size() + 1;
  row.resize(24 + cells * (kValueTextMax + 1) + problems * (kProblemTextMax + 2));
}

void CsvTraceWriter::reset() { put("reset\n", 6); }

char* CsvTraceWriter::cell(char* out, FlowType type, FlowValue value, int status) {
  *out++ = ',';
  return format_cell(type, value, status, out);
}

void CsvTraceWriter::instant(const InstantRecord& r) {
  char* out = inputs_only ? row.data() : std::to_chars(row.data(), row.data() + 24, r.step).ptr;
  for (const Flow& f : flows.inputs) out = cell(out, f.type, r.inputs[f.index], RP_DEFINED);
  if (inputs_only) {
    *out++ = '\n';
    put(row.data() + 1, out - row.data() - 1);
    return;
  }
  for (const Flow& f : flows.outputs) out = cell(out, f.type, r.outputs[f.index], r.output_status[f.index]);
  for (size_t k = 0; k < flows.locals.size(); k++)
    out = cell(out, flows.locals[k].type, r.locals[k], r.local_status[k]);
  *out++ = ',';
  for (size_t k = 0; k < r.problems.size(); k++) {
    if (k > 0) {
      memcpy(out, "; ", 2);
      out += 2;
    }
    out = format_problem(r.problems[k], out);
  }
  *out++ = '\n';
  put(row.data(), out - row.data());
}
