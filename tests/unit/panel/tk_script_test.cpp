// tk_script_test.cpp -- the generated Tk script: leaf variables with their
// defaults and labels, a panel without a top, warnings and internal errors.
// Whether Tk accepts the script, the widget paths, the pop-ups and what the
// procedures do are checked in a real wish (tkscript.test).
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

// The variable set-up of one input per row: the int range's defaults, a
// string-valued modifier, modifiers a bool accepts and ignores. The real
// ranges and the labels are read back from the widgets in tkscript.test.
TEST_F(TkScriptTest, LeafVariablesTakeModifiersOrDefaults) {
  struct Case { const char* description; const char* expected; } table[] = {
      {"inputs n : int;",
       "lappend Global(input_names) n\nlappend Global(input_types) int\n"
       "set VarLabel(n) {n}\nset MinInt(n) {-256}\nset MaxInt(n) {255}\n"},
      {"inputs n : int step = 3 max = 9 min = \"-1\" label = \"Count\";",
       "lappend Global(input_names) n\nlappend Global(input_types) int\n"
       "set VarLabel(n) {Count}\nset MinInt(n) {-1}\nset MaxInt(n) {9}\n"},
      {"inputs b : bool min = 1 max = 2 step = 3 label = \"\";",
       "lappend Global(input_names) b\nlappend Global(input_types) bool\nset VarLabel(b) {}\n"
       "set InputVars(b) 0\nlappend Global(boolean_input_names) b\n"},
  };
  for (const Case& c : table) {
    IOPanel* p = new_panel();
    ASSERT_EQ(read_text(c.description, p), 1);
    EXPECT_EQ(generated([&](PtyStream* out) { p->inputs[0]->to_tk_var(out); }), c.expected)
        << c.description;
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

// A chain of sub-panels each drawn twice by the next doubles the script at
// every level: 2^17 leaves are refused before a line is written, and the
// same chain four levels shorter is drawn.
TEST_F(TkScriptDeathTest, PanelsThatWouldDrawTooMuchAreRefusedFirst) {
  auto chain = [](int levels) {
    std::string text = "inputs a : int; outputs o : int; panels p0 = col { $a $o };";
    for (int k = 1; k <= levels; k++)
      text += " p" + std::to_string(k) + " = col { $p" + std::to_string(k - 1) + " $p" + std::to_string(k - 1) + " };";
    return text + " top = col { $p" + std::to_string(levels) + " };";
  };
  ASSERT_EQ(read_text(chain(12)), 1);
  panel->module = panel->symbols->add("chain");
  EXPECT_NE(generated([&](PtyStream* s) { panel->to_tk(s, 0); }).find("frame .panel"), std::string::npos);
  IOPanel* big = new_panel();
  ASSERT_EQ(read_text(chain(16), big), 1);
  big->module = big->symbols->add("chain");
  EXPECT_EXIT(generated([&](PtyStream* s) { big->to_tk(s, 0); }), ::testing::ExitedWithCode(1),
              "^  Error :\nIOPanel::to_tk : the panel of 'chain' would draw more than 100000 panels "
              "\\(the panels it refers to with '\\$' are drawn at each reference\\)\n$");
}
