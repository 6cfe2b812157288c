// tavik_args_test.cpp -- the option table: values taken, flags that clear
// each other, and the fatal diagnostics raised while parsing.
#include "app/tavik_args.h"

#include "foundations/errors.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// Parses "tavik" followed by `words`.
struct Parsed {
  std::vector<const char*> argv;
  TavikArgs* args;
  explicit Parsed(std::vector<const char*> words) {
    argv.push_back("tavik");
    argv.insert(argv.end(), words.begin(), words.end());
    args = new TavikArgs(static_cast<int>(argv.size()), argv.data());
  }
  ~Parsed() { delete args; }
};

TEST(TavikArgsTest, OptionsSetTheirFields) {
  testing::internal::CaptureStderr();
  Parsed empty({});
  const TavikArgs& none = *empty.args;
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(none.verbose + none.dbgtk + none.save_panel + none.auto_step + none.compose, 0);
  EXPECT_EQ(none.input_file, nullptr);
  Parsed p({"-v", "-dbgtk", "-savepanel", "prog.ec", "-panel", "dir/panel"});
  EXPECT_EQ(p.args->verbose + p.args->dbgtk + p.args->save_panel, 3);
  EXPECT_STREQ(p.args->input_file, "prog.ec");
  EXPECT_STREQ(p.args->panel_file, "dir/panel.iop");
  EXPECT_STREQ(Parsed({"-p", "panel.iop"}).args->panel_file, "panel.iop");
  EXPECT_EQ(Parsed({"-sp"}).args->save_panel, 1);
  // An unknown word is taken as the program, even with a dash.
  EXPECT_STREQ(Parsed({"-x"}).args->input_file, "-x");
}

TEST(TavikArgsTest, TheLastOfAutoAndCompWins) {
  Parsed comp({"-auto", "-comp"}), automatic({"-comp", "-auto"});
  EXPECT_EQ(comp.args->auto_step * 10 + comp.args->compose, 1);
  EXPECT_EQ(automatic.args->auto_step * 10 + automatic.args->compose, 10);
}

// Diagnostics raised while parsing carry the default tool name (a parse
// that succeeded earlier in this process has set the tool's own).
TEST(TavikArgsTest, MalformedOptionsAreFatal) {
  set_errors_tool_name(" ");
  const std::string expected = "^  Error :\nTavikArgs : <file>\\[.iop\\] expected after '-p' option\n$";
  for (std::vector<const char*> words : std::vector<std::vector<const char*>>{
           {"-p"}, {"-p", "-version"}, {"-p", "panel.txt"}, {"-p", "./panel"}, {"-panel", "-v"}})
    EXPECT_EXIT(Parsed{words}, testing::ExitedWithCode(1), expected) << words[1];
  EXPECT_EXIT(Parsed({"-p", "a", "-panel", "b"}), testing::ExitedWithCode(1),
              "^  Error :\nTavikArgs : '-p' option multiply defined\n$");
  EXPECT_EXIT(Parsed({"-x", "prog.ec"}), testing::ExitedWithCode(1),
              "^  Error :\nbad command : two input file names \\? \\('-x' and 'prog.ec'\\)\n$");
}

TEST(TavikArgsTest, VersionStopsParsingWhereverAndHelpShowsTheVisibleRows) {
  EXPECT_EXIT(Parsed({"prog.ec", "-version", "-p"}), testing::ExitedWithCode(0), "^$");
  EXPECT_EXIT(Parsed({"-help"}), testing::ExitedWithCode(0),
              "^recognized options :\n"
              "    -h \\(-help\\): display available options\n"
              "    -v set verbose mode\n"
              "    -sp \\(-savepanel\\): save the used panel in <node>.iop\n"
              "    -auto start in auto-step mode\n"
              "    -comp start in compose mode\n"
              "    -p \\(-panel\\) <file>\\[.iop\\] : select the panel interface\n"
              "Debug :\n"
              "    -dbgtk : generates extra Tcl code to debug the panel\n$");
}

}  // namespace
