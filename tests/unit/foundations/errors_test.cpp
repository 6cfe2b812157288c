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

TEST_F(VerboseState, LevelsAreComparedWithVERBOSE) {
  struct Case {
    int verbose, level;
    const char* expected;
  } cases[] = {{1, 2, ""}, {2, 2, "x"}, {3, 2, "x"}, {-1, -2, "x"}, {1, 0, "x"}};
  for (const Case& c : cases) {
    set_verbose_mode(c.verbose);
    CaptureStderr();
    EXPECT_EQ(Verbose(c.level, "%s", "x"), c.verbose);
    EXPECT_EQ(GetCapturedStderr(), c.expected) << c.verbose << " " << c.level;
  }
  set_verbose_mode(0);
  CaptureStderr();
  Verbose("silent");
  EXPECT_EQ(GetCapturedStderr(), "");
}

TEST_F(VerboseState, PipeModeTurnsRedrawsIntoMarkers) {
  set_verbose_mode();
  CaptureStderr();
  Verbose("\rstep %d", 3);
  Verbose("\bx");
  EXPECT_EQ(GetCapturedStderr(), "\rstep 3\bx");
  set_pipe_mode();
  CaptureStderr();
  Verbose("\rstep %d", 3);
  Verbose(1, "\bx");
  Verbose("plain\r");
  EXPECT_EQ(GetCapturedStderr(), " \n^Rstep 3\n^Bxplain\r");
}

TEST_F(VerboseState, WheelStaysSilentWhenStderrIsNotATerminal) {
  set_verbose_mode();
  CaptureStderr();  // a file, not a terminal
  for (int i = 0; i < 250; i++) EXPECT_EQ(VerboseWheel(2), 1);
  EXPECT_EQ(GetCapturedStderr(), "");
  set_verbose_mode(0);
  EXPECT_EQ(VerboseWheel(2), 0);
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
