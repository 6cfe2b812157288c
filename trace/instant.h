// instant.h -- what one instant of a run gave: the inputs it was given,
// every output's value and status, every assertion's status, the listed
// locals, and the problems the window would have reported in its dialogs.
// Values of flows whose status is not RP_DEFINED are meaningless.
#ifndef TRACE_INSTANT_H
#define TRACE_INSTANT_H

#include <cstdint>
#include <vector>

#include "trace/value_text.h"

// A run-time problem, as a dialog reports it.
struct Problem {
  enum Source : char { Assertion, Output, Step } source;
  int index;   // the assertion's or output's index, 0-based
  int status;  // RP_NIL, RP_DIVBYZERO or RP_FALSE; unused for a failed step
};

// The longest text format_problem writes, its NUL included.
constexpr int kProblemTextMax = 48;

// The text of the dialog about `p`: "1th assert raised false", "2th output
// raised nil", or for a compiled step that failed as a whole "step is
// aborted". Writes at most kProblemTextMax bytes, NUL included; returns
// the end of the text.
char* format_problem(const Problem& p, char* out);
// "nil", "divbyzero" or "false": how a dialog names a problem status, or
// null for a status that is no problem.
const char* problem_word(int status, bool assertion);

struct InstantRecord {
  long step = 0;             // 1 for the run's first instant; a reset does not restart it
  bool after_reset = false;  // the program was reset just before this instant
  bool dropped = false;      // abandoned: the memories are as they were before it
  std::vector<FlowValue> inputs;
  std::vector<FlowValue> outputs;
  std::vector<FlowValue> locals;
  std::vector<int8_t> output_status;
  std::vector<int8_t> assert_status;
  std::vector<int8_t> local_status;
  // In the order the dialogs come: assertions, then outputs. When a problem
  // ends the instant (abort, stop), only that first one.
  std::vector<Problem> problems;
};

#endif
