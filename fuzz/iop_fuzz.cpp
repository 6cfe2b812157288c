// iop_fuzz.cpp -- fuzz target: a panel description read, then, when it
// reads, its Tk script written (to nowhere).
#include "foundations/pty_stream.h"
#include "fuzz/fuzz_support.h"
#include "panel/io_panel.h"
#include "panel/tk_script.h"

namespace {

// A stream whose output goes nowhere, with no system call: the script is
// written line by line, and each line is flushed.
FILE* nowhere() {
  cookie_io_functions_t drop = {};
  drop.write = [](void*, const char*, size_t size) -> ssize_t { return static_cast<ssize_t>(size); };
  return fopencookie(nullptr, "w", drop);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string path = fuzzing::as_file(data, size, ".iop");
  fuzzing::guarded([&] {
    IOPanel* panel = new IOPanel;
    panel->init(nullptr, fuzzing::symbols());
    if (!panel->read_iop(path.c_str())) return;
    if (panel->module == -1) panel->module = panel->symbols->add("fuzz");
    PtyStream out(nowhere(), TK_SCRIPT_WIDTH, nullptr);  // closes its file
    panel->to_tk(&out, size % 2);
  });
  return 0;
}
