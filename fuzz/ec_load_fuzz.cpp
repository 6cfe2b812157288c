// ec_load_fuzz.cpp -- fuzz target: an ec file loaded as the simulator loads
// it (parse, checks, normalisation, items), then, when it loads, a few
// instants with every input 0 and a reset.
#include <cstring>

#include "ecexe/rp_ec_exe.h"
#include "fuzz/fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string path = fuzzing::as_file(data, size, ".ec");
  fuzzing::guarded([&] {
    RPEcExe* program = new RPEcExe;
    if (program->init(path.c_str(), fuzzing::symbols()) != 0) return;
    for (int k = 0; k < 3; k++) {
      for (int i = 0; i < program->nb_inputs(); i++)
        if (void* loc = program->input_loc(i)) memset(loc, 0, strcmp(program->input_type(i), "real") ? 4 : 8);
      program->step();
    }
    program->reset_history();
    program->step();
  });
  return 0;
}
