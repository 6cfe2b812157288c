// test_support.h -- helpers shared by the unit tests of every layer: texts
// written to and read from temporary files, the output of a PtyStream, and
// objects kept alive, as the simulator keeps its networks and panels.
#ifndef TESTS_UNIT_TEST_SUPPORT_H
#define TESTS_UNIT_TEST_SUPPORT_H

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "foundations/pty_stream.h"

namespace testsupport {

// Keeps `object` reachable until the process ends (the list itself is never
// destroyed, so the leak checker at exit still sees it).
template <typename T>
T* kept(T* object) {
  static std::vector<T*>* all = new std::vector<T*>();
  all->push_back(object);
  return object;
}

// Writes `text` to a new temporary file and returns its path.
inline std::string write_temp(const std::string& text, const char* suffix = ".txt") {
  static int counter = 0;
  std::string path = ::testing::TempDir() + "tavik_test_" + std::to_string(getpid()) + "_" +
                     std::to_string(++counter) + suffix;
  FILE* f = fopen(path.c_str(), "w");
  EXPECT_NE(f, nullptr) << path;
  if (f) {
    fwrite(text.data(), 1, text.size(), f);
    fclose(f);
  }
  return path;
}

// The rest of `f`, from its start.
inline std::string rest_of(FILE* f) {
  std::string text;
  rewind(f);
  for (int c; (c = fgetc(f)) != EOF;) text += static_cast<char>(c);
  return text;
}

inline std::string file_text(const std::string& path) {
  FILE* f = fopen(path.c_str(), "r");
  if (!f) return "<can't open " + path + ">";
  std::string text = rest_of(f);
  fclose(f);
  return text;
}

// What `write` puts on a PtyStream of the given width and indent.
template <typename F>
std::string printed(F write, int width = 10000, const char* indent = nullptr) {
  FILE* f = tmpfile();
  PtyStream out(f, width, indent);  // closes f
  write(&out);
  out.flush();
  return rest_of(f);
}

// `text` as a regular expression that matches it literally.
inline std::string literal(const std::string& text) {
  std::string re;
  for (char c : text) {
    if (std::string("\\^$.|?*+()[]{}").find(c) != std::string::npos) re += '\\';
    re += c;
  }
  return re;
}

}  // namespace testsupport

#endif
