// csv_rows.h -- the lines of a scenario-style CSV file: a header row of
// names, then rows of cells, with `reset` and `repeat N` lines, comments
// (lines starting with '#') and blank lines between them. Cells are
// separated by commas and trimmed of blanks; a cell in double quotes may
// hold commas, and "" stands for one quote in it. Lines end with LF or
// CRLF. A directive may be followed by empty cells, as a spreadsheet that
// saves a sheet writes it ("reset,,,").
#ifndef TRACE_CSV_ROWS_H
#define TRACE_CSV_ROWS_H

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

class CsvRows {
 public:
  // `path` names the file, "-" standard input.
  explicit CsvRows(const char* path);
  ~CsvRows();
  CsvRows(const CsvRows&) = delete;
  CsvRows& operator=(const CsvRows&) = delete;

  // Opens the file; false with `error` set when it cannot be read.
  // Standard input, a pipe or a device is first copied to an anonymous
  // temporary file, so that it can be read twice like a regular file.
  bool open(std::string* error);
  // Back to the first line.
  void rewind();

  enum Line { Row, Reset, Repeat, End, Bad };
  static constexpr long kMaxRepeat = 1000000000000L;
  // Reads the next meaningful line. Row: its cells are in cells(). Repeat:
  // its count in count(). Bad: the fault is in error().
  Line next();

  // Reads the header, the first meaningful line, which must be a row of
  // names; `naming` says what it names, for messages ("the inputs").
  bool header(const char* naming, std::string* error);
  // False, with `error` set, when the last row has a cell that is not
  // empty beyond the first `columns`.
  bool fits(size_t columns, std::string* error) const;

  const std::vector<std::string_view>& cells() const { return cell_views; }
  long count() const { return repeat_count; }
  const std::string& error() const { return fault; }
  // "<file>:<line>: " or "<file>:<line>:<column>: " (column 0: none) for
  // a message about the last line read, "<file>: " before the first line;
  // columns count cells from 1.
  std::string where(int column = 0) const;
  const std::string& name() const { return display; }

 private:
  // Copies `source` to the file read from; false with `error` set.
  bool copy_once(FILE* source, std::string* error);
  bool split();
  Line directive();
  Line bad(int column, const std::string& message);

  std::string path;
  std::string display;  // the file as messages name it
  FILE* file = nullptr;
  bool owned = false;  // a file we opened (standard input is not closed)
  char* buffer = nullptr;
  size_t capacity = 0;
  long line_number = 0;
  long repeat_count = 0;
  std::vector<std::string_view> cell_views;
  std::string fault;
};

#endif
