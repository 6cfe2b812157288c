// history.h -- the recorded history of a session: every instant that
// completed (its inputs, outputs, assertion statuses and locals, with
// their statuses) and every reset, in order. An instant is one row of
// fixed width in a store of rows: a status byte per output, local and
// assertion, and 4 bytes per bool or int value, 8 per real. Reading an
// instant back gives what the program gave, bit for bit.
#ifndef TRACE_HISTORY_H
#define TRACE_HISTORY_H

#include <cstdint>
#include <memory>
#include <vector>

#include "foundations/row_store.h"
#include "trace/instant.h"
#include "trace/program_flows.h"
#include "trace/trace_writer.h"

class History {
 public:
  // Records instants of the flows listed in `flows` (kept, not owned).
  explicit History(const ProgramFlows& flows);

  // Appends the instant `record` holds; its step number is its place in
  // the history (from 1), its reset mark whether reset() came before it.
  void record(const InstantRecord& record);
  // The program went back to its first instant: the next instant follows a
  // reset.
  void reset();

  // Forgets the last instant. A reset that came before it stays, pending.
  void drop_last();

  long size() const { return count; }
  // Instant k (0-based) back in `record`; its problems are not listed.
  void read(long k, InstantRecord* record) const;
  bool after_reset(long k) const { return resets[k] != 0; }
  // True when a reset came after the last instant.
  bool reset_pending() const { return pending_reset; }

  // Writes the whole history to `writer`, resets included, each instant's
  // problems as the window showed them when the user went on; false with
  // `error` set when the file cannot be written.
  bool write(TraceWriter* writer, std::string* error) const;

  const ProgramFlows& flows;

 private:
  // Where a value and its status sit in a row.
  struct Slot {
    uint32_t offset;  // of the value; the status byte comes just before it
    uint8_t size;     // 4 or 8
  };
  Slot slot_of(FlowType type);
  static void put(uint8_t* row, const Slot& s, int status, FlowValue v);
  static void get(const uint8_t* row, const Slot& s, int8_t* status, FlowValue* v);

  std::vector<Slot> input_slots, output_slots, local_slots, assert_slots;
  uint32_t width = 0;  // bytes per instant
  long count = 0;
  std::unique_ptr<RowStore> rows;  // the instants, then room for more
  std::vector<uint8_t> resets;  // by instant: 1 when a reset came before it
  bool pending_reset = false;
};

#endif
