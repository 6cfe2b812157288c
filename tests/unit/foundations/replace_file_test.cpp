// replace_file_test.cpp -- a user's file is replaced whole, a former one
// that differs is kept as "<path>~", and a failure changes nothing.
#include "foundations/replace_file.h"

#include <dirent.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "test_support.h"

namespace {

using testsupport::file_text;

std::string fresh_dir() {
  static int n = 0;
  std::string dir = ::testing::TempDir() + "replace_file_" + std::to_string(getpid()) + "_" + std::to_string(++n);
  mkdir(dir.c_str(), 0700);
  return dir;
}

int entries(const std::string& dir) {
  int count = 0;
  DIR* d = opendir(dir.c_str());
  while (dirent* e = readdir(d)) count += e->d_name[0] != '.';
  closedir(d);
  return count;
}

TEST(ReplaceFileTest, KeepsAFormerFileThatDiffersAndOnlyThat) {
  std::string dir = fresh_dir();
  std::string path = dir + "/n.iop";
  EXPECT_EQ(replace_file(path, "generated\n"), ReplaceResult::kWritten);
  EXPECT_EQ(replace_file(path, "generated\n"), ReplaceResult::kWritten);  // a second save keeps nothing
  EXPECT_EQ(entries(dir), 1);
  chmod(path.c_str(), 0640);
  EXPECT_EQ(replace_file(path, "again\n"), ReplaceResult::kKeptOld);
  EXPECT_EQ(file_text(path), "again\n");
  EXPECT_EQ(file_text(path + "~"), "generated\n");
  struct stat st;
  stat(path.c_str(), &st);
  EXPECT_EQ(st.st_mode & 0777, 0640u);
}

TEST(ReplaceFileTest, AFailureLeavesTheFormerFileAndNoTemporary) {
  std::string dir = fresh_dir();
  std::string path = dir + "/n.iop";
  ASSERT_EQ(replace_file(path, "by hand\n"), ReplaceResult::kWritten);
  // The former file cannot be kept where a directory stands.
  mkdir((path + "~").c_str(), 0700);
  mkdir((path + "~/full").c_str(), 0700);
  EXPECT_EQ(replace_file(path, "generated\n"), ReplaceResult::kCannotWrite);
  EXPECT_EQ(file_text(path), "by hand\n");
  EXPECT_EQ(entries(dir), 2);
  EXPECT_EQ(replace_file(dir + "/missing/n.iop", "x"), ReplaceResult::kCannotOpen);
}

TEST(ReplaceFileTest, ALinkIsFollowedAndAnAbandonedReplacementChangesNothing) {
  std::string dir = fresh_dir();
  std::string path = dir + "/n.csv";
  ASSERT_EQ(replace_file(path, "first\n"), ReplaceResult::kWritten);
  ASSERT_EQ(symlink("n.csv", (dir + "/link.csv").c_str()), 0);
  {
    FileReplacement half;
    ASSERT_TRUE(half.open(dir + "/link.csv"));
    fputs("half a ro", half.file());
  }
  EXPECT_EQ(file_text(path), "first\n");
  EXPECT_EQ(entries(dir), 2);
  EXPECT_EQ(replace_file(dir + "/link.csv", "second\n"), ReplaceResult::kKeptOld);
  struct stat st;
  EXPECT_EQ(lstat((dir + "/link.csv").c_str(), &st), 0);
  EXPECT_TRUE(S_ISLNK(st.st_mode));
  EXPECT_EQ(file_text(path), "second\n");
  EXPECT_EQ(file_text(path + "~"), "first\n");
}

}  // namespace
