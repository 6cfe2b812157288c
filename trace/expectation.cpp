// expectation.cpp -- checking a run against expected values.
#include "trace/expectation.h"

#include <cmath>

#include "ecexe/rp_exe.h"

Expectation::Expectation(const ProgramFlows& f, const char* path, double t) : flows(f), rows(path), tolerance(t) {}

bool Expectation::bind_header(std::string* error) {
  CsvRows::Line line = next_row();
  if (line == CsvRows::Bad) {
    *error = rows.error();
    return false;
  }
  if (line != CsvRows::Row) {
    *error = rows.where() + "no header row naming the outputs";
    return false;
  }
  columns.clear();
  for (size_t c = 0; c < rows.cells().size(); c++) {
    std::string name(rows.cells()[c]);
    Column column = {FlowKind::Output, -1};
    if (name != "step" && name != "problems") {
      if (!flows.find(name, &column.kind, &column.position)) {
        *error = rows.where(static_cast<int>(c) + 1) + "'" + name + "' is not an input, output or local of " +
                 flows.program_name();
        return false;
      }
      if (column.position < 0) {
        *error = rows.where(static_cast<int>(c) + 1) + "local '" + name + "' is not traced: run with --locals";
        return false;
      }
    }
    columns.push_back(column);
  }
  return true;
}

// Rows only: resets in the file are those of the scenario it was taken from.
CsvRows::Line Expectation::next_row() {
  for (;;) {
    CsvRows::Line line = rows.next();
    if (line != CsvRows::Reset && line != CsvRows::Repeat) return line;
  }
}

static const Flow& flow_of(const ProgramFlows& flows, FlowKind kind, int position) {
  switch (kind) {
    case FlowKind::Input: return flows.inputs[position];
    case FlowKind::Output: return flows.outputs[position];
    case FlowKind::Local: break;
  }
  return flows.locals[position];
}

bool Expectation::check_row(std::string* error) {
  const std::vector<std::string_view>& cells = rows.cells();
  for (size_t c = 0; c < cells.size(); c++) {
    if (c >= columns.size()) {
      if (cells[c].empty()) continue;
      *error = rows.where(static_cast<int>(c) + 1) + "a cell beyond the " + std::to_string(columns.size()) +
               " columns of the header";
      return false;
    }
    if (columns[c].position < 0 || cells[c].empty() || cells[c] == "nil" || cells[c] == "divbyzero") continue;
    const Flow& f = flow_of(flows, columns[c].kind, columns[c].position);
    FlowValue v;
    if (!parse_value(f.type, cells[c], &v)) {
      *error = rows.where(static_cast<int>(c) + 1) + "'" + std::string(cells[c]) + "' is not " +
               (f.type == FlowType::Int ? "an " : "a ") + flow_type_word(f.type) + ", nil or divbyzero";
      return false;
    }
  }
  return true;
}

bool Expectation::check(std::string* error) {
  if (!rows.open(error) || !bind_header(error)) return false;
  nb_rows = 0;
  for (;;) {
    CsvRows::Line line = next_row();
    if (line == CsvRows::End) break;
    if (line == CsvRows::Bad) {
      *error = rows.error();
      return false;
    }
    if (!check_row(error)) return false;
    nb_rows++;
  }
  rows.rewind();
  return bind_header(error);
}

bool Expectation::matches(const Flow& f, std::string_view cell, FlowValue got, int status) const {
  if (cell == "nil") return status == RP_NIL;
  if (cell == "divbyzero") return status == RP_DIVBYZERO;
  if (status != RP_DEFINED) return false;
  FlowValue want;
  parse_value(f.type, cell, &want);
  if (f.type == FlowType::Bool || f.type == FlowType::Int) return want.i == got.i;
  if (want.d == got.d) return true;  // infinities too
  return std::fabs(got.d - want.d) <= tolerance * std::fmax(1.0, std::fabs(want.d));
}

// How the trace would show the value: its text, or its status.
static std::string shown(const Flow& f, FlowValue v, int status) {
  switch (status) {
    case RP_DEFINED: {
      char text[kValueTextMax];
      return std::string(text, format_value(f.type, v, text));
    }
    case RP_NIL: return "nil";
    case RP_DIVBYZERO: return "divbyzero";
    default: return "absent";
  }
}

void Expectation::differ(std::string line) {
  differences++;
  if (first_differences.size() < kKept) first_differences.push_back(std::move(line));
}

void Expectation::compare(const InstantRecord& r) {
  if (at_end || next_row() != CsvRows::Row) {
    at_end = true;
    return;
  }
  const std::vector<std::string_view>& cells = rows.cells();
  for (size_t c = 0; c < cells.size() && c < columns.size(); c++) {
    const Column& column = columns[c];
    if (column.position < 0 || cells[c].empty()) continue;
    const Flow& f = flow_of(flows, column.kind, column.position);
    FlowValue got;
    int status;
    switch (column.kind) {
      case FlowKind::Input: got = r.inputs[column.position]; status = RP_DEFINED; break;
      case FlowKind::Output: got = r.outputs[column.position]; status = r.output_status[column.position]; break;
      default: got = r.locals[column.position]; status = r.local_status[column.position]; break;
    }
    if (matches(f, cells[c], got, status)) continue;
    if (first_differences.size() < kKept)
      differ("instant " + std::to_string(r.step) + ": " + f.name + " expected " + std::string(cells[c]) + ", got " +
             shown(f, got, status));
    else
      differences++;
  }
}

void Expectation::finish(long instants_run) {
  if (nb_rows != instants_run)
    differ("the expected values cover " + std::to_string(nb_rows) + " instants, the run had " +
           std::to_string(instants_run));
}
