// vcd_writer.h -- the trace as an IEEE 1364 value change dump, for waveform
// viewers. Time k is the k-th instant of the run. One scope named after
// the program holds its flows: bool flows as 1-bit wires, int flows as
// 32-bit integers (two's complement), reals as `real` variables written
// with the shortest text that reads back as the same double. An undefined
// value (nil or division by zero) is x and an absent flow is z; a real
// has neither, so it shows NaN then, and a 1-bit wire of the same name in
// the sub-scope `defined` tells which: 1 defined, x undefined, z absent.
// The sub-scope `assertions` holds a wire per assertion (`assert_1`...: 1
// holds, 0 false, x undefined, z absent), and `run` two marks: `reset`, 1
// at an instant that follows a reset, and `dropped`, 1 at an instant that
// was abandoned (its memories were not kept).
#ifndef TRACE_VCD_WRITER_H
#define TRACE_VCD_WRITER_H

#include <cstdint>
#include <string>
#include <vector>

#include "trace/trace_writer.h"

class VcdTraceWriter : public TraceWriter {
 public:
  using TraceWriter::TraceWriter;
  void reset() override;
  void instant(const InstantRecord& record) override;

 protected:
  void start() override;
  void finish() override;

 private:
  // One variable of the dump: its identifier code and what it shows now,
  // so that only changes are written.
  struct Signal {
    std::string code;
    int status;
    uint64_t bits;
  };
  Signal declare(const char* kind, int width, const char* name);
  // Writes the signal's new state when it differs from what it shows (or
  // always, at the first instant).
  bool changes(Signal& s, int status, uint64_t bits);
  void level(Signal& s, int status, bool value);
  void number(Signal& s, FlowType type, FlowValue value, int status);
  void flow(size_t n, FlowType type, FlowValue value, int status);

  std::vector<Signal> flow_signals;     // inputs, outputs, then locals
  std::vector<Signal> defined_signals;  // by flow: its definedness wire (reals only)
  std::vector<Signal> assert_signals;
  Signal reset_signal, dropped_signal;
  long last_step = 0;
  bool first = true;
  size_t nb_signals = 0;
  std::string text;
};

#endif
