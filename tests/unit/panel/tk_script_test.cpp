// tk_script_test.cpp -- the generated Tk script: widget paths and their
// numbering, leaf variables with their defaults and labels, the debug
// variants of the procedures, the fixed sections, warnings and internal
// errors. Whether Tk accepts the script is checked in tests/tcl.
#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <vector>

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

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

// The lines that begin with `prefix`, joined by newlines.
std::string lines_starting(const std::string& text, const std::string& prefix) {
  std::string s;
  for (const std::string& line : lines_of(text))
    if (line.compare(0, prefix.size(), prefix) == 0) s += line + "\n";
  return s;
}

// From the line `first` up to (not including) the next line that begins
// with `next`, or to the end.
std::string section(const std::string& text, const std::string& first, const std::string& next) {
  size_t from = text.find(first);
  if (from == std::string::npos) return "<missing " + first + ">";
  size_t to = text.find("\n" + next, from + first.size());
  return text.substr(from, to == std::string::npos ? std::string::npos : to + 1 - from);
}

std::string proc_text(const std::string& script, const std::string& name) {
  return section(script, "proc " + name + " ", "proc ");
}

}  // namespace

// Forms count apart from everything else; boxes, pop-ups and leaves share
// one counter in the order of the walk, a pop-up before its son.
TEST_F(TkScriptTest, PathsNumberFormsApartFromOtherNodesInWalkOrder) {
  ASSERT_EQ(read_text(R"(module "m"
inputs a : bool; n : int;
outputs y : real; z : int;
panels top = col { line { $a box } popup "P" col { $n $y } box line { $z } };)"),
            1);
  std::string script = generated([&](PtyStream* out) { panel->to_tk(out, 0); });
  EXPECT_EQ(lines_starting(script, "frame .panel."),
            "frame .panel.f1\n"
            "frame .panel.f1.f2\n"
            "frame .panel.f1.f2.bif1\n"
            "frame .panel.f1.f2.box2\n"
            "frame .panel.f1.pop3\n"
            "frame .panel.f1.pop3.tl.f -bd 2 -relief sunken\n"
            "frame .panel.f1.pop3.tl.f.f3\n"
            "frame .panel.f1.pop3.tl.f.f3.iif4\n"
            "frame .panel.f1.pop3.tl.f.f3.rof5\n"
            "frame .panel.f1.box6\n"
            "frame .panel.f1.f4\n"
            "frame .panel.f1.f4.iof7\n");
  EXPECT_EQ(lines_starting(script, "set InputPaths") + lines_starting(script, "set OutputPaths"),
            "set InputPaths(a) {.panel.f1.f2.bif1}\n"
            "set InputPaths(n) {.panel.f1.pop3.tl.f.f3.iif4}\n"
            "set OutputPaths(y) {.panel.f1.pop3.tl.f.f3.rof5}\n"
            "set OutputPaths(z) {.panel.f1.f4.iof7}\n");
  // A line packs its sons to the left, a column on top, one per line.
  EXPECT_EQ(section(script, "pack append .panel.f1\\", "#Top"),
            "pack append .panel.f1\\\n"
            "   .panel.f1.f2 {top frame center expand fill}\\\n"
            "   .panel.f1.pop3 {top frame center expand fill}\\\n"
            "   .panel.f1.box6 {top frame center expand fill}\\\n"
            "   .panel.f1.f4 {top frame center expand fill}\n");
  EXPECT_NE(script.find("pack append .panel.f1.f2\\\n   .panel.f1.f2.bif1 {left frame center "
                        "expand fill}\\\n   .panel.f1.f2.box2 {left"),
            std::string::npos);
  EXPECT_NE(script.find("#Top packing\npack append .panel \\\n"
                        "   .panel.f1 {top frame center expand fill}\n"),
            std::string::npos);
}

TEST_F(TkScriptTest, PopupIsAWithdrawnWindowTogglingWithBothButtons) {
  ASSERT_EQ(read_text("outputs b : bool; panels top = popup \"Lamp \\\"1\\\"\" $b;"), 1);
  panel->module = key("m");
  std::string script = generated([&](PtyStream* out) { panel->to_tk(out, 0); });
  EXPECT_EQ(section(script, "frame .panel.pop1\n", "frame .panel.pop1.tl.f.bof2"),
            "frame .panel.pop1\n"
            "toplevel .panel.pop1.tl\n"
            "wm withdraw .panel.pop1.tl\n"
            "wm positionfrom .panel.pop1.tl program\n"
            "wm title .panel.pop1.tl \"Lamp \"1\"\"\n"
            "button .panel.pop1.tl.dismiss \\\n"
            "   -text \"dismiss\"\\\n"
            "   -font {helvetica 12 italic} -fg blue\\\n"
            "   -command \"InvertPopup .panel.pop1.tl\"\n"
            "frame .panel.pop1.tl.f -bd 2 -relief sunken\n"
            "pack .panel.pop1.tl.f -side top -expand 1 -fill both\n"
            "pack .panel.pop1.tl.dismiss -side top -anchor center -expand 0 -fill none\n"
            "button .panel.pop1.b\\\n"
            " -text \"Lamp \"1\"\"\\\n"
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
       "VarLabel(n) {n}|MinInt(n) {-256}|MaxInt(n) {255}|"},
      {"inputs n : int step = 3 max = 9 min = \"-1\" label = \"Count\";",
       "VarLabel(n) {Count}|MinInt(n) {-1}|MaxInt(n) {9}|"},
      {"inputs x : real;",
       "VarLabel(x) {x}|MinReal(x) {-100.0}|MaxReal(x) {100.0}|StepReal(x) {0.1}|"},
      {"inputs x : float step = .5 max = 2;",
       "VarLabel(x) {x}|MinReal(x) {-100.0}|MaxReal(x) {2}|StepReal(x) {.5}|"},
      {"inputs x : double min = 1;",
       "VarLabel(x) {x}|MinReal(x) {1}|MaxReal(x) {100.0}|StepReal(x) {0.1}|"},
      {"inputs b : bool min = 1 max = 2 step = 3 label = \"\";",
       "VarLabel(b) {}|InputVars(b) 0|+boolean_input_names b|"},
      {"outputs o : float label = \"Out put\";", "VarLabel(o) {Out put}|OutputVars(o) ?|"},
      {"outputs o : int;", "VarLabel(o) {o}|OutputVars(o) ?|"},
  };
  for (const Case& c : table) {
    SCOPED_TRACE(c.description);
    IOPanel* p = new_panel();
    ASSERT_EQ(read_text(c.description, p), 1);
    Panel* leaf = p->inputs.empty() ? static_cast<Panel*>(p->outputs[0]) : p->inputs[0];
    std::string vars = generated([&](PtyStream* out) { leaf->to_tk_var(out); });
    std::vector<std::string> lines = lines_of(vars);
    ASSERT_GE(lines.size(), 2u);
    // The first two lines list the name and the type as written.
    PanelInOut* io = static_cast<PanelInOut*>(leaf);
    const char* list = p->inputs.empty() ? "output" : "input";
    EXPECT_EQ(lines[0], std::string("lappend Global(") + list + "_names) " + text(io->name));
    EXPECT_EQ(lines[1], std::string("lappend Global(") + list + "_types) " + text(io->type));
    std::string rest;
    for (size_t i = 2; i < lines.size(); i++) {
      const std::string& l = lines[i];
      if (l.compare(0, 4, "set ") == 0) rest += l.substr(4) + "|";
      else if (l.compare(0, 15, "lappend Global(") == 0)
        rest += "+" + l.substr(15, l.find(')') - 15) + l.substr(l.find(')') + 1) + "|";
      else rest += "?" + l + "|";
    }
    EXPECT_EQ(rest, c.expected);
  }
}

// An empty label hides the label line; the widget commands stay whole.
TEST_F(TkScriptTest, EmptyLabelWritesNoLabelLine) {
  ASSERT_EQ(read_text("inputs b : bool label = \"\"; n : int label = \"\";\n"
                      "outputs o : bool label = \"\"; v : real label = \"\"; w : int;\n"
                      "panels top = line { $b $n $o $v $w };"),
            1);
  panel->module = key("m");
  std::string script = generated([&](PtyStream* out) { panel->to_tk(out, 0); });
  EXPECT_EQ(section(script, "button .panel.f1.bif1.b", "if "),
            "button .panel.f1.bif1.b\\\n"
            "-command {TreatBI {b}}\n"
            "checkbutton .panel.f1.bif1.cb\\\n"
            "-variable {InputVars(b)}\n");
  EXPECT_EQ(section(script, "scale .panel.f1.iif2.is", "pack "),
            "scale .panel.f1.iif2.is\\\n"
            "   -from \"$MinInt(n)\" \\\n"
            "   -to \"$MaxInt(n)\" \\\n"
            "   -orient {horizontal}\\\n"
            "   -relief {raised}\\\n"
            "   -variable {InputVars(n)}\n");
  // The bool output's label command ends on an empty line of its own.
  EXPECT_EQ(section(script, "label .panel.f1.bof3.l", "pack "),
            "label .panel.f1.bof3.l\\\n\ntrace variable OutputVars(o) w TraceBO\n");
  EXPECT_EQ(section(script, "label .panel.f1.rof4.ln", "label .panel.f1.rof4.lv"),
            "label .panel.f1.rof4.ln\\\n -anchor {sw}\n");
  EXPECT_EQ(section(script, "label .panel.f1.iof5.ln", "label .panel.f1.iof5.lv"),
            "label .panel.f1.iof5.ln\\\n -text \"$VarLabel(w)\" \\\n -anchor {sw}\n");
  EXPECT_NE(script.find("lappend Global(rof_list) .panel.f1.rof4\n"), std::string::npos);
  EXPECT_NE(script.find("lappend Global(iof_list) .panel.f1.iof5\n"), std::string::npos);
}

// Debug names the reset command instead of calling it and starts the echo
// on; what the echo prints is checked in a real wish (tkscript.test).
TEST_F(TkScriptTest, DebugVariantsOfTheProcedures) {
  panel->module = key("cnt");
  std::string plain = generated([&](PtyStream* out) { panel->to_tk(out, 0); });
  std::string debug = generated([&](PtyStream* out) { panel->to_tk(out, 1); });
  EXPECT_EQ(lines_starting(proc_text(plain, "TreatReset"), "   cnt_reset"), "   cnt_reset\n");
  EXPECT_EQ(lines_starting(proc_text(debug, "TreatReset"), "   cnt_reset"), "");
  EXPECT_EQ(lines_starting(plain, "set Global(verbose) "),
            "set Global(verbose) 0\nset Global(verbose) $Global(verbose)\n");
  EXPECT_EQ(lines_starting(debug, "set Global(verbose) "),
            "set Global(verbose) 1\nset Global(verbose) $Global(verbose)\n");
  EXPECT_EQ(plain.find("call of"), std::string::npos);
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
