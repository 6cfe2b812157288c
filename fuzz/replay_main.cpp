// replay_main.cpp -- a fuzz target without libFuzzer: runs the target once
// on each file named on the command line, so that the normal build replays
// the inputs kept under tests/fuzz. Exits 0 when every input ran through.
#include <cstdint>
#include <cstdio>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv) {
  for (int k = 1; k < argc; k++) {
    FILE* f = fopen(argv[k], "rb");
    if (!f) {
      fprintf(stderr, "replay: cannot read '%s'\n", argv[k]);
      return 2;
    }
    std::vector<uint8_t> data;
    for (int c; (c = fgetc(f)) != EOF;) data.push_back(static_cast<uint8_t>(c));
    fclose(f);
    LLVMFuzzerTestOneInput(data.data(), data.size());
  }
  return 0;
}
