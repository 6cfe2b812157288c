// trace_writer.h -- a trace being written: one call per instant run and
// per reset, in the order they happened. The writers of the file formats
// derive from TraceWriter; it owns the file they write, which is put in
// place only when the trace is closed: never half a file under its name.
#ifndef TRACE_TRACE_WRITER_H
#define TRACE_TRACE_WRITER_H

#include <cerrno>
#include <cstdio>
#include <string>
#include <vector>

#include "foundations/replace_file.h"
#include "trace/instant.h"
#include "trace/program_flows.h"

class TraceWriter {
 public:
  // Writes to `path`, "-" for standard output.
  TraceWriter(const ProgramFlows& flows, const char* path);
  // Abandons a trace that was not closed: its file stays as it was.
  virtual ~TraceWriter();
  TraceWriter(const TraceWriter&) = delete;
  TraceWriter& operator=(const TraceWriter&) = delete;

  // Starts the trace under a temporary name beside its file (see
  // FileReplacement) and writes what comes before the first instant; false
  // with `error` set when the file cannot be written.
  bool open(std::string* error);
  // The program was put back to its first instant.
  virtual void reset() = 0;
  virtual void instant(const InstantRecord& record) = 0;
  // True once a write has failed; `error` then says why.
  bool failed(std::string* error) const;
  // Writes what ends the trace and puts the file in place, holding every
  // instant written so far; false with `error` set when some of it could
  // not be written (the file then stays as it was).
  bool close(std::string* error);
  // The file as messages name it.
  std::string name() const;

 protected:
  virtual void start() = 0;
  virtual void finish() {}
  void put(const char* text, size_t n) {
    if (fwrite(text, 1, n, out.file()) != n && !write_errno) write_errno = errno;
  }
  void put(const std::string& text) { put(text.data(), text.size()); }

  const ProgramFlows& flows;

 private:
  std::string path;
  FileReplacement out;
  int write_errno = 0;  // the first failed write's
};

// The CSV trace: a header "step,<inputs>,<outputs>[,<locals>],problems",
// a row per instant and a line "reset" per reset, so that it reads back
// as a scenario. Values are written as the window shows them; a status
// that is not a value as "nil" or "divbyzero", an absent flow as an empty
// cell. The problems are the dialogs' texts, separated by "; ". With
// `inputs_only`, the scenario alone: the inputs' columns and the resets.
class CsvTraceWriter : public TraceWriter {
 public:
  CsvTraceWriter(const ProgramFlows& flows, const char* path, bool inputs_only = false);
  void reset() override;
  void instant(const InstantRecord& record) override;

 protected:
  void start() override;

 private:
  // Writes a cell at `out`, its comma first; returns its end.
  static char* cell(char* out, FlowType type, FlowValue value, int status);
  bool inputs_only;
  std::vector<char> row;  // room for the longest row
};

#endif
