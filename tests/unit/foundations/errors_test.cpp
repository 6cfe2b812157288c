// errors_test.cpp -- diagnostics: headers, exit statuses, pipe mode, spinner.
#include "foundations/errors.h"

#include <gtest/gtest.h>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <unistd.h>

#include <string>

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

struct VerboseState : testing::Test {
  void TearDown() override {
    VERBOSE = 0;
    PIPE = 0;
  }
};

// Before a tool name is set the header has two spaces; after, it names
// the tool. An internal error has a fixed header.
TEST(ErrorsTest, HeadersOfDiagnostics) {
  EXPECT_EXIT(Error("bad %d", 7), testing::ExitedWithCode(1), "^  Error :\nbad 7\n$");
  EXPECT_EXIT(IError("file 'net':\nx"), testing::ExitedWithCode(1),
              "^Sorry, Internal Error :\nfile 'net':\nx\n$");
  EXPECT_EXIT(
      {
        set_errors_tool_name("tavik");
        Warning("careful");
        Error("TavikArgs : '-p' option multiply defined");
      },
      testing::ExitedWithCode(1),
      "^tavik Warning :\ncareful\ntavik Error :\nTavikArgs : '-p' option multiply defined\n$");
}

TEST(ErrorsTest, CountedErrorsStopOnlyWhenRecovering) {
  EXPECT_EXIT(
      {
        GErrorRecover();  // nothing counted yet: returns
        GError("one\n");
        GError("two\n");
        GError("three\n");
        if (GErrors() != 3) exit(2);
        GErrorRecover();
        exit(3);
      },
      testing::ExitedWithCode(1), "^one\ntwo\nthree\n\\*\\*\\* 3 Errors stop\n$");
}

// Verbose prints when its level is at most VERBOSE; pipe mode turns the
// redraws into visible markers; the wheel stays silent off a terminal.
TEST_F(VerboseState, LevelsPipeModeAndSilentWheel) {
  const int cases[][3] = {{1, 2, 0}, {2, 2, 1}, {-1, -2, 1}, {1, 0, 1}};  // verbose, level, shown
  for (const auto& c : cases) {
    set_verbose_mode(c[0]);
    CaptureStderr();
    EXPECT_EQ(Verbose(c[1], "%s", "x"), c[0]);
    EXPECT_EQ(GetCapturedStderr(), c[2] ? "x" : "") << c[0] << " " << c[1];
  }
  set_verbose_mode();
  CaptureStderr();
  Verbose("\rstep %d", 3);
  for (int i = 0; i < 250; i++) VerboseWheel(2);  // a file, not a terminal
  set_pipe_mode();
  Verbose("\rstep %d", 3);
  Verbose(1, "\bx");
  Verbose("plain\r");
  EXPECT_EQ(GetCapturedStderr(), "\rstep 3 \n^Rstep 3\n^Bxplain\r");
  set_verbose_mode(0);
  CaptureStderr();
  Verbose("silent");
  EXPECT_EQ(GetCapturedStderr(), "");
}

// On a terminal the first glyph comes at the period-th call (the count
// starts at 1), then one every period + 1 calls, cycling through "|/-\".
void turn_wheel_on_a_terminal() {
  int master = -1;
  int slave = -1;
  if (openpty(&master, &slave, nullptr, nullptr, nullptr) != 0) exit(2);
  fcntl(master, F_SETFL, O_NONBLOCK);
  dup2(slave, 2);
  set_verbose_mode();
  for (int call = 1; call <= 14; call++) VerboseWheel(2);
  // The terminal passes the glyphs on in its own time: wait for them.
  const std::string expected = "|\b/\b-\b\\\b|\b";
  std::string seen;
  struct pollfd ready = {master, POLLIN, 0};
  while (seen.size() < expected.size() && poll(&ready, 1, 5000) > 0) {
    char buffer[64];
    ssize_t n = read(master, buffer, sizeof buffer);
    if (n <= 0) break;
    seen.append(buffer, n);
  }
  exit(seen == expected ? 0 : 3);
}

TEST(ErrorsTest, WheelTurnsOnATerminal) {
  EXPECT_EXIT(turn_wheel_on_a_terminal(), testing::ExitedWithCode(0), "");
}

}  // namespace
