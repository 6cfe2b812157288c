// program_flows.cpp -- listing a program's flows for scenarios and traces.
#include "trace/program_flows.h"

#include "ecexe/rp_exe.h"

ProgramFlows::ProgramFlows(RPExe* p, bool with_locals) : program(p), nb_assertions(p->nb_assertions()) {
  for (int i = 0; i < p->nb_inputs(); i++) {
    inputs.push_back({p->input_ident(i), flow_type(p->input_type(i)), i});
    places[inputs.back().name] = {FlowKind::Input, i};
  }
  for (int i = 0; i < p->nb_outputs(); i++) {
    outputs.push_back({p->output_ident(i), flow_type(p->output_type(i)), i});
    places[outputs.back().name] = {FlowKind::Output, i};
  }
  for (int i = 0; i < p->nb_locals(); i++) {
    Flow local = {p->local_ident(i), flow_type(p->local_type(i)), i};
    bool shown = with_locals && local.type != FlowType::Extern;
    places.emplace(local.name, Place{FlowKind::Local, shown ? static_cast<int>(locals.size()) : -1});
    if (shown) locals.push_back(local);
  }
}

std::string ProgramFlows::unsupported() const {
  for (const std::vector<Flow>* list : {&inputs, &outputs})
    for (const Flow& f : *list)
      if (f.type == FlowType::Extern)
        return std::string(list == &inputs ? "input '" : "output '") + f.name + "' has the abstract type '" +
               (list == &inputs ? program->input_type(f.index) : program->output_type(f.index)) +
               "', which no scenario or trace can hold";
  return "";
}

bool ProgramFlows::find(std::string_view name, FlowKind* kind, int* position) const {
  auto found = places.find(std::string(name));
  if (found == places.end()) return false;
  *kind = found->second.kind;
  *position = found->second.position;
  return true;
}

const char* ProgramFlows::program_name() const { return program->name(); }

std::string ProgramFlows::unknown(std::string_view name) const {
  return quoted(name) + " is not an input, output or local of " + program_name();
}

void* ProgramFlows::local_location(size_t k) const {
  if (local_locations.empty()) local_locations.assign(locals.size(), nullptr);
  if (!local_locations[k]) local_locations[k] = program->local_loc(locals[k].index);
  return local_locations[k];
}
