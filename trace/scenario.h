// scenario.h -- a scenario: a sequence of instants, each a full vector of
// input values, with resets between them, read from a CSV file. The header
// names every input of the program once, in any order; columns named after
// an output or a local, `step` and `problems` are ignored, so that a trace
// reads back as a scenario. An empty cell keeps the value the input had at
// the instant before (across resets too); `repeat N` runs the previous
// instant N more times.
#ifndef TRACE_SCENARIO_H
#define TRACE_SCENARIO_H

#include <string>
#include <vector>

#include "trace/csv_rows.h"
#include "trace/program_flows.h"

class ScenarioReader {
 public:
  // Reads the file at `path` ("-": standard input) for the inputs of `flows`.
  ScenarioReader(const ProgramFlows& flows, const char* path);

  // Reads the whole scenario once and checks every line. False at the first
  // fault, with `error` set to "<file>:<line>:<column>: what is wrong".
  // Otherwise the scenario is ready to be read from its start.
  bool check(std::string* error);
  // The number of instants check() counted, repeats included.
  long nb_instants() const { return total; }

  enum Event { Instant, Reset, End, Bad };
  // The next event of the checked scenario; after Instant the inputs are in
  // values(). Bad only if the file changed since it was checked (the
  // message is in error()).
  Event next();
  const FlowValue* values() const { return current.data(); }
  const std::string& error() const { return fault; }

 private:
  bool bind_header(std::string* error);
  Event read_row();

  const ProgramFlows& flows;
  CsvRows rows;
  std::vector<int> column_input;  // by column: the input it gives, or -1
  std::vector<FlowValue> current;
  bool have_values = false;  // an instant was read: empty cells keep its values
  long pending_repeats = 0;
  long total = 0;
  std::string fault;
};

#endif
