// program_flows.h -- the flows of a program as scenarios and traces see
// them: its inputs, outputs and (when asked) locals, with their names and
// types, in the program's own order. Everything is read through RPExe, so
// ec programs and compiled ones look the same.
#ifndef TRACE_PROGRAM_FLOWS_H
#define TRACE_PROGRAM_FLOWS_H

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "trace/value_text.h"

class RPExe;

struct Flow {
  const char* name;
  FlowType type;
  int index;  // the program's index of the flow among its inputs, outputs or locals
};

enum class FlowKind { Input, Output, Local };

class ProgramFlows {
 public:
  // Lists the flows of `program` (kept, not owned); locals only when
  // `with_locals`, and then only those of a type a trace can show.
  ProgramFlows(RPExe* program, bool with_locals);

  // Empty when every input and output has a type that a scenario can give
  // and a trace can show; otherwise a message naming the first that has not.
  std::string unsupported() const;

  // The kind and position in its list of the flow called `name`, or false.
  // Locals are found even when they are not listed.
  bool find(std::string_view name, FlowKind* kind, int* position) const;
  const char* program_name() const;
  // "'<name>' is not an input, output or local of <program>".
  std::string unknown(std::string_view name) const;

  RPExe* program;
  std::vector<Flow> inputs;
  std::vector<Flow> outputs;
  std::vector<Flow> locals;
  int nb_assertions;

  // The location of listed local k, asked of the program the first time
  // only: a local's location follows its value at every instant after.
  // Must not be asked for a local that has no item (whose status is absent).
  void* local_location(size_t k) const;

 private:
  struct Place {
    FlowKind kind;
    int position;
  };
  std::unordered_map<std::string, Place> places;
  mutable std::vector<void*> local_locations;
};

#endif
