// vcd_writer.cpp -- writing traces as value change dumps.
#include "trace/vcd_writer.h"

#include <charconv>
#include <cstring>

#include "ecexe/rp_exe.h"

static bool is_real(FlowType type) { return type == FlowType::Real || type == FlowType::Float; }

// Identifier codes: printable characters from '!' to '~', in base 94.
VcdTraceWriter::Signal VcdTraceWriter::declare(const char* kind, int width, const char* name) {
  Signal s = {"", -1, 0};
  size_t n = nb_signals++;
  do {
    s.code += static_cast<char>('!' + n % 94);
    n /= 94;
  } while (n > 0);
  text += "$var " + std::string(kind) + " " + std::to_string(width) + " " + s.code + " " + name + " $end\n";
  return s;
}

void VcdTraceWriter::start() {
  text = "$version tavik-run $end\n$timescale 1 s $end\n";
  text += "$scope module " + std::string(flows.program_name()) + " $end\n";
  bool reals = false;
  for (const std::vector<Flow>* list : {&flows.inputs, &flows.outputs, &flows.locals})
    for (const Flow& f : *list) {
      reals |= is_real(f.type);
      if (is_real(f.type)) flow_signals.push_back(declare("real", 64, f.name));
      else if (f.type == FlowType::Int) flow_signals.push_back(declare("integer", 32, f.name));
      else flow_signals.push_back(declare("wire", 1, f.name));
    }
  defined_signals.resize(flow_signals.size());
  if (reals) {
    text += "$scope module defined $end\n";
    size_t n = 0;
    for (const std::vector<Flow>* list : {&flows.inputs, &flows.outputs, &flows.locals})
      for (const Flow& f : *list) {
        if (is_real(f.type)) defined_signals[n] = declare("wire", 1, f.name);
        n++;
      }
    text += "$upscope $end\n";
  }
  if (flows.nb_assertions > 0) {
    text += "$scope module assertions $end\n";
    for (int i = 1; i <= flows.nb_assertions; i++)
      assert_signals.push_back(declare("wire", 1, ("assert_" + std::to_string(i)).c_str()));
    text += "$upscope $end\n";
  }
  text += "$scope module run $end\n";
  reset_signal = declare("wire", 1, "reset");
  dropped_signal = declare("wire", 1, "dropped");
  text += "$upscope $end\n$upscope $end\n$enddefinitions $end\n";
  put(text);
}

bool VcdTraceWriter::changes(Signal& s, int status, uint64_t bits) {
  if (!first && s.status == status && s.bits == bits) return false;
  s.status = status;
  s.bits = bits;
  return true;
}

void VcdTraceWriter::level(Signal& s, int status, bool value) {
  bool defined = status == RP_DEFINED;
  if (!changes(s, status, defined && value)) return;
  text += defined ? (value ? '1' : '0') : status == RP_ABSENT ? 'z' : 'x';
  text += s.code;
  text += '\n';
}

void VcdTraceWriter::number(Signal& s, FlowType type, FlowValue v, int status) {
  bool defined = status == RP_DEFINED;
  uint64_t bits = 0;
  if (defined && type == FlowType::Int) bits = static_cast<uint32_t>(v.i);
  else if (defined) memcpy(&bits, &v.d, sizeof bits);
  if (!changes(s, status, bits)) return;
  if (type == FlowType::Int) {
    text += 'b';
    if (!defined) {
      text += status == RP_ABSENT ? 'z' : 'x';
    } else {
      // Binary without leading zeros: a reader extends the value with 0s.
      char digits[32];
      int n = 0;
      for (uint32_t u = static_cast<uint32_t>(v.i); n == 0 || u != 0; u >>= 1) digits[n++] = '0' + (u & 1);
      while (n > 0) text += digits[--n];
    }
  } else {
    text += 'r';
    if (!defined || v.d != v.d) {
      text += "nan";
    } else {
      char number[kValueTextMax];
      text.append(number, std::to_chars(number, number + sizeof number, v.d).ptr);
    }
  }
  text += ' ';
  text += s.code;
  text += '\n';
}

void VcdTraceWriter::flow(size_t n, FlowType type, FlowValue v, int status) {
  if (type == FlowType::Bool) return level(flow_signals[n], status, v.i != 0);
  number(flow_signals[n], type, v, status);
  if (is_real(type)) level(defined_signals[n], status, true);
}

// The instant after a reset carries the mark.
void VcdTraceWriter::reset() {}

void VcdTraceWriter::instant(const InstantRecord& r) {
  char step[24];
  text.assign("#");
  text.append(step, std::to_chars(step, step + sizeof step, r.step).ptr);
  text += first ? "\n$dumpvars\n" : "\n";
  size_t n = 0;
  for (const Flow& f : flows.inputs) flow(n++, f.type, r.inputs[f.index], RP_DEFINED);
  for (const Flow& f : flows.outputs) flow(n++, f.type, r.outputs[f.index], r.output_status[f.index]);
  for (size_t k = 0; k < flows.locals.size(); k++) flow(n++, flows.locals[k].type, r.locals[k], r.local_status[k]);
  for (size_t k = 0; k < assert_signals.size(); k++) {
    // A failed compiled step has no statuses at all.
    int status = k < r.assert_status.size() ? r.assert_status[k] : static_cast<int>(RP_ABSENT);
    // An assertion that holds shows 1, a false one 0.
    level(assert_signals[k], status == RP_FALSE ? static_cast<int>(RP_DEFINED) : status, status != RP_FALSE);
  }
  level(reset_signal, RP_DEFINED, r.after_reset);
  level(dropped_signal, RP_DEFINED, r.dropped);
  if (first) text += "$end\n";
  first = false;
  last_step = r.step;
  put(text);
}

// The last instant lasts one unit like the others.
void VcdTraceWriter::finish() {
  text = "#" + std::to_string(last_step + 1) + "\n";
  put(text);
}
