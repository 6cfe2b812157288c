// observer.h -- a condition over a program's flows, written in the ec
// syntax (`count >= 10`, `alarm and not pre alarm`), evaluated instant by
// instant by the ec evaluator itself: the condition becomes a small program
// of its own, whose inputs are the observed program's flows and whose one
// output is the condition. Its memories (`pre`, `->`) start at build().
// Observers of one condition over one program's flows share one compiled
// program, built once for the process: only the last one built may run.
#ifndef TRACE_OBSERVER_H
#define TRACE_OBSERVER_H

#include <string>

#include "trace/instant.h"
#include "trace/program_flows.h"

class RPEcExe;

class Observer {
 public:
  // Builds the observer of `condition` over the flows of `flows` (inputs,
  // outputs and listed locals). False, with `error` set to what is wrong and
  // where in the condition ("column N: ..."), when it does not compile; the
  // process goes on.
  bool build(const ProgramFlows& flows, const std::string& condition, std::string* error);
  // Runs one instant of the observer on the values of `record`, an instant
  // of the observed program: true when the condition holds (nil, absent or
  // a division by zero count as not holding).
  bool holds(const InstantRecord& record);

 private:
  const ProgramFlows* flows = nullptr;
  RPEcExe* program = nullptr;  // shared, never freed: a load lives as long as the process
};

#endif
