// history.cpp -- recording a session's instants compactly.
#include "trace/history.h"

#include <cstring>

#include "ecexe/rp_exe.h"
#include "trace/instant_runner.h"

History::Slot History::slot_of(FlowType type) {
  Slot s;
  s.size = type == FlowType::Real || type == FlowType::Float ? 8 : 4;
  s.offset = width + 1;
  width += 1 + s.size;
  return s;
}

History::History(const ProgramFlows& f) : flows(f) {
  for (const Flow& flow : flows.inputs) input_slots.push_back(slot_of(flow.type));
  for (const Flow& flow : flows.outputs) output_slots.push_back(slot_of(flow.type));
  for (const Flow& flow : flows.locals) local_slots.push_back(slot_of(flow.type));
  // An assertion has a status only: its value says nothing more.
  for (int i = 0; i < flows.nb_assertions; i++) {
    assert_slots.push_back({width + 1, 0});
    width += 1;
  }
  rows = std::make_unique<RowStore>(width);
}

void History::put(uint8_t* row, const Slot& s, int status, FlowValue v) {
  uint8_t* at = row + s.offset;
  at[-1] = static_cast<uint8_t>(status);
  if (s.size == 8) memcpy(at, &v.d, 8);
  else if (s.size == 4) memcpy(at, &v.i, 4);
}

void History::get(const uint8_t* row, const Slot& s, int8_t* status, FlowValue* v) {
  *status = static_cast<int8_t>(row[s.offset - 1]);
  v->d = 0;
  if (s.size == 8) memcpy(&v->d, row + s.offset, 8);
  else if (s.size == 4) memcpy(&v->i, row + s.offset, 4);
}

void History::record(const InstantRecord& r) {
  uint8_t* row = rows->room_for(static_cast<size_t>(count));
  for (size_t i = 0; i < input_slots.size(); i++) put(row, input_slots[i], RP_DEFINED, r.inputs[i]);
  for (size_t i = 0; i < output_slots.size(); i++) put(row, output_slots[i], r.output_status[i], r.outputs[i]);
  for (size_t i = 0; i < local_slots.size(); i++) put(row, local_slots[i], r.local_status[i], r.locals[i]);
  for (size_t i = 0; i < assert_slots.size(); i++) row[assert_slots[i].offset - 1] = static_cast<uint8_t>(r.assert_status[i]);
  resets.push_back(pending_reset);
  pending_reset = false;
  count++;
}

void History::reset() { pending_reset = true; }

void History::drop_last() {
  if (count == 0) return;
  count--;
  pending_reset = resets[count] != 0;
  resets.pop_back();
}

void History::read(long k, InstantRecord* r) const {
  const uint8_t* row = rows->row(static_cast<size_t>(k));
  int8_t status;
  r->step = k + 1;
  r->after_reset = resets[k] != 0;
  r->dropped = false;
  r->inputs.resize(input_slots.size());
  for (size_t i = 0; i < input_slots.size(); i++) get(row, input_slots[i], &status, &r->inputs[i]);
  r->outputs.resize(output_slots.size());
  r->output_status.resize(output_slots.size());
  for (size_t i = 0; i < output_slots.size(); i++)
    get(row, output_slots[i], &r->output_status[i], &r->outputs[i]);
  r->locals.resize(local_slots.size());
  r->local_status.resize(local_slots.size());
  for (size_t i = 0; i < local_slots.size(); i++)
    get(row, local_slots[i], &r->local_status[i], &r->locals[i]);
  r->assert_status.resize(assert_slots.size());
  for (size_t i = 0; i < assert_slots.size(); i++) r->assert_status[i] = static_cast<int8_t>(row[assert_slots[i].offset - 1]);
}

bool History::write(TraceWriter* writer, std::string* error) const {
  if (!writer->open(error)) return false;
  InstantRecord r;
  for (long k = 0; k < count; k++) {
    read(k, &r);
    list_problems(&r, true);
    if (r.after_reset) writer->reset();
    writer->instant(r);
  }
  if (pending_reset) writer->reset();
  return writer->close(error);
}
