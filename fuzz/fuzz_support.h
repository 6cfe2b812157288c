// fuzz_support.h -- what every fuzz target shares: the system ends the
// process on a fatal diagnostic, so a target survives that end (the input
// was refused, which is no fault), and it hands the loaders, which read
// files, the input as a file.
#ifndef FUZZ_FUZZ_SUPPORT_H
#define FUZZ_FUZZ_SUPPORT_H

#include <dirent.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "foundations/errors.h"
#include "foundations/symbol_table.h"

namespace fuzzing {

// The descriptors open before the first input; a refused input may leave a
// file it was reading open, which the target closes after it.
inline int& first_free_fd() {
  static int fd = -1;
  return fd;
}

inline void init() {
  if (first_free_fd() >= 0) return;
  first_free_fd() = dup(0);
  close(first_free_fd());
}

inline void close_leaked_files() {
  for (int fd = first_free_fd(); fd < first_free_fd() + 64; fd++) close(fd);
}

// Writes `data` to a file of this process named with `suffix` (".ec", ".iop"
// ...) and returns its path. The file is in memory where the system has
// /dev/shm: a run writes millions of them.
inline std::string as_file(const uint8_t* data, size_t size, const char* suffix) {
  static const char* dir = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
  std::string path = std::string(dir) + "/tavik_fuzz_" + std::to_string(getpid()) + suffix;
  FILE* f = fopen(path.c_str(), "wb");
  if (!f) abort();
  if (size > 0) fwrite(data, 1, size, f);  // an empty input may come with no buffer
  fclose(f);
  return path;
}

// One symbol table for every input: the system never frees what a load
// builds (it lives as long as the session), and a table per input would
// fill the memory of a long run with tables.
inline SymbolTable* symbols() {
  static SymbolTable* table = new SymbolTable(1000, 5041);
  return table;
}

// Runs `body`, which may end in a fatal diagnostic.
template <typename F>
void guarded(F body) {
  init();
  if (!survive_process_end(body)) close_leaked_files();
}

}  // namespace fuzzing

#endif
