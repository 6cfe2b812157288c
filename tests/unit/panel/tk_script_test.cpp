// tk_script_test.cpp -- the generated Tk script: the pop-up's window, leaf
// variables with their defaults and labels, the fixed sections, warnings
// and internal errors. Whether Tk accepts the script, the widget paths and
// what the procedures do are checked in a real wish (tkscript.test).
#include <gtest/gtest.h>

#include <functional>

#include "panel/io_panel.h"
#include "panel/tk_script.h"
#include "panel_fixture.h"

using TkScriptTest = PanelFixture;
using TkScriptDeathTest = PanelFixture;

namespace {

// What `write` puts into a stream of the script's width.
std::string generated(const std::function<void(PtyStream*)>& write) {
  return testsupport::printed(write, TK_SCRIPT_WIDTH);
}

// From the line `first` up to (not including) the next line that begins
// with `next`, or to the end.
std::string section(const std::string& text, const std::string& first, const std::string& next) {
  size_t from = text.find(first);
  if (from == std::string::npos) return "<missing " + first + ">";
  size_t to = text.find("\n" + next, from + first.size());
  return text.substr(from, to == std::string::npos ? std::string::npos : to + 1 - from);
}

}  // namespace

TEST_F(TkScriptTest, PopupIsAWithdrawnWindowTogglingWithBothButtons) {
  ASSERT_EQ(read_text("outputs b : bool; panels top = popup \"Lamp \\\"1\\\"\" $b;"), 1);
  panel->module = key("m");
  std::string script = generated([&](PtyStream* out) { panel->to_tk(out, 0); });
  EXPECT_EQ(section(script, "frame .panel.pop1\n", "frame .panel.pop1.tl.f.bof2"),
            "frame .panel.pop1\n"
            "toplevel .panel.pop1.tl\n"
            "wm withdraw .panel.pop1.tl\n"
            "wm positionfrom .panel.pop1.tl program\n"
            "wm title .panel.pop1.tl \"Lamp \\\"1\\\"\"\n"
            "button .panel.pop1.tl.dismiss \\\n"
            "   -text \"dismiss\"\\\n"
            "   -font {helvetica 12 italic} -fg blue\\\n"
            "   -command \"InvertPopup .panel.pop1.tl\"\n"
            "frame .panel.pop1.tl.f -bd 2 -relief sunken\n"
            "pack .panel.pop1.tl.f -side top -expand 1 -fill both\n"
            "pack .panel.pop1.tl.dismiss -side top -anchor center -expand 0 -fill none\n"
            "button .panel.pop1.b\\\n"
            " -text \"Lamp \\\"1\\\"\"\\\n"
            " -command \"InvertPopup .panel.pop1.tl\"\\\n"
            " -font {helvetica 12 italic} -fg blue\n");
  EXPECT_NE(script.find("lappend Global(bof_list) .panel.pop1.tl.f.bof2\n"
                        "set OutputPaths(b) {.panel.pop1.tl.f.bof2}\n"
                        "pack append .panel.pop1 \\\n"
                        "   .panel.pop1.b {top frame center expand fill}\n"
                        "pack .panel.pop1.tl.f.bof2 -side top -expand 1 -fill both\n"),
            std::string::npos);
}

// The variable set-up of one leaf per row: defaults, modifiers that apply,
// modifiers accepted and ignored, labels.
TEST_F(TkScriptTest, LeafVariablesTakeModifiersOrDefaults) {
  struct Case {
    const char* description;
    const char* expected;
  } table[] = {
      {"inputs n : int;",
       "lappend Global(input_names) n\nlappend Global(input_types) int\n"
       "set VarLabel(n) {n}\nset MinInt(n) {-256}\nset MaxInt(n) {255}\n"},
      {"inputs n : int step = 3 max = 9 min = \"-1\" label = \"Count\";",
       "lappend Global(input_names) n\nlappend Global(input_types) int\n"
       "set VarLabel(n) {Count}\nset MinInt(n) {-1}\nset MaxInt(n) {9}\n"},
      {"inputs x : float step = .5 max = 2;",
       "lappend Global(input_names) x\nlappend Global(input_types) float\nset VarLabel(x) {x}\n"
       "set MinReal(x) {-100.0}\nset MaxReal(x) {2}\nset StepReal(x) {.5}\n"},
      {"inputs b : bool min = 1 max = 2 step = 3 label = \"\";",
       "lappend Global(input_names) b\nlappend Global(input_types) bool\nset VarLabel(b) {}\n"
       "set InputVars(b) 0\nlappend Global(boolean_input_names) b\n"},
      {"outputs o : double label = \"Out put\";",
       "lappend Global(output_names) o\nlappend Global(output_types) double\n"
       "set VarLabel(o) {Out put}\nset OutputVars(o) ?\n"},
  };
  for (const Case& c : table) {
    IOPanel* p = new_panel();
    ASSERT_EQ(read_text(c.description, p), 1);
    Panel* leaf = p->inputs.empty() ? static_cast<Panel*>(p->outputs[0]) : p->inputs[0];
    EXPECT_EQ(generated([&](PtyStream* out) { leaf->to_tk_var(out); }), c.expected) << c.description;
  }
}

// Without a top, ".panel" exists but is neither filled nor packed.
TEST_F(TkScriptTest, PanelWithoutTopLeavesPanelFrameUnpacked) {
  ASSERT_EQ(read_text("module \"solo\" inputs i : int;"), 1);
  std::string script = generated([&](PtyStream* out) { panel->to_tk(out, 0); });
  EXPECT_EQ(section(script, "####### User defined panel", "####### Epilogue"),
            "####### User defined panel \n#User defined panel\n"
            "frame .panel \\\n   -borderwidth {2} \\\n   -relief {raised}\n"
            "####### General packing \npack append . \\\n"
            "   .menu  {top frame center fillx} \\\n   .step  {top frame center fillx}\n");
  EXPECT_EQ(section(script, "####### Epilogue", "<none>"),
            "####### Epilogue ... \n"
            "trace variable Global(verbose) w TraceVerbose\nset Global(verbose) $Global(verbose)\n"
            "trace variable Global(show_step) w TraceShowStep\n"
            "set Global(show_step) $Global(show_step)\n"
            "trace variable Global(show_step_ctr) w TraceShowStepCtr\n"
            "set Global(show_step_ctr) $Global(show_step_ctr)\n");
  // The sections come in order, each once.
  size_t at = 0;
  for (const char* head : {"###### Procedures", "###### Global variables", "#Input variables",
                           "###### Main window", "###### Menu", "button .step",
                           "####### User defined panel", "####### General packing",
                           "####### Epilogue"}) {
    size_t found = script.find(head, at);
    EXPECT_NE(found, std::string::npos) << head << " missing or out of order";
    at = found;
  }
  EXPECT_EQ(script.find("#Output variables"), std::string::npos);
  EXPECT_NE(script.find("set Global(module_name) \"solo\"\nset Global(input_names) {}\n"),
            std::string::npos);
}

TEST_F(TkScriptTest, UnknownModifiersAreWarnedAndSkipped) {
  ASSERT_EQ(read_text("inputs a : int color = red min = 2 label = \"A\";\n"
                      "outputs o : int min = 1 label = \"O\";"),
            1);
  testing::internal::CaptureStderr();
  std::string in = generated([&](PtyStream* out) { panel->inputs[0]->to_tk_var(out); });
  std::string out_text = generated([&](PtyStream* out) { panel->outputs[0]->to_tk_var(out); });
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "  Warning :\nPanelInput:var2tk: unrecognized modifier ``color''\n\n"
            "  Warning :\nPanelOutput:var2tk: unrecognized modifier ``min''\n\n");
  EXPECT_NE(in.find("set VarLabel(a) {A}\nset MinInt(a) {2}\nset MaxInt(a) {255}\n"),
            std::string::npos);
  EXPECT_NE(out_text.find("set VarLabel(o) {O}\nset OutputVars(o) ?\n"), std::string::npos);
}

TEST_F(TkScriptDeathTest, UnknownTypesAreInternalErrors) {
  ASSERT_EQ(read_text("inputs e : matrix; outputs f : vector;"), 1);
  Panel* in = panel->inputs[0];
  Panel* out = panel->outputs[0];
  auto var = [](Panel* p) { generated([&](PtyStream* s) { p->to_tk_var(s); }); };
  auto widgets = [](Panel* p) { generated([&](PtyStream* s) { p->to_tk(s, ".panel"); }); };
  EXPECT_EXIT(var(in), ::testing::ExitedWithCode(1),
              "^Sorry, Internal Error :\nPanelInput::to_tk_var : unknown type 'matrix'\n\n$");
  EXPECT_EXIT(var(out), ::testing::ExitedWithCode(1),
              "^Sorry, Internal Error :\nPanelOutput::to_tk_var : unknown type 'vector'\n\n$");
  EXPECT_EXIT(widgets(in), ::testing::ExitedWithCode(1),
              "^Sorry, Internal Error :\nPanelInput::to_tk:  unknown type 'matrix'\n\n$");
  EXPECT_EXIT(widgets(out), ::testing::ExitedWithCode(1),
              "^Sorry, Internal Error :\nPanelOutput::to_tk:  unknown type 'vector'\n\n$");
}
