// scenario.cpp -- reading and checking scenario files.
#include "trace/scenario.h"

ScenarioReader::ScenarioReader(const ProgramFlows& f, const char* path)
    : flows(f), rows(path), current(f.inputs.size()) {}

// A column that names nothing of the program is refused, since a typing
// mistake in an input's name would otherwise leave that input unset.
bool ScenarioReader::bind_header(std::string* error) {
  if (!rows.header("the inputs", error)) return false;
  const std::vector<std::string_view>& names = rows.cells();
  std::vector<int> column_of(flows.inputs.size(), 0);
  column_input.assign(names.size(), -1);
  for (size_t c = 0; c < names.size(); c++) {
    int column = static_cast<int>(c) + 1;
    FlowKind kind;
    int position;
    if (names[c] == "step" || names[c] == "problems") continue;
    if (!flows.find(names[c], &kind, &position)) {
      *error = rows.where(column) + flows.unknown(names[c]);
      return false;
    }
    if (kind != FlowKind::Input) continue;
    if (column_of[position]) {
      *error = rows.where(column) + "input '" + std::string(names[c]) + "' is named twice (columns " +
               std::to_string(column_of[position]) + " and " + std::to_string(column) + ")";
      return false;
    }
    column_of[position] = column;
    column_input[c] = position;
  }
  for (const Flow& f : flows.inputs)
    if (!column_of[f.index]) {
      *error = rows.where() + "input '" + f.name + "' has no column";
      return false;
    }
  return true;
}

ScenarioReader::Event ScenarioReader::read_row() {
  const std::vector<std::string_view>& cells = rows.cells();
  if (!rows.fits(column_input.size(), &fault)) return Bad;
  for (size_t c = 0; c < cells.size() && c < column_input.size(); c++) {
    int input = column_input[c];
    if (input < 0) continue;
    const Flow& f = flows.inputs[input];
    if (cells[c].empty()) {
      if (have_values) continue;
      fault = rows.where(static_cast<int>(c) + 1) + "no value for '" + f.name + "' at the first instant";
      return Bad;
    }
    if (!parse_value(f.type, cells[c], &current[input])) {
      fault = rows.where(static_cast<int>(c) + 1) + not_a(f.type, cells[c]);
      return Bad;
    }
  }
  // Trailing cells a hand-written row leaves out keep their values too.
  if (!have_values && cells.size() < column_input.size()) {
    for (size_t c = cells.size(); c < column_input.size(); c++)
      if (column_input[c] >= 0) {
        fault = rows.where(static_cast<int>(c) + 1) + "no value for '" + flows.inputs[column_input[c]].name +
                "' at the first instant";
        return Bad;
      }
  }
  have_values = true;
  return Instant;
}

ScenarioReader::Event ScenarioReader::next() {
  if (pending_repeats > 0) {
    pending_repeats--;
    return Instant;
  }
  for (;;) {
    switch (rows.next()) {
      case CsvRows::Row: return read_row();
      case CsvRows::Reset: return Reset;
      case CsvRows::End: return End;
      case CsvRows::Bad: fault = rows.error(); return Bad;
      case CsvRows::Repeat:
        if (!have_values) {
          fault = rows.where(1) + "'repeat' with no instant before it";
          return Bad;
        }
        if (rows.count() == 0) continue;
        pending_repeats = rows.count() - 1;
        return Instant;
    }
  }
}

bool ScenarioReader::check(std::string* error) {
  if (!rows.open(error) || !bind_header(error)) return false;
  total = 0;
  for (;;) {
    Event e = next();
    if (e == Bad) {
      *error = fault;
      return false;
    }
    if (e == End) break;
    if (e != Instant) continue;
    // A repeat is counted whole rather than instant by instant.
    total += 1 + pending_repeats;
    pending_repeats = 0;
  }
  rows.rewind();
  have_values = false;
  return bind_header(error);
}
