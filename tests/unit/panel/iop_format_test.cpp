// iop_format_test.cpp -- panel descriptions: the writer's exact layout, the
// reader's outcomes and errors, and round trips through both.
#include <gtest/gtest.h>

#include "panel/io_panel.h"
#include "panel_fixture.h"

using IopFormatTest = PanelFixture;
using IopFormatDeathTest = PanelFixture;

TEST_F(IopFormatTest, WriterLaysOutEveryKindOfPanel) {
  ASSERT_EQ(read_text(R"(module "thermo"
inputs target : real min = 10 max = "30.5" step = 0.5; on : bool label = "Power";
outputs heat : bool; temp : real label = "Room";
panels
  gap = box;
  knobs = line { $target box col { $on } } "dropped";
  more = popup "More" col { $temp popup "Heat" $heat };
  top = col { $knobs $gap line { $more } };
)"),
            1);
  EXPECT_EQ(written(), R"(module "thermo"
inputs
   target : real min = "10" max = "30.5" step = "0.5";
   on : bool label = "Power";
outputs
   heat : bool;
   temp : real label = "Room";
panels
   gap = box ;
   knobs = line { $target box
      col { $on
      }
   };
   more = popup "More" 
   col { $temp popup "Heat" $heat
   };
   top = col { $knobs $gap
      line { $more
      }
   };
)");
}

// Read, write, read again: the same tree, and the second writing is the
// same text as the first.
TEST_F(IopFormatTest, WrittenDescriptionsReadBackToTheSameTree) {
  const char* table[] = {
      // comments of both kinds, "/*/" closing itself, one-line layout
      "/*/ module \"m\" // inputs x : int;\n"
      "inputs a:int;b:bool;/* c : int; */outputs o:real;//\npanels top=line{$a $b $o};",
      // modifiers with identifiers and strings, numbers as identifiers
      "inputs n : int min = -256 max = 255 label = \"N (count)\"; f : float step = .01;\n"
      "panels top = col { $f $n };",
      // escaped quotes and other backslashes kept, a string across lines
      "module \"say \\\"hi\\\"\"\ninputs s : bool label = \"a\\\"b\\n\"; t : bool label =\n"
      "\"two\nlines\";\npanels top = popup \"q\\\"\" $s; p = line { $t } \"x\" \"y\";",
      // references to a layout panel, a box and a popup defined earlier
      "outputs y : int;\npanels b = box; p = popup \"P\" $y; l = col { $b $p box };\n"
      "top = line { $l $b popup \"inner\" line { $y } };",
      // a panel used twice: two forms hold it
      "inputs a : int;\npanels top = col { $a line { $a } };",
      // extern type names are not checked while reading
      "module \"ext\" inputs e : matrix; panels top = box;",
  };
  // Every description has a layout (BarePanelsKeywordComesFromLeavesWithoutLayout).
  for (const char* description : table) {
    SCOPED_TRACE(description);
    IOPanel* first = new_panel();
    testing::internal::CaptureStderr();  // a panel used twice warns
    ASSERT_EQ(read_text(description, first), 1);
    std::string text = written(first);
    IOPanel* second = new_panel();
    ASSERT_EQ(read_text(text, second), 1) << text;
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(dump(second), dump(first)) << text;
    EXPECT_EQ(written(second), text);
  }
}

// Outcomes of reading: the result and the whole of standard error, where
// a syntax error names its line (0: none).
TEST_F(IopFormatTest, ReaderOutcomes) {
  const struct { const char* description; int result, line; } table[] = {
      {"  // c\n/* d\n */\n\t", 1, 0},
      {"inputs a : int,\n", 0, 2},
      // the writer's own output for leaves without a layout
      {"inputs a : int;\npanels\n", 0, 3},
      // the parser discards a half-built list and half-read modifiers
      {"panels\ntop = col { box line { box } , };", 0, 2},
      {"inputs a : int min = 1 max = 2 ,;", 0, 1},
      {"outputs o : int;\n\ninputs a : int;", 0, 3},
  };
  for (const auto& c : table) {
    SCOPED_TRACE(c.description);
    std::string path = testsupport::write_temp(c.description, ".iop");
    testing::internal::CaptureStderr();
    EXPECT_EQ(new_panel()->read_iop(path.c_str()), c.result);
    std::string line = std::to_string(c.line);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              c.line ? "syntax error   line " + line + "\n  Warning :\nIOPanel::read_iop: file '" + path +
                           "' syntax error line '" + line + "'\n\n"
                     : "");
    remove(path.c_str());
  }
}

TEST_F(IopFormatTest, TooDeepNestingExhaustsTheParserCleanly) {
  std::string deep = "panels top = ";
  for (int i = 0; i < 20000; i++) deep += "col { ";
  testing::internal::CaptureStderr();
  EXPECT_EQ(read_text(deep), 0);
  std::string messages = testing::internal::GetCapturedStderr();
  EXPECT_EQ(messages.substr(0, 26), "memory exhausted   line 1\n") << messages;
}

TEST_F(IopFormatTest, SyntaxErrorKeepsWhatWasBuilt) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(read_text("inputs a : int; b : bool;\noutputs o : int ; ;"), 0);
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(dump(panel), "module<-> in[a:int;b:bool;] out[o:int;]");
}

// An empty file is taken for a missing one.
TEST_F(IopFormatTest, MissingFilesWarn) {
  std::string empty = testsupport::write_temp("", ".iop");
  testing::internal::CaptureStderr();
  EXPECT_EQ(panel->read_iop(nullptr), 0);
  EXPECT_EQ(panel->read_iop(empty.c_str()), 0);
  EXPECT_EQ(panel->write_iop("/nonexistent/x.iop"), 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "  Warning :\nIOPanel::read_iop : can't open 'null'\n\n"
            "  Warning :\nIOPanel::read_iop : can't open '" + empty + "'\n\n"
            "  Warning :\nIOPanel::write_iop : can't open '/nonexistent/x.iop'\n\n");
}

// Leaves without a layout are written with a bare "panels", which does not
// read back (ReaderOutcomes).
TEST_F(IopFormatTest, BarePanelsKeywordComesFromLeavesWithoutLayout) {
  ASSERT_EQ(read_text("inputs a : int;"), 1);
  EXPECT_EQ(written(), "inputs\n   a : int;\npanels\n");
}

TEST_F(IopFormatDeathTest, FatalReadingErrors) {
  const struct { const char* description; const char* message; } table[] = {
      {"inputs a : int; / x", "lexical error : bad sequence '/ ', line '1'\n"},
      {"inputs\na : int #", "lexical error : unknown char '#'='35', line '2'\n"},
      {"panels top = line { $b };", "IOPanel::read_iop: undefined ident 'b' line 1\n"},
      {"panels top = col { $p };\np = box;", "IOPanel::read_iop: undefined ident 'p' line 1\n"},
      {"inputs a : int;\npanels top = $a;",
       "IOPanel: can't give name 'top' (already named by 'a')"},
      {"outputs a : int;\npanels a = box;", "IOPanel can't give name 'a' (already used)"},
      {"panels top = box; top = box;", "IOPanel can't give name 'top' (already used)"},
      {"module \"open", "lexical error : unterminated string, line '1'\n"},
      {"/* open *", "lexical error : unterminated comment, line '1'\n"},
  };
  for (const auto& c : table) {
    SCOPED_TRACE(c.description);
    EXPECT_EXIT(read_text(c.description, new_panel()), ::testing::ExitedWithCode(1),
                "^  Error :\n" + literal(c.message) + "\n$");
  }
}

TEST_F(IopFormatDeathTest, UnnamedDefinitionsAreFatal) {
  PtyStream* out = PtyStream::of_stderr();
  const struct { Panel* panel; const char* message; } table[] = {
      {panel->createPanelLine(nullptr), "  Error :\nPanelForm::to_iop_def : the node has no name\n"},
      {panel->createPanelBox(), "  Error :\nPanelBox::to_iop_def : the node has no name\n"},
      {panel->createPanelPopup(key("p"), panel->createPanelBox()),
       "  Error :\nPanelPopup::to_iop_def : the node has no name\n"},
  };
  for (const auto& c : table)
    EXPECT_EXIT(c.panel->to_iop_def(out), ::testing::ExitedWithCode(1), "^" + literal(c.message) + "$");
  PanelInput anonymous(panel, -1, panel->int_key, nullptr);
  EXPECT_EXIT(anonymous.to_iop_exp(out), ::testing::ExitedWithCode(1),
              "^Sorry, Internal Error :\nPanel::to_iop_exp : undefined case\n$");
}
