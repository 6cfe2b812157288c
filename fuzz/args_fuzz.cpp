// args_fuzz.cpp -- fuzz target: the simulator's command line, one word per
// line of the input, parsed as run_tavik parses argv.
#include <string>
#include <vector>

#include "app/tavik_args.h"
#include "fuzz/fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::vector<std::string> words = {TavikArgs::TOOL_NAME};
  std::string word;
  for (size_t k = 0; k < size; k++) {
    if (data[k] == '\n') {
      words.push_back(word);
      word.clear();
    } else if (data[k] != '\0') {
      word += static_cast<char>(data[k]);
    }
  }
  if (!word.empty()) words.push_back(word);
  std::vector<const char*> argv;
  for (const std::string& w : words) argv.push_back(w.c_str());
  fuzzing::guarded([&] { TavikArgs args(static_cast<int>(argv.size()), argv.data()); });
  return 0;
}
