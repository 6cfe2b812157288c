// pty_stream_test.cpp -- indentation, line breaking at the width, form
// feeds, and copying temporary streams.
#include "foundations/pty_stream.h"

#include <gtest/gtest.h>

#include <string>

#include "test_support.h"

namespace {

// What `write` puts on a stream over a temporary file.
template <typename F>
std::string written(int width, F write, const char* indent = nullptr) {
  return testsupport::printed([&](PtyStream* out) { write(*out); }, width, indent);
}

TEST(PtyStreamTest, NewlinesIndentFormFeedsDoNot) {
  EXPECT_EQ(written(80, [](PtyStream& s) { s.tab(); s.tab(); s.put("a\nb\fc"); }), "a\n      b\nc");
  EXPECT_EQ(written(80, [](PtyStream& s) { s.tab(); s.put("\n\nx"); }, "\t"), "\n\t\n\tx");
  EXPECT_EQ(written(80, [](PtyStream& s) { s.tab(); s.tab(); s.cr(); s.untab(); s.cr(); s.lf(); }),
            "\n      \n   \n");
  testing::internal::CaptureStderr();
  EXPECT_EQ(written(80, [](PtyStream& s) { s.untab(); s.tab(); s.cr(); }), "\n   ");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "PtyStream::untab : unbalanced untab\n");
}

TEST(PtyStreamTest, APieceReachingTheWidthMovesToAnUnindentedLine) {
  int column = 0;
  EXPECT_EQ(written(80, [&](PtyStream& s) {
              s.tab();
              s.put("%s", std::string(75, '.').c_str());
              s.put("abcde");
              column = s.get_column();
            }),
            std::string(75, '.') + "\nabcde");
  EXPECT_EQ(column, 5);
  // One character less stays on the line.
  EXPECT_EQ(written(10, [](PtyStream& s) { s.put("12345"); s.put("6789"); }), "123456789");
  // A piece longer than the width is never split; numbers are pieces too.
  EXPECT_EQ(written(4, [](PtyStream& s) { s.put("ab"); s.put("abcdefgh"); s.put(12); s.put(1.5f); }),
            "ab\nabcdefgh\n12\n1.500000");
  std::string big(5000, 'y');
  EXPECT_EQ(written(100000, [&](PtyStream& s) { s.put("<%s>", big.c_str()); }), "<" + big + ">");
}

TEST(PtyStreamTest, TemporaryTextIsReindentedNotWrapped) {
  TmpPtyStream tmp(80, nullptr);
  // The temporary stream turns its form feed into a plain line end, which
  // the copy then indents like any other.
  tmp.put("x\ny\fz ");
  tmp.put("%s", std::string(30, 'w').c_str());
  EXPECT_EQ(written(10, [&](PtyStream& s) { s.tab(); s.put(&tmp); }),
            "x\n   y\n   z " + std::string(30, 'w'));
}

TEST(PtyStreamTest, NamedFilesAndStandardStreams) {
  std::string path = testing::TempDir() + "pty_stream_test.txt";
  { PtyStream out(path.c_str(), 80, nullptr); out.put("saved"); }
  EXPECT_EQ(testsupport::file_text(path), "saved");
  testing::internal::CaptureStdout();
  { PtyStream out("stdout", 80, nullptr); out.put("one"); }
  printf("two");  // still open after the destructor
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "onetwo");
  EXPECT_EXIT(PtyStream("/nonexistent/dir/x", 80, nullptr), testing::ExitedWithCode(1),
              "^can't open file '/nonexistent/dir/x'\n$");
}

}  // namespace
