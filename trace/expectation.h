// expectation.h -- the values a run is expected to give, read from a CSV
// file in the scenario's syntax: a header naming outputs (and inputs or
// listed locals, which are then checked too), then a row per instant. An
// empty cell accepts any value; "nil" and "divbyzero" expect that status.
// Reals match within a tolerance T: |got - expected| <= T * max(1, |expected|),
// that is absolutely near zero and relatively beyond 1; a NaN matches any
// NaN and an infinity only itself. A `problems` column, when there is one,
// must hold the instant's problems exactly (empty: none); without one, each
// problem must be an output's expected nil or divbyzero. `reset` lines,
// comments and the column `step` are skipped, so that a trace serves as the
// expectation of the next runs. `repeat N` stands for the row before it N
// more times.
#ifndef TRACE_EXPECTATION_H
#define TRACE_EXPECTATION_H

#include <string>
#include <vector>

#include "trace/csv_rows.h"
#include "trace/instant.h"
#include "trace/program_flows.h"

class Expectation {
 public:
  Expectation(const ProgramFlows& flows, const char* path, double tolerance);

  // Reads the whole file once and checks every cell; false at the first
  // fault, with `error` set to "<file>:<line>:<column>: what is wrong".
  bool check(std::string* error);

  // Compares the next expected row with `record`. Each difference counts,
  // and the first ten are kept as "instant <step>: <flow> expected <cell>,
  // got <value>", or for a problem the file does not predict "instant
  // <step>: <problem>, not in the expected values".
  void compare(const InstantRecord& record);
  // After the last instant: a file with a different number of rows than
  // the run had instants counts as one more difference.
  void finish(long instants_run);

  long differences = 0;
  std::vector<std::string> first_differences;
  static constexpr size_t kKept = 10;

 private:
  struct Column {
    FlowKind kind;
    int position;  // in its list of ProgramFlows; -1: an ignored column
  };
  bool bind_header(std::string* error);
  CsvRows::Line next_row();
  bool check_row(std::string* error);
  void differ(std::string line);
  bool matches(const Flow& flow, std::string_view cell, FlowValue got, int status) const;
  void compare_problems(const InstantRecord& record);
  bool predicted(const Problem& problem) const;

  const ProgramFlows& flows;
  CsvRows rows;
  double tolerance;
  std::vector<Column> columns;
  int problems_column = -1;  // the index of the column `problems`; -1: none
  long nb_rows = 0;
  long pending_repeats = 0;  // times the last row still stands for the next instants
  bool seen_row = false;     // a row of values was read: a repeat has one to repeat
  bool at_end = false;
  std::string fault;
  std::vector<std::string> expected;  // the cells of the last row read
};

#endif
