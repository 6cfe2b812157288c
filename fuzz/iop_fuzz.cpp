// iop_fuzz.cpp -- fuzz target: a panel description read, then, when it
// reads, its Tk script written (to a temporary file).
#include "foundations/pty_stream.h"
#include "fuzz/fuzz_support.h"
#include "panel/io_panel.h"
#include "panel/tk_script.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string path = fuzzing::as_file(data, size, ".iop");
  fuzzing::guarded([&] {
    IOPanel* panel = new IOPanel;
    panel->init(nullptr, fuzzing::symbols());
    if (!panel->read_iop(path.c_str())) return;
    if (panel->module == -1) panel->module = panel->symbols->add("fuzz");
    PtyStream out(tmpfile(), TK_SCRIPT_WIDTH, nullptr);  // closes its file
    panel->to_tk(&out, size % 2);
  });
  return 0;
}
