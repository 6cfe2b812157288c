// expectation.cpp -- checking a run against expected values.
#include "trace/expectation.h"

#include <cmath>

#include "ecexe/rp_exe.h"

Expectation::Expectation(const ProgramFlows& f, const char* path, double t) : flows(f), rows(path), tolerance(t) {}

bool Expectation::bind_header(std::string* error) {
  if (!rows.header("the outputs", error)) return false;
  columns.clear();
  problems_column = -1;
  for (size_t c = 0; c < rows.cells().size(); c++) {
    std::string name(rows.cells()[c]);
    Column column = {FlowKind::Output, -1};
    if (name == "problems") problems_column = static_cast<int>(c);
    if (name != "step" && name != "problems") {
      if (!flows.find(name, &column.kind, &column.position)) {
        *error = rows.where(static_cast<int>(c) + 1) + flows.unknown(name);
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

// Rows only: resets in the file are those of the scenario it was taken
// from. `repeat N` is the row before it N more times: `expected` keeps the
// cells of the last row.
CsvRows::Line Expectation::next_row() {
  if (pending_repeats > 0) {
    pending_repeats--;
    return CsvRows::Row;
  }
  for (;;) {
    CsvRows::Line line = rows.next();
    if (line == CsvRows::Repeat && seen_row && rows.count() > 0) {
      pending_repeats = rows.count() - 1;
      return CsvRows::Row;
    }
    if (line == CsvRows::Repeat && !seen_row) {
      fault = rows.where(1) + "'repeat' with no row before it";
      return CsvRows::Bad;
    }
    if (line == CsvRows::Row) {
      seen_row = true;
      const std::vector<std::string_view>& cells = rows.cells();
      expected.resize(cells.size());
      for (size_t c = 0; c < cells.size(); c++) expected[c].assign(cells[c]);
    }
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
  const std::vector<std::string>& cells = expected;
  if (!rows.fits(columns.size(), error)) return false;
  for (size_t c = 0; c < cells.size() && c < columns.size(); c++) {
    if (columns[c].position < 0 || cells[c].empty() || cells[c] == "nil" || cells[c] == "divbyzero") continue;
    const Flow& f = flow_of(flows, columns[c].kind, columns[c].position);
    FlowValue v;
    if (!parse_value(f.type, cells[c], &v)) {
      *error = rows.where(static_cast<int>(c) + 1) + not_a(f.type, cells[c]) + ", nil or divbyzero";
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
      *error = fault.empty() ? rows.error() : fault;
      return false;
    }
    // A repeated row is checked once and counted whole.
    if (pending_repeats == 0 && !check_row(error)) return false;
    nb_rows += 1 + pending_repeats;
    pending_repeats = 0;
  }
  rows.rewind();
  seen_row = false;
  return bind_header(error);
}

bool Expectation::matches(const Flow& f, std::string_view cell, FlowValue got, int status) const {
  if (cell == "nil") return status == RP_NIL;
  if (cell == "divbyzero") return status == RP_DIVBYZERO;
  if (status != RP_DEFINED) return false;
  FlowValue want;
  parse_value(f.type, cell, &want);
  if (f.type == FlowType::Bool || f.type == FlowType::Int) return want.i == got.i;
  // A trace writes a NaN with its sign, which no computation promises.
  if (std::isnan(want.d) || std::isnan(got.d)) return std::isnan(want.d) && std::isnan(got.d);
  // Any tolerance would be infinite beside an infinity.
  if (std::isinf(want.d) || std::isinf(got.d)) return want.d == got.d;
  return std::fabs(got.d - want.d) <= tolerance * std::fmax(1.0, std::fabs(want.d));
}

// An output's problem is predicted by any cell of that output: "nil" or
// "divbyzero" expects it, another value is a difference of its own.
bool Expectation::predicted(const Problem& p) const {
  if (p.source != Problem::Output) return false;
  for (size_t c = 0; c < expected.size() && c < columns.size(); c++)
    if (columns[c].kind == FlowKind::Output && columns[c].position == p.index && !expected[c].empty()) return true;
  return false;
}

// The problems of `r`, as the trace writes them.
static std::string problems_text(const InstantRecord& r) {
  std::string text;
  char one[kProblemTextMax];
  for (const Problem& p : r.problems) {
    if (!text.empty()) text += "; ";
    text.append(one, format_problem(p, one));
  }
  return text;
}

void Expectation::compare_problems(const InstantRecord& r) {
  std::string step = "instant " + std::to_string(r.step) + ": ";
  if (problems_column >= 0) {
    // A short row leaves the cell empty: no problem is expected.
    std::string want = problems_column < static_cast<int>(expected.size()) ? expected[problems_column] : "";
    std::string got = problems_text(r);
    if (got != want)
      differ(step + "problems expected " + (want.empty() ? "none" : want) + ", got " + (got.empty() ? "none" : got));
    return;
  }
  char text[kProblemTextMax];
  for (const Problem& p : r.problems)
    if (!predicted(p)) differ(step + std::string(text, format_problem(p, text)) + ", not in the expected values");
}

// How the trace would show the value: its cell, "absent" for an empty one.
static std::string shown(const Flow& f, FlowValue v, int status) {
  char text[kValueTextMax];
  char* end = format_cell(f.type, v, status, text);
  return end == text ? "absent" : std::string(text, end);
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
  const std::vector<std::string>& cells = expected;
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
      differ("instant " + std::to_string(r.step) + ": " + f.name + " expected " + cells[c] + ", got " +
             shown(f, got, status));
    else
      differences++;
  }
  compare_problems(r);
}

void Expectation::finish(long instants_run) {
  if (nb_rows != instants_run)
    differ("the expected values cover " + std::to_string(nb_rows) + " instants, the run had " +
           std::to_string(instants_run));
}
